// CVVyrGridEdit: the in-place editor of a CVVyrGrid, a masked editor that
// leaves its cell the list way. A grid never edits on into the next cell
// (CVVyrGrid::OnEditNextCell), so after the key ended the edit: Tab and
// Shift+Tab move to the next or previous enabled cell (and on out of the
// grid at its ends), Up moves to the row above, Enter and Down to the row
// below (from the new row: to the blank row opened under the new record),
// each to the nearest enabled cell of that row.
#ifndef VYR_UIKIT_CVVYRGRIDEDIT_H
#define VYR_UIKIT_CVVYRGRIDEDIT_H

#include "grid/cugmaskededit.h"

namespace vyr {

class CVVyrGrid;

class CVVyrGridEdit final : public CUGMaskedEdit
{
    Q_OBJECT

public:
    CVVyrGridEdit(CVVyrGrid *grid, QWidget *parent);

    CVVyrGrid *grid() const { return m_grid; }

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    CVVyrGrid *m_grid;
};

} // namespace vyr

#endif // VYR_UIKIT_CVVYRGRIDEDIT_H
