#include "util/stringconverter.h"

#include "util/transcoder_p.h"

namespace vyr {
namespace {

// Narrow to narrow through UTF-16; a no-op between equal code pages, since
// both directions keep every byte.
std::string recode(std::string_view text, std::uint32_t from, std::uint32_t to)
{
    const Transcoder *source = transcoderFor(from);
    const Transcoder *target = transcoderFor(to);
    if (!source || !target || text.empty())
        return {};
    if (source == target)
        return std::string(text);
    std::u16string wide;
    source->appendWide(text, wide);
    std::string result;
    target->appendNarrow(wide, result);
    return result;
}

// The most bytes one character takes in a code page without shift states
// (GB18030's four).
constexpr std::size_t kLongestCharacter = 4;

void appendEscaped(std::string_view bytes, std::u16string &out)
{
    for (const char byte : bytes)
        out.push_back(static_cast<char16_t>(kEscapedByteBase + static_cast<unsigned char>(byte)));
}

bool givesBack(const Transcoder &transcoder, std::u16string_view wide, std::string_view narrow)
{
    std::string back;
    transcoder.appendNarrow(wide, back);
    return back == narrow;
}

// One character: a unit that is no surrogate (so no escaped byte), or a pair.
bool isOneCharacter(std::u16string_view wide)
{
    if (wide.size() == 1)
        return wide[0] < 0xD800 || wide[0] > 0xDFFF;
    return wide.size() == 2 && wide[0] >= 0xD800 && wide[0] <= 0xDBFF && wide[1] >= 0xDC00 && wide[1] <= 0xDFFF;
}

// Character by character: at each place the shortest run of bytes that reads
// as one character written back as those same bytes; a byte that starts no
// such run is escaped on its own.
std::u16string exactWide(const Transcoder &transcoder, std::string_view text)
{
    std::u16string wide;
    std::u16string piece;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t taken = 0;
        for (std::size_t length = 1; !taken && length <= kLongestCharacter && at + length <= text.size(); ++length) {
            const std::string_view bytes = text.substr(at, length);
            piece.clear();
            transcoder.appendWide(bytes, piece);
            if (isOneCharacter(piece) && givesBack(transcoder, piece, bytes))
                taken = length;
        }
        if (taken) {
            wide += piece;
        } else {
            taken = 1;
            appendEscaped(text.substr(at, 1), wide);
        }
        at += taken;
    }
    return wide;
}

} // namespace

std::u16string ansiToWide(std::string_view text)
{
    std::u16string wide;
    const Transcoder *transcoder = transcoderFor(kAnsiCodePage);
    if (!transcoder)
        return wide;
    transcoder->appendWide(text, wide);
    // UTF-8 is one-to-one by construction; the other code pages are trusted
    // only once the text has come back whole, which nearly every text does.
    if (transcoder == transcoderFor(kUtf8CodePage) || givesBack(*transcoder, wide, text))
        return wide;
    wide = exactWide(*transcoder, text);
    if (givesBack(*transcoder, wide, text))
        return wide;
    // Shift states that do not survive being cut into characters: the bytes
    // as they are.
    wide.clear();
    appendEscaped(text, wide);
    return wide;
}

std::string wideToAnsi(std::u16string_view text)
{
    std::string narrow;
    if (const Transcoder *transcoder = transcoderFor(kAnsiCodePage))
        transcoder->appendNarrow(text, narrow);
    return narrow;
}

std::u16string VYRSimpleWindowsStringConverter::toWide(std::string_view narrow) const
{
    std::u16string wide;
    if (const Transcoder *transcoder = transcoderFor(codePage_))
        transcoder->appendWide(narrow, wide);
    return wide;
}

std::string VYRSimpleWindowsStringConverter::fromWide(std::u16string_view wide) const
{
    std::string narrow;
    if (const Transcoder *transcoder = transcoderFor(codePage_))
        transcoder->appendNarrow(wide, narrow);
    return narrow;
}

std::string ansiToUtf8(std::string_view text)
{
    return recode(text, kAnsiCodePage, kUtf8CodePage);
}

std::string utf8ToAnsi(std::string_view text)
{
    return recode(text, kUtf8CodePage, kAnsiCodePage);
}

bool utf8IsAnsi()
{
    const Transcoder *narrow = transcoderFor(kAnsiCodePage);
    return narrow && narrow == transcoderFor(kUtf8CodePage);
}

} // namespace vyr
