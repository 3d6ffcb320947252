#include "grid/cugsections.h"

#include "grid/cugctrl.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPaintEvent>

namespace vyr {

CUGSection::CUGSection(CUGCtrl *ctrl, ug::Section section, int controlId, const char *name)
    : QWidget(ctrl)
    , m_ctrl(ctrl)
    , m_section(section)
{
    setObjectName(QLatin1String(name));
    setProperty("controlId", controlId);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
}

void CUGSection::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    m_ctrl->paintSection(m_section, painter, event->rect());
}

void CUGSection::mousePressEvent(QMouseEvent *event)
{
    m_ctrl->sectionMouse(m_section, event);
}

void CUGSection::mouseMoveEvent(QMouseEvent *event)
{
    m_ctrl->sectionMouse(m_section, event);
}

void CUGSection::mouseReleaseEvent(QMouseEvent *event)
{
    m_ctrl->sectionMouse(m_section, event);
}

void CUGSection::contextMenuEvent(QContextMenuEvent *event)
{
    m_ctrl->contextMenuAt(m_section, event->pos(), event->globalPos());
}

CUGGrid::CUGGrid(CUGCtrl *ctrl)
    : CUGSection(ctrl, ug::CellArea, ug::GridId, "CUGGrid")
{
}

CUGTopHdg::CUGTopHdg(CUGCtrl *ctrl)
    : CUGSection(ctrl, ug::TopHeading, ug::TopHeadingId, "CUGTopHdg")
{
}

CUGSideHdg::CUGSideHdg(CUGCtrl *ctrl)
    : CUGSection(ctrl, ug::SideHeading, ug::SideHeadingId, "CUGSideHdg")
{
}

CUGCnrBtn::CUGCnrBtn(CUGCtrl *ctrl)
    : CUGSection(ctrl, ug::CornerButton, ug::CornerButtonId, "CUGCnrBtn")
{
}

} // namespace vyr
