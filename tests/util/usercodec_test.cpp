#include <gtest/gtest.h>

#include "support/narrowcodepage.h"
#include "support/randomtext.h"
#include "util/usercodec.h"

namespace vyr {
namespace {

using UserStringTest = testing::NarrowCodePageTest<testing::kCp1252>;

TEST_F(UserStringTest, readsBackslashEscapesWhenEncoding)
{
    const struct
    {
        std::string text;
        std::string encoded;
    } cases[] = {
        {"", ""},
        {"a\\nb\\\\", "a<lf>b<backslash>"},
        {"\t", "<tab>"},
        {"\\t\\a\\b\\v\\f\\r", "<tab><bell><backspace><verttab><formfeed><cr>"},
        {"\\q", "q"},
        {"a\\", "a<backslash>"},
        {"\\\\n", "<backslash>n"}, // the produced backslash is not read again
        {"caf\xE9 \x80", "caf<u00e9><space><u20ac>"},
        {"\\\xE9", "<u00e9>"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(encodeUserString(c.text), c.encoded) << "text: \"" << c.text << "\"";
}

TEST_F(UserStringTest, writesBackslashEscapesWhenDecoding)
{
    const struct
    {
        std::string encoded;
        std::string text;
    } cases[] = {
        {"a<lf>b<backslash>", "a\\nb\\\\"},
        {"<tab>", "\\t"},
        {"<cr><bell><backspace><verttab><formfeed>", "\\r\\a\\b\\v\\f"},
        {"caf<u00e9>", "caf\xE9"},
        {"<u4e00>", "?"},
        {"<u>a\\\\b", "a\\\\b"},
        {"<u>caf\\u00e9", "caf\xE9"},
        {"<LT>", "<LT>"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(decodeUserString(c.encoded), c.text) << "encoded: \"" << c.encoded << "\"";
}

// The decoding, encoded again, is the encoding: nothing a user sees in the
// decoded (escaped) form changes the text when it is typed back.
TEST_F(UserStringTest, decodedTextEncodesToTheSameText)
{
    testing::RandomText random(11);
    for (int i = 0; i < 20000; ++i) {
        const std::string text = random.bytes(48);
        const std::string encoded = encodeUserString(text);
        ASSERT_EQ(encodeUserString(decodeUserString(encoded)), encoded) << "text: \"" << text << "\"";
    }
}

} // namespace
} // namespace vyr
