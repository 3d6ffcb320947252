// The user-string encoding: the token scheme over UTF-8, which also reads
// C-style backslash escapes on the way in and writes them on the way out, so
// that a user can type "\t" for a tab. Only the control characters 7 to 13
// have escapes and tokens; 0 to 6, 14 to 31 and 127 pass through as they are.
#ifndef VYR_UTIL_USERCODEC_H
#define VYR_UTIL_USERCODEC_H

#include <array>
#include <string>
#include <string_view>

namespace vyr {

struct BackslashEscape
{
    char letter;
    char character;
};

// Escape letter to character, and back.
inline constexpr std::array<BackslashEscape, 8> kBackslashEscapes{{
    {'\\', '\\'},
    {'a', '\a'},
    {'b', '\b'},
    {'n', '\n'},
    {'r', '\r'},
    {'t', '\t'},
    {'v', '\v'},
    {'f', '\f'},
}};

// Encodes narrow-code-page text. A backslash takes the next character as
// an escape letter (an unknown letter stands for itself); a backslash at
// the very end stays a backslash. Escapes are read in characters: in
// UTF-8, the bytes of a broken sequence on either side of a backslash stay
// separate bytes, and in code pages of two-byte characters a second byte
// of 92 is part of its character, not a backslash.
std::string encodeUserString(std::string_view text);

// Decodes to narrow-code-page text, writing backslash and the control
// characters 7..13 as escapes.
std::string decodeUserString(std::string_view text);

} // namespace vyr

#endif // VYR_UTIL_USERCODEC_H
