// The help viewer window: one per process, reused for every help request.
// Back and Forward go through what it showed - pages of every book and the
// notes that said what was missing - with the contents of the book shown;
// Escape and Control+W close it.
#ifndef VYR_SERVICES_HELPVIEWER_H
#define VYR_SERVICES_HELPVIEWER_H

#include "helpbook.h"

#include <QHash>
#include <QWidget>

class QListWidget;
class QTextBrowser;
class QToolButton;
class QUrl;

namespace vyr::services {

class HelpViewer : public QWidget
{
    Q_OBJECT

public:
    explicit HelpViewer(QWidget *parent = nullptr);

    // The viewer of this process, made on first use. It is kept above the
    // modal dialog that asked for help, so it can be used while that runs.
    static HelpViewer *instance();

    // Shows the location's page, or a note saying what is missing.
    void showLocation(const HelpLocation &location, const QString &missingNote);

    QTextBrowser *browser() const { return m_browser; }
    QListWidget *contents() const { return m_contents; }

private:
    void fillContents(const QString &book);
    // The book a shown page or note belongs to.
    QString bookOf(const QUrl &shown) const;

    QTextBrowser *m_browser;
    QListWidget *m_contents;
    QToolButton *m_back;
    QToolButton *m_forward;
    QToolButton *m_home;
    QString m_book;
    // The book of each page shown, by its address without the anchor.
    QHash<QString, QString> m_bookOfPage;
};

} // namespace vyr::services

#endif // VYR_SERVICES_HELPVIEWER_H
