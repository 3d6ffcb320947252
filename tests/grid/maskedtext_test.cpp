#include "grid/maskedtext.h"

#include <gtest/gtest.h>

namespace vyr {
namespace {

TEST(MaskedTextTest, EachMaskCharacterAcceptsItsKind)
{
    struct Case
    {
        char16_t mask;
        const char16_t *accepted;
        const char16_t *refused;
    };
    const Case cases[] = {
        {u'0', u"07", u"a -+."},
        {u'9', u"5 ", u"x+"},
        {u'#', u"3 +-", u"a."},
        {u'L', u"aZé", u"1 _"},
        {u'?', u"b ", u"2-"},
        {u'A', u"c4", u" -"},
        {u'a', u"d5 ", u"-."},
        {u'&', u"x!~ ", u"\t"},
        {u'C', u"y?", u"\n"},
        {u'~', u"8+-.", u"e "},
        {u'(', u"anything", u""},
    };
    for (const Case &c : cases) {
        for (const char16_t *typed = c.accepted; *typed; ++typed)
            EXPECT_TRUE(maskAccepts(QChar(c.mask), QChar(*typed))) << char(c.mask) << " should take " << int(*typed);
        for (const char16_t *typed = c.refused; *typed; ++typed)
            EXPECT_FALSE(maskAccepts(QChar(c.mask), QChar(*typed))) << char(c.mask) << " should refuse " << int(*typed);
    }
}

TEST(MaskedTextTest, TypingFillsInputPositionsAndSkipsLiterals)
{
    MaskedText text("(000) 000-0000", "");
    EXPECT_EQ(text.display(), "(___) ___-____");
    EXPECT_TRUE(text.value().isEmpty());
    int caret = text.nextInput(0);
    EXPECT_EQ(caret, 1);
    for (QChar digit : QStringLiteral("5551234")) {
        caret = text.type(caret, digit);
        ASSERT_GE(caret, 0);
        caret = text.nextInput(caret);
    }
    EXPECT_EQ(text.display(), "(555) 123-4___");
    EXPECT_EQ(text.value(), "(555) 123-4");
    EXPECT_EQ(text.type(caret, u'x'), -1);
    EXPECT_EQ(text.type(99, u'1'), -1);

    caret = text.backspace(caret);
    EXPECT_EQ(text.display(), "(555) 123-____");
    // Backspace over a literal clears the input before it.
    caret = text.backspace(10);
    EXPECT_EQ(text.display(), "(555) 12_-____");
    EXPECT_EQ(caret, 8);
    text.erase(1);
    EXPECT_EQ(text.value(), "( 55) 12");
}

TEST(MaskedTextTest, StoredValuesComeBackIntoTheirPositions)
{
    EXPECT_EQ(MaskedText("(000) 000", "(123) 4").display(), "(123) 4__");
    EXPECT_EQ(MaskedText("000-000", "123456").display(), "123-456");
    EXPECT_EQ(MaskedText("LL", "a1").display(), "a_");
    EXPECT_EQ(MaskedText("", "free text").display(), "");
}

} // namespace
} // namespace vyr
