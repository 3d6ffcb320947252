#include "util/colourtext.h"

#include "util/listpacking.h"
#include "util/numbertext.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>

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

// `count` in units of 10^-decimals, without trailing zeros ("0.85", "1").
std::string decimalText(std::uint64_t count, int decimals)
{
    std::string digits = std::to_string(count);
    if (decimals == 0)
        return digits;
    if (digits.size() <= std::size_t(decimals))
        digits.insert(0, std::size_t(decimals) + 1 - digits.size(), '0');
    digits.insert(digits.size() - std::size_t(decimals), 1, '.');
    while (digits.back() == '0')
        digits.pop_back();
    if (digits.back() == '.')
        digits.pop_back();
    return digits;
}

// The fewest decimals that read back as `byte`: the fractions that do lie
// in [byte / 255, (byte + 1) / 255), and with as few digits as possible the
// smallest of them is the first multiple of that precision at or above the
// low end (rounding may put it one off, so its neighbours are asked too).
void appendFraction(std::string &text, std::uint8_t byte)
{
    double scale = 1;
    for (int decimals = 0; decimals <= 17; ++decimals, scale *= 10) {
        const double first = std::ceil(byte / 255.0 * scale);
        for (const double count : {first - 1, first, first + 1}) {
            // The reader wraps ("2" is 254 too), so only fractions count.
            if (count < 0 || count > scale)
                continue;
            const std::string candidate = decimalText(static_cast<std::uint64_t>(count), decimals);
            if (byteOf(candidate) == byte) {
                text += candidate;
                return;
            }
        }
    }
    // Not reached: 17 digits tell every double apart.
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
