// How vyrtool shows a dialog: with a person, or - with --screenshot FILE
// and --accept - with nobody there. --screenshot draws the dialog into a
// PNG; --accept then presses OK, and when the dialog refuses, the texts of
// the message boxes that said why go to standard error instead of waiting
// for somebody to read them.
#ifndef VYRTOOL_DIALOGRUNNER_H
#define VYRTOOL_DIALOGRUNNER_H

#include <string>

namespace vyr {
class CVyrDialog;
}

struct ToolArguments;

struct DialogOptions
{
    std::string screenshot;
    bool accept = false;
};

// --screenshot FILE and --accept as read by readToolArguments.
DialogOptions dialogOptions(const ToolArguments &arguments);

// Makes the application the dialog runs in: without a display, on the
// offscreen platform when `options` end the dialog by themselves. False,
// said on standard error, when the dialog would wait for a person nobody
// can be (no display, or the offscreen or minimal platform) or no window
// can be shown at all.
bool startDialogApplication(const DialogOptions &options, const char *command);

enum class DialogOutcome {
    // Closed with OK.
    Accepted,
    // Closed with Cancel or the close box.
    Cancelled,
    // Drawn into the screenshot only, never run.
    Drawn,
    // OK was refused; the reasons are on standard error.
    Refused,
    // The dialog could not be made or drawn; said on standard error.
    Failed,
};

// Runs `dialog` as `options` say; `command` names the tool's command in
// messages.
DialogOutcome runToolDialog(vyr::CVyrDialog &dialog, const DialogOptions &options, const char *command);

// The exit status of an outcome: 0 accepted or drawn, 1 cancelled or
// failed, 3 refused.
int exitStatus(DialogOutcome outcome);

#endif // VYRTOOL_DIALOGRUNNER_H
