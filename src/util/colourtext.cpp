#include "util/colourtext.h"

#include "util/listpacking.h"
#include "util/numbertext.h"

#include <charconv>
#include <cmath>

namespace vyr {

namespace {

std::optional<std::uint8_t> byteOf(std::string_view part)
{
    // parseDouble takes the blanks around the number.
    double fraction = 0;
    if (!parseDouble(part, fraction) || !std::isfinite(fraction))
        return std::nullopt;
    // Truncated toward zero, then wrapped into a byte, as a cast of the
    // truncated number to a byte would; fmod keeps huge values defined.
    const double wrapped = std::fmod(std::trunc(fraction * 255.0), 256.0);
    if (!std::isfinite(wrapped))
        return std::nullopt;
    const int byte = static_cast<int>(wrapped);
    return static_cast<std::uint8_t>(byte < 0 ? byte + 256 : byte);
}

void appendFraction(std::string &text, std::uint8_t byte)
{
    char buffer[32];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, byte / 255.0);
    text.append(buffer, error == std::errc() ? end : buffer);
}

} // namespace

std::optional<Rgb> parseColourText(std::string_view text)
{
    const StringList parts = splitList(text, ',');
    if (parts.size() != 3)
        return std::nullopt;
    const auto red = byteOf(parts[0]);
    const auto green = byteOf(parts[1]);
    const auto blue = byteOf(parts[2]);
    if (!red || !green || !blue)
        return std::nullopt;
    return Rgb{*red, *green, *blue};
}

std::string formatColourText(Rgb colour)
{
    std::string text;
    appendFraction(text, colour.red);
    text += ',';
    appendFraction(text, colour.green);
    text += ',';
    appendFraction(text, colour.blue);
    return text;
}

} // namespace vyr
