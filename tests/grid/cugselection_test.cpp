#include "grid/cugselection.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace vyr {
namespace {

std::vector<std::pair<int, long>> walk(CUGSelection &selection)
{
    std::vector<std::pair<int, long>> cells;
    int column = 0;
    long row = 0;
    for (int found = selection.first(column, row); found == 0; found = selection.next(column, row))
        cells.emplace_back(column, row);
    return cells;
}

TEST(CUGSelectionTest, BlocksAreWalkedRowByRowAndEachCellOnce)
{
    CUGSelection selection;
    EXPECT_TRUE(walk(selection).empty());
    selection.collapseTo(2, 3);
    selection.extendTo(1, 4);
    selection.addBlock(2, 4);
    selection.extendTo(3, 4);
    const std::vector<std::pair<int, long>> expected{{1, 3}, {2, 3}, {1, 4}, {2, 4}, {3, 4}};
    EXPECT_EQ(walk(selection), expected);
    EXPECT_TRUE(selection.isSelected(3, 4));
    EXPECT_FALSE(selection.isSelected(3, 3));
    EXPECT_TRUE(selection.isMultiple());
    selection.collapseTo(0, 0);
    EXPECT_FALSE(selection.isMultiple());
    EXPECT_EQ(walk(selection).size(), 1u);
}

} // namespace
} // namespace vyr
