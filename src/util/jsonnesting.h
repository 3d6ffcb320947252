// A guard for JSON text from strangers. The JSON library reads and frees
// nested values by recursion, so a file of 100,000 opening brackets would
// run the stack out; such a text is turned away before it is parsed. No
// file this system writes nests more than a few levels.
#ifndef VYR_UTIL_JSONNESTING_H
#define VYR_UTIL_JSONNESTING_H

#include <optional>
#include <string>
#include <string_view>

namespace vyr {

constexpr int kMostJsonNesting = 256;

// Why `text` must not be parsed: its arrays and objects nest deeper than
// `most` levels (brackets inside strings do not count). Nothing when it may.
// Says nothing about whether the text is otherwise valid JSON.
std::optional<std::string> refuseDeepJson(std::string_view text, int most = kMostJsonNesting);

} // namespace vyr

#endif // VYR_UTIL_JSONNESTING_H
