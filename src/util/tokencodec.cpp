#include "util/tokencodec.h"

#include "util/bytescan_p.h"
#include "util/tokenreader_p.h"
#include "util/transcoder_p.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <utility>

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

// The decoders' outputs. The loop holds the place where the next unit
// goes (`at`), so that it lives in a register rather than in the output,
// and hands it to each step; a step that needs more room or knows more
// than the common case returns the new place.

// The output as UTF-16, written through a pointer into room made ahead; a
// raw byte above 127 is no character here and is kept as its escape unit.
class DecodedWide
{
public:
    using Unit = char16_t;

    explicit DecodedWide(std::size_t room)
        : units_(room, 0)
        , end_(units_.data() + room)
    {}

    Unit *begin() { return units_.data(); }

    void raw(Unit *&at, std::string_view bytes)
    {
        at = makeRoom(at, bytes.size());
        for (const char c : bytes)
            *at++ = unitOf(static_cast<unsigned char>(c));
    }

    void character(Unit *&at, unsigned value)
    {
        at = makeRoom(at, 1);
        *at++ = static_cast<Unit>(value);
    }

    // Copies the bytes of `text` from `from` to `to`, none of them "<".
    // Sixteen a step, so that a short run costs one store.
    void copy(Unit *&at, std::string_view text, std::size_t from, std::size_t to)
    {
        std::size_t i = from;
        for (; i < to && i + 16 <= text.size(); i += 16) {
            at = makeRoom(at, 16);
            store16(text.data() + i, at);
            at += std::min<std::size_t>(16, to - i);
        }
        if (i < to)
            raw(at, text.substr(i, to - i));
    }

    std::u16string take(Unit *at) &&
    {
        units_.resize(static_cast<std::size_t>(at - units_.data()));
        return std::move(units_);
    }

private:
    static void store16(const char *bytes, Unit *units)
    {
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

    static Unit unitOf(unsigned char byte) { return static_cast<Unit>(byte + (byte >> 7) * kEscapedByteBase); }

    Unit *makeRoom(Unit *at, std::size_t count)
    {
        return static_cast<std::size_t>(end_ - at) < count ? grow(at, count) : at;
    }

    [[gnu::noinline]] Unit *grow(Unit *at, std::size_t count)
    {
        const std::size_t used = static_cast<std::size_t>(at - units_.data());
        units_.resize(std::max(used + count, units_.size() * 2));
        end_ = units_.data() + units_.size();
        return units_.data() + used;
    }

    std::u16string units_;
    Unit *end_;
};

// Writers of one UTF-16 unit into a narrow code page, at a place with room
// for kRoom bytes; each answers how many bytes it wrote. kJoinsPairs: a
// surrogate is no character of its own but half of one, which the writer
// is not given. None branches on the unit: whether a token stands for an
// ASCII character or another is as good as random.
struct LowByteWriter
{
    static constexpr std::size_t kRoom = 1;
    static constexpr bool kJoinsPairs = false;
    std::size_t operator()(unsigned unit, char *out) const
    {
        *out = static_cast<char>(unit);
        return 1;
    }
};

struct Utf8Writer
{
    static constexpr std::size_t kRoom = 4;
    static constexpr bool kJoinsPairs = true;
    std::size_t operator()(unsigned unit, char *out) const
    {
        const std::uint32_t two = unit >= 0x80;
        const std::uint32_t three = unit >= 0x800;
        const std::uint32_t twoBytes = (0xC0 | unit >> 6) | (0x80 | (unit & 0x3F)) << 8;
        const std::uint32_t threeBytes
            = (0xE0 | unit >> 12) | (0x80 | ((unit >> 6) & 0x3F)) << 8 | (0x80 | (unit & 0x3F)) << 16;
        // Chosen by masks: as a conditional the compiler makes it branches.
        const std::uint32_t bytes
            = (unit & (two - 1)) | (twoBytes & (0u - two) & (three - 1)) | (threeBytes & (0u - three));
        std::memcpy(out, &bytes, sizeof bytes);
        return 1 + two + three;
    }
};

struct ByteTableWriter
{
    static constexpr std::size_t kRoom = 1;
    static constexpr bool kJoinsPairs = true;
    std::size_t operator()(unsigned unit, char *out) const
    {
        *out = static_cast<char>(bytes[unit]);
        return 1;
    }
    const unsigned char *bytes;
};

// The output in a narrow code page, written straight into the result in
// one pass. A character of a token becomes the bytes its UTF-16 form
// converts to (through a writer for the code page, which must write ASCII
// as itself), or its low byte (LowByteWriter, no transcoder); raw bytes
// are kept, as that conversion gives them back. A high surrogate waits for
// the unit after it, so that a pair converts as one character, whether its
// second half came from a token or from a raw byte.
//
// A decoded text is never longer than its encoding (a token of four bytes
// or more gives one character, a pair of seven-byte tokens at most four
// bytes), so room for the encoding is made once, left unwritten until
// used; the checks that remain only guard against a code page that writes
// more. Short texts, most of those a program decodes, are decoded into
// room the caller gives, and only their result is allocated.
template <typename Writer>
class DecodedBytes
{
public:
    using Unit = char;

    DecodedBytes(std::size_t room, std::span<char> local, const Transcoder *transcoder, Writer writer)
        : bytes_(room > local.size() ? std::make_unique_for_overwrite<char[]>(room) : nullptr)
        , start_(bytes_ ? bytes_.get() : local.data())
        , end_(start_ + (bytes_ ? room : local.size()))
        , transcoder_(transcoder)
        , writer_(writer)
    {}

    Unit *begin() { return start_; }

    [[gnu::always_inline]] void copy(Unit *&at, std::string_view text, std::size_t from, std::size_t to)
    {
        if (pendingHigh_ && from < to) [[unlikely]]
            at = settlePendingBefore(at, static_cast<unsigned char>(text[from++]));
        // Runs between tokens are short, but of any length up to that: two
        // stores take all but a few without a branch on the length (or on
        // whether the run is empty); what they write beyond it is
        // overwritten.
        if ((to - from <= 32) & (from + 32 <= text.size()) & (end_ - at >= 32)) [[likely]] {
            std::memcpy(at, text.data() + from, 32);
            at += to - from;
            return;
        }
        at = append(at, text.substr(from, to - from));
    }

    [[gnu::always_inline]] void character(Unit *&at, unsigned value)
    {
        const bool surrogate = Writer::kJoinsPairs && (value & 0xF800) == 0xD800;
        if (!(surrogate | (pendingHigh_ != 0) | (static_cast<std::size_t>(end_ - at) < Writer::kRoom))) [[likely]] {
            at += writer_(value, at);
            return;
        }
        at = otherCharacter(at, static_cast<char16_t>(value));
    }

    void raw(Unit *&at, std::string_view bytes)
    {
        if (pendingHigh_ && !bytes.empty()) {
            at = settlePendingBefore(at, static_cast<unsigned char>(bytes.front()));
            bytes.remove_prefix(1);
        }
        at = append(at, bytes);
    }

    std::string take(Unit *at) &&
    {
        if (pendingHigh_)
            at = convert(at, {&pendingHigh_, 1});
        return std::string(start_, static_cast<std::size_t>(at - start_));
    }

private:
    [[gnu::noinline]] Unit *otherCharacter(Unit *at, char16_t unit)
    {
        if (pendingHigh_) {
            const char16_t units[2] = {std::exchange(pendingHigh_, 0), unit};
            if (unit >= 0xDC00 && unit <= 0xDFFF)
                return convert(at, {units, 2});
            at = convert(at, {units, 1});
        }
        if (Writer::kJoinsPairs && unit >= 0xD800 && unit <= 0xDBFF) {
            pendingHigh_ = unit;
            return at;
        }
        // A low surrogate on its own (one that stands for a byte, or none).
        if (Writer::kJoinsPairs && unit >= 0xDC00 && unit <= 0xDFFF)
            return convert(at, {&unit, 1});
        at = makeRoom(at, Writer::kRoom);
        return at + writer_(unit, at);
    }

    // Converts the waiting high surrogate, paired with the raw byte `next`
    // when that byte stands for a low one, else alone, and then `next`.
    [[gnu::noinline]] Unit *settlePendingBefore(Unit *at, unsigned char next)
    {
        const char16_t units[2] = {std::exchange(pendingHigh_, 0), static_cast<char16_t>(kEscapedByteBase + next)};
        if (next >= 0x80)
            return convert(at, {units, 2});
        at = convert(at, {units, 1});
        at = makeRoom(at, 1);
        *at = static_cast<char>(next);
        return at + 1;
    }

    Unit *convert(Unit *at, std::u16string_view units)
    {
        std::string converted;
        transcoder_->appendNarrow(units, converted);
        return append(at, converted);
    }

    Unit *append(Unit *at, std::string_view bytes)
    {
        at = makeRoom(at, bytes.size());
        if (bytes.size() <= 64)
            bytescan::copyShort<64>(at, bytes.data(), bytes.size());
        else
            std::memcpy(at, bytes.data(), bytes.size());
        return at + bytes.size();
    }

    Unit *makeRoom(Unit *at, std::size_t count)
    {
        return static_cast<std::size_t>(end_ - at) < count ? grow(at, count) : at;
    }

    [[gnu::noinline]] Unit *grow(Unit *at, std::size_t count)
    {
        const std::size_t used = static_cast<std::size_t>(at - start_);
        const std::size_t room = std::max(used + count, 2 * static_cast<std::size_t>(end_ - start_));
        auto grown = std::make_unique_for_overwrite<char[]>(room);
        std::memcpy(grown.get(), start_, used);
        bytes_ = std::move(grown);
        start_ = bytes_.get();
        end_ = start_ + room;
        return start_ + used;
    }

    std::unique_ptr<char[]> bytes_;
    char *start_;
    char *end_;
    const Transcoder *transcoder_;
    Writer writer_;
    char16_t pendingHigh_ = 0;
};

// Decodes `text` into `out`; where the output ends. Block by block, the
// tokens are read from the block's brackets all at once where they
// alternate, so that no token waits for the one before to find its own;
// elsewhere, and for a token that runs past its block, one bracket at a
// time.
template <typename Output>
typename Output::Unit *decodeTokensInto(std::string_view text, Output &out)
{
    using tokens::kBracketBlock;
    const std::size_t size = text.size();
    tokens::BracketScanner brackets(text);
    typename Output::Unit *at = out.begin();
    // Where the bytes not yet decoded begin; never inside a token.
    std::size_t i = 0;
    const auto decodeToken = [&](std::size_t open, std::size_t close) __attribute__((always_inline))
    {
        out.copy(at, text, i, open);
        if (const auto common = tokens::readCommonToken(text, open, close)) [[likely]] {
            out.character(at, common->value);
            i = common->end;
            return;
        }
        const Token token = tokens::readToken(text, open, close);
        switch (token.kind) {
        case Token::Kind::Character: out.character(at, token.value); break;
        case Token::Kind::Nothing: break;
        case Token::Kind::Verbatim:
        case Token::Kind::Unterminated: out.raw(at, text.substr(open, token.end - open)); break;
        }
        i = token.end;
    };
    std::size_t block = 0;
    while (block < size) {
        tokens::BracketMarks marks = tokens::bracketMarks(text, block);
        if (i > block) {
            marks.opens &= ~std::uint64_t(0) << (i - block);
            marks.closes &= ~std::uint64_t(0) << (i - block);
        }
        if (!tokens::bracketsAlternate(marks)) [[unlikely]] {
            const std::size_t open = brackets.nextOpen(i);
            if (open == size)
                break;
            decodeToken(open, brackets.nextClose(open + 1));
            block = i / kBracketBlock * kBracketBlock;
            continue;
        }
        bool runsOn = false;
        while (marks.opens) {
            const std::size_t open = block + static_cast<std::size_t>(std::countr_zero(marks.opens));
            marks.opens &= marks.opens - 1;
            if (!marks.closes) {
                decodeToken(open, brackets.nextClose(open + 1));
                runsOn = true;
                break;
            }
            const std::size_t close = block + static_cast<std::size_t>(std::countr_zero(marks.closes));
            marks.closes &= marks.closes - 1;
            decodeToken(open, close);
        }
        block = runsOn ? i / kBracketBlock * kBracketBlock : block + kBracketBlock;
    }
    out.copy(at, text, i, size);
    return at;
}

template <typename Writer>
std::string decodeBytes(std::string_view text, const Transcoder *transcoder, Writer writer)
{
    char local[256];
    DecodedBytes<Writer> out(text.size(), local, transcoder, writer);
    char *const end = decodeTokensInto(text, out);
    return std::move(out).take(end);
}

std::string decodeWideThrough(const Transcoder &transcoder, std::string_view text);

// For a code page that writes ASCII as itself.
std::string decodeThrough(const Transcoder &transcoder, std::string_view text)
{
    const UnitForm form = transcoder.unitForm();
    switch (form.kind) {
    case UnitForm::Kind::Utf8: return decodeBytes(text, &transcoder, Utf8Writer{});
    case UnitForm::Kind::ByteTable: return decodeBytes(text, &transcoder, ByteTableWriter{form.bytes});
    case UnitForm::Kind::None: break;
    }
    return decodeWideThrough(transcoder, text);
}

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

// For code pages whose bytes below 128 may be part of other characters: the
// UTF-16 form of the whole text, converted at once.
std::string decodeWideThrough(const Transcoder &transcoder, std::string_view text)
{
    DecodedWide wide(text.size());
    char16_t *const end = decodeTokensInto(text, wide);
    const std::u16string units = std::move(wide).take(end);
    std::string out;
    transcoder.appendNarrow(units, out);
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
    return decodeBytes(text, nullptr, LowByteWriter{});
}

std::u16string decodeTokensWide(std::string_view text)
{
    DecodedWide out(text.size());
    char16_t *const end = decodeTokensInto(text, out);
    return std::move(out).take(end);
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
    // Where ASCII is itself, a text without "<u" tokens decodes through
    // UTF-16 to the very bytes it decodes to byte for byte, so one pass
    // serves both without looking for them first.
    if (transcoder && transcoder->convertsInPieces())
        return decodeThrough(*transcoder, text);
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
