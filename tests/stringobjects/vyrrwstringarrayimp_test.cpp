#include <gtest/gtest.h>

#include "stringobjects/vyrrwstringarrayimp.h"

#include <string>
#include <vector>

namespace {

std::vector<std::string> elementsOf(const IVYRStringArray &array)
{
    std::vector<std::string> elements;
    VYRRWStringImp element;
    for (std::size_t i = 0; i < array.entries(); ++i) {
        array.getElement(i, element);
        elements.emplace_back(element.c_str(), element.length());
    }
    return elements;
}

using Texts = std::vector<std::string>;

// Elements are whole byte strings: empty ones count, NUL bytes are kept.
TEST(VYRRWStringArrayImp, comparesWholeByteStrings)
{
    VYRRWStringArrayImp array;
    EXPECT_FALSE(array.contains(""));
    array.append("");
    array.append(VYRRWStringImp("a\0b", 3));
    array.append("Road_Name");
    array.append("CAF\xC9");
    EXPECT_EQ(elementsOf(array), (Texts{"", std::string("a\0b", 3), "Road_Name", "CAF\xC9"}));
    EXPECT_TRUE(array.contains(VYRRWStringImp()));
    EXPECT_TRUE(array.contains(VYRRWStringImp("a\0b", 3)));
    EXPECT_FALSE(array.contains("a"));
}

// The text to remove may be one of the elements that go.
TEST(VYRRWStringArrayImp, removeAllClosesTheGaps)
{
    VYRRWStringArrayImp array;
    for (const char *text : {"x", "a", "x", "b", "x"})
        array.append(text);
    EXPECT_EQ(array.removeAll("missing"), 0u);
    EXPECT_EQ(array.entries(), 5u);
    EXPECT_EQ(array.removeAll(array.at(0)), 3u);
    EXPECT_EQ(elementsOf(array), (Texts{"a", "b"}));
}

TEST(VYRRWStringArrayImp, tokensSkipRunsOfDelimitersButSplitsKeepEmptyPieces)
{
    VYRRWStringArrayImp array;
    array.appendTokens("  a \t b\n", " \t\n");
    array.appendTokens("", " ");
    array.appendTokens("   ", " ");
    EXPECT_EQ(elementsOf(array), (Texts{"a", "b"}));
    array.clear();
    array.appendSplit("a,,b,", ",;");
    array.appendSplit("", ",");
    EXPECT_EQ(elementsOf(array), (Texts{"a", "", "b", ""}));
}

TEST(VYRRWStringArrayImp, elementsChangeInPlace)
{
    VYRRWStringArrayImp array;
    array.append("one");
    array.append("two");
    array.setElement(0, VYRRWStringImp("uno"));
    array.at(1).assign("dos");
    EXPECT_EQ(elementsOf(array), (Texts{"uno", "dos"}));
    EXPECT_STREQ(array.elementAt(1), "dos");
    EXPECT_EQ(array.elementAt(2), nullptr);

    VYRRWStringImp out("a much longer text");
    array.getElement(0, out);
    EXPECT_EQ(std::string(out.c_str(), out.length()), "uno") << "no bytes of the longer text remain";

    // Past its first room, clearing gives the room back; the array stays usable.
    for (int i = 0; i < 100; ++i)
        array.append("x");
    array.clear();
    EXPECT_EQ(array.entries(), 0u);
    array.append("again");
    EXPECT_EQ(elementsOf(array), Texts{"again"});
}

} // namespace
