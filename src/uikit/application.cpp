#include "uikit/application.h"

#include "uikit/helpevents.h"
#include "uikit/messageboxnotices.h"
#include "util/environment.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QWidget>

namespace vyr {

namespace {

// F1 is taken before any widget sees it, so it means help in every dialog,
// including the host's own, exactly once. The request starts where the key
// went: the focus widget, or the active window when nothing has the focus.
class HelpKeyFilter : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress) {
            const auto *key = static_cast<QKeyEvent *>(event);
            auto *target = qobject_cast<QWidget *>(watched);
            if (target && key->key() == Qt::Key_F1 && key->modifiers() == Qt::NoModifier) {
                routeHelpRequest(target);
                return true;
            }
        }
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

QApplication *ensureApplication()
{
    if (!QCoreApplication::instance()) {
        const bool hasDisplay = !getEnvironment("DISPLAY").empty() || !getEnvironment("WAYLAND_DISPLAY").empty();
        if (!hasDisplay && getEnvironment("QT_QPA_PLATFORM").empty())
            setEnvironment("QT_QPA_PLATFORM", "offscreen", true);
        static int argc = 1;
        static char name[] = "vyrguimfc";
        static char *argv[] = {name, nullptr};
        new QApplication(argc, argv); // lives as long as the process
    }
    auto *application = qobject_cast<QApplication *>(QCoreApplication::instance());
    static QPointer<QApplication> filtered;
    if (application && filtered != application) {
        application->installEventFilter(new HelpKeyFilter(application));
        filtered = application;
    }
    // Refusals of the model's checks become message boxes, unless the host
    // has its own way of telling the user.
    static MessageBoxNotices messageBoxes;
    if (application && !userNoticeSink())
        setUserNoticeSink(&messageBoxes);
    return application;
}

} // namespace vyr
