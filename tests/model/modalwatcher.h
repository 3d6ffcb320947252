// Answers the modal windows a keyboard or mouse action opens inside the
// dialog (message boxes, editors, prompts): the answer is queued before the
// action and runs in the window's own event loop. A window nobody expected
// is recorded and dismissed, so no sequence ever waits for a person.
#ifndef VYR_TESTS_MODEL_MODALWATCHER_H
#define VYR_TESTS_MODEL_MODALWATCHER_H

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QWidget>

#include <deque>
#include <functional>
#include <vector>

namespace vyr::model {

// What a message box said.
struct ShownMessage
{
    QString text;
    QStringList buttons;
};

class ModalWatcher : public QObject
{
public:
    // `main` is the dialog whose own modality is not answered.
    explicit ModalWatcher(QWidget *main);
    ~ModalWatcher() override;

    // The next modal window goes to `answer`, which must end it.
    void expect(std::function<void(QWidget *)> answer);
    // Whether every expected window came.
    bool allAnswered() const { return m_expected.empty(); }
    void forgetExpected() { m_expected.clear(); }

    // Message boxes nobody expected, in order; answered with their default
    // (or escape) button.
    const std::vector<ShownMessage> &messages() const { return m_messages; }
    void clearMessages() { m_messages.clear(); }
    // Other modal windows nobody expected (their class names); rejected.
    const QStringList &strays() const { return m_strays; }

    // Records a message box as unexpected ones are and presses its escape
    // or default button; rejects any other window.
    void dismiss(QWidget *modal);

    // Makes `window` active and waits for it (bounded).
    static bool activate(QWidget *window);

private:
    void look();

    QPointer<QWidget> m_main;
    QTimer m_timer;
    std::deque<std::function<void(QWidget *)>> m_expected;
    std::vector<QPointer<QWidget>> m_handling;
    std::vector<ShownMessage> m_messages;
    QStringList m_strays;
};

// The text and button texts of a message box.
ShownMessage messageOf(QWidget *box);

} // namespace vyr::model

#endif // VYR_TESTS_MODEL_MODALWATCHER_H
