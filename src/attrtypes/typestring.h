// The text form of an attribute data type: a name, an argument list in
// parentheses when there are arguments, and a suffix after a comma:
//   "char(30)", "number(10,2)", "date,local", "enum(\"a b\",c)".
//
// The list mode says how argument values are joined and split:
//   1     - the dialogs' form: comma-separated, quoted where a value holds a
//           comma, blank or double quote (csvJoin/csvSplit);
//   0     - the stored form of templates and schemas: each value WWJD-encoded,
//           joined with commas;
//   other - joined with commas, no quoting (writing only).
#ifndef VYR_ATTRTYPES_TYPESTRING_H
#define VYR_ATTRTYPES_TYPESTRING_H

#include "util/listpacking.h"

#include <optional>
#include <string>
#include <string_view>

namespace vyr {

class AttrType;

inline constexpr int kStoredListMode = 0;
inline constexpr int kDialogListMode = 1;

struct ParsedType
{
    std::string name;
    StringList values;
    std::string suffix;
};

// Reads a type string. The suffix is the text after the last comma when no
// comma or parenthesis follows it; an argument list is "(" after a non-empty
// name and ")" as the last character, and "()" holds one empty value. Text
// that has no argument list is all name.
ParsedType parseType(std::string_view text, int listMode);

// The suffix parseType reads from `text` (in any list mode), without
// reading the rest: a schema's types are scanned for their domains by the
// thousand.
std::string_view typeSuffix(std::string_view text);

// Why `text` is not a well-formed type string, or nothing when it is: every
// "(" is closed by a ")", nothing follows the argument list but a suffix,
// and in the dialog's list mode every quoted value is closed. parseType
// reads any text; this is for telling a person who typed one what is wrong.
std::optional<std::string> typeTextProblem(std::string_view text, int listMode);

// The type string of `type` in `listMode`.
std::string formatType(const AttrType &type, int listMode);

// The type string of a name, values and suffix in `listMode`.
std::string formatType(std::string_view name, const StringList &values, std::string_view suffix, int listMode);

} // namespace vyr

#endif // VYR_ATTRTYPES_TYPESTRING_H
