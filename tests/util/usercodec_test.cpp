#include <gtest/gtest.h>

#include <algorithm>

#include "support/narrowcodepage.h"
#include "support/randomtext.h"
#include "util/stringconverter.h"
#include "util/tokencodec.h"
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
        // Control characters without a token pass as they are, NUL included.
        {std::string("a\x00\x01\x1F\x7F", 5), std::string("a\x00\x01\x1F\x7F", 5)},
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
        {std::string("a\x00\x01\x1F\x7F", 5), std::string("a\x00\x01\x1F\x7F", 5)},
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

// The user codec as three whole-text steps through UTF-8: what the codec,
// which works in the narrow code page without copies, must still give.
std::string escapesResolved(std::string_view text)
{
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char c = text[i];
        if (c == '\\' && i + 1 < text.size()) {
            c = text[++i];
            for (const BackslashEscape &escape : kBackslashEscapes)
                c = escape.letter == text[i] ? escape.character : c;
        }
        out.push_back(c);
    }
    return out;
}

std::string escapesWritten(std::string_view text)
{
    std::string out;
    for (const char c : text) {
        const auto escape = std::find_if(kBackslashEscapes.begin(), kBackslashEscapes.end(),
                                         [c](const BackslashEscape &e) { return e.character == c; });
        if (escape != kBackslashEscapes.end())
            out += {'\\', escape->letter};
        else
            out.push_back(c);
    }
    return out;
}

// Valid text in the narrow code page with backslashes, escape letters and
// token characters among its characters.
std::string escapedCharacters(testing::RandomText &random, std::size_t maxChars)
{
    static const std::string kAscii = "\\\\\\ntab<>u0 \t\n,";
    std::string utf8 = random.utf8(maxChars);
    for (char &c : utf8) {
        if (static_cast<unsigned char>(c) < 0x80 && random.number(2))
            c = kAscii[random.number(kAscii.size())];
    }
    // Two characters of CP932 whose second byte is 92, the byte of a backslash.
    return utf8ToAnsi(utf8 + "\xE3\x82\xBD\xE8\xA1\xA8\\n");
}

TEST(UserStringThroughUtf8, givesWhatTheWholeTextStepsGiveInEveryKindOfCodePage)
{
    // A single-byte code page, UTF-8 itself and one of two-byte characters.
    for (const char *codePage : {"CP1252", "UTF-8", "CP932"}) {
        ASSERT_TRUE(setNarrowCodePage(codePage)) << codePage;
        testing::RandomText random(7);
        for (int i = 0; i < 1200; ++i) {
            // Long texts cross the codec's 16 K pieces; the first two put
            // escapes on both sides of every cut.
            const std::size_t length = i % 300 == 0 ? 40000 : 40;
            std::string text = i % 3 == 0 && std::string_view(codePage) == "CP1252" ? random.bytes(length)
                                                                                   : escapedCharacters(random, length);
            if (i < 2) {
                text.assign(static_cast<std::size_t>(i), 'a');
                for (int k = 0; k < 20000; ++k)
                    text += "\\n";
            }
            const std::string expectedEncoding =
                encodeTokenText(escapesResolved(ansiToUtf8(text)), kUtf8CodePage);
            ASSERT_EQ(encodeUserString(text), expectedEncoding) << codePage << " text: \"" << text << "\"";
            // The legacy form reads "\\uXXXX" escapes after its prefix.
            for (const std::string &encoded : {expectedEncoding, text, "<u>" + text}) {
                ASSERT_EQ(decodeUserString(encoded),
                          utf8ToAnsi(escapesWritten(decodeTokenText(ansiToUtf8(encoded), kUtf8CodePage))))
                    << codePage << " encoded: \"" << encoded << "\"";
            }
        }
    }
    resetNarrowCodePage();
}

} // namespace
} // namespace vyr
