#include "util/tokenreader_p.h"

#include <algorithm>
#include <cstdio>

namespace vyr::tokens {

std::optional<unsigned> fourHexDigits(std::string_view digits)
{
    unsigned value = 0;
    for (char c : digits.substr(0, 4)) {
        const unsigned digit = kHexDigitValue[static_cast<unsigned char>(c)];
        if (digit > 0xF)
            return std::nullopt;
        value = value * 16 + digit;
    }
    return value;
}

BracketMarks lastBracketMarks(std::string_view text, std::size_t start)
{
    const std::size_t count = text.size() - start;
    if (text.size() >= kBracketBlock) {
        // The end of the text's last 64 bytes.
        const char *last = text.data() + text.size() - kBracketBlock;
        return {bytescan::marksOf64(last, '<') >> (kBracketBlock - count),
                bytescan::marksOf64(last, '>') >> (kBracketBlock - count)};
    }
    return {bytescan::marksOfFirst(text.data() + start, count, '<'),
            bytescan::marksOfFirst(text.data() + start, count, '>')};
}

namespace {

// The slot of `token` when it is a name; null otherwise. Names are
// distinct, so this is the first equal name in table order.
const NameSlot *namedToken(std::string_view token)
{
    if (token.empty() || token.size() > 16)
        return nullptr;
    const PackedName name = PackedName::of(token);
    const NameSlot &slot = kNameSlotTable[nameSlot(name)];
    return slot.length == token.size() && slot.name == name ? &slot : nullptr;
}

// The value of the four bytes after "u" in a "<uXXXX>" token, read as the
// C library's "%4x" conversion reads them (so " 1f", "+0ff" and "0x1" count
// too); 0 when nothing can be read.
unsigned readTokenHex(std::string_view digits)
{
    if (auto value = fourHexDigits(digits))
        return *value;
    char buffer[5] = {};
    std::memcpy(buffer, digits.data(), std::min<std::size_t>(digits.size(), 4));
    unsigned scanned = 0;
    if (std::sscanf(buffer, "%4x", &scanned) != 1)
        return 0;
    return scanned;
}

} // namespace

Token readToken(std::string_view text, std::size_t open, std::size_t close)
{
    if (close == text.size())
        return {Token::Kind::Unterminated, 0, text.size()};
    const std::string_view token = text.substr(open + 1, close - open - 1);
    if (const NameSlot *name = namedToken(token))
        return {Token::Kind::Character, static_cast<unsigned char>(name->character), close + 1};
    if (token == "u")
        return {Token::Kind::Nothing, 0, close + 1};
    if (token.size() == 5 && token[0] == 'u') {
        const unsigned value = readTokenHex(token.substr(1)) & 0xFFFF;
        return {value ? Token::Kind::Character : Token::Kind::Nothing, value, close + 1};
    }
    return {Token::Kind::Verbatim, 0, close + 1};
}

} // namespace vyr::tokens
