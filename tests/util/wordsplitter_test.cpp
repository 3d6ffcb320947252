#include <gtest/gtest.h>

#include "support/narrowcodepage.h"
#include "util/wordsplitter.h"

#include <optional>

namespace vyr {
namespace {

struct SplitCase
{
    const char *name;
    std::string text;
    std::string delimiters;
    bool skipEmpty;
    bool checkParentheses;
    bool keepEscapedQuotes;
    std::optional<std::vector<std::string>> words; // nothing: refused

    friend void PrintTo(const SplitCase &c, std::ostream *os) { *os << c.name; }
};

class WordSplitterTest : public testing::NarrowCodePageTest<testing::kCp1252>,
                         public ::testing::WithParamInterface<SplitCase>
{
};

TEST_P(WordSplitterTest, splitsIntoWords)
{
    const SplitCase &c = GetParam();
    std::vector<std::string> words{"kept"};
    const bool accepted = splitWords(c.text, words, c.delimiters, c.skipEmpty, c.checkParentheses, c.keepEscapedQuotes);
    ASSERT_EQ(accepted, c.words.has_value());
    std::vector<std::string> expected{"kept"};
    if (c.words)
        expected.insert(expected.end(), c.words->begin(), c.words->end());
    EXPECT_EQ(words, expected) << "the words are appended, and only on success";
}

using Words = std::vector<std::string>;

INSTANTIATE_TEST_SUITE_P(
    Texts, WordSplitterTest,
    ::testing::Values(
        SplitCase{"quotedWord", "a \"b c\" d", " ", false, false, false, Words{"a", "b c", "d"}},
        SplitCase{"blanksInParentheses", "x(1, 2)", " ", false, true, false, Words{"x(1,2)"}},
        SplitCase{"parenthesesUnchecked", "x(1, 2)", " ", false, false, false, Words{"x(1,", "2)"}},
        SplitCase{"emptyQuotesKept", "a \"\" b", " ", false, false, false, Words{"a", "", "b"}},
        SplitCase{"emptyQuotesSkipped", "a \"\" b", " ", true, false, false, Words{"a", "b"}},
        SplitCase{"runsOfDelimiters", ",,a,b,,c,", ",", false, false, false, Words{"a", "b", "c"}},
        SplitCase{"leadingAndTrailingBlanks", "  lead trail  ", " ", false, false, false, Words{"lead", "trail"}},
        SplitCase{"escapedQuotes", "say \\\"hi\\\"", " ", false, false, false, Words{"say", "\"hi\""}},
        SplitCase{"escapedQuotesKept", "say \\\"hi\\\"", " ", false, false, true, Words{"say", "\\\"hi\\\""}},
        SplitCase{"quotedParentheses", "\"a(b) c\" d", " ", false, true, false, Words{"a(b) c", "d"}},
        SplitCase{"quotedTab", "\"a\tb\"\tc", " \t", false, false, false, Words{"a\tb", "c"}},
        SplitCase{"narrowCodePageText", "caf\xE9 \"na\xEFve x\"", " ", false, false, false,
                  Words{"caf\xE9", "na\xEFve x"}},
        SplitCase{"emptyText", "", " ", false, false, false, Words{}},
        SplitCase{"openQuote", "a \"b", " ", false, false, false, std::nullopt},
        SplitCase{"openParenthesis", "x(1", " ", false, true, false, std::nullopt},
        SplitCase{"strayParenthesis", "x)", " ", false, true, false, std::nullopt},
        SplitCase{"reservedCharacter", "a\x02 b", " ", false, false, false, std::nullopt}),
    [](const auto &info) { return std::string(info.param.name); });

} // namespace
} // namespace vyr
