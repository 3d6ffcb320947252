// The help viewer window: one per process, reused for every help request.
#ifndef VYR_SERVICES_HELPVIEWER_H
#define VYR_SERVICES_HELPVIEWER_H

#include "helpbook.h"

#include <QWidget>

class QListWidget;
class QTextBrowser;
class QToolButton;

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

    QTextBrowser *m_browser;
    QListWidget *m_contents;
    QToolButton *m_back;
    QToolButton *m_forward;
    QToolButton *m_home;
    QString m_book;
};

} // namespace vyr::services

#endif // VYR_SERVICES_HELPVIEWER_H
