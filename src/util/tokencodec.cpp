#include "util/tokencodec.h"

#include "util/transcoder_p.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <optional>

namespace vyr {
namespace {

constexpr char kHexDigits[] = "0123456789abcdef";
constexpr std::size_t kUnicodeTokenLength = 7; // "<u" + four digits + ">"

// The encoding of each ASCII character in a fixed slot, so the encoder can
// copy a whole slot without looking at the length first.
struct EncodedAscii
{
    char bytes[16];
    unsigned char length;
};

constexpr std::array<EncodedAscii, 128> kEncodedAscii = [] {
    std::array<EncodedAscii, 128> table{};
    for (std::size_t c = 0; c < table.size(); ++c) {
        table[c].bytes[0] = static_cast<char>(c);
        table[c].length = 1;
    }
    for (const CharacterToken &row : kCharacterTokens) {
        EncodedAscii &slot = table[static_cast<unsigned char>(row.character)];
        slot.bytes[0] = '<';
        for (std::size_t i = 0; i < row.name.size(); ++i)
            slot.bytes[i + 1] = row.name[i];
        slot.bytes[row.name.size() + 1] = '>';
        slot.length = static_cast<unsigned char>(row.name.size() + 2);
    }
    return table;
}();

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

// The slot of `token` when it is a name; null otherwise. Names are
// distinct, so this is the first equal name in table order.
const NameSlot *namedToken(std::string_view token)
{
    if (token.empty() || token.size() > 16)
        return nullptr;
    const NameSlot &slot = kNameSlotTable[nameSlot(token.size(), static_cast<unsigned char>(token.front()),
                                                   static_cast<unsigned char>(token.back()))];
    return slot.length == token.size() && slot.name == PackedName::of(token) ? &slot : nullptr;
}

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

// Word-at-a-time byte search. bytesEqual() marks with the high bit each
// byte of `word` equal to the byte `pattern` repeats (bytes after the first
// match may be marked falsely, so only the lowest mark counts); byteMask()
// gathers those marks into one bit per byte.
constexpr std::uint64_t kOnes = 0x0101010101010101ULL;
constexpr std::uint64_t kHighBits = 0x8080808080808080ULL;

inline std::uint64_t bytesEqual(std::uint64_t word, std::uint64_t pattern)
{
    const std::uint64_t x = word ^ pattern;
    return (x - kOnes) & ~x & kHighBits;
}

inline unsigned byteMask(std::uint64_t marks)
{
    return static_cast<unsigned>((marks * 0x02040810204081ULL) >> 56);
}

// The offset of the first byte equal to `pattern`'s in the 16 bytes at
// `bytes`, 16 when there is none; no branch.
inline std::size_t firstOf16(const char *bytes, std::uint64_t pattern)
{
    std::uint64_t low, high;
    std::memcpy(&low, bytes, 8);
    std::memcpy(&high, bytes + 8, 8);
    const unsigned mask = byteMask(bytesEqual(low, pattern)) | byteMask(bytesEqual(high, pattern)) << 8 | 1u << 16;
    return static_cast<std::size_t>(__builtin_ctz(mask));
}

// The offset of the first `wanted` byte at or after `from`, or the text's
// size; eight bytes a step, since most runs between tokens are a few words
// long and a branch per byte costs more than the arithmetic.
std::size_t findByte(std::string_view text, std::size_t from, char wanted)
{
    const std::uint64_t pattern = kOnes * static_cast<unsigned char>(wanted);
    std::size_t i = from;
    for (; i + 16 <= text.size(); i += 16) {
        if (const std::size_t at = firstOf16(text.data() + i, pattern); at < 16)
            return i + at;
    }
    while (i < text.size() && text[i] != wanted)
        ++i;
    return i;
}

// The value of exactly four hex digits; nothing when one is not a hex digit.
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

// What one token decodes to.
struct Token
{
    enum class Kind {
        Character,    // `value`
        Nothing,      // "<u>", "<u0000>" and "<uXXXX>" that reads as 0
        Verbatim,     // an unknown token: its text, brackets and all
        Unterminated, // "<" with no ">" after it: the rest of the text
    };
    Kind kind;
    unsigned value = 0;
    std::size_t end = 0; // offset after the token
};

// Reads the token whose "<" is at `open`, whatever it is.
Token readToken(std::string_view text, std::size_t open)
{
    const std::size_t close = findByte(text, open + 1, '>');
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
    const std::size_t length = firstOf16(text.data() + open + 1, kOnes * '>');
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

// The decoder's output: bytes (keeping the low byte of each character) or
// UTF-16 units, written through a pointer into room made ahead.
template <typename Unit>
class DecodedUnits
{
public:
    explicit DecodedUnits(std::size_t room) : units_(room, 0), at_(units_.data()), end_(at_ + room) {}

    void raw(std::string_view bytes)
    {
        makeRoom(bytes.size());
        for (const char c : bytes)
            *at_++ = unitOf(static_cast<unsigned char>(c));
    }

    void character(unsigned value)
    {
        makeRoom(1);
        *at_++ = static_cast<Unit>(value);
    }

    // Copies the bytes from `from` up to the next "<" (or the end) and
    // returns where that is. Sixteen bytes a step, all stored before the
    // "<" among them is looked for, so that a short run between tokens
    // costs no data-dependent branch.
    [[gnu::always_inline]] std::size_t copyUntilToken(std::string_view text, std::size_t from)
    {
        std::size_t i = from;
        while (i + 16 <= text.size()) {
            makeRoom(16);
            store16(text.data() + i, at_);
            const std::size_t run = firstOf16(text.data() + i, kOnes * '<');
            at_ += run;
            i += run;
            if (run < 16)
                return i;
        }
        for (; i < text.size() && text[i] != '<'; ++i)
            character(unitOf(static_cast<unsigned char>(text[i])));
        return i;
    }

    std::basic_string_view<Unit> view() const { return {units_.data(), size()}; }
    void clear() { at_ = units_.data(); }

    std::basic_string<Unit> take() &&
    {
        units_.resize(size());
        return std::move(units_);
    }

private:
    // Stores the units of 16 bytes at once.
    static void store16(const char *bytes, Unit *units)
    {
        if constexpr (sizeof(Unit) == 1) {
            std::memcpy(units, bytes, 16);
        } else {
            using Bytes = unsigned char __attribute__((vector_size(16)));
            using Halves = unsigned char __attribute__((vector_size(8)));
            using Units = unsigned short __attribute__((vector_size(16)));
            Bytes all;
            std::memcpy(&all, bytes, 16);
            const Halves low = {all[0], all[1], all[2], all[3], all[4], all[5], all[6], all[7]};
            const Halves high = {all[8], all[9], all[10], all[11], all[12], all[13], all[14], all[15]};
            Units first = __builtin_convertvector(low, Units);
            Units second = __builtin_convertvector(high, Units);
            first += (first >> 7) * static_cast<unsigned short>(kEscapedByteBase);
            second += (second >> 7) * static_cast<unsigned short>(kEscapedByteBase);
            std::memcpy(units, &first, 16);
            std::memcpy(units + 8, &second, 16);
        }
    }

    static Unit unitOf(unsigned char byte)
    {
        if constexpr (sizeof(Unit) == 1)
            return static_cast<Unit>(byte);
        else // a byte above 127 is no character here: kept as its byte
            return static_cast<Unit>(byte + (byte >> 7) * kEscapedByteBase);
    }

    std::size_t size() const { return static_cast<std::size_t>(at_ - units_.data()); }

    [[gnu::always_inline]] void makeRoom(std::size_t count)
    {
        if (static_cast<std::size_t>(end_ - at_) < count)
            grow(count);
    }

    [[gnu::noinline]] void grow(std::size_t count)
    {
        const std::size_t used = size();
        units_.resize(std::max(used + count, units_.size() * 2));
        at_ = units_.data() + used;
        end_ = units_.data() + units_.size();
    }

    std::basic_string<Unit> units_;
    Unit *at_;
    Unit *end_;
};

// Decodes `text` into `out`, calling `atBoundary(out)` between tokens.
template <typename Output, typename AtBoundary>
void decodeTokensInto(std::string_view text, Output &out, AtBoundary atBoundary)
{
    const std::size_t size = text.size();
    std::size_t i = 0;
    while (i < size) {
        const std::size_t open = out.copyUntilToken(text, i);
        if (open == size)
            return;
        if (const auto common = readCommonToken(text, open)) {
            out.character(common->value);
            i = common->end;
            atBoundary(out);
            continue;
        }
        const Token token = readToken(text, open);
        switch (token.kind) {
        case Token::Kind::Character: out.character(token.value); break;
        case Token::Kind::Nothing: break;
        case Token::Kind::Verbatim:
        case Token::Kind::Unterminated: out.raw(text.substr(open, token.end - open)); break;
        }
        i = token.end;
        atBoundary(out);
    }
}

constexpr auto kNoBoundary = [](auto &) {};

// Large texts are converted in pieces of about this many characters, so
// the UTF-16 form in between stays small and in cache.
constexpr std::size_t kPiece = 16 * 1024;

void appendTokens(std::u16string_view wide, std::string &out);

std::string encodeThrough(const Transcoder &transcoder, std::string_view text)
{
    std::string out;
    out.reserve(text.size() + text.size() / 4);
    std::u16string wide;
    const std::size_t wanted = transcoder.convertsInPieces() ? kPiece : text.size();
    while (!text.empty()) {
        const std::size_t end = std::max<std::size_t>(transcoder.pieceEnd(text, wanted), 1);
        wide.clear();
        transcoder.appendWide(text.substr(0, end), wide);
        appendTokens(wide, out);
        text.remove_prefix(end);
    }
    return out;
}

std::string decodeWideThrough(const Transcoder &transcoder, std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    if (!transcoder.convertsInPieces()) {
        DecodedUnits<char16_t> wide(text.size());
        decodeTokensInto(text, wide, kNoBoundary);
        transcoder.appendNarrow(wide.view(), out);
        return out;
    }
    DecodedUnits<char16_t> piece(std::min(text.size(), kPiece + 64));
    decodeTokensInto(text, piece, [&](DecodedUnits<char16_t> &units) {
        const std::u16string_view done = units.view();
        if (done.size() < kPiece || (done.back() >= 0xD800 && done.back() <= 0xDBFF))
            return;
        transcoder.appendNarrow(done, out);
        units.clear();
    });
    transcoder.appendNarrow(piece.view(), out);
    return out;
}

void appendTokens(std::u16string_view wide, std::string &out)
{
    // Sized exactly first: growing the result as it goes costs more than the
    // extra pass. The slack lets every ASCII character copy its whole slot.
    std::size_t size = 0;
    for (const char16_t unit : wide)
        size += unit < 128 ? kEncodedAscii[unit].length : kUnicodeTokenLength;
    const std::size_t start = out.size();
    out.resize(start + size + sizeof(EncodedAscii::bytes));
    char *at = out.data() + start;
    for (const char16_t unit : wide) {
        if (unit < 128) {
            const EncodedAscii &slot = kEncodedAscii[unit];
            std::memcpy(at, slot.bytes, sizeof slot.bytes);
            at += slot.length;
        } else {
            const char token[kUnicodeTokenLength] = {'<',
                                                     'u',
                                                     kHexDigits[unit >> 12],
                                                     kHexDigits[(unit >> 8) & 0xF],
                                                     kHexDigits[(unit >> 4) & 0xF],
                                                     kHexDigits[unit & 0xF],
                                                     '>'};
            std::memcpy(at, token, sizeof token);
            at += sizeof token;
        }
    }
    out.resize(start + size);
}

} // namespace

std::string encodeTokens(std::u16string_view wide)
{
    std::string out;
    appendTokens(wide, out);
    return out;
}

std::string decodeTokens(std::string_view text)
{
    DecodedUnits<char> out(text.size());
    decodeTokensInto(text, out, kNoBoundary);
    return std::move(out).take();
}

std::u16string decodeTokensWide(std::string_view text)
{
    DecodedUnits<char16_t> out(text.size());
    decodeTokensInto(text, out, kNoBoundary);
    return std::move(out).take();
}

std::u16string expandUnicodeEscapes(std::string_view text)
{
    std::u16string out;
    out.reserve(text.size());
    const std::size_t size = text.size();
    for (std::size_t i = 0; i < size; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte != '\\') {
            out.push_back(byte);
            continue;
        }
        if (i + 1 < size && text[i + 1] == '\\') {
            out.push_back(u'\\');
            ++i;
            continue;
        }
        if (i + 5 < size && text[i + 1] == 'u') {
            if (auto value = fourHexDigits(text.substr(i + 2, 4))) {
                out.push_back(static_cast<char16_t>(*value));
                i += 5;
                continue;
            }
        }
        out.push_back(u'\\');
    }
    return out;
}

std::string encodeTokenText(std::string_view text, std::uint32_t codePage)
{
    const Transcoder *transcoder = transcoderFor(codePage);
    return transcoder ? encodeThrough(*transcoder, text) : std::string();
}

std::string decodeTokenText(std::string_view text, std::uint32_t codePage)
{
    constexpr std::string_view kLegacyPrefix = "<u>";
    const Transcoder *transcoder = transcoderFor(codePage);
    if (text.size() > kLegacyPrefix.size() && text.starts_with(kLegacyPrefix)) {
        std::string out;
        if (transcoder)
            transcoder->appendNarrow(expandUnicodeEscapes(decodeTokens(text.substr(kLegacyPrefix.size()))), out);
        return out;
    }
    if (text.find("<u") != std::string_view::npos)
        return transcoder ? decodeWideThrough(*transcoder, text) : std::string();
    return decodeTokens(text);
}

std::string encodeWWJD(std::string_view text)
{
    return encodeTokenText(text, kAnsiCodePage);
}

std::string decodeWWJD(std::string_view text)
{
    return decodeTokenText(text, kAnsiCodePage);
}

} // namespace vyr
