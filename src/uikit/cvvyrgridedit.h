// CVVyrGridEdit: the in-place editor of a CVVyrGrid, a masked editor that
// leaves its cell the list way. A grid never edits on into the next cell
// (CVVyrGrid::OnEditNextCell), so after the key ended the edit: Tab and
// Shift+Tab move to the next or previous enabled cell (and on out of the
// grid at its ends), Up and Down move to the row above or below.
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
