// Reading the tokens of encoded text: "<" + name + ">" for a character of
// the token table, "<uXXXX>" for a UTF-16 unit, anything else carried
// through as it stands.
#ifndef VYR_UTIL_TOKENREADER_P_H
#define VYR_UTIL_TOKENREADER_P_H

#include <array>
#include <bit>
#include <cstdint>
#include <optional>
#include <string_view>

#include "util/bytescan_p.h"
#include "util/tokencodec.h"

namespace vyr::tokens {

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

// The token names by a perfect hash of their first eight bytes (which tell
// every two names apart): each name has a slot of its own, so a token is
// compared with one name, and finding it takes a multiply.
constexpr std::size_t kNameSlots = 64;

constexpr std::size_t nameSlot(const PackedName &name)
{
    return static_cast<std::size_t>((name.low * 0x863043d70a6be26dULL) >> 58);
}

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
        if (row.name.front() == 'u')
            throw "a token name begins with \"u\", as a character's number does";
        NameSlot &slot = slots[nameSlot(PackedName::of(row.name))];
        if (slot.length)
            throw "two token names share a slot: choose another multiplier in nameSlot()";
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

// For a token of each length up to 16, the bits of its bytes in the two
// words that hold it.
constexpr std::array<PackedName, 17> kTokenWordMasks = [] {
    std::array<PackedName, 17> masks{};
    for (std::size_t length = 0; length < masks.size(); ++length) {
        for (std::size_t i = 0; i < length; ++i)
            (i < 8 ? masks[length].low : masks[length].high) |= std::uint64_t(0xFF) << (8 * (i % 8));
    }
    return masks;
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

// The places of "<" and ">" among 64 bytes of a text, a bit for each byte,
// the first byte's the lowest.
struct BracketMarks
{
    std::uint64_t opens;
    std::uint64_t closes;
};

constexpr std::size_t kBracketBlock = 64;

// The marks of the block at the end of a text, shorter than a block.
BracketMarks lastBracketMarks(std::string_view text, std::size_t start);

// The marks of the block from `start`; bytes beyond the text's end are
// neither.
[[gnu::always_inline]] inline BracketMarks bracketMarks(std::string_view text, std::size_t start)
{
    if (text.size() - start < kBracketBlock) [[unlikely]]
        return lastBracketMarks(text, start);
    return {bytescan::marksOf64(text.data() + start, '<'), bytescan::marksOf64(text.data() + start, '>')};
}

// Whether the brackets marked alternate, "<" first: then, as the tokens
// of an encoded text do, the n-th "<" and the n-th ">" bound the n-th
// token (a "<" inside a token or a ">" outside one breaks it). Each
// bracket is told by the parity of the brackets up to it.
inline bool bracketsAlternate(const BracketMarks &marks)
{
    std::uint64_t odd = marks.opens | marks.closes;
    for (int shift = 1; shift < 64; shift *= 2)
        odd ^= odd << shift;
    return ((marks.opens & ~odd) | (marks.closes & odd)) == 0;
}

// The "<" and ">" of a text one at a time, found from the marks of the
// block that holds them: finding the next bracket costs a shift and a
// count on values at hand. Offsets must not go backwards.
class BracketScanner
{
public:
    explicit BracketScanner(std::string_view text)
        : text_(text)
    {}

    // The offset of the first "<" (">") at or after `from`, or the text's
    // size when there is none.
    std::size_t nextOpen(std::size_t from) { return next(from, marks_.opens); }
    std::size_t nextClose(std::size_t from) { return next(from, marks_.closes); }

private:
    // Most brackets are found in the block of the one before.
    [[gnu::always_inline]] std::size_t next(std::size_t from, const std::uint64_t &marks)
    {
        for (;;) {
            const std::size_t offset = from - blockStart_;
            if (offset < kBracketBlock) [[likely]] {
                if (const std::uint64_t ahead = marks >> offset)
                    return from + static_cast<std::size_t>(std::countr_zero(ahead));
                from = blockStart_ + kBracketBlock;
            }
            if (from >= text_.size())
                return text_.size();
            blockStart_ = from / kBracketBlock * kBracketBlock;
            marks_ = bracketMarks(text_, blockStart_);
        }
    }

    std::string_view text_;
    // Far from any offset: no block is marked yet.
    std::size_t blockStart_ = ~std::size_t(0) / 2;
    BracketMarks marks_{};
};

// Reads the token whose "<" is at `open` and whose first ">" after that is
// at `close` (the text's size when there is none), whatever it is.
Token readToken(std::string_view text, std::size_t open, std::size_t close);

// The value of exactly four hex digits; nothing when one is not a hex digit.
std::optional<unsigned> fourHexDigits(std::string_view digits);

// The bytes of a token of 1 to 15 bytes whose ">" is at `close`, read
// without going past that: for tokens near the end of a text, where the
// 16 bytes after "<" are not all there.
inline PackedName tokenNearEnd(std::string_view text, std::size_t open, std::size_t close)
{
    const std::size_t length = close - open - 1;
    if (close < 8) {
        PackedName name;
        for (std::size_t i = 0; i < length; ++i)
            name.low |= std::uint64_t(static_cast<unsigned char>(text[open + 1 + i])) << (8 * i);
        return name;
    }
    // The eight bytes before ">" hold the token's end.
    const std::uint64_t end = bytescan::loadWord(text.data() + close - 8);
    if (length <= 8)
        return {end >> (8 * (8 - length)), 0};
    return {bytescan::loadWord(text.data() + open + 1), end >> (8 * (16 - length))};
}

// Reads the token from `open` to `close` (as for readToken()) when it is of
// the kinds that make up almost all encoded text, a name or "<uXXXX>" with
// four hex digits for a character other than 0; nothing for any other
// token, which readToken() then reads. Every such token fits in the 16
// bytes after "<", so it is read a word at a time with no branch on the
// bytes: tokens come every few bytes, and mispredicted branches are what
// decoding costs. Near the end of the text the bytes are read so as not to
// go past it, so that short texts, all of whose tokens lie near their end,
// take the same way.
[[gnu::always_inline]] inline std::optional<Token> readCommonToken(std::string_view text, std::size_t open,
                                                                   std::size_t close)
{
    const std::size_t length = close - open - 1;
    if (close == text.size() || length - 1 >= 15)
        return std::nullopt;
    std::uint64_t low;
    std::uint64_t high;
    if (open + 17 <= text.size()) [[likely]] {
        low = bytescan::loadWord(text.data() + open + 1);
        high = bytescan::loadWord(text.data() + open + 9);
    } else {
        const PackedName near = tokenNearEnd(text, open, close);
        low = near.low;
        high = near.high;
    }
    // Only the token's own bytes count.
    low &= kTokenWordMasks[length].low;
    high &= kTokenWordMasks[length].high;

    // Both readings are made and one is chosen without a branch: names and
    // characters alternate at random, and a branch on which it is would
    // miss as often.
    const NameSlot &slot = kNameSlotTable[nameSlot({low, high})];
    const bool named = (slot.length == length) & (slot.name.low == low) & (slot.name.high == high);
    const unsigned d1 = kHexDigitValue[(low >> 8) & 0xFF];
    const unsigned d2 = kHexDigitValue[(low >> 16) & 0xFF];
    const unsigned d3 = kHexDigitValue[(low >> 24) & 0xFF];
    const unsigned d4 = kHexDigitValue[(low >> 32) & 0xFF];
    // No name begins with "u".
    const bool unicode = (length == 5) & (static_cast<unsigned char>(low) == 'u') & (((d1 | d2 | d3 | d4) & 0x10) == 0);
    const unsigned unicodeMask = 0u - unsigned(unicode);
    const unsigned value = ((d1 << 12 | d2 << 8 | d3 << 4 | d4) & unicodeMask)
        | (static_cast<unsigned char>(slot.character) & ~unicodeMask);
    if (!((named | unicode) & (value != 0)))
        return std::nullopt;
    return Token{Token::Kind::Character, value, close + 1};
}

} // namespace vyr::tokens

#endif // VYR_UTIL_TOKENREADER_P_H
