// The pictures the programs save for --screenshot, as PNG files. Written
// like any other save (util/safefiles.h): whole or not at all; a picture is
// a new output, so a symbolic link under its name is refused rather than
// written through. Header only, as the programs use it without the rest of
// this folder.
#ifndef VYR_UIKIT_SCREENSHOTFILE_H
#define VYR_UIKIT_SCREENSHOTFILE_H

#include "util/safefiles.h"

#include <QBuffer>
#include <QByteArray>
#include <QPixmap>
#include <QString>

#include <string>
#include <string_view>

namespace vyr {

// False with the reason, naming the file, in `error`.
inline bool saveScreenshot(const QPixmap &picture, const QString &path, std::string &error)
{
    QByteArray png;
    QBuffer buffer(&png);
    if (picture.isNull() || !buffer.open(QIODevice::WriteOnly) || !picture.save(&buffer, "PNG")) {
        error = path.toStdString() + ": nothing was drawn to save";
        return false;
    }
    return replaceFileContent(path.toLocal8Bit().toStdString(),
                              std::string_view(png.constData(), static_cast<std::size_t>(png.size())), error,
                              LinkRule::Refuse);
}

} // namespace vyr

#endif // VYR_UIKIT_SCREENSHOTFILE_H
