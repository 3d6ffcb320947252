// Packing a list of texts into one text and back.
//
// joinList/splitList are the plain form: pieces with a separator between
// them, no quoting, so no piece may hold the separator. csvJoin/csvSplit
// quote with double quotes where a piece holds a quote, the separator or a
// blank, so any list survives the trip - except the list of one empty text,
// which packs to the empty text and so unpacks to the empty list.
#ifndef VYR_UTIL_LISTPACKING_H
#define VYR_UTIL_LISTPACKING_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vyr {

using StringList = std::vector<std::string>;

// Separator 0 stands for the character with code 1.
std::string joinList(const StringList &list, char separator);

// Every piece between separators, empty ones included ("a," gives "a" and
// ""); the empty text gives the empty list. Separator 0 stands for code 1.
StringList splitList(std::string_view text, char separator);

// Joins the elements from index `first` on, each quoted where needed.
std::string csvJoin(const StringList &list, char separator, std::size_t first = 0);

// Splits a csvJoin text. Malformed quoting never fails: an unclosed quote
// runs to the end, and the character after a closing quote is taken as the
// separator whatever it is.
StringList csvSplit(std::string_view text, char separator);

} // namespace vyr

#endif // VYR_UTIL_LISTPACKING_H
