// The parts of a grid window: the cell area, the heading rows, the heading
// columns and the corner button. Each draws and takes the mouse through its
// CUGCtrl, which holds every piece of state; the parts only say which part
// they are.
#ifndef VYR_GRID_CUGSECTIONS_H
#define VYR_GRID_CUGSECTIONS_H

#include "grid/ugdefs.h"

#include <QWidget>

namespace vyr {

class CUGCtrl;

class CUGSection : public QWidget
{
    Q_OBJECT

public:
    CUGSection(CUGCtrl *ctrl, ug::Section section, int controlId, const char *name);

    ug::Section section() const { return m_section; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    CUGCtrl *m_ctrl;
    ug::Section m_section;
};

// The cell area, the scroll area's viewport: its events come through
// CUGCtrl::viewportEvent.
class CUGGrid final : public CUGSection
{
    Q_OBJECT

public:
    explicit CUGGrid(CUGCtrl *ctrl);
};

class CUGTopHdg final : public CUGSection
{
    Q_OBJECT

public:
    explicit CUGTopHdg(CUGCtrl *ctrl);
};

class CUGSideHdg final : public CUGSection
{
    Q_OBJECT

public:
    explicit CUGSideHdg(CUGCtrl *ctrl);
};

class CUGCnrBtn final : public CUGSection
{
    Q_OBJECT

public:
    explicit CUGCnrBtn(CUGCtrl *ctrl);
};

} // namespace vyr

#endif // VYR_GRID_CUGSECTIONS_H
