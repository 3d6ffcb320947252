#include "uikit/parentwindow.h"

#include <QApplication>
#include <QEvent>
#include <QHash>
#include <QPointer>
#include <QWidget>
#include <QWindow>

#include <cstdio>

namespace vyr {

namespace {

// Stands for a native window in the widget tree. Qt would make a window
// parented to it transient for the stand-in's own window, which never
// appears; so each top-level child is made transient for the native window
// when it is shown (before it is mapped, when the window manager reads it).
class NativeParentStandIn : public QWidget
{
public:
    explicit NativeParentStandIn(QWindow *native)
        : m_native(native)
    {
        setObjectName(QStringLiteral("vyrNativeParent"));
    }

protected:
    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::ChildAdded) {
            if (auto *child = qobject_cast<QWidget *>(static_cast<QChildEvent *>(event)->child()))
                child->installEventFilter(this);
        }
        return QWidget::event(event);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *window = qobject_cast<QWidget *>(watched);
        if (event->type() == QEvent::Show && window && window->isWindow() && window->parentWidget() == this
            && window->windowHandle() && m_native) {
            window->windowHandle()->setTransientParent(m_native);
        }
        return QWidget::eventFilter(watched, event);
    }

private:
    QPointer<QWindow> m_native;
};

QHash<std::uintptr_t, QPointer<QWidget>> &standIns()
{
    static QHash<std::uintptr_t, QPointer<QWidget>> made;
    return made;
}

} // namespace

QWidget *nativeParentWindow(std::uintptr_t windowId)
{
    if (!windowId) {
        std::fputs("vyrguimfc: window id 0 names no window\n", stderr);
        return nullptr;
    }
    if (QWidget *known = standIns().value(windowId))
        return known;
    QWindow *native = QWindow::fromWinId(static_cast<WId>(windowId));
    if (!native) {
        std::fprintf(stderr, "vyrguimfc: the Qt platform \"%s\" cannot place windows over a native window\n",
                     qPrintable(QGuiApplication::platformName()));
        return nullptr;
    }
    auto *standIn = new NativeParentStandIn(native);
    native->setParent(nullptr);
    QObject::connect(standIn, &QObject::destroyed, native, &QObject::deleteLater);
    standIns().insert(windowId, standIn);
    return standIn;
}

bool ownerFromHost(void *parentWindow, QWidget **owner)
{
    *owner = nullptr;
    if (!parentWindow)
        return true;
    // Compared, never dereferenced: a window id or a stale pointer is only a
    // number that matches no widget.
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets) {
        if (widget == parentWindow) {
            *owner = widget;
            return true;
        }
    }
    std::fputs("vyrguimfc: the parent window is not a widget of this application; a host that has a native window id "
               "passes VYRNativeParentWindow's answer for it instead, so no dialog is shown\n",
               stderr);
    return false;
}

} // namespace vyr
