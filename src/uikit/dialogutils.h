// Free functions the dialogs and pages share: GUI definition prompts through
// the engine's prompter, the selection list, localisation of one text, combo
// box lookup, message boxes and the authoring application's settings.
//
// Texts handed to and read from the prompter and the outside services are
// byte strings in the process's narrow code page.
#ifndef VYR_UIKIT_DIALOGUTILS_H
#define VYR_UIKIT_DIALOGUTILS_H

#include "util/guianswers.h"
#include "util/listpacking.h"

#include <QString>

#include <map>
#include <string>

class IGuiPrompter;
class QComboBox;
class QWidget;

namespace vyr {

// The help reference as the definition file carries it: a reference naming
// a help book ("x.chm#topic", any case) is kept; a topic becomes the
// installation directory's help/VYRTransformers.chm#topic for topics under
// "transformers\" (or "transformers/"), else help/VYRLoomhouse.chm#topic.
std::string ResolveHelpReference(const std::string &reference);

// The lines of a GUI definition file: title, help (when `helpReference` is
// not empty), the first lines, then the second lines, each ended by "\n".
std::string MakeGuiDefinition(const std::string &title, const StringList &firstLines, const StringList &secondLines,
                              const std::string &helpReference);

// Writes the definition to a new temporary file, runs the prompter on it
// and, when the user accepted, appends the answers to `answers`. The file is
// removed afterwards in every case. Returns whether the user accepted.
bool RunGuiDefinition(IGuiPrompter *prompter, const std::string &title, const StringList &firstLines,
                      const StringList &secondLines, StringList &answers, AnswerReadMode mode,
                      const std::string &helpReference);

// Key/value prompt: each answered pair is stored in `values`, later pairs
// replacing earlier ones of the same key.
bool PromptKeyValues(IGuiPrompter *prompter, const std::string &title, const StringList &firstLines,
                     const StringList &secondLines, std::map<std::string, std::string> &values,
                     const std::string &helpReference);

// A list of `choices` to pick from, `values` checked at first; on OK the
// picked values replace `values`. False at once when there are no choices.
bool PromptSelectionBox(IGuiPrompter *prompter, const std::string &title, const std::string &label,
                        const StringList &choices, StringList &values, const std::string &helpReference);

// An icon file; `value` changes only when the user accepted.
bool PromptIconPick(IGuiPrompter *prompter, const std::string &title, std::string &value);

// The selection list of the prompter library; on OK the checked items are
// appended to `chosen`.
bool RunSelectionDialog(const StringList &all, const StringList &preselected, const StringList &icons,
                        const std::string &title, int flagA, int flagB, StringList &chosen, QWidget *parent);

// Values joined for a definition line (util/macrovalues.h).
std::string JoinMacroValues(const StringList &values);

// The localiser's translation of `text`, or `text` itself.
std::string LocalizeText(const std::string &text);

// The index of the first item whose text is exactly `text`, or -1.
int FindComboItem(const QComboBox *combo, const QString &text);
// As FindComboItem, and a found item becomes the current one.
int SelectComboItem(QComboBox *combo, const QString &text);

// Message box flags and results, with the values hosts expect.
enum MessageBoxFlag : unsigned {
    MbOk = 0x0,
    MbOkCancel = 0x1,
    MbYesNoCancel = 0x3,
    MbYesNo = 0x4,
    MbIconError = 0x10,
    MbIconQuestion = 0x20,
    MbIconExclamation = 0x30,
    MbIconInformation = 0x40,
};
enum MessageBoxResult : int { IdOk = 1, IdCancel = 2, IdYes = 6, IdNo = 7 };

// A message box; an empty caption becomes the application's name, a null
// owner the application's active window. Returns the button pressed. In an
// unattended run (unattendedrun.h) nothing is shown and the first button
// (OK or Yes) is the answer.
int ShowMessageBox(QWidget *owner, const QString &text, const QString &caption, unsigned flags);
// ShowMessageBox with the exclamation icon added.
int ShowExclamationBox(const QString &text, const QString &caption, QWidget *owner, unsigned flags);

// A yes/no setting of the authoring application ("true" or "yes" in any case
// is true); `fallback` when it is not set.
bool ReadLoomhouseFlag(const std::string &name, bool fallback);
// The "Allow Source Feature Type Editing" setting, false when not set.
bool IsSourceFeatureTypeEditingAllowed();

} // namespace vyr

#endif // VYR_UIKIT_DIALOGUTILS_H
