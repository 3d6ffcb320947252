#include <gtest/gtest.h>

#include "support/patternreference.h"
#include "support/randomtext.h"
#include "util/pattern.h"

#include <optional>

namespace vyr {
namespace {

struct FindCase
{
    const char *pattern;
    std::string text;
    std::optional<std::pair<std::size_t, std::size_t>> match;
};

std::optional<std::pair<std::size_t, std::size_t>> findSpan(const Pattern &pattern, std::string_view text)
{
    const auto match = pattern.find(text);
    if (!match)
        return std::nullopt;
    return std::make_pair(match->begin, match->end);
}

TEST(Pattern, findsTheLeftmostMatch)
{
    using Span = std::pair<std::size_t, std::size_t>;
    const FindCase cases[] = {
        // The patterns the system itself uses.
        {",[^,()]*$", "fn(a,b),c d", Span{7, 11}},
        {",[^,()]*$", "fn(a,b)", std::nullopt},
        {"^[^(]+(.*)$", "vyr_char(20)", Span{0, 12}},
        {"^[^(]+(.*)$", "(20)", std::nullopt},
        {"^\\*?vyr_geometry{.*}$", "*vyr_geometry{point}", Span{0, 20}},
        {"^\\*?vyr_geometry{.*}$", "vyr_geometry{}", Span{0, 14}},
        {"^\\*?vyr_geometry{.*}$", "**vyr_geometry{}", std::nullopt},
        {"_[0-9]+$", "road_12", Span{4, 7}},
        {"_[0-9]+$", "road_12_x", std::nullopt},
        {"[0-9][-+][0-9]+$", "1.5-3", Span{2, 5}},
        // The syntax piece by piece.
        {"", "abc", Span{0, 0}},
        {"b", "abcb", Span{1, 2}},
        {"a.c", "xa\nc", Span{1, 4}},
        {"[]x]+", "a]x]b", Span{1, 4}},
        {"[a-]+", "b-a-c", Span{1, 4}},
        {"[^a-c]", "abcd", Span{3, 4}},
        {"a*", "baa", Span{0, 0}},
        {"a+", "baa", Span{1, 3}},
        {"ba?", "ba", Span{0, 2}},
        {"a|b", "b a|b", Span{2, 5}},
        {"(x)", "a(x)", Span{1, 4}},
        {"\\.\\[", "a.[", Span{1, 3}},
        {"\\t", "a\tb", Span{1, 2}},
        {"[\\]]", "a]", Span{1, 2}},
        {"^$", "", Span{0, 0}},
        {"^$", "x", std::nullopt},
        {"x$", "xx", Span{1, 2}},
        {"a^b", "ab", std::nullopt},
        {"\xE9+", "caf\xE9\xE9", Span{3, 5}},
        // Long texts, read a word at a time.
        {",[^,()]*$", "a,b(c,d)" + std::string(40, 'x') + ",tail_of_the_text_x", Span{48, 67}},
        {"_[0-9]+$", std::string(30, 'y') + "_123456789012", Span{30, 43}},
        {"^[^(]+(.*)$", std::string(50, 'n') + "(" + std::string(20, 'a') + ")", Span{0, 72}},
        {"x[^x]*$", "x" + std::string(33, '-'), Span{0, 34}},
        {"x[^x]*$", "x" + std::string(33, '-') + "x", Span{34, 35}},
        {"q", std::string(64, 'p'), std::nullopt},
    };
    for (const auto &c : cases) {
        const Pattern pattern(c.pattern);
        ASSERT_TRUE(pattern.ok()) << c.pattern << ": " << pattern.error();
        EXPECT_EQ(findSpan(pattern, c.text), c.match) << "pattern \"" << c.pattern << "\" text \"" << c.text << "\"";
        EXPECT_EQ(pattern.foundIn(c.text), c.match.has_value())
            << "pattern \"" << c.pattern << "\" text \"" << c.text << "\"";
    }
}

TEST(Pattern, refusesMalformedPatternsWithoutHarmToCopies)
{
    const struct
    {
        const char *pattern;
        const char *error;
    } cases[] = {
        {"[abc", "unterminated character class at offset 0"},
        {"a[]", "unterminated character class at offset 1"},
        {"ab\\", "trailing backslash at offset 2"},
        {"*a", "nothing to repeat before \"*\" at offset 0"},
        {"a**", "nothing to repeat before \"*\" at offset 2"},
        {"^+", "nothing to repeat before \"+\" at offset 1"},
        {"[z-a]", "inverted range in character class at offset 4"},
    };
    for (const auto &c : cases) {
        const Pattern pattern(c.pattern);
        EXPECT_FALSE(pattern.ok()) << c.pattern;
        EXPECT_EQ(pattern.error(), c.error) << c.pattern;
        EXPECT_FALSE(pattern.find("a*[]").has_value()) << c.pattern;
    }
    // Copies share the compiled form, which a malformed replacement leaves alone.
    Pattern original("b+");
    const Pattern copy = original;
    original = Pattern("[");
    EXPECT_FALSE(original.ok());
    ASSERT_TRUE(copy.ok());
    EXPECT_EQ(findSpan(copy, "abbc"), std::make_pair(std::size_t(1), std::size_t(3)));
}

// "a?" n times then "a" n times, against n "a": a backtracker takes 2^n
// steps; this must finish at once. "a" n times needs n + 1 automaton states
// besides the final ones; around n = 253 the state numbers run out and the
// Pike VM takes over.
TEST(Pattern, largePatternsStayFastAndExact)
{
    const std::size_t n = 300;
    std::string source;
    for (std::size_t i = 0; i < n; ++i)
        source += "a?";
    const Pattern nested(source + std::string(n, 'a'));
    ASSERT_TRUE(nested.ok());
    EXPECT_EQ(findSpan(nested, std::string(n, 'a')), std::make_pair(std::size_t(0), n));
    EXPECT_TRUE(nested.foundIn(std::string(n, 'a')));
    EXPECT_FALSE(nested.foundIn(std::string(n - 1, 'a')));

    for (std::size_t size = 250; size <= 256; ++size) {
        const Pattern pattern(std::string(size, 'a'));
        EXPECT_TRUE(pattern.foundIn("b" + std::string(size, 'a'))) << size;
        EXPECT_FALSE(pattern.foundIn(std::string(size - 1, 'a') + "b" + std::string(size - 1, 'a'))) << size;
    }
}

// The matcher agrees with a backtracking matcher on many small random
// patterns and texts.
TEST(Pattern, agreesWithABacktracker)
{
    const char *pieces[] = {"a", "b", ".", "[ab]", "[^a]", "\\*", "*", "^", "$", "c", "[a-c]"};
    const char *repeats[] = {"", "", "*", "+", "?"};
    testing::RandomText random(31);
    // The backtracker is slow under the sanitizers, where the pattern fuzz
    // target explores further anyway.
#ifdef VYR_TEST_SANITIZED
    constexpr int kSamples = 3000;
#else
    constexpr int kSamples = 30000;
#endif
    for (int i = 0; i < kSamples; ++i) {
        std::string source;
        const std::size_t count = random.number(6);
        for (std::size_t k = 0; k < count; ++k) {
            const std::string piece = pieces[random.number(std::size(pieces))];
            if (piece == "*")
                continue;
            source += piece;
            if (piece != "^" && piece != "$")
                source += repeats[random.number(std::size(repeats))];
        }
        const Pattern pattern(source);
        ASSERT_TRUE(pattern.ok()) << source << ": " << pattern.error();
        // Long enough for the automaton to skip whole words.
        std::string text;
        for (std::size_t k = random.number(i % 4 ? 12 : 40); k > 0; --k)
            text.push_back("abc*"[random.number(4)]);
        const auto expected = testing::ReferencePattern(source).find(text);
        ASSERT_EQ(findSpan(pattern, text), expected) << "pattern \"" << source << "\" text \"" << text << "\"";
        ASSERT_EQ(pattern.foundIn(text), expected.has_value())
            << "pattern \"" << source << "\" text \"" << text << "\"";
    }
}

} // namespace
} // namespace vyr
