// A test fixture that runs its tests under one narrow code page and restores
// the process's own afterwards.
#ifndef VYR_TESTS_NARROWCODEPAGE_H
#define VYR_TESTS_NARROWCODEPAGE_H

#include <gtest/gtest.h>

#include "util/codepage.h"

namespace vyr::testing {

template <const char *CodePage>
class NarrowCodePageTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(setNarrowCodePage(CodePage)) << CodePage; }
    void TearDown() override { resetNarrowCodePage(); }
};

inline constexpr char kCp1252[] = "CP1252";

} // namespace vyr::testing

#endif // VYR_TESTS_NARROWCODEPAGE_H
