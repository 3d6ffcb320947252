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

} // namespace

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

} // namespace vyr
