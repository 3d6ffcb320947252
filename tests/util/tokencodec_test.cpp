#include <gtest/gtest.h>

#include "support/encodedtext.h"
#include "support/narrowcodepage.h"
#include "support/randomtext.h"
#include "util/tokencodec.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace vyr {
namespace {

using WWJDTest = testing::NarrowCodePageTest<testing::kCp1252>;

TEST_F(WWJDTest, encodesSpecialCharactersAsTokens)
{
    const struct
    {
        std::string text;
        std::string encoded;
    } cases[] = {
        {"", ""},
        {"a b,c", "a<space>b<comma>c"},
        {"\xE9", "<u00e9>"},
        {"\x80", "<u20ac>"},
        {"#%*=:!?_-+.~|^", "#%*=:!?_-+.~|^"},
        {"<>\"&\\/'$@ ,()[]{};",
         "<lt><gt><quote><amp><backslash><solidus><apos><dollar><at><space><comma><openparen>"
         "<closeparen><openbracket><closebracket><opencurly><closecurly><semicolon>"},
        {"\n\r\t\a\b\v\f", "<lf><cr><tab><bell><backspace><verttab><formfeed>"},
        {std::string("\x00\x01\x1F\x7F", 4), std::string("\x00\x01\x1F\x7F", 4)},
        {"\x81", "<udc81>"}, // not a CP1252 character: kept as its byte
    };
    for (const auto &c : cases) {
        EXPECT_EQ(encodeWWJD(c.text), c.encoded) << "text: \"" << c.text << "\"";
        EXPECT_EQ(decodeWWJD(c.encoded), c.text) << "encoded: \"" << c.encoded << "\"";
    }
}

TEST_F(WWJDTest, decodingCarriesUnknownTokensThrough)
{
    const struct
    {
        std::string encoded;
        std::string text;
    } cases[] = {
        {"<LT>", "<LT>"},
        {"<U00E9>", "<U00E9>"},
        {"<>", "<>"},
        {"<abc", "<abc"},
        {"a<lt", "a<lt"},
        {"<<lt>", "<<lt>"}, // the token is "<lt"
        {"<u0041", "<u0041"},
        {"<u>", ""},
        {"<u0000>", ""},
        {"<uzzzz>", ""},
        {"<u00e9x>", "<u00e9x>"},
        {"<u 041>", "A"}, // read as "%4x" reads
        {"x<u20ac>y", "x\x80y"},
        {"\xE9<u00e9>", "\xE9\xE9"}, // raw bytes beside tokens are kept
        {"<ud83d><ude00>", "?"}, // a pair CP1252 cannot hold
        {"<udc81>", "\x81"},
        {"<u>caf\\u00e9", "caf\xE9"}, // the legacy form
        {"<u>a\\\\b", "a\\b"},
        {"<u>a\\u12", "a\\u12"},
        {"<u>a<space>\\", "a \\"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(decodeWWJD(c.encoded), c.text) << "encoded: \"" << c.encoded << "\"";
}

TEST_F(WWJDTest, euroSignNeedsACodePageThatHasIt)
{
    ASSERT_TRUE(setNarrowCodePage("ISO-8859-1"));
    EXPECT_EQ(decodeWWJD("x<u20ac>y"), "x?y");
    ASSERT_TRUE(setNarrowCodePage("UTF-8"));
    EXPECT_EQ(decodeWWJD("x<u20ac>y"),
              "x\xE2\x82\xAC"
              "y");
    EXPECT_EQ(encodeWWJD("\xF0\x9F\x98\x80"), "<ud83d><ude00>");
    EXPECT_EQ(decodeWWJD("<ud83d><ude00>"), "\xF0\x9F\x98\x80");
}

TEST(TokenCodec, narrowDecodingKeepsTheLowByteAndWideExpandsEscapes)
{
    EXPECT_EQ(decodeTokens("<u00e9><u20ac><lt>"), "\xE9\xAC<");
    EXPECT_EQ(decodeTokensWide("<u00e9><u20ac><lt>"), u"\u00E9\u20AC<");
    EXPECT_EQ(decodeTokensWide("\xE9"), u"\xDCE9");
    EXPECT_EQ(encodeTokens(u"\u00E9<\xD83D\xDE00"), "<u00e9><lt><ud83d><ude00>");
    const struct
    {
        std::string text;
        std::u16string expanded;
    } cases[] = {
        {"caf\\u00e9", u"caf\u00E9"}, {"\\u20AC", u"\u20AC"}, {"a\\\\b", u"a\\b"},
        {"a\\u12", u"a\\u12"},        {"a\\", u"a\\"},        {"\\x", u"\\x"},
        {"\xE9", u"\u00E9"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(expandUnicodeEscapes(c.text), c.expanded) << "text: \"" << c.text << "\"";
}

// In both code pages: decodeWWJD(encodeWWJD(x)) == x for every byte string,
// the encoding is free of the special characters, and whatever a decoder is
// given, encoding its answer and decoding again gives the same answer.
TEST_F(WWJDTest, everyTextSurvivesTheTripAndDecodedTextIsStable)
{
    testing::RandomText random(7);
    for (const char *codePage : {"CP1252", "UTF-8"}) {
        ASSERT_TRUE(setNarrowCodePage(codePage));
        for (int i = 0; i < 20000; ++i) {
            const std::string text = i % 2 ? random.utf8(24) : random.bytes(48);
            const std::string encoded = encodeWWJD(text);
            ASSERT_EQ(testing::firstForbiddenByte(encoded), std::string_view::npos) << codePage << ": " << encoded;
            ASSERT_EQ(decodeWWJD(encoded), text) << codePage << ", encoded: \"" << encoded << "\"";

            const std::string any = (i % 3 ? "" : "<u>") + random.bytes(32);
            const std::string decoded = decodeWWJD(any);
            ASSERT_EQ(decodeWWJD(encodeWWJD(decoded)), decoded) << codePage << ", text: \"" << any << "\"";
        }
    }
}

// Encoded-looking text: tokens of every kind, well-formed or not, between
// runs of raw bytes.
std::string tokenSoup(testing::RandomText &random, std::size_t pieces)
{
    static const char *const kOddTokens[] = {"<u>",     "<>",      "<LT>",    "<u 041>", "<u0000>", "<uzzzz>", "<<lt>",
                                             "<ud83d>", "<ude00>", "<udc80>", "<u20ac>", "<lt",     "<u00e9"};
    std::string text = random.number(8) == 0 ? "<u>" : "";
    for (std::size_t i = 0; i < pieces; ++i) {
        switch (random.number(5)) {
        case 0: text += "<" + std::string(kCharacterTokens[random.number(kCharacterTokens.size())].name) + ">"; break;
        case 1: {
            char unit[8];
            std::snprintf(unit, sizeof unit, "<u%04zx>", random.number(0x10000));
            text += unit;
            break;
        }
        case 2: text += kOddTokens[random.number(std::size(kOddTokens))]; break;
        default: text += random.bytes(20); break;
        }
    }
    return text;
}

// The token decoding written as plainly as it can be, a byte at a time:
// UTF-16, a raw byte above 127 kept as U+DC00 + byte.
std::u16string plainDecodingWide(std::string_view text)
{
    std::u16string units;
    const auto raw = [&units](std::string_view bytes) {
        for (const char c : bytes) {
            const auto byte = static_cast<unsigned char>(c);
            units += static_cast<char16_t>(byte < 0x80 ? byte : 0xDC00 + byte);
        }
    };
    for (std::size_t i = 0; i < text.size();) {
        if (text[i] != '<') {
            raw(text.substr(i++, 1));
            continue;
        }
        const std::size_t close = text.find('>', i + 1);
        if (close == std::string_view::npos) {
            raw(text.substr(i));
            break;
        }
        const std::string_view token = text.substr(i + 1, close - i - 1);
        const auto named = std::find_if(kCharacterTokens.begin(), kCharacterTokens.end(),
                                        [&](const CharacterToken &row) { return row.name == token; });
        if (named != kCharacterTokens.end()) {
            units += static_cast<char16_t>(named->character);
        } else if (token.size() == 5 && token[0] == 'u') {
            char digits[5] = {};
            std::memcpy(digits, token.data() + 1, 4);
            unsigned value = 0;
            if (std::sscanf(digits, "%4x", &value) == 1 && (value & 0xFFFF) != 0)
                units += static_cast<char16_t>(value);
        } else if (token != "u") {
            raw(text.substr(i, close - i + 1));
        }
        i = close + 1;
    }
    return units;
}

// The same in narrow form: the low byte of each unit.
std::string plainDecoding(std::string_view text)
{
    std::string bytes;
    for (const char16_t unit : plainDecodingWide(text))
        bytes += static_cast<char>(unit);
    return bytes;
}

// The fast paths (conversion in pieces, decoding many bytes at a time,
// decoding straight into the code page) give exactly what the plain steps
// give one after the other, on texts small and large.
TEST_F(WWJDTest, fastPathsAgreeWithThePlainSteps)
{
    testing::RandomText random(41);
    for (const char *codePage : {"CP1252", "UTF-8", "ISO-8859-15", "CP932"}) {
        ASSERT_TRUE(setNarrowCodePage(codePage));
        const VYRSimpleWindowsStringConverter ansi(kAnsiCodePage);
        for (const std::size_t size : {0, 1, 17, 300, 40000, 70000}) {
            std::string text;
            while (text.size() < size)
                text += random.number(2) ? random.utf8(40) : random.bytes(40);
            EXPECT_EQ(encodeWWJD(text), encodeTokens(ansi.toWide(text))) << codePage << ", " << text.size() << " bytes";

            const std::string soup = tokenSoup(random, size / 8 + 1);
            std::string plain;
            if (soup.size() > 3 && soup.starts_with("<u>"))
                plain = ansi.fromWide(expandUnicodeEscapes(plainDecoding(soup.substr(3))));
            else if (soup.find("<u") != std::string::npos)
                plain = ansi.fromWide(plainDecodingWide(soup));
            else
                plain = plainDecoding(soup);
            EXPECT_EQ(decodeWWJD(soup), plain) << codePage << ", " << soup.size() << " bytes";
        }
    }
}

} // namespace
} // namespace vyr
