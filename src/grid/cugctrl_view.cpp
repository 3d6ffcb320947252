// CUGCtrl: the view - geometry of the parts, scrolling, the current cell
// and its notifications, selection and attaching to a dialog. Painting is
// in cugctrl_paint.cpp, the mouse in cugctrl_mouse.cpp, keys and focus in
// cugctrl_keys.cpp.
#include "grid/cugctrl.h"

#include "grid/cugaccessible.h"
#include "grid/cugsections.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QLabel>
#include <QLayout>
#include <QScrollBar>

#include <algorithm>

namespace vyr {

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
    // An OnLayoutComponents that sets column widths must not start another
    // layout: the one under way uses the widths it set.
    if (m_layingOut)
        return;
    setViewportMargins(GetSideHeadingWidth(), GetTopHeadingHeight(), 0, 0);
    Layout layout = ComponentLayout();
    m_layingOut = true;
    OnLayoutComponents(layout);
    m_layingOut = false;
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

void CUGCtrl::SupplyRowsWhenWanted(std::function<void()> supply)
{
    m_rowSupplier = std::move(supply);
}

void CUGCtrl::WantRows()
{
    // Taken first: the supplier fills the grid through calls that may want
    // the rows again.
    if (const std::function<void()> supply = std::exchange(m_rowSupplier, nullptr))
        supply();
}

void CUGCtrl::showEvent(QShowEvent *event)
{
    QAbstractScrollArea::showEvent(event);
    if (OnLayoutStale())
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
            GetCellType(m_editCell)->EditRect(rect, m_editCell);
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

int CUGCtrl::GotoCell(int column, long row)
{
    return moveCurrentTo(column, row, DragMode::None);
}

int CUGCtrl::GotoNearestCell(int column, long row)
{
    return moveCurrentNear(column, row, DragMode::None);
}

int CUGCtrl::moveCurrentNear(int column, long row, DragMode mode)
{
    const int result = moveCurrentTo(column, row, mode);
    if (result != ug::Refused)
        return result;
    const int fromColumn = std::max(0, m_info.currentColumn);
    const long fromRow = std::max(0L, m_info.currentRow);
    const long towardsCurrent = row > fromRow ? -1 : 1;
    const int beyond = column > fromColumn ? 1 : -1;
    // The current cell is a candidate too: reaching it ends the search
    // without a move.
    for (long candidateRow = row;; candidateRow += towardsCurrent) {
        for (int distance = 0; distance < m_info.numberOfColumns; ++distance) {
            for (const int side : {beyond, -beyond}) {
                const int candidate = column + side * distance;
                if ((distance == 0 && (side != beyond || candidateRow == row)) || candidate < 0
                    || candidate >= m_info.numberOfColumns)
                    continue;
                if (moveCurrentTo(candidate, candidateRow, mode) == ug::Success)
                    return ug::Success;
            }
        }
        if (candidateRow == fromRow)
            return ug::Refused;
    }
}

long CUGCtrl::shownRowFrom(long row, long step) const
{
    while (row >= 0 && row < m_info.numberOfRows && GetRowHeight(row) == 0)
        row += step;
    return row >= 0 && row < m_info.numberOfRows ? row : -1;
}

int CUGCtrl::moveCurrentTo(int column, long row, DragMode mode)
{
    if (column < 0 || column >= m_info.numberOfColumns || row < 0 || row >= m_info.numberOfRows)
        return ug::OutOfRange;
    // A row of no height is hidden (a filter left it out): it is never
    // current, and a move onto it goes on the same way to a shown one.
    if (!m_info.rowHeights.empty() && GetRowHeight(row) == 0) {
        row = shownRowFrom(row, row >= m_info.currentRow ? 1 : -1);
        if (row < 0)
            return ug::Refused;
    }
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
    setMaximumSize(placeholder->maximumSize());
    if (accessibleName().isEmpty())
        setAccessibleName(placeholder->accessibleName());
    if (accessibleDescription().isEmpty())
        setAccessibleDescription(placeholder->accessibleDescription());
    // Labels that named the placeholder as their buddy name the grid now, so
    // their mnemonics reach it.
    const QList<QLabel *> labels = parent->window()->findChildren<QLabel *>();
    for (QLabel *label : labels) {
        if (label->buddy() == placeholder)
            label->setBuddy(this);
    }
    if (QLayout *layout = parent->layout())
        delete layout->replaceWidget(placeholder, this, Qt::FindChildrenRecursively);
    // The grid takes the placeholder's place in the tab order. Qt links
    // only widgets that take the focus, and a placeholder usually does not.
    const Qt::FocusPolicy placeholderPolicy = placeholder->focusPolicy();
    placeholder->setFocusPolicy(Qt::StrongFocus);
    QWidget::setTabOrder(placeholder, this);
    placeholder->setFocusPolicy(placeholderPolicy);
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
    InitializeGrid();
    return 1;
}

void CUGCtrl::InitializeGrid()
{
    if (m_initialised)
        return;
    m_initialised = true;
    OnGridInit();
}

void CUGCtrl::notifyCellChanged(int column, long row)
{
    if (!QAccessible::isActive())
        return;
    // Many cells at once (a paste, Check All, an undo) are told as one change
    // of the whole grid when the batch ends; a cell out of sight is read when
    // it is reached. Either way a big grid costs a listener nothing per cell.
    if (m_batchDepth > 0) {
        m_batchDirty = true;
        return;
    }
    const long top = GetTopRow();
    if (row < top || row > top + visibleRowsFrom(top, m_grid->height()))
        return;
    notifyGridCellChanged(this, column, row);
}

void CUGCtrl::notifyAccessibility(int column, long row)
{
    if (column < 0 || row < 0)
        notifyGridReset(this);
    else
        notifyGridFocus(this, column, row);
}

} // namespace vyr
