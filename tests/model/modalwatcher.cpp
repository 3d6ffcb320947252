#include "model/modalwatcher.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QtTest>

#include <algorithm>

namespace vyr::model {

ShownMessage messageOf(QWidget *window)
{
    ShownMessage shown;
    if (auto *box = qobject_cast<QMessageBox *>(window)) {
        shown.text = box->text();
        for (QAbstractButton *button : box->buttons())
            shown.buttons.append(button->text());
    }
    return shown;
}

ModalWatcher::ModalWatcher(QWidget *main)
    : m_main(main)
{
    m_timer.setInterval(15);
    connect(&m_timer, &QTimer::timeout, this, &ModalWatcher::look);
    m_timer.start();
}

ModalWatcher::~ModalWatcher() = default;

void ModalWatcher::expect(std::function<void(QWidget *)> answer)
{
    m_expected.push_back(std::move(answer));
}

bool ModalWatcher::activate(QWidget *window)
{
    if (!window)
        return false;
    if (QApplication::activeWindow() == window)
        return true;
    window->activateWindow();
    return QTest::qWaitForWindowActive(window, 2000);
}

void ModalWatcher::look()
{
    m_handling.erase(std::remove_if(m_handling.begin(), m_handling.end(),
                                    [](const QPointer<QWidget> &w) { return w.isNull() || !w->isVisible(); }),
                     m_handling.end());
    QWidget *modal = QApplication::activeModalWidget();
    if (!modal || modal == m_main || !modal->isVisible())
        return;
    const bool handled = std::any_of(m_handling.begin(), m_handling.end(),
                                     [modal](const QPointer<QWidget> &w) { return w == modal; });
    if (handled)
        return;
    m_handling.emplace_back(modal);
    std::function<void(QWidget *)> answer;
    if (!m_expected.empty()) {
        answer = std::move(m_expected.front());
        m_expected.pop_front();
    }
    // The answer runs as an event of the window's own loop, not inside this
    // timer's call, so a window it opens in turn is seen too.
    QPointer<QWidget> guard(modal);
    QMetaObject::invokeMethod(
        this,
        [this, guard, answer] {
            if (!guard)
                return;
            if (answer) {
                activate(guard);
                answer(guard);
            } else {
                dismiss(guard);
            }
            // An answer that left its window open is closed here, so nothing
            // waits for a person.
            if (guard && guard->isVisible() && QApplication::activeModalWidget() == guard) {
                m_strays.append(QStringLiteral("left open: ") + QString::fromLatin1(guard->metaObject()->className()));
                if (auto *dialog = qobject_cast<QDialog *>(guard.data()))
                    dialog->reject();
                else
                    guard->close();
            }
        },
        Qt::QueuedConnection);
}

void ModalWatcher::dismiss(QWidget *modal)
{
    if (auto *box = qobject_cast<QMessageBox *>(modal)) {
        m_messages.push_back(messageOf(box));
        QAbstractButton *button = box->escapeButton();
        if (!button)
            button = box->defaultButton();
        if (!button && !box->buttons().isEmpty())
            button = box->buttons().constFirst();
        if (button)
            button->click();
        return;
    }
    m_strays.append(QString::fromLatin1(modal->metaObject()->className()));
    if (auto *dialog = qobject_cast<QDialog *>(modal))
        dialog->reject();
    else
        modal->close();
}

} // namespace vyr::model
