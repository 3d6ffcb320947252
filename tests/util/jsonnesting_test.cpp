#include "util/jsonnesting.h"

#include <gtest/gtest.h>

namespace vyr {
namespace {

TEST(JsonNestingTest, CountsBracketsOutsideStringsOnly)
{
    const struct
    {
        const char *text;
        bool refused;
    } cases[] = {
        {"[[[]]]", false},
        {"[[[[]]]]", true},
        {"{\"a\": [{}]}", false},
        {"{\"a\": [{\"b\": []}]}", true},
        {"[\"[[[[[[\"]", false},
        {"[\"\\\"[[[[\"]", false},
        {"[\"\\\\\", [[[]]]]", true},
        {"]]]][[[", false},
        {"[[[[", true},
    };
    for (const auto &c : cases)
        EXPECT_EQ(refuseDeepJson(c.text, 3).has_value(), c.refused) << c.text;
    EXPECT_FALSE(refuseDeepJson(std::string(kMostJsonNesting, '[')));
    EXPECT_TRUE(refuseDeepJson(std::string(kMostJsonNesting + 1, '[')));
}

} // namespace
} // namespace vyr
