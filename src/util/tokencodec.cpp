#include "util/tokencodec.h"

#include "util/bytescan_p.h"
#include "util/tokenreader_p.h"
#include "util/transcoder_p.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace vyr {
namespace {

using tokens::Token;

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

// The decoder's output: bytes (keeping the low byte of each character) or
// UTF-16 units, written through a pointer into room made ahead.
template <typename Unit>
class DecodedUnits
{
public:
    explicit DecodedUnits(std::size_t room)
        : units_(room, 0)
        , at_(units_.data())
        , end_(at_ + room)
    {}

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
            const std::size_t run = bytescan::firstOf16(text.data() + i, '<');
            copy16(text.data() + i, run);
            i += run;
            if (run < 16)
                return i;
        }
        for (; i < text.size() && text[i] != '<'; ++i)
            character(unitOf(static_cast<unsigned char>(text[i])));
        return i;
    }

    // Stores the units of the 16 bytes at `bytes` and keeps the first
    // `count` of them.
    [[gnu::always_inline]] void copy16(const char *bytes, std::size_t count)
    {
        makeRoom(16);
        store16(bytes, at_);
        at_ += count;
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

// Decodes `text` into `out`.
template <typename Output>
void decodeTokensInto(std::string_view text, Output &out)
{
    const std::size_t size = text.size();
    std::size_t i = 0;
    while (i < size) {
        const std::size_t open = out.copyUntilToken(text, i);
        if (open == size)
            return;
        if (const auto common = tokens::readCommonToken(text, open)) {
            out.character(common->value);
            i = common->end;
            continue;
        }
        const Token token = tokens::readToken(text, open);
        switch (token.kind) {
        case Token::Kind::Character: out.character(token.value); break;
        case Token::Kind::Nothing: break;
        case Token::Kind::Verbatim:
        case Token::Kind::Unterminated: out.raw(text.substr(open, token.end - open)); break;
        }
        i = token.end;
    }
}

// The decoding of a text through UTF-16 into a code page that writes ASCII
// as itself, without the UTF-16 form of the whole text: ASCII goes straight
// to the bytes; other characters, and raw bytes above 127, gather until the
// next ASCII one and are converted together, so surrogate pairs stay whole.
class DecodedThroughCodePage
{
public:
    DecodedThroughCodePage(const Transcoder &transcoder, std::size_t room)
        : transcoder_(transcoder)
        , bytes_(room)
    {}

    [[gnu::always_inline]] std::size_t copyUntilToken(std::string_view text, std::size_t from)
    {
        std::size_t i = from;
        for (;;) {
            if (i + 16 > text.size())
                return copySlowly(text, i);
            const std::size_t run = bytescan::firstOf16(text.data() + i, '<');
            if (bytescan::highBitsOf16(text.data() + i, run))
                return copySlowly(text, i);
            if (run)
                flush();
            bytes_.copy16(text.data() + i, run);
            i += run;
            if (run < 16)
                return i;
        }
    }

    void raw(std::string_view bytes)
    {
        for (const char c : bytes)
            character(static_cast<unsigned char>(c) < 0x80 ? static_cast<unsigned char>(c)
                                                           : kEscapedByteBase + static_cast<unsigned char>(c));
    }

    void character(unsigned value)
    {
        if (value < 0x80) {
            flush();
            bytes_.character(value);
        } else {
            pending_.push_back(static_cast<char16_t>(value));
        }
    }

    std::string take() &&
    {
        flush();
        return std::move(bytes_).take();
    }

private:
    std::size_t copySlowly(std::string_view text, std::size_t i)
    {
        const std::size_t open = tokens::findByte(text, i, '<');
        raw(text.substr(i, open - i));
        return open;
    }

    void flush()
    {
        if (pending_.empty())
            return;
        converted_.clear();
        transcoder_.appendNarrow(pending_, converted_);
        bytes_.raw(converted_);
        pending_.clear();
    }

    const Transcoder &transcoder_;
    DecodedUnits<char> bytes_;
    std::u16string pending_;
    std::string converted_;
};

// Large texts are converted in pieces of about this many characters, so
// the UTF-16 form in between stays small and in cache.
constexpr std::size_t kPiece = 16 * 1024;

std::size_t encodedSize(std::u16string_view wide)
{
    std::size_t size = 0;
    for (const char16_t unit : wide)
        size += unit < 128 ? kEncodedAscii[unit].length : kUnicodeTokenLength;
    return size;
}

// Appends the encoding of `wide`; `out` needs capacity for it plus one
// slot, so that every ASCII character can copy its whole slot.
void appendTokens(std::u16string_view wide, std::size_t size, std::string &out)
{
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

// Hands `use` the UTF-16 form of `text`, rewritten, in pieces (in one
// piece where the code page cannot be cut).
template <typename Use>
void forEachWidePiece(const Transcoder &transcoder, std::string_view text, WideRewrite rewrite, Use use)
{
    std::u16string wide;
    char16_t carry = 0;
    const std::size_t wanted = transcoder.convertsInPieces() ? kPiece : text.size();
    while (!text.empty()) {
        const std::size_t end = std::max<std::size_t>(transcoder.pieceEnd(text, wanted), 1);
        wide.clear();
        transcoder.appendWide(text.substr(0, end), wide);
        text.remove_prefix(end);
        if (rewrite)
            rewrite(wide, text.empty(), carry);
        use(wide);
    }
}

// The result is sized exactly before it is written: grown as it goes, it
// would hold up to twice its size at its worst moment, and the token text
// is the largest thing an encoding holds. A text of several pieces is
// converted twice for that, once to count and once to write.
std::string encodeThrough(const Transcoder &transcoder, std::string_view text, WideRewrite rewrite)
{
    std::string out;
    if (!transcoder.convertsInPieces() || text.size() <= kPiece) {
        std::u16string wide;
        forEachWidePiece(transcoder, text, rewrite, [&](std::u16string &whole) { wide.swap(whole); });
        const std::size_t size = encodedSize(wide);
        out.reserve(size + sizeof(EncodedAscii::bytes));
        appendTokens(wide, size, out);
        return out;
    }
    std::size_t total = 0;
    forEachWidePiece(transcoder, text, rewrite, [&](std::u16string &piece) { total += encodedSize(piece); });
    out.reserve(total + sizeof(EncodedAscii::bytes));
    forEachWidePiece(transcoder, text, rewrite,
                     [&](std::u16string &piece) { appendTokens(piece, encodedSize(piece), out); });
    return out;
}

std::string decodeWideThrough(const Transcoder &transcoder, std::string_view text)
{
    if (transcoder.convertsInPieces()) {
        DecodedThroughCodePage out(transcoder, text.size());
        decodeTokensInto(text, out);
        return std::move(out).take();
    }
    DecodedUnits<char16_t> wide(text.size());
    decodeTokensInto(text, wide);
    std::string out;
    transcoder.appendNarrow(wide.view(), out);
    return out;
}

} // namespace

std::string encodeTokens(std::u16string_view wide)
{
    std::string out;
    const std::size_t size = encodedSize(wide);
    out.reserve(size + sizeof(EncodedAscii::bytes));
    appendTokens(wide, size, out);
    return out;
}

std::string decodeTokens(std::string_view text)
{
    DecodedUnits<char> out(text.size());
    decodeTokensInto(text, out);
    return std::move(out).take();
}

std::u16string decodeTokensWide(std::string_view text)
{
    DecodedUnits<char16_t> out(text.size());
    decodeTokensInto(text, out);
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
            if (auto value = tokens::fourHexDigits(text.substr(i + 2, 4))) {
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
    return encodeTokenText(text, codePage, nullptr);
}

std::string encodeTokenText(std::string_view text, std::uint32_t codePage, WideRewrite rewrite)
{
    const Transcoder *transcoder = transcoderFor(codePage);
    return transcoder ? encodeThrough(*transcoder, text, rewrite) : std::string();
}

bool asciiIsItselfIn(std::uint32_t codePage)
{
    // Exactly the code pages that may be converted piece by piece.
    const Transcoder *transcoder = transcoderFor(codePage);
    return transcoder && transcoder->convertsInPieces();
}

namespace {
constexpr std::string_view kLegacyPrefix = "<u>";
} // namespace

bool isLegacyTokenText(std::string_view text)
{
    return text.size() > kLegacyPrefix.size() && text.starts_with(kLegacyPrefix);
}

std::string decodeTokenText(std::string_view text, std::uint32_t codePage)
{
    const Transcoder *transcoder = transcoderFor(codePage);
    if (isLegacyTokenText(text)) {
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
