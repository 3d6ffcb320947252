#include "grid/cugsections.h"

#include "grid/cugctrl.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPaintEvent>

namespace vyr {

CUGSection::CUGSection(CUGCtrl *ctrl, QWidget *parent, int controlId)
    : QWidget(parent)
    , m_ctrl(ctrl)
{
    setProperty("controlId", controlId);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
}

CUGGrid::CUGGrid(CUGCtrl *ctrl)
    : CUGSection(ctrl, ctrl, ug::GridId)
{
    setObjectName(QStringLiteral("CUGGrid"));
}

CUGTopHdg::CUGTopHdg(CUGCtrl *ctrl)
    : CUGSection(ctrl, ctrl, ug::TopHeadingId)
{
    setObjectName(QStringLiteral("CUGTopHdg"));
}

void CUGTopHdg::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    ctrl()->paintTopHeading(painter, event->rect());
}

void CUGTopHdg::mousePressEvent(QMouseEvent *event)
{
    ctrl()->topHeadingMouse(event);
}

void CUGTopHdg::mouseMoveEvent(QMouseEvent *event)
{
    ctrl()->topHeadingMouse(event);
}

void CUGTopHdg::mouseReleaseEvent(QMouseEvent *event)
{
    ctrl()->topHeadingMouse(event);
}

void CUGTopHdg::contextMenuEvent(QContextMenuEvent *event)
{
    ctrl()->contextMenuAt(ug::TopHeading, event->pos(), event->globalPos());
}

CUGSideHdg::CUGSideHdg(CUGCtrl *ctrl)
    : CUGSection(ctrl, ctrl, ug::SideHeadingId)
{
    setObjectName(QStringLiteral("CUGSideHdg"));
}

void CUGSideHdg::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    ctrl()->paintSideHeading(painter, event->rect());
}

void CUGSideHdg::mousePressEvent(QMouseEvent *event)
{
    ctrl()->sideHeadingMouse(event);
}

void CUGSideHdg::mouseMoveEvent(QMouseEvent *event)
{
    ctrl()->sideHeadingMouse(event);
}

void CUGSideHdg::mouseReleaseEvent(QMouseEvent *event)
{
    ctrl()->sideHeadingMouse(event);
}

void CUGSideHdg::contextMenuEvent(QContextMenuEvent *event)
{
    ctrl()->contextMenuAt(ug::SideHeading, event->pos(), event->globalPos());
}

CUGCnrBtn::CUGCnrBtn(CUGCtrl *ctrl)
    : CUGSection(ctrl, ctrl, ug::CornerButtonId)
{
    setObjectName(QStringLiteral("CUGCnrBtn"));
}

void CUGCnrBtn::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    ctrl()->paintCorner(painter);
}

void CUGCnrBtn::mousePressEvent(QMouseEvent *event)
{
    ctrl()->cornerMouse(event);
}

void CUGCnrBtn::mouseReleaseEvent(QMouseEvent *event)
{
    ctrl()->cornerMouse(event);
}

} // namespace vyr
