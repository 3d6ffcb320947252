// The parts of a grid window: the cell area, the heading rows, the heading
// columns and the corner button. Each draws and takes the mouse through its
// CUGCtrl, which holds every piece of state; the parts only say where.
#ifndef VYR_GRID_CUGSECTIONS_H
#define VYR_GRID_CUGSECTIONS_H

#include <QWidget>

namespace vyr {

class CUGCtrl;

class CUGSection : public QWidget
{
    Q_OBJECT

public:
    CUGSection(CUGCtrl *ctrl, QWidget *parent, int controlId);

protected:
    CUGCtrl *ctrl() const { return m_ctrl; }

private:
    CUGCtrl *m_ctrl;
};

// The cell area, the scroll area's viewport: it gets its events through
// CUGCtrl::viewportEvent, so it only needs to exist.
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

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
};

class CUGSideHdg final : public CUGSection
{
    Q_OBJECT

public:
    explicit CUGSideHdg(CUGCtrl *ctrl);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
};

class CUGCnrBtn final : public CUGSection
{
    Q_OBJECT

public:
    explicit CUGCnrBtn(CUGCtrl *ctrl);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
};

} // namespace vyr

#endif // VYR_GRID_CUGSECTIONS_H
