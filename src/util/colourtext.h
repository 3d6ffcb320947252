// The text form of a colour in a grid cell: red, green and blue as
// fractions from 0 to 1, separated by commas ("1,0.5,0"). Each fraction
// times 255, truncated toward zero and taken modulo 256, gives the byte.
#ifndef VYR_UTIL_COLOURTEXT_H
#define VYR_UTIL_COLOURTEXT_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vyr {

struct Rgb
{
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    // red + green * 256 + blue * 65536.
    std::uint32_t value() const { return red + green * 256u + blue * 65536u; }
    bool operator==(const Rgb &) const = default;
};

// Exactly three comma-separated numbers, each with blanks around it
// allowed; anything else has no colour.
std::optional<Rgb> parseColourText(std::string_view text);

// Each fraction written with the fewest decimals that read back as its byte
// (216 is "0.85", 51 is "0.2"), the form formats write their colours in.
std::string formatColourText(Rgb colour);

} // namespace vyr

#endif // VYR_UTIL_COLOURTEXT_H
