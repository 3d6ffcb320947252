#include <gtest/gtest.h>

#include "util/numbertext.h"

#include <cmath>
#include <optional>

namespace vyr {
namespace {

TEST(NumberText, readsIntegers)
{
    const struct
    {
        const char *text;
        std::optional<std::int32_t> value;
    } cases[] = {
        {"12", 12},
        {" 12 ", 12},
        {"12.", 12},
        {"12.0", 12},
        {"12.00", 12},
        {"12.0 0", 12},
        {"0x10", 16},
        {"0X1f", 31},
        {"-0x10", -16},
        {"  -7  ", -7},
        {"+5", 5},
        {"010", 10},
        {"08.0", 8},
        {"-2147483648", INT32_MIN},
        {"2147483647", INT32_MAX},
        {"2147483648", std::nullopt},
        {"99999999999", std::nullopt},
        {"12.5", std::nullopt},
        {"1e3", std::nullopt},
        {"abc", std::nullopt},
        {"", std::nullopt},
        {"   ", std::nullopt},
        {".", std::nullopt},
        {".0", std::nullopt},
        {"- 5", std::nullopt},
        {"12 3", std::nullopt},
    };
    for (const auto &c : cases) {
        std::int32_t value = 4711;
        EXPECT_EQ(parseInteger(c.text, value), c.value.has_value()) << "text: \"" << c.text << "\"";
        EXPECT_EQ(value, c.value.value_or(4711)) << "text: \"" << c.text << "\"";
    }
}

TEST(NumberText, readsUnsignedIntegers)
{
    const struct
    {
        const char *text;
        std::optional<std::uint32_t> value;
    } cases[] = {
        {"4.", 4u},           {"4294967295", UINT32_MAX}, {"0xffffffff", UINT32_MAX},   {" 7 ", 7u},
        {"-1", std::nullopt}, {" -0", std::nullopt},      {"4294967296", std::nullopt}, {"x", std::nullopt},
    };
    for (const auto &c : cases) {
        std::uint32_t value = 4711;
        EXPECT_EQ(parseUnsigned(c.text, value), c.value.has_value()) << "text: \"" << c.text << "\"";
        EXPECT_EQ(value, c.value.value_or(4711)) << "text: \"" << c.text << "\"";
    }
}

TEST(NumberText, readsRealNumbersInTheirVariants)
{
    const struct
    {
        const char *text;
        std::optional<double> value;
    } cases[] = {
        {"1.5", 1.5},           {" -2.25 ", -2.25},      {"1.5D2", 150.0},          {"2,5", 2.5},
        {"1.5-3", 0.0015},      {"1.5+3", 1500.0},       {"1e3", 1000.0},           {".5", 0.5},
        {"15-3", std::nullopt}, {"1e999", std::nullopt}, {"1,5e999", std::nullopt}, {"abc", std::nullopt},
        {"", std::nullopt},     {"1.5 x", std::nullopt}, {"1,2,3", std::nullopt},
    };
    for (const auto &c : cases) {
        double value = 4711;
        EXPECT_EQ(parseDouble(c.text, value), c.value.has_value()) << "text: \"" << c.text << "\"";
        EXPECT_DOUBLE_EQ(value, c.value.value_or(4711)) << "text: \"" << c.text << "\"";
    }
}

TEST(NumberText, readsNotANumberTexts)
{
    for (const char *text : {"nan", "NAN", "-1.#IND", "1.#QNAN", " 1.#qnan "}) {
        double value = 0;
        EXPECT_TRUE(parseDouble(text, value)) << text;
        EXPECT_TRUE(std::isnan(value)) << text;
    }
}

TEST(NumberText, readsSinglePrecision)
{
    const struct
    {
        const char *text;
        std::optional<float> value;
    } cases[] = {
        {"-3.4e38", -3.4e38f},  {"1.25", 1.25f},       {"3.4028234663852886e38", 3.4028234663852886e38f},
        {"1e39", std::nullopt}, {"NAN", std::nullopt}, {"inf", std::nullopt},
    };
    for (const auto &c : cases) {
        float value = 4711;
        EXPECT_EQ(parseFloat(c.text, value), c.value.has_value()) << "text: \"" << c.text << "\"";
        EXPECT_FLOAT_EQ(value, c.value.value_or(4711)) << "text: \"" << c.text << "\"";
    }
}

TEST(NumberText, readsTruthValues)
{
    const struct
    {
        const char *text;
        std::optional<bool> value;
    } cases[] = {
        {"Yes", true}, {"true", true}, {"2", true},      {"-1.#IND", true}, {"0.5", true},           {"no", false},
        {"0", false},  {"nan", false}, {"False", false}, {"0.0", false},    {"maybe", std::nullopt}, {"", std::nullopt},
    };
    for (const auto &c : cases) {
        bool value = true;
        const bool accepted = parseBool(c.text, value);
        EXPECT_EQ(accepted, c.value.has_value()) << "text: \"" << c.text << "\"";
        if (c.value) {
            EXPECT_EQ(value, *c.value) << "text: \"" << c.text << "\"";
        }
    }
}

} // namespace
} // namespace vyr
