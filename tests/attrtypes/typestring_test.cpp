#include "attrtypes/attrtype.h"
#include "attrtypes/typestring.h"

#include <gtest/gtest.h>

namespace vyr {
namespace {

struct ParseCase
{
    const char *text;
    int listMode;
    const char *name;
    StringList values;
    const char *suffix;
};

TEST(TypeStringTest, ParsesNamesValuesAndSuffixes)
{
    const ParseCase cases[] = {
        {"number(10,2)", 1, "number", {"10", "2"}, ""},
        {"char", 1, "char", {}, ""},
        {"date,local", 1, "date", {}, "local"},
        {"number(10,2),x", 1, "number", {"10", "2"}, "x"},
        {"t(1),suffix with blanks", 1, "t", {"1"}, "suffix with blanks"},
        {"name()", 1, "name", {""}, ""},
        {"enum(\"a b\",c)", 1, "enum", {"a b", "c"}, ""},
        {"enum(\"a,b\",c)", 1, "enum", {"a,b", "c"}, ""},
        {"enum(\"say \"\"hi\"\"\")", 1, "enum", {"say \"hi\""}, ""},
        {"list(a,,b)", 1, "list", {"a", "", "b"}, ""},
        {"enum(a<comma>b,c)", 0, "enum", {"a,b", "c"}, ""},
        {"enum(<space>x<openparen>1<closeparen>)", 0, "enum", {" x(1)"}, ""},
        {"enum(\"a b\")", 0, "enum", {"\"a b\""}, ""},
        {"(x)", 1, "(x)", {}, ""},
        {"a(b", 1, "a(b", {}, ""},
        {"a(b)c", 1, "a(b)c", {}, ""},
        {"outer(inner(1))", 1, "outer", {"inner(1)"}, ""},
        {"", 1, "", {}, ""},
        {",", 1, "", {}, ""},
    };
    for (const ParseCase &c : cases) {
        const ParsedType parsed = parseType(c.text, c.listMode);
        EXPECT_EQ(parsed.name, c.name) << c.text;
        EXPECT_EQ(parsed.values, c.values) << c.text;
        EXPECT_EQ(parsed.suffix, c.suffix) << c.text;
    }
}

// Texts a person may type that read as a type name with parentheses in it;
// the tool says what is wrong with them instead of showing such a name.
TEST(TypeStringTest, SaysWhatIsWrongWithATypeText)
{
    const struct
    {
        const char *text;
        int listMode;
        const char *problem; // a word of the message, or null when well formed
    } cases[] = {
        {"number(10,2)", 1, nullptr},
        {"enum(\"a (b\",c)", 1, nullptr},
        {"enum(\"say \"\"hi\"\"\")", 1, nullptr},
        {"outer(inner(1)),x", 1, nullptr},
        {"date,local", 1, nullptr},
        {"enum(\"a b\",c", 1, "closed"},
        {"number(10,2", 1, "closed"},
        {"enum(\"a b,c)", 1, "quoted"},
        {"a)b", 1, "closes no"},
        {"a(b)c", 1, "follows"},
        {"(x)", 1, "no name"},
        {"", 1, "no name"},
        {"enum(\"a b)", 0, nullptr}, // quotes are ordinary in the stored mode
    };
    for (const auto &c : cases) {
        const std::optional<std::string> problem = typeTextProblem(c.text, c.listMode);
        if (!c.problem)
            EXPECT_FALSE(problem) << c.text << ": " << *problem;
        else if (!problem)
            ADD_FAILURE() << c.text << " was taken as well formed";
        else
            EXPECT_NE(problem->find(c.problem), std::string::npos) << c.text << ": " << *problem;
    }
}

TEST(TypeStringTest, FormatsByListMode)
{
    struct Case
    {
        StringList values;
        const char *suffix;
        int listMode;
        const char *expected;
    };
    const Case cases[] = {
        {{"a b"}, "", 1, "enum(\"a b\")"},
        {{"a b"}, "", 0, "enum(a<space>b)"},
        {{"a b"}, "", 2, "enum(a b)"},
        {{"10", "2"}, "x", 1, "enum(10,2),x"},
        {{""}, "", 1, "enum()"},
        {{}, "local", 1, "enum,local"},
        {{"a,b", "(c)"}, "", 0, "enum(a<comma>b,<openparen>c<closeparen>)"},
    };
    for (const Case &c : cases)
        EXPECT_EQ(formatType("enum", c.values, c.suffix, c.listMode), c.expected) << c.expected;
}

TEST(TypeStringTest, FormattedTypesReadBackInTheirListMode)
{
    const StringList valueSets[] = {{"10", "2"}, {"a b", "c,d", "say \"x\""}, {""}, {"(", ")", "%"}, {}};
    for (const int listMode : {0, 1}) {
        for (const StringList &values : valueSets) {
            for (const char *suffix : {"", "local"}) {
                const std::string text = formatType("t", values, suffix, listMode);
                const ParsedType parsed = parseType(text, listMode);
                EXPECT_EQ(parsed.name, "t") << text;
                EXPECT_EQ(parsed.values, values) << text;
                EXPECT_EQ(parsed.suffix, suffix) << text;
            }
        }
    }
}

TEST(TypeStringTest, TemplatesMatchByNameAndArgumentCount)
{
    const AttrTypeTemplate decimal("vyr_decimal(width,decimal)", nullptr, 1);
    ASSERT_EQ(decimal.argCount(), 2u);
    EXPECT_EQ(decimal.arg(0)->value(), "width");
    EXPECT_EQ(decimal.arg(2), nullptr);
    struct Case
    {
        const char *text;
        bool matches;
    };
    const Case cases[] = {
        {"vyr_decimal(12,3)", true}, {"vyr_decimal(12,3),suffix", true},
        {"vyr_decimal(12)", false},  {"vyr_decimal()", false},
        {"vyr_decimal", false},      {"VYR_DECIMAL(12,3)", false},
    };
    for (const Case &c : cases)
        EXPECT_EQ(matchesTemplate(decimal, c.text), c.matches) << c.text;

    const AttrTypeTemplate empty("name()", nullptr, 1);
    EXPECT_TRUE(matchesTemplate(empty, "name()"));
    EXPECT_FALSE(matchesTemplate(empty, "name"));
    EXPECT_EQ(AttrTypeTemplate("date,local", nullptr, 1).suffix(), "");
}

} // namespace
} // namespace vyr
