// CAboutDlg: what is installed where, and which resource library and
// language are in use. The first thing to look at when a dialog shows the
// wrong language or no texts at all.
#ifndef VYR_UIKIT_CABOUTDLG_H
#define VYR_UIKIT_CABOUTDLG_H

#include "uikit/cvyrdialog.h"

#include <QLabel>

namespace vyr {

class CAboutDlg : public CVyrDialog
{
    Q_OBJECT

public:
    explicit CAboutDlg(QWidget *parent = nullptr);

protected:
    bool OnInitDialog() override;
    qintptr OnHelpRequest(qintptr wParam, qintptr lParam) override;

private:
    DialogControl<QLabel> m_build;
    DialogControl<QLabel> m_installDirectory;
    DialogControl<QLabel> m_resourceLibrary;
    DialogControl<QLabel> m_language;
};

} // namespace vyr

#endif // VYR_UIKIT_CABOUTDLG_H
