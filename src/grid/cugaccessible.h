// The grid as assistive technology sees it: a table whose children are its
// cells, row by row, with the heading cells as column and row headers, the
// current cell as the focused child and the selected cells as selected.
#ifndef VYR_GRID_CUGACCESSIBLE_H
#define VYR_GRID_CUGACCESSIBLE_H

class QWidget;

namespace vyr {

class CUGCtrl;

// Registers the factory that describes grids; once per process.
void installGridAccessibility();
// The current cell moved.
void notifyGridFocus(CUGCtrl *grid, int column, long row);
// `editor` (a text field, an open list) works on the cell: it is named by the
// cell's column and says where the cell is.
void describeEditor(CUGCtrl *grid, QWidget *editor, int column, long row);
// A cell's text or tick changed.
void notifyGridCellChanged(CUGCtrl *grid, int column, long row);
// The grid's rows or columns changed.
void notifyGridReset(CUGCtrl *grid);

} // namespace vyr

#endif // VYR_GRID_CUGACCESSIBLE_H
