// What an encoded text may hold: no blank, quote, apostrophe, bracket,
// comma, semicolon, dollar, at sign, ampersand, slash, backslash, control
// character 7..13 or byte above 127; "<" and ">" only around tokens.
#ifndef VYR_TESTS_ENCODEDTEXT_H
#define VYR_TESTS_ENCODEDTEXT_H

#include <string_view>

namespace vyr::testing {

// The offset of the first byte an encoded text may not hold there, or npos.
inline std::size_t firstForbiddenByte(std::string_view encoded)
{
    constexpr std::string_view kForbidden = " \"'()[]{},;$@&/\\\a\b\t\n\v\f\r";
    bool inToken = false;
    for (std::size_t i = 0; i < encoded.size(); ++i) {
        const char c = encoded[i];
        if (static_cast<unsigned char>(c) > 127 || kForbidden.find(c) != std::string_view::npos
            || (c == '<' && inToken) || (c == '>' && !inToken))
            return i;
        if (c == '<' || c == '>')
            inToken = c == '<';
    }
    return inToken ? encoded.size() : std::string_view::npos;
}

} // namespace vyr::testing

#endif // VYR_TESTS_ENCODEDTEXT_H
