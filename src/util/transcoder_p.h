// Conversion between one narrow code page and UTF-16.
//
// Bytes that are not valid in the code page are never lost: each becomes the
// lone surrogate U+DC00 + byte on the way to UTF-16, and such a lone
// surrogate turns back into its byte on the way out. Any other UTF-16 unit
// that the code page cannot hold (including unpaired surrogates) becomes "?".
// So narrow -> UTF-16 -> narrow gives back every byte string unchanged in
// code pages whose mapping is one-to-one (UTF-8, the single-byte ones).
#ifndef VYR_UTIL_TRANSCODER_P_H
#define VYR_UTIL_TRANSCODER_P_H

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace vyr {

inline constexpr char16_t kEscapedByteBase = 0xDC00;
inline constexpr char kUnmappableReplacement = '?';

// How a transcoder writes a single UTF-16 unit other than a surrogate, for
// writers that go through many characters and want neither a call nor a
// branch for each.
struct UnitForm
{
    enum class Kind {
        None, // no such form: texts go through UTF-16
        Utf8, // as UTF-8 writes it
        ByteTable, // the one byte `bytes` holds for it
    };
    Kind kind = Kind::None;
    // The byte of each of the 65536 units.
    const unsigned char *bytes = nullptr;
};

class Transcoder
{
public:
    virtual ~Transcoder() = default;
    virtual void appendWide(std::string_view narrow, std::u16string &out) const = 0;
    virtual void appendNarrow(std::u16string_view wide, std::string &out) const = 0;

    virtual UnitForm unitForm() const { return {}; }

    // Whether texts may be converted piece by piece and the results joined,
    // which lets large texts go through a small buffer: narrow texts cut at
    // pieceEnd(), wide texts cut next to any unit below 0x80, which such a
    // code page writes as the byte of the same value.
    virtual bool convertsInPieces() const = 0;
    // Where a narrow text may be cut, at or before `wanted` (at its end when
    // it cannot be cut there).
    virtual std::size_t pieceEnd(std::string_view narrow, std::size_t wanted) const = 0;
};

// Stores as bytes at `out` the units below 0x80 at the start of `wide` and
// returns how many there were; `out` needs room for all of `wide`. Eight
// units a step: most text is ASCII.
std::size_t storeAsciiRun(std::u16string_view wide, char *out);

// The transcoder of a code page number (0: the narrow code page), made on
// first use in this thread and kept; null when the code page is unknown.
const Transcoder *transcoderFor(std::uint32_t codePage);

// The makers behind transcoderFor, one per kind of code page.
std::unique_ptr<Transcoder> makeUtf8Transcoder();
// Null when the code page is not a stateless one-byte-per-character set.
std::unique_ptr<Transcoder> makeSingleByteTranscoder(const std::string &codePage);
// Null when iconv does not know the code page.
std::unique_ptr<Transcoder> makeIconvTranscoder(const std::string &codePage);

} // namespace vyr

#endif // VYR_UTIL_TRANSCODER_P_H
