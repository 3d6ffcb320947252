// Multi-byte code pages (CP932, GB18030, EUC-JP ...) go
// through iconv text by text.
#include "util/iconvconversion_p.h"
#include "util/transcoder_p.h"

#include <cstring>

namespace vyr {
namespace {

char16_t unitAt(const char *bytes)
{
    char16_t unit;
    std::memcpy(&unit, bytes, sizeof unit);
    return unit;
}

class IconvTranscoder final : public Transcoder
{
public:
    explicit IconvTranscoder(const std::string &codePage)
        : toWide_("UTF-16LE", codePage)
        , fromWide_(codePage, "UTF-16LE")
    {}

    bool isValid() const { return toWide_.isValid() && fromWide_.isValid(); }

    void appendWide(std::string_view narrow, std::u16string &out) const override
    {
        toWide_.convertAll(narrow.data(), narrow.size(), out, [](const char *&in, std::size_t &left) {
            const auto escaped = static_cast<char16_t>(kEscapedByteBase + static_cast<unsigned char>(*in));
            ++in;
            --left;
            return escaped;
        });
    }

    // Shift states and trail bytes in the ASCII range make cutting unsafe in
    // general; these texts are converted whole.
    bool convertsInPieces() const override { return false; }
    std::size_t pieceEnd(std::string_view narrow, std::size_t) const override { return narrow.size(); }

    void appendNarrow(std::u16string_view wide, std::string &out) const override
    {
        const auto *bytes = reinterpret_cast<const char *>(wide.data());
        fromWide_.convertAll(bytes, wide.size() * sizeof(char16_t), out, [](const char *&in, std::size_t &left) {
            const char16_t unit = left >= 2 ? unitAt(in) : 0;
            std::size_t consumed = left >= 2 ? 2 : left;
            char replacement = kUnmappableReplacement;
            if (unit >= kEscapedByteBase && unit <= kEscapedByteBase + 0xFF) {
                replacement = static_cast<char>(unit & 0xFF);
            } else if (unit >= 0xD800 && unit <= 0xDBFF && left >= 4) {
                // A pair the code page cannot hold is one character.
                const char16_t next = unitAt(in + 2);
                if (next >= 0xDC00 && next <= 0xDFFF)
                    consumed = 4;
            }
            in += consumed;
            left -= consumed;
            return replacement;
        });
    }

private:
    IconvConversion toWide_;
    IconvConversion fromWide_;
};

} // namespace

std::unique_ptr<Transcoder> makeIconvTranscoder(const std::string &codePage)
{
    auto transcoder = std::make_unique<IconvTranscoder>(codePage);
    if (!transcoder->isValid())
        return nullptr;
    return transcoder;
}

} // namespace vyr
