// Running the library's dialogs with nobody there to answer them, as tools
// do with their --accept option.
//
// While an UnattendedRun lives, message boxes are not shown: each answers
// with its default button at once, and its text is kept. Pressing OK
// through the run tells whether the dialog took it; when it refused (it
// stayed open), the dialog is cancelled and the kept texts say why - what a
// tool prints before it exits with status 3.
#ifndef VYR_UIKIT_UNATTENDEDRUN_H
#define VYR_UIKIT_UNATTENDEDRUN_H

#include <QStringList>

class QDialog;

namespace vyr {

// The exit status of a tool whose dialog refused OK.
inline constexpr int kExitRefused = 3;

class UnattendedRun
{
public:
    UnattendedRun();
    ~UnattendedRun();
    UnattendedRun(const UnattendedRun &) = delete;
    UnattendedRun &operator=(const UnattendedRun &) = delete;

    // Presses OK in the shown `dialog`: true when it closed. When it stays
    // open it is closed with Cancel, and false is answered.
    bool accept(QDialog &dialog);
    // The texts of the message boxes not shown so far.
    const QStringList &messages() const { return m_messages; }

    // Whether message boxes are shown now; false while a run lives.
    static bool isActive();
    // A message box that was not shown: its text is kept by the live run.
    static void noteMessage(const QString &text);

private:
    QStringList m_messages;
    UnattendedRun *m_previous;
};

} // namespace vyr

#endif // VYR_UIKIT_UNATTENDEDRUN_H
