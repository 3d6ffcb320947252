#include "util/usercodec.h"

#include "util/stringconverter.h"
#include "util/tokencodec.h"

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

std::string resolveBackslashEscapes(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size())
            out.push_back(characterOfEscape(text[++i]));
        else
            out.push_back(text[i]);
    }
    return out;
}

std::string writeBackslashEscapes(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        if (const char letter = escapeOfCharacter(c)) {
            out.push_back('\\');
            out.push_back(letter);
        } else {
            out.push_back(c);
        }
    }
    return out;
}

} // namespace

std::string encodeUserString(std::string_view text)
{
    return encodeTokenText(resolveBackslashEscapes(ansiToUtf8(text)), kUtf8CodePage);
}

std::string decodeUserString(std::string_view text)
{
    const std::string decoded = decodeTokenText(ansiToUtf8(text), kUtf8CodePage);
    return utf8ToAnsi(writeBackslashEscapes(decoded));
}

} // namespace vyr
