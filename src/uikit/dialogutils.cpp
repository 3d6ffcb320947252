#include "uikit/dialogutils.h"

#include "stringobjects/vyrrwstringarrayimp.h"
#include "stringobjects/vyrrwstringimp.h"
#include "uikit/outsideservices.h"
#include "uikit/unattendedrun.h"
#include "util/asciitext.h"
#include "util/installdir.h"
#include "util/macrovalues.h"
#include "util/pattern.h"
#include "util/registry.h"
#include "util/safefiles.h"
#include "util/tempfiles.h"

#include "vyr/IGuiPrompter.h"

#include <QApplication>
#include <QComboBox>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <cstdio>

namespace vyr {

namespace {

// The prompter's answers; nothing when they cannot be read.
std::string readAnswers(const std::string &path)
{
    std::string error;
    return readUntrustedFile(path, error).value_or(std::string());
}

VYRRWStringArrayImp toArray(const StringList &list)
{
    VYRRWStringArrayImp array;
    for (const std::string &text : list)
        array.append(VYRRWStringImp(text.data(), text.size()));
    return array;
}

} // namespace

std::string ResolveHelpReference(const std::string &reference)
{
    static const Pattern namesBook("\\.[Cc][Hh][Mm]#");
    if (namesBook.foundIn(reference))
        return reference;
    const bool transformers = reference.starts_with("transformers\\") || reference.starts_with("transformers/");
    return getInstallDirectory() + (transformers ? "help/VYRTransformers.chm" : "help/VYRLoomhouse.chm") + "#"
        + reference;
}

std::string MakeGuiDefinition(const std::string &title, const StringList &firstLines, const StringList &secondLines,
                              const std::string &helpReference)
{
    std::string text = "GUI TITLE " + title + "\n";
    if (!helpReference.empty())
        text += "GUI HELP \"" + ResolveHelpReference(helpReference) + "\"\n";
    for (const StringList *lines : {&firstLines, &secondLines}) {
        for (const std::string &line : *lines)
            text += line + "\n";
    }
    return text;
}

bool RunGuiDefinition(IGuiPrompter *prompter, const std::string &title, const StringList &firstLines,
                      const StringList &secondLines, StringList &answers, AnswerReadMode mode,
                      const std::string &helpReference)
{
    const std::string path
        = createTempFile({}, "lh-dlg-XXXXXX", {}, MakeGuiDefinition(title, firstLines, secondLines, helpReference));
    const bool accepted = prompter && prompter->run(path.c_str()) != 0;
    if (accepted)
        readGuiAnswers(readAnswers(path), mode, answers);
    if (!path.empty())
        std::remove(path.c_str());
    return accepted;
}

bool PromptKeyValues(IGuiPrompter *prompter, const std::string &title, const StringList &firstLines,
                     const StringList &secondLines, std::map<std::string, std::string> &values,
                     const std::string &helpReference)
{
    StringList answers;
    if (!RunGuiDefinition(prompter, title, firstLines, secondLines, answers, AnswerReadMode::Pairs, helpReference))
        return false;
    for (std::size_t i = 0; i + 1 < answers.size(); i += 2)
        values[answers[i]] = answers[i + 1];
    return true;
}

bool PromptSelectionBox(IGuiPrompter *prompter, const std::string &title, const std::string &label,
                        const StringList &choices, StringList &values, const std::string &helpReference)
{
    if (choices.empty())
        return false;
    const StringList lines{
        "DEFAULT_MACRO SELECTION_BOX_ONLY " + JoinMacroValues(values),
        "GUI SELECTION_BOX_ONLY " + JoinMacroValues(choices) + " " + label,
    };
    StringList answers;
    if (!RunGuiDefinition(prompter, title, {}, lines, answers, AnswerReadMode::NonEmptyLines, helpReference))
        return false;
    values = std::move(answers);
    return true;
}

bool PromptIconPick(IGuiPrompter *prompter, const std::string &title, std::string &value)
{
    const StringList first{"DEFAULT_MACRO ICONMAC " + value};
    const StringList second{"GUI OPTIONAL ICONPICKONLY ICONMAC"};
    StringList answers;
    if (!RunGuiDefinition(prompter, title, first, second, answers, AnswerReadMode::AllLines, {}) || answers.size() < 2)
        return false;
    value = answers[1];
    return true;
}

bool RunSelectionDialog(const StringList &all, const StringList &preselected, const StringList &icons,
                        const std::string &title, int flagA, int flagB, StringList &chosen, QWidget *parent)
{
    VYRRWStringArrayImp items = toArray(all);
    VYRRWStringArrayImp checked = toArray(preselected);
    VYRRWStringArrayImp iconFiles = toArray(icons);
    VYRRWStringImp caption(title.data(), title.size());
    VYRRWStringArrayImp picked;
    if (!selectionDialog(items, checked, iconFiles, caption, flagA, flagB, picked, parent))
        return false;
    for (std::size_t i = 0; i < picked.entries(); ++i)
        chosen.emplace_back(picked.elementAt(i));
    return true;
}

std::string JoinMacroValues(const StringList &values)
{
    return joinMacroValues(values);
}

std::string LocalizeText(const std::string &text)
{
    std::string buffer(std::max<std::size_t>(1024, 4 * text.size()), '\0');
    const int length = localize(text.c_str(), buffer.data(), static_cast<int>(buffer.size()));
    if (length <= 0)
        return text;
    buffer.resize(std::min(buffer.size(), static_cast<std::size_t>(length)));
    return buffer;
}

int FindComboItem(const QComboBox *combo, const QString &text)
{
    if (!combo)
        return -1;
    for (int i = 0; i < combo->count(); ++i) {
        if (combo->itemText(i) == text)
            return i;
    }
    return -1;
}

int SelectComboItem(QComboBox *combo, const QString &text)
{
    const int index = FindComboItem(combo, text);
    if (index >= 0)
        combo->setCurrentIndex(index);
    return index;
}

int ShowMessageBox(QWidget *owner, const QString &text, const QString &caption, unsigned flags)
{
    // Nobody is there to answer: the box takes its default button, and its
    // text goes to the run that reports it.
    if (UnattendedRun::isActive()) {
        UnattendedRun::noteMessage(text);
        switch (flags & 0x0F) {
        case MbYesNo:
        case MbYesNoCancel:
            return IdYes;
        default:
            return IdOk;
        }
    }
    QMessageBox box(owner ? owner : QApplication::activeWindow());
    box.setWindowTitle(caption.isEmpty() ? QGuiApplication::applicationDisplayName() : caption);
    box.setText(text);
    switch (flags & 0xF0) {
    case MbIconError: box.setIcon(QMessageBox::Critical); break;
    case MbIconQuestion: box.setIcon(QMessageBox::Question); break;
    case MbIconExclamation: box.setIcon(QMessageBox::Warning); break;
    case MbIconInformation: box.setIcon(QMessageBox::Information); break;
    default: break;
    }
    struct Choice
    {
        QMessageBox::StandardButton button;
        int result;
    };
    std::vector<Choice> choices;
    switch (flags & 0x0F) {
    case MbOkCancel: choices = {{QMessageBox::Ok, IdOk}, {QMessageBox::Cancel, IdCancel}}; break;
    case MbYesNoCancel:
        choices = {{QMessageBox::Yes, IdYes}, {QMessageBox::No, IdNo}, {QMessageBox::Cancel, IdCancel}};
        break;
    case MbYesNo: choices = {{QMessageBox::Yes, IdYes}, {QMessageBox::No, IdNo}}; break;
    default: choices = {{QMessageBox::Ok, IdOk}}; break;
    }
    for (const Choice &choice : choices)
        box.addButton(choice.button);
    box.setDefaultButton(choices.front().button);
    const auto pressed = static_cast<QMessageBox::StandardButton>(box.exec());
    for (const Choice &choice : choices) {
        if (choice.button == pressed)
            return choice.result;
    }
    // Closing a box without Cancel counts as its only or negative answer.
    return choices.size() == 1 ? IdOk : (flags & 0x0F) == MbYesNo ? IdNo : IdCancel;
}

int ShowExclamationBox(const QString &text, const QString &caption, QWidget *owner, unsigned flags)
{
    return ShowMessageBox(owner, text, caption, flags | MbIconExclamation);
}

bool ReadLoomhouseFlag(const std::string &name, bool fallback)
{
    const std::string value
        = readUserRegistryString("Software\\Quenbry Inc.\\VYR Loomhouse\\Settings", name, fallback ? "yes" : "no");
    return equalIgnoringAsciiCase(value, "true") || equalIgnoringAsciiCase(value, "yes");
}

bool IsSourceFeatureTypeEditingAllowed()
{
    return ReadLoomhouseFlag("Allow Source Feature Type Editing", false);
}

} // namespace vyr
