#include "vyr_robohelp.h"

#include "helpviewer.h"
#include "servicetext.h"
#include "util/userlanguage.h"

#include <QApplication>
#include <QFileInfo>

using vyr::services::HelpLocation;
using vyr::services::HelpViewer;
using vyr::services::localized;

namespace {

QString text(const char *bytes)
{
    return bytes ? QString::fromLocal8Bit(bytes) : QString();
}

// The books are shown in the language the resource library is chosen by.
HelpLocation inUserLanguage(const HelpLocation &location)
{
    return vyr::services::inLanguage(location, QString::fromStdString(vyr::userLanguage()));
}

int show(const HelpLocation &location, const QString &missingNote)
{
    // Help needs a window; a host without a Qt application gets none.
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return 0;
    const QString note = QFileInfo(location.book).isDir()
        ? missingNote
        : localized("The help book %1 cannot be found.").replace(QLatin1String("%1"), location.book);
    HelpViewer::instance()->showLocation(location, note);
    return 1;
}

} // namespace

extern "C" int VYR_CHM_ShowHelpByString(void *, const char *helpFile, const char *topic, const char *)
{
    const HelpLocation location = inUserLanguage(vyr::services::resolveHelpTopic(text(helpFile), text(topic)));
    const QString shown = location.page.isEmpty() ? text(topic) : QFileInfo(location.page).fileName();
    return show(location, localized("The help topic %1 is not in this help book.").replace(QLatin1String("%1"), shown));
}

extern "C" int VYR_CHM_ShowFormatHelp(void *, const char *helpFile, const char *formatName, int topicNumber)
{
    const HelpLocation location =
        inUserLanguage(vyr::services::resolveFormatHelp(text(helpFile), text(formatName), topicNumber));
    return show(
        location,
        localized("There is no help page for the format %1 yet.").replace(QLatin1String("%1"), text(formatName)));
}
