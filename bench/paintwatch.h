// Waiting for paints in a benchmark that times a dialog as a person sees it:
// from an action, or from a modal dialog's start, to its first paint.
#ifndef VYR_BENCH_PAINTWATCH_H
#define VYR_BENCH_PAINTWATCH_H

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <functional>

namespace vyr::bench {

inline bool isWithin(const QObject *object, const QWidget *ancestor)
{
    for (; object; object = object->parent()) {
        if (object == ancestor)
            return true;
    }
    return false;
}

// Runs `action`, then the event loop until `target` or a widget inside it
// has been painted; the milliseconds that took, or -1 after ten seconds.
class PaintWait final : public QObject
{
public:
    static double after(const QWidget *target, const std::function<void()> &action)
    {
        PaintWait wait(target);
        qApp->installEventFilter(&wait);
        QElapsedTimer clock;
        clock.start();
        action();
        while (!wait.m_painted && clock.elapsed() < 10000)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        qApp->removeEventFilter(&wait);
        return wait.m_painted ? clock.nsecsElapsed() / 1e6 : -1;
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && isWithin(watched, m_target))
            m_painted = true;
        return false;
    }

private:
    explicit PaintWait(const QWidget *target)
        : m_target(target)
    {}
    const QWidget *m_target;
    bool m_painted = false;
};

// Notes the first paint of a modal dialog and hands it over, outside the
// paint, to what the run does with it.
class FirstPaintWatch final : public QObject
{
public:
    FirstPaintWatch(QElapsedTimer &clock, std::function<void(QDialog *)> then)
        : m_clock(clock)
        , m_then(std::move(then))
    {}
    qint64 paintedAt = -1;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && paintedAt < 0) {
            auto *widget = qobject_cast<QWidget *>(watched);
            auto *dialog = widget ? qobject_cast<QDialog *>(widget->window()) : nullptr;
            if (dialog && dialog->isModal()) {
                paintedAt = m_clock.nsecsElapsed();
                QTimer::singleShot(0, dialog, [this, dialog] { m_then(dialog); });
            }
        }
        return false;
    }

private:
    QElapsedTimer &m_clock;
    std::function<void(QDialog *)> m_then;
};

} // namespace vyr::bench

#endif // VYR_BENCH_PAINTWATCH_H
