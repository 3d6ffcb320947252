#include "uikit/caboutdlg.h"

#include "uikit/outsideservices.h"
#include "util/installdir.h"
#include "util/numbertext.h"
#include "uikit/resourcelibrary.h"

#include <QLabel>

namespace vyr {

namespace {

enum AboutItem : unsigned { kBuildItem = 1001, kInstallItem = 1002, kResourceItem = 1003, kLanguageItem = 1004 };

QString fromPath(const std::string &path)
{
    return QString::fromLocal8Bit(path.c_str());
}

} // namespace

CAboutDlg::CAboutDlg(QWidget *parent)
    : CVyrDialog(res::AboutDialog, res::AboutAccelerators, true, "About_vyrguimfc.htm", parent, DialogMode::ModeModal)
{
    setObjectName(QStringLiteral("aboutDialog"));
    RegisterControl(&m_build, kBuildItem);
    RegisterControl(&m_installDirectory, kInstallItem);
    RegisterControl(&m_resourceLibrary, kResourceItem);
    RegisterControl(&m_language, kLanguageItem);
}

bool CAboutDlg::OnInitDialog()
{
    const bool result = CVyrDialog::OnInitDialog();
    const ResourceLibrary *library = loadResourceLibrary();
    const QString libraryName = library ? fromPath(library->path()) : loadResourceString(res::AboutNoResourceLibrary);
    if (m_build)
        m_build->setText(formatResourceString(res::AboutBuild, {QString::fromStdString(numberText(kBuildNumber))}));
    if (m_installDirectory)
        m_installDirectory->setText(
            formatResourceString(res::AboutInstallDirectory, {fromPath(getInstallDirectory())}));
    if (m_resourceLibrary)
        m_resourceLibrary->setText(formatResourceString(res::AboutResourceLibrary, {libraryName}));
    if (m_language)
        m_language->setText(loadResourceString(res::AboutLanguage));
    return result;
}

qintptr CAboutDlg::OnHelpRequest(qintptr, qintptr)
{
    return ShowTopicHelp();
}

} // namespace vyr
