// The token scheme shared by the WWJD and user-string encodings, and the WWJD
// encoding itself.
//
// Encoding turns any text into one that holds no blank, quote, apostrophe,
// bracket of any kind, comma, semicolon, dollar, at sign, ampersand, slash,
// backslash, no control character 7..13 and no byte above 127: a character
// of the token table becomes "<" + name + ">", a UTF-16 unit above 127
// becomes "<u" + four lower-case hex digits + ">", anything else stays.
// Decoding reverses it and carries unknown or unterminated tokens through
// unchanged; it never fails.
#ifndef VYR_UTIL_TOKENCODEC_H
#define VYR_UTIL_TOKENCODEC_H

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "util/stringconverter.h"

namespace vyr {

struct CharacterToken
{
    std::string_view name;
    char character;
};

// The token table, in the order the decoder compares the names.
inline constexpr std::array<CharacterToken, 25> kCharacterTokens{{
    {"lt", '<'},        {"gt", '>'},         {"quote", '"'},      {"amp", '&'},         {"backslash", '\\'},
    {"solidus", '/'},   {"apos", '\''},      {"dollar", '$'},     {"at", '@'},          {"space", ' '},
    {"comma", ','},     {"openparen", '('},  {"closeparen", ')'}, {"openbracket", '['}, {"closebracket", ']'},
    {"opencurly", '{'}, {"closecurly", '}'}, {"semicolon", ';'},  {"lf", '\n'},         {"cr", '\r'},
    {"tab", '\t'},      {"bell", '\a'},      {"backspace", '\b'}, {"verttab", '\v'},    {"formfeed", '\f'},
}};

// UTF-16 text to tokens: pure ASCII except bytes 0-6, 14-31 and 127, which
// pass unchanged.
std::string encodeTokens(std::u16string_view wide);

// Tokens back to characters. The narrow form keeps the low byte of each
// character; the wide form gives UTF-16, where a raw byte above 127 of the
// input (which the encoder never produces) becomes U+DC00 + byte so that it
// comes out of the converter as the very same byte.
std::string decodeTokens(std::string_view text);
std::u16string decodeTokensWide(std::string_view text);

// Resolves "\\" and "\uXXXX" escapes of the legacy "<u>" form into UTF-16;
// other bytes become one unit each by zero extension.
std::u16string expandUnicodeEscapes(std::string_view text);

// The encoding and decoding steps that both encodings share, for text in
// the given code page (0: the narrow code page, 65001: UTF-8). Decoding
// understands three forms: the legacy "<u>" prefix followed by tokens and
// "\uXXXX" escapes, text holding "<u" tokens (decoded through UTF-16), and
// text with named tokens only (decoded byte for byte).
std::string encodeTokenText(std::string_view text, std::uint32_t codePage);
std::string decodeTokenText(std::string_view text, std::uint32_t codePage);

// Whether `text` is of the legacy "<u>" form.
bool isLegacyTokenText(std::string_view text);

// A change to the UTF-16 form of a text before it is encoded, made piece by
// piece: `units` is the next piece, `last` whether it ends the text; `carry`
// starts at 0 and keeps what the rewrite left over for the next piece.
using WideRewrite = void (*)(std::u16string &units, bool last, char16_t &carry);
std::string encodeTokenText(std::string_view text, std::uint32_t codePage, WideRewrite rewrite);

// Whether every byte below 128 of a text in the code page is the ASCII
// character of that value, wherever it stands (not so in code pages whose
// two-byte characters may end in such a byte).
bool asciiIsItselfIn(std::uint32_t codePage);

// The WWJD encoding of narrow-code-page text, and its decoding.
std::string encodeWWJD(std::string_view text);
std::string decodeWWJD(std::string_view text);

} // namespace vyr

#endif // VYR_UTIL_TOKENCODEC_H
