// GuiParameterLine: one "GUI" definition line of a format's per-feature-type
// parameters, read into its parts.
//
//   GUI [modifiers] type name [qualifier | choices] prompt...
//
// Modifiers, before the type only, in any order: OPTIONAL, WHOLE_LINE,
// DISABLED_ONLY (enabled only while a DISABLE parameter says Yes),
// ALWAYS_ENABLED (never disabled by one), FORCE_DEFS. File-like types
// (FILENAME, MULTIFILE, ESRI_LAYER) take one qualifier token, such as a file
// pattern; choice-taking types (CHOICE, LISTBOX, ATTR, the *_OR_ATTR and
// *_OR_CHOICE kinds ...) take one token of choices separated by "%". Tokens
// are separated by blanks; double quotes group (and are dropped), and \" is
// a quote.
#ifndef VYR_FTPROPS_GUIPARAMETERLINE_H
#define VYR_FTPROPS_GUIPARAMETERLINE_H

#include "util/listpacking.h"

#include <string>
#include <string_view>

namespace vyr {

struct GuiParameterLine
{
    std::string type;
    std::string name;
    bool optional = false;
    bool wholeLine = false;
    bool disabledOnly = false;
    bool alwaysEnabled = false;
    bool forceDefaults = false;
    StringList qualifiers;
    StringList choices;
    std::string prompt;
};

// The parts of a "GUI" line; every part empty or false when the line's first
// token is not "GUI" or its quotes do not balance. A line that ends early
// (such as "GUI DIVIDER") leaves the missing parts empty.
GuiParameterLine ParseParameterLine(std::string_view line);

bool isFileLikeGuiType(std::string_view type);
bool isChoiceTakingGuiType(std::string_view type);

} // namespace vyr

#endif // VYR_FTPROPS_GUIPARAMETERLINE_H
