#include "ftpropsdlg/attributeorigins.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vyr {
namespace {

// Renames as a page reports them, from loaded a, b and c (touched rows, as
// after a move to another format): what each loaded attribute became.
TEST(AttributeOriginsTest, FollowsRenamesBackToTheLoadedAttribute)
{
    using Renames = std::vector<std::pair<std::string, std::string>>;
    using Row = AttributeOrigins::Row;
    const struct
    {
        const char *what;
        Renames renames;
        std::vector<Row> rows;
        AttributeRowIdentities expected;
    } cases[] = {
        {"untouched", {}, {{"a", true}, {"b", false}, {"c", false}}, {{"a", "a"}, {"b", "b"}, {"c", "c"}}},
        {"renamed twice, c deleted",
         {{"a", "x"}, {"x", "y"}},
         {{"y", false}, {"b", false}},
         {{"a", "y"}, {"b", "b"}, {"c", std::nullopt}}},
        {"swapped through a third name",
         {{"a", "t"}, {"b", "a"}, {"t", "b"}},
         {{"b", false}, {"a", false}, {"c", false}},
         {{"a", "b"}, {"b", "a"}, {"c", "c"}}},
        {"a new row takes a name given away",
         {{"a", "x"}, {"", "a"}},
         {{"a", false}, {"x", false}, {"b", false}, {"c", false}},
         {{"a", "x"}, {"b", "b"}, {"c", "c"}}},
        {"renamed back",
         {{"a", "x"}, {"x", "a"}},
         {{"a", false}, {"b", false}},
         {{"a", "a"}, {"b", "b"}, {"c", std::nullopt}}},
        {"a new row renamed",
         {{"", "n"}, {"n", "m"}},
         {{"m", false}, {"a", false}},
         {{"a", "a"}, {"b", std::nullopt}, {"c", std::nullopt}}},
    };
    const auto wasLoaded = [](const std::string &name) { return name == "a" || name == "b" || name == "c"; };
    for (const auto &test : cases) {
        SCOPED_TRACE(test.what);
        AttributeOrigins origins;
        for (const auto &[before, after] : test.renames)
            origins.renamed(before, after, wasLoaded);
        EXPECT_EQ(origins.identities(test.rows, {"a", "b", "c"}), test.expected);
    }
}

} // namespace
} // namespace vyr
