#include <gtest/gtest.h>

#include "support/randomtext.h"
#include "util/listpacking.h"

namespace vyr {
namespace {

TEST(PlainLists, splitKeepsEveryPiece)
{
    const struct
    {
        std::string text;
        char separator;
        StringList pieces;
    } cases[] = {
        {"", ',', {}},
        {"a", ',', {"a"}},
        {"a,,b", ',', {"a", "", "b"}},
        {"a,", ',', {"a", ""}},
        {",", ',', {"", ""}},
        {"a\x01"
         "b",
         '\0',
         {"a", "b"}}, // separator 0 means code 1
        {"a b", ',', {"a b"}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(splitList(c.text, c.separator), c.pieces) << "text: \"" << c.text << "\"";
    EXPECT_EQ(joinList({"a", "b"}, '\0'),
              "a\x01"
              "b");
}

TEST(QuotedLists, joinQuotesWhereNeeded)
{
    EXPECT_EQ(csvJoin({"30", "a b", "say\"hi"}, ','), "30,\"a b\",\"say\"\"hi\"");
    EXPECT_EQ(csvJoin({"x:y", "z"}, ':'), "\"x:y\":z");
    EXPECT_EQ(csvJoin({"x,y", "z"}, ':'), "x,y:z");
    EXPECT_EQ(csvJoin({"", ""}, ','), ",");
    EXPECT_EQ(csvJoin({"a", "b", "c"}, ',', 1), "b,c");
    EXPECT_EQ(csvJoin({"a"}, ',', 5), "");
}

TEST(QuotedLists, splitReadsQuotedFields)
{
    const struct
    {
        std::string text;
        char separator;
        StringList fields;
    } cases[] = {
        {"", ':', {}},
        {"a:b", ':', {"a", "b"}},
        {"a:", ':', {"a", ""}},
        {":", ':', {"", ""}},
        {"\"x:y\":z", ':', {"x:y", "z"}},
        {"\"\"", ':', {""}},
        {"30,\"a b\",\"say\"\"hi\"", ',', {"30", "a b", "say\"hi"}},
        {"\"a b\",", ',', {"a b", ""}},
        // Malformed quoting is read, never refused.
        {"\"abc", ',', {"abc"}},
        {"\"a\"\"b", ',', {"a\"b"}},
        {"\"ab\"x,c", ',', {"ab", "", "c"}}, // "x" is taken as the separator
        {"a\"b,c", ',', {"a\"b", "c"}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(csvSplit(c.text, c.separator), c.fields) << "text: " << c.text;
}

// split(join(l)) == l for any list but the one holding one empty text (plain
// lists: any without the separator). With the split tables above this fixes
// every join but its free choices, which the join tests pin: where to quote,
// and what separator 0 stands for.
TEST(Lists, everyListSurvivesTheTrip)
{
    testing::RandomText random(21);
    for (int i = 0; i < 20000; ++i) {
        for (char separator : {',', ':'}) {
            const StringList list = random.list(5, 4, "ab \",:x");
            const std::string packed = csvJoin(list, separator);
            const StringList expected = list == StringList{""} ? StringList{} : list;
            ASSERT_EQ(csvSplit(packed, separator), expected) << "packed: " << packed;
        }
        const StringList plain = random.list(5, 4, "ab \":x");
        const StringList expected = plain == StringList{""} ? StringList{} : plain;
        ASSERT_EQ(splitList(joinList(plain, ','), ','), expected) << joinList(plain, ',');
    }
}

// Packing is blind to code pages: any bytes in the elements (a byte-order
// mark, bytes no character set defines, CP932 trail bytes) come back.
TEST(QuotedLists, anyBytesSurviveTheTrip)
{
    testing::RandomText random(932);
    for (int i = 0; i < 5000; ++i) {
        StringList list(random.number(5));
        for (std::string &element : list)
            element = random.bytes(6);
        const StringList expected = list == StringList{""} ? StringList{} : list;
        ASSERT_EQ(csvSplit(csvJoin(list, ':'), ':'), expected) << "packed: " << csvJoin(list, ':');
    }
    const StringList marks{"\xEF\xBB\xBF", "\x81\x8D", "\x83\x5C:\x82"};
    EXPECT_EQ(csvSplit(csvJoin(marks, ':'), ':'), marks);
}

} // namespace
} // namespace vyr
