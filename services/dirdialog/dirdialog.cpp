// VYR_SelectGeodatabase: the C face of the geodatabase picker.
#include "vyr_dirDialog.h"

#include "geodatabasepicker.h"

#include "util/stringconverter.h"

#include <QApplication>
#include <QFile>

#include <cstring>
#include <string>

namespace {

QString fromNarrow(const char *text)
{
    return text ? QString::fromStdString(vyr::ansiToUtf8(text)) : QString();
}

} // namespace

extern "C" int VYR_SelectGeodatabase(const char *title, const char *prompt, char *path, void *parent, int option)
{
    if (!path || !qobject_cast<QApplication *>(QCoreApplication::instance()))
        return -1;
    try {
        const int maxBytes = VYR_GEODATABASE_PATH_BUFFER - 1;
        const QString start = QFile::decodeName(QByteArray(path, static_cast<qsizetype>(::strnlen(path, maxBytes))));
        vyr::services::GeodatabasePicker picker(fromNarrow(title), fromNarrow(prompt), start, option == 1, maxBytes,
                                                static_cast<QWidget *>(parent));
        if (picker.exec() != QDialog::Accepted)
            return 1;
        const QByteArray chosen = QFile::encodeName(picker.path());
        if (chosen.size() > maxBytes) // the picker refuses such paths already
            return 1;
        std::memcpy(path, chosen.constData(), static_cast<std::size_t>(chosen.size()));
        path[chosen.size()] = '\0';
        return 0;
    } catch (...) {
        return -1;
    }
}
