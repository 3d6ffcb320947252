// The one reader of dialog templates: Qt's form loader, which also makes the
// library's own widget classes and the tab bar, which Designer lacks.
#ifndef VYR_UIKIT_TEMPLATELOADER_H
#define VYR_UIKIT_TEMPLATELOADER_H

#include <QUiLoader>

namespace vyr {

class TemplateLoader final : public QUiLoader
{
public:
    // Made on first use, without Designer's widget plugins.
    static TemplateLoader &instance();

    QWidget *createWidget(const QString &className, QWidget *parent, const QString &name) override;

private:
    TemplateLoader() = default;
};

} // namespace vyr

#endif // VYR_UIKIT_TEMPLATELOADER_H
