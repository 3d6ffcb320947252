// CellActionHandler: what a cell's drop list or button does, when the cell
// names a handler (CVVyrGrid::SetCellActionHandler) instead of leaving it
// to its grid's hooks. Each operation gets the grid, the column, the row
// and the cell as the grid resolved it.
#ifndef VYR_UIKIT_CELLACTIONHANDLER_H
#define VYR_UIKIT_CELLACTIONHANDLER_H

#include <QStringList>

namespace vyr {

class CUGCell;
class CVVyrGrid;

class CellActionHandler
{
public:
    virtual ~CellActionHandler();

    // The cell's button was used. The handler may change `cell`, which the
    // grid then stores and redraws.
    virtual void OnBrowse(CVVyrGrid &grid, int column, long row, CUGCell &cell);
    // The cell's drop list is about to open: `choices` are its entries.
    virtual void OnGetChoices(CVVyrGrid &grid, int column, long row, CUGCell &cell, QStringList &choices);
    // An entry of the cell's drop list was chosen.
    virtual void OnChoiceSelected(CVVyrGrid &grid, int column, long row, CUGCell &cell, const QString &text);

protected:
    CellActionHandler() = default;
    CellActionHandler(const CellActionHandler &) = default;
    CellActionHandler &operator=(const CellActionHandler &) = default;
};

} // namespace vyr

#endif // VYR_UIKIT_CELLACTIONHANDLER_H
