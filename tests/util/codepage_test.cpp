#include <gtest/gtest.h>

#include "support/randomtext.h"
#include "support/scopedenvironment.h"
#include "util/codepage.h"
#include "util/stringconverter.h"

#include <optional>

namespace vyr {
namespace {

// Each test's environment and narrow code page are put back afterwards.
class NarrowCodePage : public ::testing::Test
{
protected:
    ~NarrowCodePage() override { resetNarrowCodePage(); }
    test::ScopedEnvironment m_env;
};

TEST(CodePageNames, canonicalNames)
{
    const struct
    {
        const char *given;
        std::optional<std::string> expected;
    } cases[] = {
        {"cp1252", "CP1252"},
        {"1252", "CP1252"},
        {"65001", "UTF-8"},
        {"utf8", "UTF-8"},
        {"utf-8", "UTF-8"},
        {"28591", "ISO-8859-1"},
        {"932", "CP932"},
        {"euc-jp", "EUC-JP"},
        {"gb18030", "GB18030"},
        {"NO-SUCH-CHARSET", std::nullopt},
        // They would change ASCII bytes: "+" starts a run in UTF-7, "A" is
        // not 0x41 in EBCDIC, and the wide ones make two or four bytes.
        {"UTF-7", std::nullopt},
        // Shifted, every byte of a character is ASCII: a comma may be half
        // of one.
        {"iso-2022-jp", std::nullopt},
        {"50220", std::nullopt},
        {"UTF-16", std::nullopt},
        {"UTF-32", std::nullopt},
        {"CP037", std::nullopt},
        {"", std::nullopt},
        {"UTF-8//TRANSLIT", std::nullopt},
        {"99999", std::nullopt},
    };
    for (const auto &c : cases)
        EXPECT_EQ(canonicalCodePageName(c.given), c.expected) << "name: \"" << c.given << "\"";
}

TEST_F(NarrowCodePage, comesFromVyrCodepageThenLocale)
{
    const struct
    {
        std::optional<std::string> vyrCodePage;
        const char *locale;
        const char *expected;
    } cases[] = {
        {"1252", "C", "CP1252"},
        {"NO-SUCH-CHARSET", "C", "UTF-8"}, // an unknown VYR_CODEPAGE falls back to the locale
        {"UTF-7", "C", "UTF-8"}, // and so does one that is refused
        {std::nullopt, "POSIX", "UTF-8"},
        {std::nullopt, "xx_YY.ISO-8859-15@euro", "ISO-8859-15"}, // not installed, yet it names its codeset
    };
    for (const auto &c : cases) {
        m_env.set("VYR_CODEPAGE", c.vyrCodePage);
        m_env.set("LC_ALL", c.locale);
        resetNarrowCodePage();
        EXPECT_EQ(narrowCodePage(), c.expected) << c.vyrCodePage.value_or("(unset)") << " / " << c.locale;
    }
}

TEST_F(NarrowCodePage, aRefusedCodePageSaysWhy)
{
    std::string refusal;
    EXPECT_FALSE(canonicalCodePageName("utf-7", &refusal));
    EXPECT_NE(refusal.find("\"utf-7\""), std::string::npos) << refusal;
    EXPECT_NE(refusal.find("ASCII"), std::string::npos) << refusal;
    EXPECT_FALSE(setNarrowCodePage("UTF-16"));

    const struct
    {
        std::optional<std::string> vyrCodePage;
        const char *says; // nullptr: nothing to say
    } cases[] = {
        {std::nullopt, nullptr},          {"CP1252", nullptr}, {"0", nullptr}, {"UTF-7", "ASCII"},
        {"NO-SUCH-CHARSET", "not known"},
    };
    for (const auto &c : cases) {
        m_env.set("VYR_CODEPAGE", c.vyrCodePage);
        const std::optional<std::string> said = refusedVyrCodePage();
        ASSERT_EQ(said.has_value(), c.says != nullptr) << c.vyrCodePage.value_or("(unset)");
        if (said) {
            EXPECT_NE(said->find(c.says), std::string::npos) << *said;
        }
    }
}

TEST_F(NarrowCodePage, convertersFollowAChangeButNotAnUnknownName)
{
    const VYRSimpleWindowsStringConverter ansi(kAnsiCodePage);
    ASSERT_TRUE(setNarrowCodePage("CP1252"));
    EXPECT_EQ(ansi.toWide("\x80"), u"\u20AC");
    ASSERT_TRUE(setNarrowCodePage("ISO-8859-15"));
    EXPECT_FALSE(setNarrowCodePage("NO-SUCH-CHARSET"));
    EXPECT_EQ(narrowCodePage(), "ISO-8859-15");
    EXPECT_EQ(ansi.toWide("\xA4"), u"\u20AC");
    EXPECT_EQ(ansi.fromWide(u"\u20AC"), "\xA4");
}

struct ConversionCase
{
    const char *name;
    std::uint32_t codePage;
    std::string narrow;
    std::u16string wide;

    friend void PrintTo(const ConversionCase &c, std::ostream *os) { *os << c.name; }
};

class StringConverterTest : public ::testing::TestWithParam<ConversionCase>
{
};

// Both directions: the narrow text is what the wide one turns back into.
TEST_P(StringConverterTest, convertsBothWays)
{
    const ConversionCase &c = GetParam();
    const VYRSimpleWindowsStringConverter converter(c.codePage);
    EXPECT_EQ(converter.toWide(c.narrow), c.wide);
    EXPECT_EQ(converter.fromWide(c.wide), c.narrow);
}

INSTANTIATE_TEST_SUITE_P(
    KnownTexts, StringConverterTest,
    ::testing::Values(ConversionCase{"empty", 1252, "", u""}, ConversionCase{"cp1252Euro", 1252, "a\x80z", u"a\u20ACz"},
                      ConversionCase{"cp1252UndefinedByteKept", 1252, "\x81\x8D", u"\xDC81\xDC8D"},
                      ConversionCase{"embeddedNul", 1252, std::string("a\0b", 3), std::u16string(u"a\0b", 3)},
                      ConversionCase{"utf8Astral", 65001, "\xF0\x9F\x98\x80", u"\xD83D\xDE00"},
                      ConversionCase{"utf8Overlong", 65001, "\xC0\x80", u"\xDCC0\xDC80"},
                      ConversionCase{"utf8EncodedSurrogate", 65001, "\xED\xA0\x80", u"\xDCED\xDCA0\xDC80"},
                      ConversionCase{"utf8BeyondUnicode", 65001, "\xF4\x90\x80\x80", u"\xDCF4\xDC90\xDC80\xDC80"},
                      ConversionCase{"utf8Truncated", 65001, "\xE2\x82z", u"\xDCE2\xDC82z"},
                      ConversionCase{"cp932Kana", 932, "\x82\xA0x", u"\u3042x"},
                      ConversionCase{"cp932LoneLeadByte", 932, "x\x82", u"x\xDC82"}),
    [](const auto &info) { return std::string(info.param.name); });

TEST(StringConverter, unmappableCharactersBecomeQuestionMarks)
{
    const struct
    {
        std::uint32_t codePage;
        std::u16string wide;
        std::string narrow;
    } cases[] = {
        {1252, u"\u4E00", "?"}, {1252, u"x\xD83D\xDE00y", "x?y"}, // one mark for a whole pair
        {1252, u"\xD83D", "?"}, // unpaired surrogates
        {1252, u"\xDE00", "?"}, {65001, u"\xD800z", "?z"},        {932, u"\x00E9", "?"}, {932, u"\xD83D\xDE00", "?"},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(VYRSimpleWindowsStringConverter(c.codePage).fromWide(c.wide), c.narrow) << "code page " << c.codePage;
    }
}

// Every byte string survives a trip through UTF-16 in code pages that map
// one-to-one, valid in the code page or not.
TEST(StringConverter, everyByteStringSurvivesTheTrip)
{
    testing::RandomText random(1252);
    for (std::uint32_t codePage : {1252u, 65001u, 28595u}) {
        const VYRSimpleWindowsStringConverter converter(codePage);
        for (int i = 0; i < 3000; ++i) {
            const std::string text = random.bytes(40);
            ASSERT_EQ(converter.fromWide(converter.toWide(text)), text) << "code page " << codePage;
        }
    }
}

// Bytes a multi-byte code page cannot decode stop the conversion at each
// one: a long text of them converts exactly as its pieces do one by one,
// both ways.
TEST(StringConverter, undecodableRunsConvertAsTheirPiecesDo)
{
    const struct
    {
        std::uint32_t codePage;
        std::string character; // one character in the code page
    } cases[] = {
        {932, "\x82\xA0"},
        {20932, "\xA4\xA2"},
        {54936, "\x81\x30\x81\x30"},
    };
    for (const auto &c : cases) {
        const VYRSimpleWindowsStringConverter converter(c.codePage);
        ASSERT_EQ(converter.toWide(c.character).size(), 1u) << "code page " << c.codePage;
        std::string narrow;
        std::u16string wide;
        std::u16string expectedWide;
        std::string expectedNarrow;
        for (int i = 0; i < 3000; ++i) {
            const std::string undecodable(1 + i % 3, '\xFF');
            narrow += c.character + undecodable;
            // A lone high surrogate: no code page holds it, GB18030 included.
            wide += converter.toWide(c.character) + converter.toWide(undecodable) + u"\xD800";
            expectedWide += converter.toWide(c.character) + converter.toWide(undecodable);
            expectedNarrow += c.character + undecodable + "?";
        }
        EXPECT_EQ(converter.toWide(narrow), expectedWide) << "code page " << c.codePage;
        EXPECT_EQ(converter.fromWide(wide), expectedNarrow) << "code page " << c.codePage;
    }
}

} // namespace
} // namespace vyr
