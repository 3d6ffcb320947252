#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "util/numbertext.h"

#include <cmath>
#include <initializer_list>
#include <optional>
#include <utility>

namespace vyr {
namespace {

// Reads each text into a value holding 4711 beforehand, which a refusal must
// leave alone; an expected not-a-number matches any not-a-number.
template <class T>
void expectReadings(bool (*parse)(std::string_view, T &),
                    std::initializer_list<std::pair<const char *, std::optional<T>>> cases)
{
    for (const auto &[text, expected] : cases) {
        T value = T(4711);
        EXPECT_EQ(parse(text, value), expected.has_value()) << "text: \"" << text << "\"";
        const T wanted = expected.value_or(T(4711));
        if constexpr (std::is_same_v<T, double>)
            EXPECT_THAT(value, ::testing::NanSensitiveDoubleEq(wanted)) << "text: \"" << text << "\"";
        else if constexpr (std::is_same_v<T, float>)
            EXPECT_THAT(value, ::testing::NanSensitiveFloatEq(wanted)) << "text: \"" << text << "\"";
        else
            EXPECT_EQ(value, wanted) << "text: \"" << text << "\"";
    }
}

constexpr std::nullopt_t refused = std::nullopt;

TEST(NumberText, readsIntegers)
{
    expectReadings<std::int32_t>(parseInteger,
                                 {{"12", 12},
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
                                  {"2147483648", refused},
                                  {"99999999999", refused},
                                  {"12.5", refused},
                                  {"1e3", refused},
                                  {"abc", refused},
                                  {"", refused},
                                  {"   ", refused},
                                  {".", refused},
                                  {".0", refused},
                                  {"- 5", refused},
                                  {"12 3", refused}});
    expectReadings<std::uint32_t>(parseUnsigned,
                                  {{"4.", 4u},
                                   {"4294967295", UINT32_MAX},
                                   {"0xffffffff", UINT32_MAX},
                                   {" 7 ", 7u},
                                   {"-1", refused},
                                   {" -0", refused},
                                   {"4294967296", refused},
                                   {"x", refused}});
}

TEST(NumberText, readsRealNumbersInTheirVariants)
{
    expectReadings<double>(parseDouble,
                           {{"1.5", 1.5},       {" -2.25 ", -2.25}, {"1.5D2", 150.0},   {"2,5", 2.5},
                            {"1.5-3", 0.0015},  {"1.5+3", 1500.0},  {"1e3", 1000.0},    {".5", 0.5},
                            {"nan", NAN},       {"NAN", NAN},       {"-1.#IND", NAN},   {"1.#QNAN", NAN},
                            {" 1.#qnan ", NAN}, {"15-3", refused},  {"1e999", refused}, {"1,5e999", refused},
                            {"abc", refused},   {"", refused},      {"1.5 x", refused}, {"1,2,3", refused}});
    expectReadings<float>(parseFloat,
                          {{"-3.4e38", -3.4e38f},
                           {"1.25", 1.25f},
                           {"3.4028234663852886e38", 3.4028234663852886e38f},
                           {"1e39", refused},
                           {"NAN", refused},
                           {"inf", refused}});
}

TEST(NumberText, readsTruthValues)
{
    expectReadings<bool>(parseBool,
                         {{"Yes", true},
                          {"true", true},
                          {"2", true},
                          {"-1.#IND", true},
                          {"0.5", true},
                          {"no", false},
                          {"0", false},
                          {"nan", false},
                          {"False", false},
                          {"0.0", false},
                          {"maybe", refused},
                          {"", refused}});
}

TEST(NumberText, plainTextOfWhatWasRead)
{
    const struct
    {
        const char *text;
        std::optional<std::string> plain;
    } cases[] = {
        // Plain decimals are kept as written.
        {"2.50", "2.50"}, {"-0", "-0"}, {"+3e1", "+3e1"}, {".5", ".5"}, {"5.", "5."}, {"1E-3", "1E-3"},
        // The other forms become the number read.
        {"1,5", "1.5"}, {" 7 ", "7"}, {"1.5D2", "150"}, {"1.5-3", "0.0015"}, {"0x10", "16"},
        // No finite number: nothing.
        {"", std::nullopt}, {"abc", std::nullopt}, {"1e400", std::nullopt}, {"nan", std::nullopt},
        {"inf", std::nullopt}, {"1.", "1."}, {"e5", std::nullopt}, {"1e", std::nullopt},
    };
    for (const auto &c : cases) {
        const std::optional<std::string> plain = plainNumberText(c.text);
        EXPECT_EQ(plain, c.plain) << "text: \"" << c.text << "\"";
        double read = 0;
        double again = 0;
        if (plain) {
            EXPECT_TRUE(parseDouble(c.text, read) && parseDouble(*plain, again) && read == again) << c.text;
        }
    }
}

} // namespace
} // namespace vyr
