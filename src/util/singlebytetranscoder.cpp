// Code pages with one byte per character (CP1252, ISO-8859-x, KOI8-R ...)
// are asked of iconv once, byte by byte, and then converted through tables:
// a conversion per text would cost more than the text itself.
#include "util/iconvconversion_p.h"
#include "util/transcoder_p.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

namespace vyr {
namespace {

class SingleByteTranscoder final : public Transcoder
{
public:
    // Fills the tables; false when the code page is not one byte per
    // character without state.
    bool build(const std::string &codePage)
    {
        IconvConversion toWide("UTF-16LE", codePage);
        IconvConversion fromWide(codePage, "UTF-16LE");
        if (!toWide.isValid() || !fromWide.isValid())
            return false;
        for (int byte = 0; byte < 256; ++byte) {
            const char narrow = static_cast<char>(byte);
            int error;
            const auto wide = toWide.convertShort(std::string_view(&narrow, 1), &error);
            if (!wide) {
                if (error != EILSEQ)
                    return false; // a lead byte or a shift: not single-byte
                toWide_[byte] = static_cast<char16_t>(kEscapedByteBase + byte);
                continue;
            }
            if (wide->size() != sizeof(char16_t))
                return false;
            std::memcpy(&toWide_[byte], wide->data(), sizeof(char16_t));
        }
        // The way back is iconv's own, which may differ from the way in where
        // a code page maps two bytes to one character. A unit no byte maps
        // to becomes "?", but a lone surrogate that stands for a byte.
        fromWide_ = std::make_unique<unsigned char[]>(kUnits);
        for (std::size_t unit = 0; unit < kUnits; ++unit) {
            const bool escape = unit >= kEscapedByteBase && unit <= kEscapedByteBase + 0xFFu;
            fromWide_[unit] = static_cast<unsigned char>(escape ? (unit & 0xFF) : kUnmappableReplacement);
        }
        std::array<bool, 0x80> asciiMapped{};
        for (int byte = 0; byte < 256; ++byte) {
            const char16_t unit = toWide_[byte];
            if (unit >= kEscapedByteBase && unit <= kEscapedByteBase + 0xFF)
                continue;
            const std::string_view unitBytes(reinterpret_cast<const char *>(&unit), sizeof unit);
            int error;
            const auto narrowBack = fromWide.convertShort(unitBytes, &error);
            if (!narrowBack || narrowBack->size() != 1)
                continue;
            fromWide_[unit] = static_cast<unsigned char>((*narrowBack)[0]);
            if (unit < asciiMapped.size())
                asciiMapped[unit] = true;
        }
        asciiIsItself_ = true;
        for (char16_t unit = 0; unit < 0x80; ++unit) {
            if (!asciiMapped[unit] || fromWide_[unit] != unit)
                asciiIsItself_ = false;
        }
        return true;
    }

    void appendWide(std::string_view narrow, std::u16string &out) const override
    {
        const std::size_t at = out.size();
        out.resize(at + narrow.size());
        for (std::size_t i = 0; i < narrow.size(); ++i)
            out[at + i] = toWide_[static_cast<unsigned char>(narrow[i])];
    }

    bool convertsInPieces() const override { return asciiIsItself_; }

    std::size_t pieceEnd(std::string_view narrow, std::size_t wanted) const override
    {
        return std::min(wanted, narrow.size());
    }

    void appendNarrow(std::u16string_view wide, std::string &out) const override
    {
        // Never more bytes than units: size once, write through a pointer.
        const std::size_t size = wide.size();
        const std::size_t at = out.size();
        out.resize(at + size);
        char *next = out.data() + at;
        for (std::size_t i = 0; i < size; ++i) {
            if (asciiIsItself_ && wide[i] < 0x80) {
                const std::size_t run = storeAsciiRun(wide.substr(i), next);
                next += run;
                i += run - 1;
                continue;
            }
            const char16_t unit = wide[i];
            *next++ = byteOf(unit);
            // A pair the code page cannot hold (no byte stands for a
            // surrogate) is one character.
            if (unit >= 0xD800 && unit <= 0xDBFF && i + 1 < size && wide[i + 1] >= 0xDC00 && wide[i + 1] <= 0xDFFF)
                ++i;
        }
        out.resize(static_cast<std::size_t>(next - out.data()));
    }

    UnitForm unitForm() const override { return {UnitForm::Kind::ByteTable, fromWide_.get()}; }

private:
    static constexpr std::size_t kUnits = 0x10000;

    char byteOf(char16_t unit) const { return static_cast<char>(fromWide_[unit]); }

    std::array<char16_t, 256> toWide_{};
    // The byte of every unit: one look, whatever the unit, where pages by
    // the unit's high byte would take two that wait on each other.
    std::unique_ptr<unsigned char[]> fromWide_;
    // Units below 0x80 become the byte of the same value (true but for
    // EBCDIC and the like), which spares the table on most of a text.
    bool asciiIsItself_ = false;
};

} // namespace

std::unique_ptr<Transcoder> makeSingleByteTranscoder(const std::string &codePage)
{
    auto transcoder = std::make_unique<SingleByteTranscoder>();
    if (!transcoder->build(codePage))
        return nullptr;
    return transcoder;
}

} // namespace vyr
