#include <gtest/gtest.h>

#include "util/colourtext.h"

#include <cstdlib>

namespace vyr {
namespace {

TEST(ColourText, readsThreeFractions)
{
    const struct
    {
        const char *text;
        std::optional<Rgb> colour;
    } cases[] = {
        {"1, 0.5 ,0", Rgb{255, 127, 0}},
        {"0,0,0", Rgb{0, 0, 0}},
        {" 1 , 1 , 1 ", Rgb{255, 255, 255}},
        // Out of range: truncated, then wrapped into a byte.
        {"2,-1,1.5", Rgb{254, 1, 126}},
        {"1e300,0,0", Rgb{0, 0, 0}},
        {"1e309,0,0", std::nullopt},
        {"0.5,0.5", std::nullopt},
        {"0,0,0,0", std::nullopt},
        {"a,b,c", std::nullopt},
        {",,", std::nullopt},
        {"nan,0,0", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto &c : cases)
        EXPECT_EQ(parseColourText(c.text), c.colour) << "text: \"" << c.text << "\"";
    EXPECT_EQ(parseColourText("1,0.5,0")->value(), 255u + 127u * 256u);
}

TEST(ColourText, everyByteReadsBackAsWritten)
{
    for (int byte = 0; byte < 256; ++byte) {
        const Rgb colour{std::uint8_t(byte), std::uint8_t(255 - byte), std::uint8_t(byte / 2)};
        EXPECT_EQ(parseColourText(formatColourText(colour)), colour) << formatColourText(colour);
        // A fraction, not a number the reader would wrap into the byte.
        const double red = std::strtod(formatColourText(colour).c_str(), nullptr);
        EXPECT_TRUE(red >= 0 && red <= 1) << formatColourText(colour);
    }
    EXPECT_EQ(formatColourText({255, 0, 51}), "1,0,0.2");
    // The fewest decimals that read back: the form formats write colours in.
    EXPECT_EQ(formatColourText({216, 216, 216}), "0.85,0.85,0.85");
    EXPECT_EQ(formatColourText({200, 100, 50}), "0.785,0.393,0.197");
    EXPECT_EQ(formatColourText({127, 1, 254}), "0.5,0.004,0.997");
}

} // namespace
} // namespace vyr
