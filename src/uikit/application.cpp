#include "uikit/application.h"

#include "uikit/cvyrdialog.h"
#include "uikit/headless.h"
#include "uikit/helpevents.h"
#include "uikit/messageboxnotices.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QThread>
#include <QWidget>

#include <unistd.h>

#include <cstdio>

namespace vyr {

namespace {

// Whether `widget` lies in one of the library's dialogs, or in a window
// opened over one (a message box, a find dialog).
bool inLibraryWindow(QWidget *widget)
{
    for (QWidget *window = widget ? widget->window() : nullptr; window;
         window = window->parentWidget() ? window->parentWidget()->window() : nullptr) {
        if (qobject_cast<CVyrDialog *>(window))
            return true;
    }
    return false;
}

// F1 is taken before any widget of the library's windows sees it, so it
// means help there exactly once, whatever control has the focus. The host's
// own windows keep their F1. The request starts where the key went: the
// focus widget, or the active window when nothing has the focus.
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
            if (target && key->key() == Qt::Key_F1 && key->modifiers() == Qt::NoModifier && inLibraryWindow(target)) {
                routeHelpRequest(target);
                return true;
            }
        }
        return QObject::eventFilter(watched, event);
    }
};

constexpr char kHelpKeyFilterName[] = "vyrHelpKeyFilter";

} // namespace

bool onApplicationThread()
{
    // Read once: the application may be made on the main thread meanwhile,
    // and a caller elsewhere is refused either way.
    if (const QCoreApplication *application = QCoreApplication::instance())
        return QThread::currentThread() == application->thread();
    return ::gettid() == ::getpid();
}

int libraryObjectsInFramework()
{
    // The framework's lists of objects belong to the application's thread;
    // reading them from another could see a widget half made or half gone.
    // Not knowing, the library says it is still in use.
    if (!QCoreApplication::instance())
        return 0;
    if (!onApplicationThread())
        return 1;
    auto *application = qobject_cast<QApplication *>(QCoreApplication::instance());
    if (!application)
        return 0;
    int count = static_cast<int>(
        application->findChildren<QObject *>(QLatin1String(kHelpKeyFilterName), Qt::FindDirectChildrenOnly).size());
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets) {
        if (qobject_cast<CVyrDialog *>(widget))
            ++count;
    }
    return count;
}

QApplication *ensureApplication()
{
    // A widget made or shown from another thread races the application's
    // event loop (a hang, or a crash in the middle of the host's dialog).
    if (!onApplicationThread()) {
        std::fputs(QCoreApplication::instance()
                       ? "vyrguimfc: called from a thread other than the Qt application's, so no dialog is shown\n"
                       : "vyrguimfc: called from a thread other than the main thread before there is a Qt "
                         "application, so no dialog is shown\n",
                   stderr);
        return nullptr;
    }
    if (!QCoreApplication::instance()) {
        // A window nobody can reach would wait for ever; a host that means to
        // run without a display chooses the offscreen platform itself.
        if (!windowsHaveAPlace()) {
            std::fputs("vyrguimfc: no display answers and no Qt platform was chosen (QT_QPA_PLATFORM), so no dialog is "
                       "shown\n",
                       stderr);
            return nullptr;
        }
        static int argc = 1;
        static char name[] = "vyrguimfc";
        static char *argv[] = {name, nullptr};
        new QApplication(argc, argv); // lives as long as the process
    }
    auto *application = qobject_cast<QApplication *>(QCoreApplication::instance());
    if (!application) {
        std::fputs(
            "vyrguimfc: the host's Qt application is not a QApplication (it has no widgets), so no dialog is shown\n",
            stderr);
        return nullptr;
    }
    static QPointer<QApplication> filtered;
    if (filtered != application) {
        auto *filter = new HelpKeyFilter(application);
        filter->setObjectName(QLatin1String(kHelpKeyFilterName));
        application->installEventFilter(filter);
        filtered = application;
    }
    // Refusals of the model's checks become message boxes, unless the host
    // has its own way of telling the user.
    static MessageBoxNotices messageBoxes;
    if (!userNoticeSink())
        setUserNoticeSink(&messageBoxes);
    return application;
}

} // namespace vyr
