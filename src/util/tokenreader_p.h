// Reading the tokens of encoded text: "<" + name + ">" for a character of
// the token table, "<uXXXX>" for a UTF-16 unit, anything else carried
// through as it stands.
#ifndef VYR_UTIL_TOKENREADER_P_H
#define VYR_UTIL_TOKENREADER_P_H

#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

#include "util/bytescan_p.h"
#include "util/tokencodec.h"

namespace vyr::tokens {

// The token names by a perfect hash of (length, first byte, last byte):
// each name has a slot of its own, so a token is compared with one name.
constexpr std::size_t kNameSlots = 64;

constexpr std::size_t nameSlot(std::size_t length, unsigned char first, unsigned char last)
{
    return (length + first * 23u + last * 37u) % kNameSlots;
}

// A name of at most 16 bytes as two little-endian words, zero-padded, so
// that comparing a token with a name is two compares.
struct PackedName
{
    std::uint64_t low = 0;
    std::uint64_t high = 0;

    static constexpr PackedName of(std::string_view name)
    {
        PackedName packed;
        for (std::size_t i = 0; i < name.size() && i < 16; ++i) {
            const auto byte = static_cast<std::uint64_t>(static_cast<unsigned char>(name[i]));
            (i < 8 ? packed.low : packed.high) |= byte << (8 * (i % 8));
        }
        return packed;
    }

    friend bool operator==(const PackedName &, const PackedName &) = default;
};

struct NameSlot
{
    PackedName name;
    std::size_t length = 0; // 0: no name has this slot
    char character = 0;
};

constexpr std::array<NameSlot, kNameSlots> kNameSlotTable = [] {
    std::array<NameSlot, kNameSlots> slots{};
    for (const CharacterToken &row : kCharacterTokens) {
        if (row.name.size() > 16)
            throw "a token name is longer than two words";
        NameSlot &slot = slots[nameSlot(row.name.size(), static_cast<unsigned char>(row.name.front()),
                                        static_cast<unsigned char>(row.name.back()))];
        if (slot.length)
            throw "two token names share a slot: choose other factors in nameSlot()";
        slot = {PackedName::of(row.name), row.name.size(), row.character};
    }
    return slots;
}();

// The value of each byte as a hex digit; 0x10 for a byte that is none.
constexpr std::array<unsigned char, 256> kHexDigitValue = [] {
    std::array<unsigned char, 256> values{};
    values.fill(0x10);
    for (unsigned char c = 0; c < 10; ++c)
        values['0' + c] = c;
    for (unsigned char c = 0; c < 6; ++c) {
        values['a' + c] = static_cast<unsigned char>(10 + c);
        values['A' + c] = static_cast<unsigned char>(10 + c);
    }
    return values;
}();

// What one token decodes to.
struct Token
{
    enum class Kind {
        Character, // `value`
        Nothing, // "<u>", "<u0000>" and "<uXXXX>" that reads as 0
        Verbatim, // an unknown token: its text, brackets and all
        Unterminated, // "<" with no ">" after it: the rest of the text
    };
    Kind kind;
    unsigned value = 0;
    std::size_t end = 0; // offset after the token
};

// Reads the token whose "<" is at `open`, whatever it is.
Token readToken(std::string_view text, std::size_t open);

// The offset of the first `wanted` byte at or after `from`, or the text's
// size.
std::size_t findByte(std::string_view text, std::size_t from, char wanted);

// The value of exactly four hex digits; nothing when one is not a hex digit.
std::optional<unsigned> fourHexDigits(std::string_view digits);

// Reads the token at `open` when it is of the kinds that make up almost all
// encoded text, a name or "<uXXXX>" with four hex digits for a character
// other than 0; nothing for any other token and near the end of the text,
// which readToken() then reads. Every such token fits in the 16 bytes after
// "<", so it is read a word at a time with no branch on the bytes: tokens
// come every few bytes, and mispredicted branches are what decoding costs.
[[gnu::always_inline]] inline std::optional<Token> readCommonToken(std::string_view text, std::size_t open)
{
    if (open + 17 > text.size())
        return std::nullopt;
    const std::size_t length = bytescan::firstOf16(text.data() + open + 1, '>');
    std::uint64_t low, high;
    std::memcpy(&low, text.data() + open + 1, 8);
    std::memcpy(&high, text.data() + open + 9, 8);
    if (length == 0 || length == 16)
        return std::nullopt;
    // Only the token's own bytes count.
    low &= length >= 8 ? ~std::uint64_t(0) : (std::uint64_t(1) << (8 * length)) - 1;
    high &= length <= 8 ? 0 : (std::uint64_t(1) << (8 * (length - 8))) - 1;

    const auto first = static_cast<unsigned char>(low);
    const auto last = static_cast<unsigned char>((length <= 8 ? low : high) >> (8 * ((length - 1) % 8)));
    const NameSlot &slot = kNameSlotTable[nameSlot(length, first, last)];
    const bool named = slot.length == length && slot.name == PackedName{low, high};

    const unsigned d1 = kHexDigitValue[(low >> 8) & 0xFF];
    const unsigned d2 = kHexDigitValue[(low >> 16) & 0xFF];
    const unsigned d3 = kHexDigitValue[(low >> 24) & 0xFF];
    const unsigned d4 = kHexDigitValue[(low >> 32) & 0xFF];
    const bool unicode = length == 5 && first == 'u' && ((d1 | d2 | d3 | d4) & 0x10) == 0;

    const unsigned value = unicode ? (d1 << 12 | d2 << 8 | d3 << 4 | d4) : static_cast<unsigned char>(slot.character);
    if (!(named || unicode) || value == 0)
        return std::nullopt;
    return Token{Token::Kind::Character, value, open + length + 2};
}

} // namespace vyr::tokens

#endif // VYR_UTIL_TOKENREADER_P_H
