// Letter case of ASCII text. Bytes above 127 are left alone: in the
// multi-byte code pages they may be halves of characters.
#ifndef VYR_UTIL_ASCIITEXT_H
#define VYR_UTIL_ASCIITEXT_H

#include <algorithm>
#include <string>
#include <string_view>

namespace vyr {

inline char upperAscii(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

inline char lowerAscii(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

inline std::string upperAscii(std::string_view text)
{
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), [](char c) { return upperAscii(c); });
    return upper;
}

inline bool equalIgnoringAsciiCase(std::string_view a, std::string_view b)
{
    return a.size() == b.size()
        && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return lowerAscii(x) == lowerAscii(y); });
}

// `text` without leading and trailing blanks, tabs and carriage returns.
inline std::string_view trimWhitespace(std::string_view text)
{
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

} // namespace vyr

#endif // VYR_UTIL_ASCIITEXT_H
