#include "util/usercodec.h"

#include "util/stringconverter.h"
#include "util/tokencodec.h"

#include <string>

namespace vyr {
namespace {

char characterOfEscape(char letter)
{
    for (const BackslashEscape &escape : kBackslashEscapes) {
        if (escape.letter == letter)
            return escape.character;
    }
    return letter;
}

// The escape letter of a character, or 0 when it is written as itself.
char escapeOfCharacter(char character)
{
    for (const BackslashEscape &escape : kBackslashEscapes) {
        if (escape.character == character)
            return escape.letter;
    }
    return 0;
}

// Escapes are read in the UTF-16 form, where a backslash unit is always
// one, whatever the code page makes of the byte 92 inside its two-byte
// characters. A backslash that ends a piece waits in `carry` for its letter.
void resolveBackslashEscapes(std::u16string &units, bool last, char16_t &carry)
{
    const auto escaped = [](char16_t letter) {
        return letter < 128 ? static_cast<char16_t>(characterOfEscape(static_cast<char>(letter))) : letter;
    };
    std::size_t out = 0;
    std::size_t i = 0;
    if (carry && !units.empty()) {
        units[out++] = escaped(units[i++]);
        carry = 0;
    }
    for (; i < units.size(); ++i) {
        if (units[i] == u'\\') {
            if (i + 1 < units.size()) {
                units[out++] = escaped(units[++i]);
                continue;
            }
            if (!last) {
                carry = u'\\';
                continue;
            }
        }
        units[out++] = units[i];
    }
    units.resize(out);
}

// Writes the escapes into `text` in place, growing it only by what they add.
void writeBackslashEscapesInPlace(std::string &text)
{
    std::size_t added = 0;
    for (const char c : text)
        added += escapeOfCharacter(c) != 0;
    if (added == 0)
        return;
    std::size_t from = text.size();
    text.resize(from + added);
    std::size_t to = text.size();
    while (from > 0) {
        const char c = text[--from];
        if (const char letter = escapeOfCharacter(c)) {
            text[--to] = letter;
            text[--to] = '\\';
        } else {
            text[--to] = c;
        }
    }
}

} // namespace

std::string encodeUserString(std::string_view text)
{
    return encodeTokenText(text, kAnsiCodePage, resolveBackslashEscapes);
}

std::string decodeUserString(std::string_view text)
{
    // Where the byte of a backslash or a control character can only be that
    // character, the escapes are written into the decoded text itself. The
    // legacy form widens the bytes of its UTF-8 one by one, so it keeps
    // the way through UTF-8.
    if (asciiIsItselfIn(kAnsiCodePage) && !isLegacyTokenText(text)) {
        std::string decoded = decodeTokenText(text, kAnsiCodePage);
        writeBackslashEscapesInPlace(decoded);
        return decoded;
    }
    std::string decoded = decodeTokenText(ansiToUtf8(text), kUtf8CodePage);
    writeBackslashEscapesInPlace(decoded);
    return utf8ToAnsi(decoded);
}

} // namespace vyr
