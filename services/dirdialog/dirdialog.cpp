// VYR_SelectGeodatabase: the C face of the geodatabase picker.
#include "vyr_dirDialog.h"

#include "geodatabasepicker.h"

#include "uikit/narrowtext.h"

#include <QApplication>
#include <QThread>

#include <cstring>
#include <string>

namespace {

// Texts and paths alike are narrow text, read losslessly: a path keeps its
// bytes on the way in and out.
QString textOf(const char *text)
{
    return text ? vyr::fromNarrow(text) : QString();
}

} // namespace

extern "C" int VYR_SelectGeodatabase(const char *title, const char *prompt, char *path, void *parent, int option)
{
    // Widgets live on the application's thread; a call from another would
    // race its event loop.
    if (!path || !qobject_cast<QApplication *>(QCoreApplication::instance())
        || QThread::currentThread() != QCoreApplication::instance()->thread())
        return -1;
    try {
        const int maxBytes = VYR_GEODATABASE_PATH_BUFFER - 1;
        const QString start = vyr::fromNarrow(std::string_view(path, ::strnlen(path, maxBytes)));
        vyr::services::GeodatabasePicker picker(textOf(title), textOf(prompt), start, option == 1, maxBytes,
                                                static_cast<QWidget *>(parent));
        if (picker.exec() != QDialog::Accepted)
            return 1;
        const std::string chosen = vyr::toNarrow(picker.path());
        if (chosen.size() > static_cast<std::size_t>(maxBytes)) // the picker refuses such paths already
            return 1;
        std::memcpy(path, chosen.data(), chosen.size());
        path[chosen.size()] = '\0';
        return 0;
    } catch (...) {
        return -1;
    }
}
