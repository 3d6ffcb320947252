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
        {"a loaded name typed again on a new row, mended there",
         {{"", "a"}, {"a", "z"}},
         {{"a", false}, {"z", false}, {"b", false}, {"c", false}},
         {{"a", "a"}, {"b", "b"}, {"c", "c"}}},
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

// Deletions and their undo, as the page reports them, from loaded a, b and
// c: a new row under a deleted attribute's name is new, and undo gives the
// attribute back to the row it puts back.
TEST(AttributeOriginsTest, ADeletedAttributeLeavesWithItsRow)
{
    // "a>x": renamed; "-a": deleted (untouched when loaded); "+a": put back.
    const struct
    {
        const char *what;
        std::vector<std::string> steps;
        std::vector<std::string> rows;
        AttributeRowIdentities expected;
    } cases[] = {
        {"a new row named as a deleted one",
         {"-a", ">a"},
         {"a", "b", "c"},
         {{"a", std::nullopt}, {"b", "b"}, {"c", "c"}}},
        {"the deletion undone", {"-a", "+a"}, {"a", "b", "c"}, {{"a", "a"}, {"b", "b"}, {"c", "c"}}},
        {"renamed, deleted, its old name taken anew",
         {"a>x", "-x", ">a"},
         {"a", "b", "c"},
         {{"a", std::nullopt}, {"b", "b"}, {"c", "c"}}},
        {"the new row's deletion undone, then the first one's",
         {"-a", ">a", "-a", "+a"},
         {"a", "b", "c"},
         {{"a", std::nullopt}, {"b", "b"}, {"c", "c"}}},
        {"a renamed row's deletion undone",
         {"a>x", "-x", ">a", "-a", "+a", "+x"},
         {"a", "x", "b", "c"},
         {{"a", "x"}, {"b", "b"}, {"c", "c"}}},
    };
    const auto wasLoaded = [](const std::string &name) { return name == "a" || name == "b" || name == "c"; };
    for (const auto &test : cases) {
        SCOPED_TRACE(test.what);
        AttributeOrigins origins;
        StringSet touched;
        for (const std::string &step : test.steps) {
            if (step[0] == '-') {
                const std::string name = step.substr(1);
                origins.deleted(name, wasLoaded(name) && !touched.contains(name), wasLoaded);
            } else if (step[0] == '+') {
                origins.restored(step.substr(1));
            } else {
                const std::size_t arrow = step.find('>');
                origins.renamed(step.substr(0, arrow), step.substr(arrow + 1), wasLoaded);
                touched.insert(step.substr(0, arrow));
                touched.insert(step.substr(arrow + 1));
            }
        }
        std::vector<AttributeOrigins::Row> rows;
        for (const std::string &name : test.rows)
            rows.push_back({name, false});
        EXPECT_EQ(origins.identities(rows, {"a", "b", "c"}), test.expected);
    }
}

} // namespace
} // namespace vyr
