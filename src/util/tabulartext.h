// Rows of text as spreadsheets put them on the clipboard: fields separated
// by tabs, records ended by a line break (LF, CRLF or a lone CR). A field
// that holds a tab, a line break or a double quote is written in double
// quotes with its quotes doubled, and read back the same way.
//
// Reading never fails: an unclosed quote runs to the end of the text, and
// text after a closing quote belongs to the same field. Time and memory are
// linear in the text's length.
#ifndef VYR_UTIL_TABULARTEXT_H
#define VYR_UTIL_TABULARTEXT_H

#include "util/listpacking.h"

#include <string>
#include <string_view>
#include <vector>

namespace vyr {

using TextTable = std::vector<StringList>;

// The records of `text`, each a list of at least one field. The empty text
// has no records; a last line break ends the last record rather than
// starting another.
TextTable parseTabularText(std::string_view text);

// Each record's fields joined by tabs and ended by a line feed, quoted
// where reading would otherwise split them.
std::string formatTabularText(const TextTable &table);

} // namespace vyr

#endif // VYR_UTIL_TABULARTEXT_H
