// CUGCtrl: the mouse - pressing, dragging and double clicks in the cell
// area, sizing and pressing in the headings, the corner, context menus and
// cell tips.
#include "grid/cugctrl.h"

#include "grid/cugsections.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace vyr {

namespace {

// How close to an edge a press starts resizing.
constexpr int kSizingZone = 3;

} // namespace

void CUGCtrl::sectionMouse(int section, QMouseEvent *event)
{
    switch (section) {
    case ug::CellArea:
        cellAreaMouse(event);
        break;
    case ug::TopHeading:
        topHeadingMouse(event);
        break;
    case ug::SideHeading:
        sideHeadingMouse(event);
        break;
    default:
        cornerMouse(event);
        break;
    }
}

// --- Mouse

void CUGCtrl::cellAreaMouse(QMouseEvent *event)
{
    const QPoint point = event->position().toPoint();
    int column = -1;
    long row = -1;
    const bool onCell = GetCellFromPoint(point, column, row) == ug::Success;
    QRect rect;
    if (onCell)
        GetCellRect(column, row, rect);

    if (event->type() == QEvent::MouseMove) {
        if (m_mouseSelecting && (event->buttons() & Qt::LeftButton) && onCell)
            moveCurrentTo(column, row, DragMode::Mouse);
        else if (onCell) {
            CUGCell cell;
            GetCellResolved(column, row, cell);
            GetCellType(cell)->OnMouseOver(column, row, point, event->modifiers());
        }
        return;
    }
    const bool pressed = event->type() == QEvent::MouseButtonPress;
    if (pressed && m_editing)
        return;
    if (!onCell) {
        if (!pressed)
            m_mouseSelecting = false;
        return;
    }
    CUGCell cell;
    GetCellResolved(column, row, cell);
    CUGCellType *type = GetCellType(cell);
    if (event->button() == Qt::LeftButton) {
        bool handled = false;
        if (pressed) {
            DragMode mode = DragMode::None;
            if (event->modifiers() & Qt::ShiftModifier)
                mode = DragMode::Shift;
            else if (event->modifiers() & Qt::ControlModifier)
                mode = DragMode::Control;
            if (moveCurrentTo(column, row, mode) != ug::Success)
                return;
            m_mouseSelecting = true;
            GetCellRect(column, row, rect);
            handled = type->OnLeftClick(column, row, true, rect, point) != 0;
        } else {
            m_mouseSelecting = false;
            handled = type->OnLeftClick(column, row, false, rect, point) != 0;
        }
        OnCellLeftClick(column, row, pressed, rect, point, handled);
    } else if (event->button() == Qt::RightButton) {
        const bool handled = type->OnRightClick(column, row, pressed, rect, point) != 0;
        OnCellRightClick(column, row, pressed, rect, point, handled);
    }
}

void CUGCtrl::cellAreaDoubleClick(QMouseEvent *event)
{
    if (m_editing || event->button() != Qt::LeftButton)
        return;
    const QPoint point = event->position().toPoint();
    int column = -1;
    long row = -1;
    if (GetCellFromPoint(point, column, row) != ug::Success)
        return;
    QRect rect;
    GetCellRect(column, row, rect);
    CUGCell cell;
    GetCellResolved(column, row, cell);
    const bool handled = GetCellType(cell)->OnDoubleClick(column, row, rect, point) != 0;
    OnCellDoubleClick(column, row, rect, point, handled);
}

void CUGCtrl::topHeadingMouse(QMouseEvent *event)
{
    const QPoint point = event->position().toPoint();
    const int headingRow = headingRowAt(point.y());
    // The column whose right edge is near the point.
    int edgeColumn = -1;
    int x = 0;
    for (int column = m_info.leftColumn; column < m_info.numberOfColumns; ++column) {
        x += m_info.columns[std::size_t(column)].width;
        if (std::abs(point.x() - x) <= kSizingZone) {
            edgeColumn = column;
            break;
        }
        if (x > point.x() + kSizingZone)
            break;
    }
    const bool nearBottom = std::abs(point.y() - m_topHeading->height()) <= kSizingZone;
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        if (event->button() != Qt::LeftButton)
            return;
        if (m_info.userSizing && edgeColumn >= 0 && OnAllowColumnResize(edgeColumn)) {
            m_sizing = Sizing::Column;
            m_sizingIndex = edgeColumn;
            m_sizingStart = point.x();
            m_sizingOriginal = m_info.columns[std::size_t(edgeColumn)].width;
            return;
        }
        if (m_info.userSizing && nearBottom && OnAllowTopHeadingResize()) {
            m_sizing = Sizing::TopHeadingRow;
            m_sizingStart = point.y();
            m_sizingOriginal = m_info.headingRowHeights[0];
            return;
        }
        if (const int column = columnAt(point.x()); column >= 0 && OnAllowTopHeadingPress(column)
            && OnAllowTopHeadingCellPress(column, headingRow))
            OnTopHeadingClick(column, headingRow, true);
        return;
    case QEvent::MouseMove:
        if (m_sizing == Sizing::Column) {
            m_info.columns[std::size_t(m_sizingIndex)].width
                = std::max(0, m_sizingOriginal + point.x() - m_sizingStart);
            updateGeometries();
            RepaintAll();
        } else if (m_sizing == Sizing::TopHeadingRow) {
            m_info.headingRowHeights[0] = std::clamp(m_sizingOriginal + point.y() - m_sizingStart, 1,
                                                     ug::kMaxHeadingSize);
            updateGeometries();
            RepaintAll();
        } else if (m_info.userSizing && edgeColumn >= 0) {
            m_topHeading->setCursor(Qt::SizeHorCursor);
        } else if (m_info.userSizing && nearBottom) {
            m_topHeading->setCursor(Qt::SizeVerCursor);
        } else {
            m_topHeading->unsetCursor();
        }
        return;
    case QEvent::MouseButtonRelease:
        if (m_sizing != Sizing::None) {
            m_sizing = Sizing::None;
            return;
        }
        if (const int column = columnAt(point.x()); column >= 0)
            OnTopHeadingClick(column, headingRow, false);
        return;
    default:
        return;
    }
}

void CUGCtrl::sideHeadingMouse(QMouseEvent *event)
{
    const QPoint point = event->position().toPoint();
    const int headingColumn = headingColumnAt(point.x());
    long edgeRow = -1;
    int y = 0;
    for (long row = m_info.topRow; row < m_info.numberOfRows; ++row) {
        y += GetRowHeight(row);
        if (std::abs(point.y() - y) <= kSizingZone) {
            edgeRow = row;
            break;
        }
        if (y > point.y() + kSizingZone)
            break;
    }
    const bool nearRight = std::abs(point.x() - m_sideHeading->width()) <= kSizingZone;
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        if (event->button() != Qt::LeftButton)
            return;
        if (m_info.userSizing && nearRight && OnAllowSideHeadingResize()) {
            m_sizing = Sizing::SideHeadingColumn;
            m_sizingStart = point.x();
            m_sizingOriginal = m_info.headingColumnWidths[0];
            return;
        }
        if (m_info.userSizing && edgeRow >= 0 && OnAllowRowResize(edgeRow)) {
            m_sizing = Sizing::Row;
            m_sizingIndex = int(edgeRow);
            m_sizingStart = point.y();
            m_sizingOriginal = GetRowHeight(edgeRow);
            return;
        }
        if (const long row = rowAt(point.y()); row >= 0) {
            OnSideHeadingClick(headingColumn, row, true);
            moveCurrentTo(std::max(0, m_info.currentColumn), row, DragMode::None);
        }
        return;
    case QEvent::MouseMove:
        if (m_sizing == Sizing::Row) {
            const int height = std::max(1, m_sizingOriginal + point.y() - m_sizingStart);
            if (height == m_info.defaultRowHeight)
                m_info.rowHeights.erase(m_sizingIndex);
            else
                m_info.rowHeights[m_sizingIndex] = height;
            updateScrollBars();
            RepaintAll();
        } else if (m_sizing == Sizing::SideHeadingColumn) {
            m_info.headingColumnWidths[0]
                = std::clamp(m_sizingOriginal + point.x() - m_sizingStart, 1, ug::kMaxHeadingSize);
            updateGeometries();
            RepaintAll();
        } else if (m_info.userSizing && nearRight) {
            m_sideHeading->setCursor(Qt::SizeHorCursor);
        } else if (m_info.userSizing && edgeRow >= 0) {
            m_sideHeading->setCursor(Qt::SizeVerCursor);
        } else {
            m_sideHeading->unsetCursor();
        }
        return;
    case QEvent::MouseButtonRelease:
        if (m_sizing != Sizing::None) {
            m_sizing = Sizing::None;
            return;
        }
        if (const long row = rowAt(point.y()); row >= 0)
            OnSideHeadingClick(headingColumn, row, false);
        return;
    default:
        return;
    }
}

void CUGCtrl::cornerMouse(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        OnCornerButtonClick(event->type() == QEvent::MouseButtonPress);
}

void CUGCtrl::contextMenuAt(int section, const QPoint &local, const QPoint &global)
{
    int column = -1;
    long row = -1;
    if (section == ug::CellArea) {
        GetCellFromPoint(local, column, row);
    } else if (section == ug::TopHeading) {
        column = columnAt(local.x());
        row = headingRowAt(local.y());
    } else if (section == ug::SideHeading) {
        column = headingColumnAt(local.x());
        row = rowAt(local.y());
    }
    m_menuColumn = column;
    m_menuRow = row;
    m_menuSection = section;
    OnContextMenu(column, row, section, global);
}

bool CUGCtrl::cellAreaToolTip(QHelpEvent *event)
{
    int column = -1;
    long row = -1;
    QString text;
    if (GetCellFromPoint(event->pos(), column, row) == ug::Success
        && OnCellTipText(column, row, ug::CellArea, text) == 1 && !text.isEmpty()) {
        QRect rect;
        GetCellRect(column, row, rect);
        QToolTip::showText(event->globalPos(), text, m_grid, rect);
    } else {
        QToolTip::hideText();
    }
    return true;
}

bool CUGCtrl::viewportEvent(QEvent *event)
{
    WantRowsIfVisible();
    switch (event->type()) {
    case QEvent::Paint: {
        QPainter painter(m_grid);
        paintSection(ug::CellArea, painter, static_cast<QPaintEvent *>(event)->rect());
        return true;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
        cellAreaMouse(static_cast<QMouseEvent *>(event));
        return true;
    case QEvent::MouseButtonDblClick:
        cellAreaDoubleClick(static_cast<QMouseEvent *>(event));
        return true;
    case QEvent::ToolTip:
        return cellAreaToolTip(static_cast<QHelpEvent *>(event));
    case QEvent::ContextMenu: {
        auto *menuEvent = static_cast<QContextMenuEvent *>(event);
        contextMenuAt(ug::CellArea, menuEvent->pos(), menuEvent->globalPos());
        return true;
    }
    default:
        return QAbstractScrollArea::viewportEvent(event);
    }
}

} // namespace vyr
