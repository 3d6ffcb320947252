// Values in GUI definition lines: the form in which choices, defaults and
// answers travel between the dialogs and the prompter.
//
// A value holding a blank is enclosed in double quotes (unless it already
// begins and ends with one), an empty value is written as two double quotes,
// and a list of values is joined with "%".
#ifndef VYR_UTIL_MACROVALUES_H
#define VYR_UTIL_MACROVALUES_H

#include "util/listpacking.h"

#include <string>
#include <string_view>

namespace vyr {

std::string quoteMacroValue(std::string_view value);

// The quoted values joined with "%", without trailing "%" signs: a last value
// that ends in "%" loses it.
std::string joinMacroValues(const StringList &values);

// The values of a joined text: cut at "%" outside double quotes, a piece
// that begins and ends with a double quote losing both (unless
// `keepQuotes`). The empty text is the empty list. Unbalanced quotes run to
// the end; nothing fails.
StringList splitMacroValues(std::string_view text, bool keepQuotes = false);

// The first token of `rest` (after any blanks), ending at the first blank
// outside double quotes; `rest` keeps what follows that blank.
std::string_view takeMacroToken(std::string_view &rest);

} // namespace vyr

#endif // VYR_UTIL_MACROVALUES_H
