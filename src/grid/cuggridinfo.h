// CUGGridInfo: the settings of one sheet of a grid - its size, sizes of
// rows, columns and headings, defaults, current cell, selection and store.
#ifndef VYR_GRID_CUGGRIDINFO_H
#define VYR_GRID_CUGGRIDINFO_H

#include "grid/cugcell.h"
#include "grid/cugdatasource.h"
#include "grid/cugselection.h"

#include <map>
#include <memory>
#include <vector>

namespace vyr {

struct CUGColumnInfo
{
    int width = 75;
    // Null: the sheet's store.
    CUGDataSource *dataSource = nullptr;
    CUGCell defaults;
    // The column of the store that this column shows.
    int dataSourceColumn = 0;
};

struct CUGGridInfo
{
    CUGGridInfo();

    int numberOfColumns = 0;
    long numberOfRows = 0;
    int currentColumn = -1;
    long currentRow = -1;
    int leftColumn = 0;
    long topRow = 0;
    int defaultColumnWidth = 75;
    int defaultRowHeight = 20;
    // Heights of heading rows -1, -2, ... and widths of heading columns.
    std::vector<int> headingRowHeights{20};
    std::vector<int> headingColumnWidths{25};
    std::vector<CUGColumnInfo> columns;
    // Rows whose height differs from the default.
    std::map<long, int> rowHeights;
    CUGCell gridDefault;
    CUGCell headingDefault;
    // -1: the style's size; 0: no bar.
    int vScrollWidth = -1;
    int hScrollHeight = -1;
    int currentCellStyle = 1;
    bool multiSelect = false;
    int vScrollMode = 0;
    int margin = 4;
    bool userSizing = true;
    std::unique_ptr<CUGDataSource> ownStore;
    CUGDataSource *dataSource = nullptr;
    CUGSelection selection;
};

} // namespace vyr

#endif // VYR_GRID_CUGGRIDINFO_H
