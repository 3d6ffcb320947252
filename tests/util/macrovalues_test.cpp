#include "util/guianswers.h"
#include "util/macrovalues.h"

#include <gtest/gtest.h>

namespace vyr {
namespace {

TEST(MacroValuesTest, JoinQuotesBlanksAndEmptiesAndDropsTrailingPercents)
{
    struct Case
    {
        StringList values;
        const char *joined;
    };
    const Case cases[] = {
        {{"a b", "", "c"}, "\"a b\"%\"\"%c"},
        {{"x", "50%"}, "x%50"},
        {{"\"kept as is\""}, "\"kept as is\""},
        {{}, ""},
        {{""}, "\"\""},
        {{"one"}, "one"},
    };
    for (const Case &c : cases)
        EXPECT_EQ(joinMacroValues(c.values), c.joined) << c.joined;
}

TEST(MacroValuesTest, SplitUndoesJoinForValuesWithoutPercentSigns)
{
    const StringList lists[] = {{"a b", "", "c"}, {"Yes", "No"}, {"one"}, {"x y z", "w"}};
    for (const StringList &values : lists)
        EXPECT_EQ(splitMacroValues(joinMacroValues(values)), values) << joinMacroValues(values);
    EXPECT_EQ(splitMacroValues("\"a%b\"%c"), (StringList{"a%b", "c"}));
    EXPECT_EQ(splitMacroValues("\"a b\"%c", true), (StringList{"\"a b\"", "c"}));
    EXPECT_EQ(splitMacroValues("\"open%end"), (StringList{"\"open%end"}));
    EXPECT_TRUE(splitMacroValues("").empty());
}

TEST(MacroValuesTest, TokensEndAtBlanksOutsideQuotes)
{
    std::string_view rest = "  KEY \"a b\"%c  the prompt text";
    EXPECT_EQ(takeMacroToken(rest), "KEY");
    EXPECT_EQ(takeMacroToken(rest), "\"a b\"%c");
    EXPECT_EQ(rest, " the prompt text");
    std::string_view last = "only";
    EXPECT_EQ(takeMacroToken(last), "only");
    EXPECT_TRUE(last.empty());
}

TEST(GuiAnswersTest, EachReadModeOverTheSameFile)
{
    const std::string file = "a\nb\n\nc\n\n";
    struct Case
    {
        AnswerReadMode mode;
        StringList expected;
    };
    const Case cases[] = {
        {AnswerReadMode::AllLines, {"a", "b", "", "c", ""}},
        {AnswerReadMode::NonEmptyLines, {"a", "b", "c"}},
        {AnswerReadMode::Pairs, {"a", "b", "c", ""}},
    };
    for (const Case &c : cases) {
        StringList answers{"kept"};
        readGuiAnswers(file, c.mode, answers);
        StringList expected{"kept"};
        expected.insert(expected.end(), c.expected.begin(), c.expected.end());
        EXPECT_EQ(answers, expected) << static_cast<int>(c.mode);
    }
    StringList unterminated;
    readGuiAnswers("KEY\nvalue", AnswerReadMode::Pairs, unterminated);
    EXPECT_EQ(unterminated, (StringList{"KEY", "value"}));
}

} // namespace
} // namespace vyr
