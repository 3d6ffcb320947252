#include <gtest/gtest.h>

#include "stringobjects/vyrrwstringimp.h"

#include <string_view>

namespace {

std::string_view bytes(const IVYRString &text)
{
    return {text.c_str(), text.length()};
}

TEST(VYRRWStringImp, keepsBytesAndIsAlwaysTerminated)
{
    VYRRWStringImp text("a\0b", 3);
    EXPECT_EQ(bytes(text), std::string_view("a\0b", 3));
    EXPECT_EQ(text.data(), text.c_str());
    EXPECT_EQ(text.c_str()[3], '\0');
    text.assign(nullptr, 0);
    EXPECT_STREQ(text.c_str(), "");
    text.assign(static_cast<const char *>(nullptr));
    EXPECT_EQ(text.length(), 0u);
}

TEST(VYRRWStringImp, copiesAreIndependentAndSelfAssignmentKeepsTheBytes)
{
    VYRRWStringImp original("shared");
    const VYRRWStringImp copy = original;
    const char *before = copy.c_str();
    original.assign("changed");
    EXPECT_STREQ(copy.c_str(), "shared");
    EXPECT_EQ(copy.c_str(), before) << "a copy's pointer stays valid when the original changes";
    original.assign(original.c_str() + 2, 3);
    EXPECT_EQ(bytes(original), "ang");
}

} // namespace
