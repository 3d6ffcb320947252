// Running the library's dialogs with nobody there to answer them, as tools
// do with their --accept option.
//
// While an UnattendedRun lives, message boxes are not shown: each answers
// with its default button at once, and its text is kept. Pressing OK
// through the run tells whether the dialog took it; when it refused (it
// stayed open), the dialog is cancelled and the kept texts say why - what a
// tool prints before it exits with status 3.
//
// The run is kept on the application object (its properties
// "vyrUnattended" and "vyrUnattendedMessages"), so that a host program and
// the dialog library it loads agree on it without sharing any code.
#ifndef VYR_UIKIT_UNATTENDEDRUN_H
#define VYR_UIKIT_UNATTENDEDRUN_H

#include "uikit/cvyrdialog.h"
#include "uikit/headless.h"

#include <QCoreApplication>
#include <QDialog>
#include <QStringList>
#include <QVariant>

namespace vyr {

// The exit status of a tool whose dialog refused OK.
inline constexpr int kExitRefused = 3;

class UnattendedRun
{
public:
    UnattendedRun()
        : m_wasActive(isActive())
        , m_earlier(messages())
    {
        setProperty(kActive, true);
        setProperty(kMessages, QStringList());
    }
    ~UnattendedRun()
    {
        setProperty(kActive, m_wasActive);
        setProperty(kMessages, m_earlier);
    }
    UnattendedRun(const UnattendedRun &) = delete;
    UnattendedRun &operator=(const UnattendedRun &) = delete;

    // Presses OK in the shown `dialog`: true when it closed. When it stays
    // open it is closed with Cancel (past a Cancel of its own that would
    // only end an edit), and false is answered.
    bool accept(QDialog &dialog)
    {
        dialog.accept();
        if (!dialog.isVisible())
            return true;
        dialog.done(kEndCancel);
        return false;
    }

    // Why OK was refused: the message boxes not shown during this run, or
    // that the dialog said nothing.
    static QStringList refusalReasons()
    {
        const QStringList shown = messages();
        return shown.isEmpty() ? QStringList{QStringLiteral("the dialog did not take OK")} : shown;
    }

    // The texts of the message boxes not shown during this run.
    static QStringList messages()
    {
        return qApp ? qApp->property(kMessages).toStringList() : QStringList();
    }

    // Whether message boxes are shown now; false while a run lives.
    static bool isActive() { return qApp && qApp->property(kActive).toBool(); }
    // A message box that was not shown: its text is kept by the live run.
    static void noteMessage(const QString &text)
    {
        if (isActive())
            setProperty(kMessages, messages() << text);
    }

private:
    static constexpr char kActive[] = "vyrUnattended";
    static constexpr char kMessages[] = "vyrUnattendedMessages";

    static void setProperty(const char *name, const QVariant &value)
    {
        if (qApp)
            qApp->setProperty(name, value);
    }

    bool m_wasActive;
    QStringList m_earlier;
};

} // namespace vyr

#endif // VYR_UIKIT_UNATTENDEDRUN_H
