// Tabbed windows as assistive technology sees them: the tab list names its
// tabs and says which is selected; each page is a panel named by its tab, and
// a label's hint is spoken with the control it labels.
#ifndef VYR_UIKIT_PAGEACCESSIBLE_H
#define VYR_UIKIT_PAGEACCESSIBLE_H

#include <QString>
#include <QTabBar>

namespace vyr {

// The tab bar of a window that turns its own pages: its tabs report SELECTED
// for the one shown, and can be pressed.
class PageTabBar : public QTabBar
{
    Q_OBJECT
public:
    explicit PageTabBar(QWidget *parent = nullptr);
};

// `text` as a listener hears it: without the marks of mnemonics ("&&" is "&").
QString withoutMnemonics(QString text);
// `page` is shown under the tab titled `title` (mnemonic marks allowed).
void describeAsPage(QWidget *page, const QString &title);
// Every label under `window` with a buddy passes its tool tip to the buddy as
// its accessible description, unless the buddy has one.
void giveLabelHintsToBuddies(QWidget *window);

} // namespace vyr

#endif // VYR_UIKIT_PAGEACCESSIBLE_H
