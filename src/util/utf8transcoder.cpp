// UTF-8 is converted by hand rather than through iconv: it is the code page
// of every user-string conversion, so it is on the hot path, and its
// invalid-byte handling must match the other transcoders exactly.
#include "util/stringconverter.h"
#include "util/transcoder_p.h"

#include <cstring>

namespace vyr {
namespace {

bool isContinuation(unsigned char byte)
{
    return (byte & 0xC0) == 0x80;
}

// The length of the ASCII run at the start of `bytes`.
std::size_t asciiRun(const unsigned char *bytes, std::size_t size)
{
    std::size_t i = 0;
    for (; i + 8 <= size; i += 8) {
        std::uint64_t word;
        std::memcpy(&word, bytes + i, sizeof word);
        if (word & 0x8080808080808080ULL)
            break;
    }
    while (i < size && bytes[i] < 0x80)
        ++i;
    return i;
}

// Decodes one well-formed multi-byte sequence at `bytes` (shortest form, no
// surrogates, at most U+10FFFF). Returns its length, or 0 when ill-formed.
std::size_t decodeSequence(const unsigned char *bytes, std::size_t size, char32_t &codePoint)
{
    const unsigned char lead = bytes[0];
    std::size_t length;
    unsigned char low = 0x80, high = 0xBF; // allowed range of the second byte
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
        codePoint = lead & 0x1F;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        codePoint = lead & 0x0F;
        if (lead == 0xE0)
            low = 0xA0;
        else if (lead == 0xED)
            high = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        codePoint = lead & 0x07;
        if (lead == 0xF0)
            low = 0x90;
        else if (lead == 0xF4)
            high = 0x8F;
    } else {
        return 0;
    }
    if (size < length || bytes[1] < low || bytes[1] > high)
        return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if (!isContinuation(bytes[i]))
            return 0;
        codePoint = (codePoint << 6) | (bytes[i] & 0x3F);
    }
    return length;
}

} // namespace

bool makeWellFormedUtf8(std::string &text)
{
    const auto *bytes = reinterpret_cast<const unsigned char *>(text.data());
    // The end of the well-formed start; most texts end there.
    std::size_t i = 0;
    char32_t codePoint;
    while (i < text.size()) {
        i += asciiRun(bytes + i, text.size() - i);
        if (i == text.size())
            return false;
        const std::size_t length = decodeSequence(bytes + i, text.size() - i, codePoint);
        if (length == 0)
            break;
        i += length;
    }
    if (i == text.size())
        return false;
    std::string repaired(text, 0, i);
    while (i < text.size()) {
        const std::size_t length = decodeSequence(bytes + i, text.size() - i, codePoint);
        if (length == 0) {
            repaired += "\xEF\xBF\xBD";
            ++i;
        } else {
            repaired.append(text, i, length);
            i += length;
        }
        const std::size_t run = asciiRun(bytes + i, text.size() - i);
        repaired.append(text, i, run);
        i += run;
    }
    text = std::move(repaired);
    return true;
}

namespace {

class Utf8Transcoder final : public Transcoder
{
public:
    void appendWide(std::string_view narrow, std::u16string &out) const override
    {
        const auto *bytes = reinterpret_cast<const unsigned char *>(narrow.data());
        const std::size_t size = narrow.size();
        out.reserve(out.size() + size);
        std::size_t i = 0;
        while (i < size) {
            const std::size_t run = asciiRun(bytes + i, size - i);
            if (run) {
                const std::size_t at = out.size();
                out.resize(at + run);
                for (std::size_t k = 0; k < run; ++k)
                    out[at + k] = bytes[i + k];
                i += run;
                if (i == size)
                    break;
            }
            char32_t codePoint;
            const std::size_t length = decodeSequence(bytes + i, size - i, codePoint);
            if (length == 0) {
                out.push_back(static_cast<char16_t>(kEscapedByteBase + bytes[i]));
                ++i;
            } else if (codePoint >= 0x10000) {
                codePoint -= 0x10000;
                out.push_back(static_cast<char16_t>(0xD800 + (codePoint >> 10)));
                out.push_back(static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF)));
                i += length;
            } else {
                out.push_back(static_cast<char16_t>(codePoint));
                i += length;
            }
        }
    }

    bool convertsInPieces() const override { return true; }

    std::size_t pieceEnd(std::string_view narrow, std::size_t wanted) const override
    {
        if (wanted >= narrow.size() || wanted < 4)
            return narrow.size();
        // Not between a lead byte and its continuation bytes. A run of more
        // than three continuation bytes has no lead to belong to: each of
        // them is escaped on its own, so any cut is fine there.
        for (std::size_t back = 0; back < 4; ++back) {
            if (!isContinuation(static_cast<unsigned char>(narrow[wanted - back])))
                return wanted - back;
        }
        return wanted;
    }

    void appendNarrow(std::u16string_view wide, std::string &out) const override
    {
        // Three bytes a unit at most (a pair takes four for two): size once,
        // write through a pointer, cut back at the end.
        const std::size_t size = wide.size();
        const std::size_t start = out.size();
        out.resize(start + 3 * size);
        char *next = out.data() + start;
        for (std::size_t i = 0; i < size; ++i) {
            const char32_t unit = wide[i];
            if (unit < 0x80) {
                const std::size_t run = storeAsciiRun(wide.substr(i), next);
                next += run;
                i += run - 1;
            } else if (unit >= 0xD800 && unit <= 0xDBFF && i + 1 < size && wide[i + 1] >= 0xDC00
                       && wide[i + 1] <= 0xDFFF) {
                const char32_t codePoint = 0x10000 + ((unit - 0xD800) << 10) + (wide[i + 1] - 0xDC00);
                *next++ = static_cast<char>(0xF0 | (codePoint >> 18));
                *next++ = static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F));
                *next++ = static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
                *next++ = static_cast<char>(0x80 | (codePoint & 0x3F));
                ++i;
            } else {
                next += storeUtf8Unit(wide[i], next);
            }
        }
        out.resize(static_cast<std::size_t>(next - out.data()));
    }

    UnitForm unitForm() const override { return {UnitForm::Kind::Utf8}; }

private:
    // Any unit but the first of a pair: a lone surrogate that stands for a
    // byte becomes that byte, any other "?".
    static std::size_t storeUtf8Unit(char16_t unit, char *out)
    {
        if (unit < 0x80) {
            out[0] = static_cast<char>(unit);
            return 1;
        }
        if (unit < 0x800) {
            out[0] = static_cast<char>(0xC0 | (unit >> 6));
            out[1] = static_cast<char>(0x80 | (unit & 0x3F));
            return 2;
        }
        if (unit >= kEscapedByteBase && unit <= kEscapedByteBase + 0xFF) {
            out[0] = static_cast<char>(unit & 0xFF);
            return 1;
        }
        if (unit >= 0xD800 && unit <= 0xDFFF) {
            out[0] = kUnmappableReplacement;
            return 1;
        }
        out[0] = static_cast<char>(0xE0 | (unit >> 12));
        out[1] = static_cast<char>(0x80 | ((unit >> 6) & 0x3F));
        out[2] = static_cast<char>(0x80 | (unit & 0x3F));
        return 3;
    }
};

} // namespace

std::unique_ptr<Transcoder> makeUtf8Transcoder()
{
    return std::make_unique<Utf8Transcoder>();
}

} // namespace vyr
