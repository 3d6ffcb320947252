#include <gtest/gtest.h>

#include "util/tabulartext.h"


namespace vyr {
namespace {

TEST(TabularText, readsWhatSpreadsheetsWrite)
{
    const struct
    {
        std::string text;
        TextTable table;
    } cases[] = {
        {"", {}},
        {"a", {{"a"}}},
        {"a\tb\n", {{"a", "b"}}},
        {"a\tb\r\nc\td\r\n", {{"a", "b"}, {"c", "d"}}},
        {"a\rb", {{"a"}, {"b"}}},
        {"\n", {{""}}},
        {"a\n\nb", {{"a"}, {""}, {"b"}}},
        {"\t\n", {{"", ""}}},
        {"\"tab\there\"\tx", {{"tab\there", "x"}}},
        {"\"two\nlines\"\n", {{"two\nlines"}}},
        {"\"say \"\"hi\"\"\"", {{"say \"hi\""}}},
        {"\"\"\t\"\"", {{"", ""}}},
        // Quotes only open a field; inside one they are ordinary.
        {"a\"b\tc", {{"a\"b", "c"}}},
        // What a careless writer leaves: text after a closing quote, and a
        // quote never closed.
        {"\"ab\"cd\te", {{"abcd", "e"}}},
        {"\"open\tto\nthe end", {{"open\tto\nthe end"}}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(parseTabularText(c.text), c.table) << "text: \"" << c.text << "\"";
}

TEST(TabularText, writesWhatReadsBack)
{
    const TextTable table{{"plain", "with\ttab", "with \"quotes\""}, {"", "two\nlines", "cr\r"}, {""}};
    const std::string text = formatTabularText(table);
    EXPECT_EQ(text, "plain\t\"with\ttab\"\t\"with \"\"quotes\"\"\"\n\t\"two\nlines\"\t\"cr\r\"\n\n");
    EXPECT_EQ(parseTabularText(text), table);
}

} // namespace
} // namespace vyr
