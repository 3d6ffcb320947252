#include "ftprops/listelements.h"
#include "util/numbertext.h"
#include "util/pattern.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace vyr {
namespace {

std::string literal(std::string_view text)
{
    std::string pattern;
    for (const char c : text) {
        if (std::string_view(".*+?[]^$\\(){}|").find(c) != std::string_view::npos)
            pattern += '\\';
        pattern += c;
    }
    return pattern;
}

// What an element is, said as patterns: the list name with its first "{}"
// an index in braces, found anywhere in a name; the index is the first one
// in braces of the name. Compiled once per list: compiling is what costs.
class ElementsByPattern
{
public:
    explicit ElementsByPattern(std::string_view listName)
        : m_element(literal(listName.substr(0, listName.find("{}"))) + "{[0-9]+}"
                    + literal(listName.substr(listName.find("{}") + 2)))
        , m_braces("{[0-9]+}")
    {}
    bool isElement(std::string_view name) const { return m_element.foundIn(name); }
    std::optional<std::uint32_t> indexOf(std::string_view name) const
    {
        if (!isElement(name))
            return std::nullopt;
        const auto braces = m_braces.find(name);
        std::uint32_t index = 0;
        if (!braces || !parseUnsigned(name.substr(braces->begin + 1, braces->end - braces->begin - 2), index))
            return std::nullopt;
        return index;
    }

private:
    Pattern m_element;
    Pattern m_braces;
};

// Random names over the characters that matter against lists whose prefix
// repeats, is empty or holds braces itself.
TEST(ListElementsTest, FindsWhatThePatternFinds)
{
    const char *const lists[] = {"a{}", "{}.x", "ab{}b", "a.{}", "{}", "a{}{}", "{1}a{}", "aa{}a"};
    const std::string_view alphabet = "ab{}0129.x";
    std::mt19937 random(5);
    for (const char *list : lists) {
        const ListElements elements(list);
        const ElementsByPattern reference(list);
        for (int i = 0; i < 4000; ++i) {
            std::string name;
            for (std::size_t length = random() % 12; length > 0; --length)
                name += alphabet[random() % alphabet.size()];
            ASSERT_EQ(elements.indexOf(name), reference.indexOf(name)) << list << " " << name;
            ASSERT_EQ(elements.isElement(name), reference.isElement(name)) << list << " " << name;
        }
    }
}

TEST(ListElementsTest, IndexesCountsAndNames)
{
    const ListElements points("points{}.x");
    const struct
    {
        const char *name;
        std::optional<std::uint32_t> index;
    } cases[] = {
        {"points{0}.x", 0},       {"points{12}.x", 12}, {"points{}.x", std::nullopt},
        {"points{1}.y", std::nullopt}, {"my_points{3}.x_more", 3}, {"points{99999999999}.x", std::nullopt},
        {"a{7}points{2}.x", 7},
    };
    for (const auto &c : cases)
        EXPECT_EQ(points.indexOf(c.name), c.index) << c.name;
    EXPECT_EQ(points.countIn({"points{0}.x", "points{4}.x", "other{9}"}), 5);
    EXPECT_EQ(points.countIn({}), 0);
    EXPECT_EQ(points.elementName(3), "points{3}.x");
}

} // namespace
} // namespace vyr
