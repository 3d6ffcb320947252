// CUGCtrl: the view - geometry of the parts, scrolling, the current cell
// and its notifications, selection, painting, mouse, keys, tips and
// attaching to a dialog.
#include "grid/cugctrl.h"

#include "grid/cugaccessible.h"
#include "grid/cugedit.h"
#include "grid/cugmaskededit.h"
#include "grid/cugsections.h"

#include <QApplication>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionFocusRect>
#include <QToolTip>

#include <algorithm>

namespace vyr {

namespace {

// How close to an edge a press starts resizing.
constexpr int kSizingZone = 3;

} // namespace

// --- Geometry of columns and rows

int CUGCtrl::columnX(int column) const
{
    int x = 0;
    if (column >= m_info.leftColumn) {
        for (int c = m_info.leftColumn; c < column; ++c)
            x += m_info.columns[std::size_t(c)].width;
    } else {
        for (int c = column; c < m_info.leftColumn; ++c)
            x -= m_info.columns[std::size_t(c)].width;
    }
    return x;
}

long CUGCtrl::rowY(long row) const
{
    long y = 0;
    if (row >= m_info.topRow) {
        if (m_info.rowHeights.empty())
            return (row - m_info.topRow) * m_info.defaultRowHeight;
        for (long r = m_info.topRow; r < row; ++r)
            y += GetRowHeight(r);
    } else {
        for (long r = row; r < m_info.topRow; ++r)
            y -= GetRowHeight(r);
    }
    return y;
}

int CUGCtrl::columnAt(int x) const
{
    if (x < 0)
        return -1;
    int left = 0;
    for (int column = m_info.leftColumn; column < m_info.numberOfColumns; ++column) {
        left += m_info.columns[std::size_t(column)].width;
        if (x < left)
            return column;
    }
    return -1;
}

long CUGCtrl::rowAt(int y) const
{
    if (y < 0)
        return -1;
    long top = 0;
    for (long row = m_info.topRow; row < m_info.numberOfRows; ++row) {
        top += GetRowHeight(row);
        if (y < top)
            return row;
        if (top > m_grid->height() + 4096)
            break;
    }
    return -1;
}

// Heading columns: -n at the left edge, -1 next to the cells.
int CUGCtrl::headingColumnX(int headingColumn) const
{
    const int count = int(m_info.headingColumnWidths.size());
    int x = 0;
    for (int c = -count; c < headingColumn; ++c)
        x += m_info.headingColumnWidths[std::size_t(-c - 1)];
    return x;
}

int CUGCtrl::headingRowY(int headingRow) const
{
    const int count = int(m_info.headingRowHeights.size());
    int y = 0;
    for (int r = -count; r < headingRow; ++r)
        y += m_info.headingRowHeights[std::size_t(-r - 1)];
    return y;
}

int CUGCtrl::headingColumnAt(int x) const
{
    const int count = int(m_info.headingColumnWidths.size());
    int right = 0;
    for (int c = -count; c < 0; ++c) {
        right += m_info.headingColumnWidths[std::size_t(-c - 1)];
        if (x < right)
            return c;
    }
    return 0;
}

int CUGCtrl::headingRowAt(int y) const
{
    const int count = int(m_info.headingRowHeights.size());
    int bottom = 0;
    for (int r = -count; r < 0; ++r) {
        bottom += m_info.headingRowHeights[std::size_t(-r - 1)];
        if (y < bottom)
            return r;
    }
    return 0;
}

int CUGCtrl::GetCellRect(int column, long row, QRect &rect) const
{
    if (!isCellPosition(column, row))
        return ug::OutOfRange;
    int x = 0;
    int width = 0;
    if (column < 0) {
        x = headingColumnX(column);
        width = m_info.headingColumnWidths[std::size_t(-column - 1)];
    } else {
        x = columnX(column);
        width = m_info.columns[std::size_t(column)].width;
    }
    long y = 0;
    int height = GetRowHeight(row);
    if (row < 0)
        y = headingRowY(int(row));
    else
        y = rowY(row);
    if (y > 1 << 24 || y < -(1 << 24))
        return ug::OutOfRange;
    rect = QRect(x, int(y), width, height);
    const QWidget *shownIn = widgetShowing(row, column);
    return rect.intersects(shownIn->rect()) ? ug::Success : ug::OutOfRange;
}

QWidget *CUGCtrl::widgetShowing(long row, int column) const
{
    if (row < 0 && column < 0)
        return m_corner;
    if (row < 0)
        return m_topHeading;
    if (column < 0)
        return m_sideHeading;
    return m_grid;
}

int CUGCtrl::GetCellFromPoint(const QPoint &point, int &column, long &row) const
{
    const int foundColumn = columnAt(point.x());
    const long foundRow = rowAt(point.y());
    if (foundColumn < 0 || foundRow < 0)
        return ug::OutOfRange;
    column = foundColumn;
    row = foundRow;
    return ug::Success;
}

long CUGCtrl::visibleRowsFrom(long topRow, int height) const
{
    long rows = 0;
    int used = 0;
    for (long row = topRow; row < m_info.numberOfRows; ++row) {
        used += GetRowHeight(row);
        if (used > height)
            break;
        ++rows;
    }
    return rows;
}

int CUGCtrl::visibleColumnsFrom(int leftColumn) const
{
    int columns = 0;
    int used = 0;
    for (int column = leftColumn; column < m_info.numberOfColumns; ++column) {
        used += m_info.columns[std::size_t(column)].width;
        if (used > m_grid->width())
            break;
        ++columns;
    }
    return columns;
}

long CUGCtrl::GetPageRows() const
{
    return std::max(1L, visibleRowsFrom(m_info.topRow, m_grid->height()));
}

long CUGCtrl::lastTopRow() const
{
    long top = m_info.numberOfRows;
    int used = 0;
    while (top > 0) {
        used += GetRowHeight(top - 1);
        if (used > m_grid->height())
            break;
        --top;
    }
    return std::min(top, std::max(0L, m_info.numberOfRows - 1));
}

int CUGCtrl::lastLeftColumn() const
{
    int left = m_info.numberOfColumns;
    int used = 0;
    while (left > 0) {
        used += m_info.columns[std::size_t(left - 1)].width;
        if (used > m_grid->width())
            break;
        --left;
    }
    return std::min(left, std::max(0, m_info.numberOfColumns - 1));
}

QWidget *CUGCtrl::GetGridWidget() const
{
    return m_grid;
}

QWidget *CUGCtrl::GetTopHeadingWidget() const
{
    return m_topHeading;
}

QWidget *CUGCtrl::GetSideHeadingWidget() const
{
    return m_sideHeading;
}

QWidget *CUGCtrl::GetCornerButton() const
{
    return m_corner;
}

CUGCtrl::Layout CUGCtrl::ComponentLayout() const
{
    Layout layout;
    const QRect area = m_grid->geometry();
    const int side = GetSideHeadingWidth();
    const int top = GetTopHeadingHeight();
    layout.grid = area;
    layout.topHeading = QRect(area.left(), area.top() - top, area.width(), top);
    layout.sideHeading = QRect(area.left() - side, area.top(), side, area.height());
    layout.corner = QRect(area.left() - side, area.top() - top, side, top);
    layout.vScroll = verticalScrollBar()->isVisible() ? verticalScrollBar()->geometry() : QRect();
    layout.hScroll = horizontalScrollBar()->isVisible() ? horizontalScrollBar()->geometry() : QRect();
    return layout;
}

void CUGCtrl::updateGeometries()
{
    setViewportMargins(GetSideHeadingWidth(), GetTopHeadingHeight(), 0, 0);
    Layout layout = ComponentLayout();
    OnLayoutComponents(layout);
    m_topHeading->setGeometry(layout.topHeading);
    m_sideHeading->setGeometry(layout.sideHeading);
    m_corner->setGeometry(layout.corner);
    updateScrollBars();
}

void CUGCtrl::updateScrollBars()
{
    m_updatingScrollBars = true;
    verticalScrollBar()->setRange(0, int(std::min<long>(lastTopRow(), INT32_MAX)));
    verticalScrollBar()->setPageStep(int(std::max(1L, GetPageRows())));
    verticalScrollBar()->setValue(int(m_info.topRow));
    horizontalScrollBar()->setRange(0, lastLeftColumn());
    horizontalScrollBar()->setPageStep(std::max(1, visibleColumnsFrom(m_info.leftColumn)));
    horizontalScrollBar()->setValue(m_info.leftColumn);
    m_updatingScrollBars = false;
}

void CUGCtrl::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    updateGeometries();
}

void CUGCtrl::scrollContentsBy(int, int)
{
    if (m_updatingScrollBars)
        return;
    if (setView(horizontalScrollBar()->value(), verticalScrollBar()->value()) == ug::Success)
        afterPositionChange(DragMode::None);
    else
        updateScrollBars();
}

// --- Scrolling

int CUGCtrl::setView(int leftColumn, long topRow)
{
    leftColumn = std::clamp(leftColumn, 0, std::max(0, m_info.numberOfColumns - 1));
    topRow = std::clamp(topRow, 0L, std::max(0L, m_info.numberOfRows - 1));
    if (leftColumn == m_info.leftColumn && topRow == m_info.topRow)
        return ug::Success;
    if (!OnAllowScroll(m_info.leftColumn, m_info.topRow, leftColumn, topRow))
        return ug::Refused;
    m_info.leftColumn = leftColumn;
    m_info.topRow = topRow;
    // The editor moves with its cell.
    if (m_editing && m_activeEditor) {
        QRect rect;
        if (GetCellRect(m_editColumn, m_editRow, rect) == ug::Success) {
            rect.adjust(0, 0, -1, -1);
            GetCellType(m_editCell)->EditRect(rect);
            m_activeEditor->setGeometry(rect);
        }
    }
    updateScrollBars();
    return ug::Success;
}

bool CUGCtrl::scrollToShow(int column, long row)
{
    int left = m_info.leftColumn;
    long top = m_info.topRow;
    if (row >= 0) {
        if (row < top) {
            top = row;
        } else {
            // The row must end inside the cell area.
            long firstRow = row;
            int used = GetRowHeight(row);
            while (firstRow > top && used + GetRowHeight(firstRow - 1) <= m_grid->height()) {
                --firstRow;
                used += GetRowHeight(firstRow);
            }
            if (rowY(row) + GetRowHeight(row) > m_grid->height())
                top = firstRow;
        }
    }
    if (column >= 0) {
        if (column < left) {
            left = column;
        } else if (columnX(column) + m_info.columns[std::size_t(column)].width > m_grid->width()) {
            int firstColumn = column;
            int used = m_info.columns[std::size_t(column)].width;
            while (firstColumn > left && used + m_info.columns[std::size_t(firstColumn - 1)].width <= m_grid->width()) {
                --firstColumn;
                used += m_info.columns[std::size_t(firstColumn)].width;
            }
            left = firstColumn;
        }
    }
    return setView(left, top) == ug::Success;
}

int CUGCtrl::GetLeftCol() const
{
    return m_info.leftColumn;
}

long CUGCtrl::GetTopRow() const
{
    return m_info.topRow;
}

int CUGCtrl::SetLeftCol(int column)
{
    if (column < 0 || column >= m_info.numberOfColumns)
        return ug::OutOfRange;
    const int result = setView(column, m_info.topRow);
    if (result == ug::Success)
        afterPositionChange(DragMode::None);
    return result;
}

int CUGCtrl::SetTopRow(long row)
{
    if (row < 0 || row >= m_info.numberOfRows)
        return ug::OutOfRange;
    const int result = setView(m_info.leftColumn, row);
    if (result == ug::Success)
        afterPositionChange(DragMode::None);
    return result;
}

// --- Current cell

int CUGCtrl::GetCurrentCol() const
{
    return m_info.currentColumn;
}

long CUGCtrl::GetCurrentRow() const
{
    return m_info.currentRow;
}

int CUGCtrl::MoveToCell(int column, long row)
{
    const Qt::KeyboardModifiers modifiers = QGuiApplication::keyboardModifiers();
    DragMode mode = DragMode::None;
    if (m_mouseSelecting)
        mode = DragMode::Mouse;
    else if (modifiers & Qt::ShiftModifier)
        mode = DragMode::Shift;
    else if (modifiers & Qt::ControlModifier)
        mode = DragMode::Control;
    return moveCurrentTo(column, row, mode);
}

int CUGCtrl::moveCurrentTo(int column, long row, DragMode mode)
{
    if (column < 0 || column >= m_info.numberOfColumns || row < 0 || row >= m_info.numberOfRows)
        return ug::OutOfRange;
    if (column == m_info.currentColumn && row == m_info.currentRow)
        return ug::Success;
    if (!m_info.dataSource->OnCanMove(m_info.currentColumn, m_info.currentRow, column, row))
        return ug::Refused;
    if (!OnAllowCellMove(m_info.currentColumn, m_info.currentRow, column, row))
        return ug::Refused;
    for (CUGCellType *type : m_cellTypes)
        type->OnClosePopups();
    m_info.currentColumn = column;
    m_info.currentRow = row;
    scrollToShow(column, row);
    afterPositionChange(mode);
    return ug::Success;
}

void CUGCtrl::afterPositionChange(DragMode mode)
{
    const int column = m_info.currentColumn;
    const long row = m_info.currentRow;
    const bool cellChanged = column != m_lastColumn || row != m_lastRow;
    if (cellChanged && column >= 0 && row >= 0) {
        if (!m_info.multiSelect || mode == DragMode::None)
            m_info.selection.collapseTo(column, row);
        else if (mode == DragMode::Control)
            m_info.selection.addBlock(column, row);
        else
            m_info.selection.extendTo(column, row);
    }
    if (column != m_lastColumn) {
        m_info.dataSource->OnColumnChange(m_lastColumn, column);
        OnColumnChanged(m_lastColumn, column);
    }
    if (row != m_lastRow) {
        m_info.dataSource->OnRowChange(m_lastRow, row);
        OnRowChanged(m_lastRow, row);
    }
    if (cellChanged)
        OnCellChanged(m_lastColumn, column, m_lastRow, row);
    const bool scrolled = m_info.leftColumn != m_lastLeftColumn || m_info.topRow != m_lastTopRow;
    if (m_info.leftColumn != m_lastLeftColumn)
        OnLeftColumnChanged(m_lastLeftColumn, m_info.leftColumn);
    if (m_info.topRow != m_lastTopRow)
        OnTopRowChanged(m_lastTopRow, m_info.topRow);
    CUGCell cell;
    if (cellChanged) {
        if (m_lastColumn >= 0 && m_lastRow >= 0 && isCellPosition(m_lastColumn, m_lastRow)) {
            GetCellResolved(m_lastColumn, m_lastRow, cell);
            GetCellType(cell)->OnKillFocus(m_lastColumn, m_lastRow);
        }
        if (column >= 0 && row >= 0) {
            GetCellResolved(column, row, cell);
            GetCellType(cell)->OnSetFocus(column, row);
        }
    }
    if (scrolled && column >= 0 && row >= 0) {
        GetCellResolved(column, row, cell);
        GetCellType(cell)->OnScrolled();
    }
    RepaintAll();
    updateScrollBars();
    m_lastColumn = column;
    m_lastRow = row;
    m_lastLeftColumn = m_info.leftColumn;
    m_lastTopRow = m_info.topRow;
    if (cellChanged)
        notifyAccessibility(column, row);
}

int CUGCtrl::StepCurrentRow(int move)
{
    if (m_info.numberOfRows == 0)
        return ug::OutOfRange;
    const long current = std::max(0L, m_info.currentRow);
    const long page = GetPageRows();
    long target = current;
    switch (move) {
    case StepUp:
        target = current - 1;
        break;
    case StepDown:
        target = current + 1;
        break;
    case StepPageUp:
        target = std::max(0L, current - page);
        break;
    case StepPageDown:
        target = std::min(m_info.numberOfRows - 1, current + page);
        break;
    case StepFirst:
        target = 0;
        break;
    case StepLast:
        target = m_info.numberOfRows - 1;
        break;
    default:
        return ug::OutOfRange;
    }
    const int column = std::max(0, m_info.currentColumn);
    return MoveToCell(column, target);
}

// --- Selection

int CUGCtrl::SetMultiSelect(bool multiSelect)
{
    m_info.multiSelect = multiSelect;
    if (!multiSelect && m_info.currentColumn >= 0 && m_info.currentRow >= 0)
        m_info.selection.collapseTo(m_info.currentColumn, m_info.currentRow);
    RepaintAll();
    return ug::Success;
}

bool CUGCtrl::GetMultiSelect() const
{
    return m_info.multiSelect;
}

int CUGCtrl::SetCurrentCellStyle(int style)
{
    if (style < 0 || style > 3)
        return ug::OutOfRange;
    m_info.currentCellStyle = style;
    RepaintAll();
    return ug::Success;
}

int CUGCtrl::SetVScrollMode(int mode)
{
    if (mode < 0 || mode > 2)
        return ug::OutOfRange;
    m_info.vScrollMode = mode;
    return ug::Success;
}

int CUGCtrl::SelectCell(int column, long row)
{
    if (column < 0 || column >= m_info.numberOfColumns || row < 0 || row >= m_info.numberOfRows)
        return ug::OutOfRange;
    if (m_info.multiSelect)
        m_info.selection.addBlock(column, row);
    else
        m_info.selection.collapseTo(column, row);
    RepaintAll();
    return ug::Success;
}

int CUGCtrl::SelectRange(int startColumn, long startRow, int endColumn, long endRow)
{
    if (startColumn < 0 || endColumn >= m_info.numberOfColumns || startRow < 0 || endRow >= m_info.numberOfRows)
        return ug::OutOfRange;
    if (endColumn < startColumn || endRow < startRow)
        return ug::Inverted;
    if (!m_info.multiSelect)
        return ug::Refused;
    m_info.selection.addBlock(startColumn, startRow);
    m_info.selection.extendTo(endColumn, endRow);
    RepaintAll();
    return ug::Success;
}

int CUGCtrl::ClearSelection()
{
    m_info.selection.clear();
    RepaintAll();
    return ug::Success;
}

bool CUGCtrl::IsSelected(int column, long row) const
{
    return m_info.selection.isSelected(column, row);
}

int CUGCtrl::FirstSelected(int &column, long &row)
{
    return m_info.selection.first(column, row) == 0 ? ug::Success : ug::OutOfRange;
}

int CUGCtrl::NextSelected(int &column, long &row)
{
    return m_info.selection.next(column, row) == 0 ? ug::Success : ug::OutOfRange;
}

// --- Painting

int CUGCtrl::RepaintCell(int column, long row)
{
    if (!isCellPosition(column, row))
        return ug::OutOfRange;
    QWidget *shownIn = widgetShowing(row, column);
    if (shownIn != m_grid) {
        // A heading cell redraws its whole heading.
        shownIn->update();
        return ug::Success;
    }
    QRect rect;
    if (GetCellRect(column, row, rect) == ug::Success)
        m_grid->update(rect.adjusted(-2, -2, 2, 2));
    return ug::Success;
}

void CUGCtrl::RepaintAll()
{
    m_grid->update();
    m_topHeading->update();
    m_sideHeading->update();
    m_corner->update();
}

void CUGCtrl::paintSection(int section, QPainter &painter, const QRect &dirty)
{
    switch (section) {
    case ug::CellArea:
        paintCellArea(painter, dirty);
        break;
    case ug::TopHeading:
        paintTopHeading(painter, dirty);
        break;
    case ug::SideHeading:
        paintSideHeading(painter, dirty);
        break;
    default:
        paintCorner(painter);
        break;
    }
}

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

void CUGCtrl::paintOneCell(QPainter &painter, int column, long row, const QRect &rect, bool headingCell)
{
    CUGCell cell;
    GetCellResolved(column, row, cell);
    const QRect inner = rect.adjusted(0, 0, -1, -1);
    if (headingCell) {
        CUGCell shown;
        shown.copyInfoFrom(m_info.headingDefault);
        shown.addInfoFrom(cell);
        if (!shown.isSet(CUGCell::BackColor))
            shown.setBackColor(OnDefaultBackColour(row < 0 ? ug::TopHeading : ug::SideHeading));
        if (!shown.isSet(CUGCell::TextColor))
            shown.setTextColor(paletteColour(QPalette::ButtonText));
        GetCellType(shown)->Paint(painter, rect, column, row, shown, false, false);
        return;
    }
    const bool current = column == m_info.currentColumn && row == m_info.currentRow;
    const bool selected = IsSelected(column, row) && (!current || m_info.selection.isMultiple());
    painter.save();
    painter.setClipRect(inner);
    GetCellType(cell)->Paint(painter, inner, column, row, cell, selected, current);
    painter.restore();
    if (current && !m_editing && m_info.currentCellStyle != 0)
        OnPaintFocusFrame(painter, inner);
}

void CUGCtrl::OnPaintFocusFrame(QPainter &painter, const QRect &rect)
{
    CUGCell cell;
    GetCellResolved(m_info.currentColumn, m_info.currentRow, cell);
    if (GetCellType(cell)->OnPaintFocusFrame(painter, rect))
        return;
    if (m_info.currentCellStyle == 1) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.rect = rect.adjusted(1, 1, -1, -1);
        option.backgroundColor = paletteColour(QPalette::Base);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
        return;
    }
    // Styles 2 and 3: a solid frame, in the highlight colour while the grid
    // has the focus (3 keeps it when it has not, so the current row of an
    // inactive grid stays visible).
    QColor colour = paletteColour(QPalette::Highlight);
    if (!hasFocus() && m_info.currentCellStyle == 2)
        colour = paletteColour(QPalette::Mid);
    QPen pen(colour);
    pen.setWidth(2);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect.adjusted(1, 1, -1, -1));
}

void CUGCtrl::paintCellArea(QPainter &painter, const QRect &dirty)
{
    const QColor lines = paletteColour(QPalette::Midlight).darker(110);
    const int width = m_grid->width();
    const int height = m_grid->height();
    int y = 0;
    long row = m_info.topRow;
    int right = 0;
    for (; row < m_info.numberOfRows && y < height; ++row) {
        const int rowHeight = GetRowHeight(row);
        if (y + rowHeight > dirty.top() && y <= dirty.bottom()) {
            int x = 0;
            for (int column = m_info.leftColumn; column < m_info.numberOfColumns && x < width; ++column) {
                const int columnWidth = m_info.columns[std::size_t(column)].width;
                const QRect rect(x, y, columnWidth, rowHeight);
                if (rect.intersects(dirty)) {
                    paintOneCell(painter, column, row, rect, false);
                    painter.setPen(lines);
                    painter.drawLine(rect.topRight(), rect.bottomRight());
                    painter.drawLine(rect.bottomLeft(), rect.bottomRight());
                }
                x += columnWidth;
            }
            right = x;
        } else if (right == 0) {
            for (int column = m_info.leftColumn; column < m_info.numberOfColumns && right < width; ++column)
                right += m_info.columns[std::size_t(column)].width;
        }
        y += rowHeight;
    }
    if (m_info.numberOfRows == 0 || row == m_info.topRow) {
        right = 0;
        for (int column = m_info.leftColumn; column < m_info.numberOfColumns && right < width; ++column)
            right += m_info.columns[std::size_t(column)].width;
    }
    const QColor background = OnDefaultBackColour(ug::CellArea);
    if (right < width)
        painter.fillRect(QRect(right, 0, width - right, height).intersected(dirty), background);
    if (y < height)
        painter.fillRect(QRect(0, y, std::min(right, width), height - y).intersected(dirty), background);
}

void CUGCtrl::paintTopHeading(QPainter &painter, const QRect &dirty)
{
    painter.fillRect(dirty, OnDefaultBackColour(ug::TopHeading));
    const int rows = int(m_info.headingRowHeights.size());
    for (int headingRow = -rows; headingRow < 0; ++headingRow) {
        const int y = headingRowY(headingRow);
        const int height = m_info.headingRowHeights[std::size_t(-headingRow - 1)];
        int x = 0;
        for (int column = m_info.leftColumn; column < m_info.numberOfColumns && x < m_topHeading->width(); ++column) {
            const int width = m_info.columns[std::size_t(column)].width;
            const QRect rect(x, y, width, height);
            if (rect.intersects(dirty))
                paintOneCell(painter, column, headingRow, rect, true);
            x += width;
        }
    }
}

void CUGCtrl::paintSideHeading(QPainter &painter, const QRect &dirty)
{
    painter.fillRect(dirty, OnDefaultBackColour(ug::SideHeading));
    const int columns = int(m_info.headingColumnWidths.size());
    int y = 0;
    for (long row = m_info.topRow; row < m_info.numberOfRows && y < m_sideHeading->height(); ++row) {
        const int height = GetRowHeight(row);
        for (int headingColumn = -columns; headingColumn < 0; ++headingColumn) {
            const QRect rect(headingColumnX(headingColumn), y,
                             m_info.headingColumnWidths[std::size_t(-headingColumn - 1)], height);
            if (rect.intersects(dirty))
                paintOneCell(painter, headingColumn, row, rect, true);
        }
        y += height;
    }
}

void CUGCtrl::paintCorner(QPainter &painter)
{
    paintOneCell(painter, -1, -1, m_corner->rect(), true);
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

// --- Keys

bool CUGCtrl::event(QEvent *event)
{
    // Shortcuts of the window must not take the keys the grid moves with.
    if (event->type() == QEvent::ShortcutOverride) {
        auto *key = static_cast<QKeyEvent *>(event);
        if (key->modifiers() == Qt::NoModifier || key->modifiers() == Qt::ShiftModifier) {
            event->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

bool CUGCtrl::focusNextPrevChild(bool next)
{
    // Tab moves between cells; Control+Tab leaves the grid.
    if (hasFocus() && !(QGuiApplication::keyboardModifiers() & Qt::ControlModifier))
        return false;
    return QAbstractScrollArea::focusNextPrevChild(next);
}

void CUGCtrl::focusInEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusInEvent(event);
    if (m_info.currentColumn < 0 && m_info.numberOfColumns > 0 && m_info.numberOfRows > 0)
        moveCurrentTo(0, 0, DragMode::None);
    RepaintAll();
}

int CUGCtrl::repeatedSteps(QKeyEvent *event)
{
    if (!event->isAutoRepeat()) {
        m_repeatCount = 0;
        return 1;
    }
    // Held keys speed up: one row per repeat at first, up to eight.
    ++m_repeatCount;
    return std::min(8, 1 + m_repeatCount / 8);
}

bool CUGCtrl::handleCellKey(QKeyEvent *event)
{
    const int column = m_info.currentColumn;
    const long row = m_info.currentRow;
    int key = event->key();
    bool handled = false;
    if (column >= 0 && row >= 0) {
        CUGCell cell;
        GetCellResolved(column, row, cell);
        handled = GetCellType(cell)->OnKey(column, row, key) != 0;
    }
    OnCellKey(key, handled);
    if (key == 0)
        return true;

    const Qt::KeyboardModifiers modifiers = event->modifiers();
    const bool control = modifiers & Qt::ControlModifier;
    DragMode mode = DragMode::None;
    if (modifiers & Qt::ShiftModifier)
        mode = DragMode::Shift;
    const int currentColumn = std::max(0, column);
    const long currentRow = std::max(0L, row);
    switch (key) {
    case Qt::Key_Left:
        moveCurrentTo(std::max(0, currentColumn - 1), currentRow, mode);
        return true;
    case Qt::Key_Right:
        moveCurrentTo(std::min(m_info.numberOfColumns - 1, currentColumn + 1), currentRow, mode);
        return true;
    case Qt::Key_Tab:
        if (control)
            return false;
        moveCurrentTo(std::min(m_info.numberOfColumns - 1, currentColumn + 1), currentRow, DragMode::None);
        return true;
    case Qt::Key_Backtab:
        moveCurrentTo(std::max(0, currentColumn - 1), currentRow, DragMode::None);
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down: {
        const long steps = repeatedSteps(event);
        const long target = key == Qt::Key_Up ? currentRow - steps : currentRow + steps;
        moveCurrentTo(currentColumn, std::clamp(target, 0L, std::max(0L, m_info.numberOfRows - 1)), mode);
        return true;
    }
    case Qt::Key_PageUp:
        moveCurrentTo(currentColumn, std::max(0L, currentRow - GetPageRows()), mode);
        return true;
    case Qt::Key_PageDown:
        moveCurrentTo(currentColumn, std::min(m_info.numberOfRows - 1, currentRow + GetPageRows()), mode);
        return true;
    case Qt::Key_Home:
        if (control)
            moveCurrentTo(currentColumn, 0, mode);
        else
            moveCurrentTo(0, currentRow, mode);
        return true;
    case Qt::Key_End:
        if (control)
            moveCurrentTo(currentColumn, m_info.numberOfRows - 1, mode);
        else
            moveCurrentTo(m_info.numberOfColumns - 1, currentRow, mode);
        return true;
    case Qt::Key_F2:
        BeginEdit(0);
        return true;
    case Qt::Key_F:
        if (control) {
            FindDialog();
            return true;
        }
        break;
    case Qt::Key_H:
        if (control) {
            ReplaceDialog();
            return true;
        }
        break;
    default:
        break;
    }
    const QString text = event->text();
    if (text.isEmpty() || !text[0].isPrint() || control)
        return false;
    QChar character = text[0];
    bool charHandled = false;
    if (column >= 0 && row >= 0) {
        CUGCell cell;
        GetCellResolved(column, row, cell);
        charHandled = GetCellType(cell)->OnCharDown(column, row, character) != 0;
    }
    OnCellChar(character, charHandled);
    return true;
}

void CUGCtrl::keyPressEvent(QKeyEvent *event)
{
    if (m_info.numberOfColumns == 0 || m_info.numberOfRows == 0 || !handleCellKey(event))
        QAbstractScrollArea::keyPressEvent(event);
}

void CUGCtrl::keyReleaseEvent(QKeyEvent *event)
{
    if (!event->isAutoRepeat())
        m_repeatCount = 0;
    QAbstractScrollArea::keyReleaseEvent(event);
}

// --- Attaching to a dialog

int CUGCtrl::AttachToDialogItem(QWidget *dialog, int controlId)
{
    if (!dialog)
        return 0;
    QWidget *placeholder = nullptr;
    const QList<QWidget *> children = dialog->findChildren<QWidget *>();
    for (QWidget *child : children) {
        if (child != this && child->property("controlId").toInt() == controlId) {
            placeholder = child;
            break;
        }
    }
    if (!placeholder || !placeholder->parentWidget())
        return 0;
    QWidget *parent = placeholder->parentWidget();
    setParent(parent);
    setGeometry(placeholder->geometry());
    setObjectName(placeholder->objectName());
    setSizePolicy(placeholder->sizePolicy());
    setMinimumSize(placeholder->minimumSize());
    if (QLayout *layout = parent->layout())
        delete layout->replaceWidget(placeholder, this, Qt::FindChildrenRecursively);
    QWidget::setTabOrder(placeholder, this);
    placeholder->setProperty("controlId", QVariant());
    placeholder->hide();
    placeholder->deleteLater();
    setProperty("controlId", controlId);

    QFont gridFont = dialog->font();
    SetDefFont(gridFont);
    QFont headingFont = gridFont;
    headingFont.setWeight(QFont::Weight(std::min(900, int(gridFont.weight()) + 200)));
    m_info.headingDefault.setFont(headingFont);
    show();
    updateGeometries();
    OnGridInit();
    return 1;
}

void CUGCtrl::notifyAccessibility(int column, long row)
{
    if (column < 0 || row < 0)
        notifyGridReset(this);
    else
        notifyGridFocus(this, column, row);
}

} // namespace vyr
