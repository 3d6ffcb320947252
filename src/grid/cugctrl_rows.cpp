// CUGCtrl: dimensions and rows - column and row counts, heading counts,
// opening, closing and reordering rows through the data stores, and keeping
// the current cell and the view in step with them.
#include "grid/cugctrl.h"

#include <algorithm>

namespace vyr {

// --- Dimensions

int CUGCtrl::GetColumnCount() const
{
    return m_info.numberOfColumns;
}

int CUGCtrl::SetColumnCount(int count, bool redraw)
{
    if (count < 0 || count > ug::kMaxColumns)
        return ug::OutOfRange;
    const int old = m_info.numberOfColumns;
    m_info.columns.resize(std::size_t(count));
    for (int column = old; column < count; ++column) {
        CUGColumnInfo &info = m_info.columns[std::size_t(column)];
        info.width = m_info.defaultColumnWidth;
        info.dataSourceColumn = column;
    }
    m_info.numberOfColumns = count;
    if (m_info.leftColumn >= count)
        m_info.leftColumn = std::max(0, count - 1);
    keepCurrentInside();
    updateGeometries();
    notifyAccessibility(-1, -1);
    if (redraw)
        RepaintAll();
    return ug::Success;
}

long CUGCtrl::GetRowCount() const
{
    return m_info.numberOfRows;
}

int CUGCtrl::SetRowCount(long count, bool redraw)
{
    if (count < 0)
        return ug::OutOfRange;
    const long old = m_info.numberOfRows;
    if (count < old)
        OnRowsDeleting(count, old - count);
    m_info.numberOfRows = count;
    m_info.rowHeights.erase(m_info.rowHeights.lower_bound(count), m_info.rowHeights.end());
    if (m_info.topRow >= count)
        m_info.topRow = std::max(0L, count - 1);
    keepCurrentInside();
    if (count > old)
        OnRowsInserted(old, count - old);
    updateGeometries();
    notifyAccessibility(-1, -1);
    if (redraw)
        RepaintAll();
    return ug::Success;
}

void CUGCtrl::keepCurrentInside()
{
    int column = std::min(m_info.currentColumn, m_info.numberOfColumns - 1);
    long row = std::min(m_info.currentRow, m_info.numberOfRows - 1);
    if (column == m_info.currentColumn && row == m_info.currentRow)
        return;
    if (column < 0 || row < 0) {
        m_info.currentColumn = column;
        m_info.currentRow = row;
        m_info.selection.clear();
        return;
    }
    if (moveCurrentTo(column, row, DragMode::None) == ug::Success)
        return;
    // The old cell is gone, so the hooks cannot keep the current cell there.
    m_info.currentColumn = column;
    m_info.currentRow = row;
    scrollToShow(column, row);
    afterPositionChange(DragMode::None);
}

namespace {

// Row heights from `row` on move by `by` rows; with a negative `by` the
// heights of the rows removed go.
void shiftRowHeights(std::map<long, int> &heights, long row, long by)
{
    if (heights.empty())
        return;
    std::map<long, int> shifted;
    for (auto it = heights.lower_bound(row); it != heights.end();) {
        if (by > 0 || it->first >= row - by)
            shifted.emplace(it->first + by, it->second);
        it = heights.erase(it);
    }
    heights.merge(shifted);
}

} // namespace

int CUGCtrl::InsertRow(long row)
{
    return InsertRows(row, 1);
}

int CUGCtrl::DeleteRow(long row)
{
    return DeleteRows(row, 1);
}

int CUGCtrl::InsertRows(long row, long count)
{
    if (row < 0 || row > m_info.numberOfRows || count < 0)
        return ug::OutOfRange;
    const long inserted = std::clamp(m_info.dataSource->InsertRows(row, count), 0L, count);
    if (inserted > 0) {
        shiftRowHeights(m_info.rowHeights, row, inserted);
        m_info.numberOfRows += inserted;
        OnRowsInserted(row, inserted);
        rowsChanged();
    }
    return inserted == count ? ug::Success : ug::Refused;
}

int CUGCtrl::DeleteRows(long row, long count)
{
    if (row < 0 || count < 0 || row + count > m_info.numberOfRows)
        return ug::OutOfRange;
    if (count == 0)
        return ug::Success;
    OnRowsDeleting(row, count);
    const long deleted = std::clamp(m_info.dataSource->DeleteRows(row, count), 0L, count);
    if (deleted > 0) {
        shiftRowHeights(m_info.rowHeights, row, -deleted);
        m_info.numberOfRows -= deleted;
        if (m_info.topRow >= m_info.numberOfRows)
            m_info.topRow = std::max(0L, m_info.numberOfRows - 1);
        keepCurrentInside();
        rowsChanged();
    }
    return deleted == count ? ug::Success : ug::Refused;
}

int CUGCtrl::PermuteRowTexts(long row, const std::vector<long> &order)
{
    const long count = long(order.size());
    if (row < 0 || row + count > m_info.numberOfRows)
        return ug::OutOfRange;
    std::vector<bool> seen(order.size(), false);
    for (const long from : order) {
        if (from < 0 || from >= count || seen[std::size_t(from)])
            return ug::OutOfRange;
        seen[std::size_t(from)] = true;
    }
    // One request per data store, with the store's own column numbers.
    std::vector<std::pair<CUGDataSource *, std::vector<int>>> stores;
    for (int column = 0; column < m_info.numberOfColumns; ++column) {
        int storeColumn = 0;
        CUGDataSource *store = storeFor(column, storeColumn);
        auto found = std::find_if(stores.begin(), stores.end(), [store](const auto &entry) { return entry.first == store; });
        if (found == stores.end())
            found = stores.insert(stores.end(), {store, {}});
        found->second.push_back(storeColumn);
    }
    for (const auto &[store, columns] : stores)
        store->PermuteTexts(columns, row, order);
    OnRowTextsPermuted(row, order);
    // Rows took other texts, so other names: assistive technology reads anew.
    notifyAccessibility(-1, -1);
    RepaintAll();
    return ug::Success;
}

void CUGCtrl::BeginBatch()
{
    ++m_batchDepth;
}

void CUGCtrl::EndBatch()
{
    if (m_batchDepth == 0 || --m_batchDepth > 0 || !m_batchDirty)
        return;
    m_batchDirty = false;
    rowsChanged();
}

void CUGCtrl::rowsChanged()
{
    if (m_batchDepth > 0) {
        m_batchDirty = true;
        return;
    }
    // Rows often come one after another (a page loading its records): the
    // scroll bars, assistive technology and the screen catch up once, when
    // control returns to the event loop.
    if (m_viewUpdatePending)
        return;
    m_viewUpdatePending = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_viewUpdatePending = false;
            updateScrollBars();
            notifyAccessibility(-1, -1);
            RepaintAll();
        },
        Qt::QueuedConnection);
}

int CUGCtrl::AppendRow()
{
    return InsertRow(m_info.numberOfRows);
}

int CUGCtrl::GetTopHeadingRows() const
{
    return int(m_info.headingRowHeights.size());
}

int CUGCtrl::SetTopHeadingRows(int count)
{
    if (count < 1 || count > ug::kMaxHeadings)
        return ug::OutOfRange;
    m_info.headingRowHeights.resize(std::size_t(count), m_info.defaultRowHeight);
    updateGeometries();
    RepaintAll();
    return ug::Success;
}

int CUGCtrl::GetSideHeadingColumns() const
{
    return int(m_info.headingColumnWidths.size());
}

int CUGCtrl::SetSideHeadingColumns(int count)
{
    if (count < 1 || count > ug::kMaxHeadings)
        return ug::OutOfRange;
    m_info.headingColumnWidths.resize(std::size_t(count), 25);
    updateGeometries();
    RepaintAll();
    return ug::Success;
}

} // namespace vyr
