// A GUI definition file as the prompter reads it, and the answer file it
// writes back.
//
// Line forms read (one per line; unknown ones are skipped):
//   GUI TITLE <title>
//   GUI HELP "<help reference>"
//   DEFAULT_MACRO <key> <value>
//   GUI [OPTIONAL] LISTBOX <key> <choices> <prompt>      several of the choices
//   GUI [OPTIONAL] CHOICE <key> <choices> <prompt>       one of the choices
//   GUI DIVIDER                                          a separating line
//   GUI [OPTIONAL] SELECTION_BOX_ONLY <choices> <label>  several of the choices;
//                                                        its key is SELECTION_BOX_ONLY
//   GUI [OPTIONAL] ICONPICKONLY <key>                    an icon file
// Choices are values joined with "%" (util/macrovalues.h). A list box default
// is a blank-separated list of values, double quotes grouping.
//
// Answer file, in the order of the prompts: for a list box, choice or icon
// pick the key on one line and the value on the next (a list box's chosen
// values separated by blanks, each quoted where it holds one; a choice as it
// was written among the choices); for a selection box each chosen value on a
// line of its own.
#ifndef VYR_SERVICES_GUIDEFINITION_H
#define VYR_SERVICES_GUIDEFINITION_H

#include "util/listpacking.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vyr::services {

enum class GuiPromptKind { ListBox, Choice, Divider, SelectionBox, IconPick };

struct GuiPrompt
{
    GuiPromptKind kind = GuiPromptKind::Divider;
    std::string key;
    StringList choices; // without their quotes
    StringList rawChoices; // as written, for the answer of a choice
    std::string prompt;
    bool optional = false;
};

struct GuiDefinition
{
    std::string title;
    std::string help;
    std::vector<GuiPrompt> prompts;
    std::map<std::string, std::string> defaults; // key to value as written
};

GuiDefinition parseGuiDefinition(std::string_view text);

// The values a prompt starts with, from its default: the chosen choices of a
// list box or selection box, the one choice (or none) of a choice, the file
// of an icon pick.
StringList defaultValues(const GuiDefinition &definition, const GuiPrompt &prompt);

// The answer file for `answers`, which hold for each key the chosen values
// (without quotes). Keys without an answer are written with an empty value.
std::string writeGuiAnswers(const GuiDefinition &definition, const std::map<std::string, StringList> &answers);

} // namespace vyr::services

#endif // VYR_SERVICES_GUIDEFINITION_H
