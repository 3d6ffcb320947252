// CUGCtrl: construction, dimensions, cells, defaults, sizes, fonts, cell
// types and the hooks' base behaviour. The view (scrolling, painting, mouse,
// keys, selection) is in cugctrl_view.cpp, editing in cugctrl_edit.cpp, find
// and replace in cugctrl_find.cpp.
#include "grid/cugctrl.h"

#include "grid/cugaccessible.h"
#include "grid/cugedit.h"
#include "grid/cugmaskededit.h"
#include "grid/cugsections.h"
#include "grid/cugstandardtypes.h"
#include "grid/maskedtext.h"

#include <QScrollBar>

#include <algorithm>
#include <cstdio>

namespace vyr {

CUGCtrl::CUGCtrl(QWidget *parent)
    : QAbstractScrollArea(parent)
{
    installGridAccessibility();
    setViewport(new CUGGrid(this));
    m_grid = static_cast<CUGGrid *>(viewport());
    m_topHeading = new CUGTopHdg(this);
    m_sideHeading = new CUGSideHdg(this);
    m_corner = new CUGCnrBtn(this);
    m_edit = new CUGEdit(this, m_grid);
    m_maskedEdit = new CUGMaskedEdit(this, m_grid);
    verticalScrollBar()->setProperty("controlId", int(ug::VScrollId));
    horizontalScrollBar()->setProperty("controlId", int(ug::HScrollId));
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    m_defaultFont = font();

    // The standard types take indices 0..3, in this order.
    m_standardTypes.push_back(std::make_unique<CUGCellType>());
    m_standardTypes.push_back(std::make_unique<CUGDropListType>());
    m_standardTypes.push_back(std::make_unique<CUGCheckBoxType>());
    m_standardTypes.push_back(std::make_unique<CUGArrowType>());
    for (const auto &type : m_standardTypes)
        RegisterCellType(type.get());
    updateGeometries();
}

CUGCtrl::~CUGCtrl()
{
    // Added cell types belong to the derived grid and are gone by now; only
    // the grid's own may still close their pop-ups.
    for (const auto &type : m_standardTypes)
        type->OnClosePopups();
    // The editors go first, so that no focus change reaches a half
    // destroyed grid.
    m_editing = false;
    m_endingEdit = true;
    delete m_edit;
    delete m_maskedEdit;
    if (m_findDialog)
        delete m_findDialog.data();
}

// --- Positions

bool CUGCtrl::isColumn(int column) const
{
    return column >= -int(m_info.headingColumnWidths.size()) && column < m_info.numberOfColumns;
}

bool CUGCtrl::isRow(long row) const
{
    return row >= -long(m_info.headingRowHeights.size()) && row < m_info.numberOfRows;
}

bool CUGCtrl::isCellPosition(int column, long row) const
{
    return isColumn(column) && isRow(row);
}

CUGDataSource *CUGCtrl::storeFor(int column, int &storeColumn) const
{
    storeColumn = column;
    if (column < 0 || column >= m_info.numberOfColumns)
        return m_info.dataSource;
    const CUGColumnInfo &info = m_info.columns[std::size_t(column)];
    storeColumn = info.dataSourceColumn;
    return info.dataSource ? info.dataSource : m_info.dataSource;
}

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

// --- Cells

int CUGCtrl::GetCell(int column, long row, CUGCell &cell) const
{
    if (!isCellPosition(column, row))
        return ug::OutOfRange;
    int storeColumn = 0;
    CUGDataSource *store = storeFor(column, storeColumn);
    return store->GetCell(storeColumn, row, cell) == 0 ? ug::Success : ug::OutOfRange;
}

int CUGCtrl::GetCellResolved(int column, long row, CUGCell &cell)
{
    cell.clearAll();
    const bool inside = isCellPosition(column, row);
    // Heading rows are not the column's cells: they start from the grid
    // default, as heading columns do.
    if (inside && column >= 0 && row >= 0) {
        const CUGColumnInfo &info = m_info.columns[std::size_t(column)];
        if (info.defaults.propertyMask() != 0)
            cell.copyInfoFrom(info.defaults);
        (info.dataSource ? info.dataSource : m_info.dataSource)->GetCell(info.dataSourceColumn, row, cell);
    } else {
        cell.copyInfoFrom(m_info.gridDefault);
        if (inside) {
            int storeColumn = 0;
            storeFor(column, storeColumn)->GetCell(storeColumn, row, cell);
        }
    }
    OnCellRead(column, row, cell);
    return inside ? ug::Success : ug::OutOfRange;
}

int CUGCtrl::SetCell(int column, long row, const CUGCell &cell)
{
    if (!isCellPosition(column, row))
        return ug::OutOfRange;
    OnCellWrite(column, row, cell);
    int storeColumn = 0;
    CUGDataSource *store = storeFor(column, storeColumn);
    return store->SetCell(storeColumn, row, cell) == 0 ? ug::Success : ug::Refused;
}

QString CUGCtrl::GetCellText(int column, long row)
{
    CUGCell cell;
    if (GetCellResolved(column, row, cell) != ug::Success)
        return QString();
    return cell.takeText();
}

int CUGCtrl::SetCellText(int column, long row, const QString &text)
{
    if (!isCellPosition(column, row))
        return ug::OutOfRange;
    CUGCell cell;
    GetCellResolved(column, row, cell);
    cell.setText(text);
    cell.setDataType(CUGCell::TextData);
    return SetCell(column, row, cell);
}

bool CUGCtrl::IsCellWritable(int column, long row)
{
    if (column < 0 || row < 0 || column >= m_info.numberOfColumns || row >= m_info.numberOfRows)
        return false;
    CUGCell cell;
    GetCellResolved(column, row, cell);
    return MayWriteCell(column, row, cell);
}

bool CUGCtrl::MayWriteCell(int, long, const CUGCell &resolved)
{
    return !resolved.isReadOnly() && GetCellType(resolved)->allowsEditing();
}

int CUGCtrl::WriteUserText(int column, long row, const QString &text, ug::TextSource source)
{
    if (column < 0 || row < 0 || column >= m_info.numberOfColumns || row >= m_info.numberOfRows)
        return ug::OutOfRange;
    CUGCell cell;
    GetCellResolved(column, row, cell);
    if (!MayWriteCell(column, row, cell))
        return ug::Refused;
    return WriteCheckedText(column, row, text, source, cell);
}

int CUGCtrl::WriteCheckedText(int column, long row, const QString &text, ug::TextSource source,
                              const CUGCell &resolved)
{
    if (resolved.isSet(CUGCell::Mask) && !resolved.mask().isEmpty()
        && MaskedText(resolved.mask(), text).value() != text)
        return ug::Refused;
    // The checks may change a character; the text is copied only then.
    QString verified = text;
    for (qsizetype i = 0; i < text.size(); ++i) {
        QChar character = text[i];
        if (!m_info.dataSource->OnEditVerify(column, row, nullptr, character)
            || !OnEditVerify(column, row, nullptr, character))
            return ug::Refused;
        if (character != text[i])
            verified[i] = character;
    }
    if (!m_info.dataSource->OnEditFinish(column, row, nullptr, verified, false)
        || !OnEndEdit(column, row, nullptr, verified, false))
        return ug::Refused;
    return StoreUserText(column, row, verified, source) == ug::Success ? ug::Success : ug::Refused;
}

int CUGCtrl::StoreUserText(int column, long row, const QString &text, ug::TextSource)
{
    return SetCellText(column, row, text);
}

int CUGCtrl::DeleteCell(int column, long row)
{
    if (!isCellPosition(column, row))
        return ug::OutOfRange;
    int storeColumn = 0;
    return storeFor(column, storeColumn)->DeleteCell(storeColumn, row) == 0 ? ug::Success : ug::Refused;
}

// --- Defaults

int CUGCtrl::GetDefaultCell(CUGCell &cell) const
{
    cell.copyInfoFrom(m_info.gridDefault);
    return ug::Success;
}

int CUGCtrl::SetDefaultCell(const CUGCell &cell)
{
    m_info.gridDefault.copyInfoFrom(cell);
    return ug::Success;
}

int CUGCtrl::GetHeadingDefaultCell(CUGCell &cell) const
{
    cell.copyInfoFrom(m_info.headingDefault);
    return ug::Success;
}

int CUGCtrl::SetHeadingDefaultCell(const CUGCell &cell)
{
    m_info.headingDefault.copyInfoFrom(cell);
    return ug::Success;
}

int CUGCtrl::GetColumnDefault(int column, CUGCell &cell) const
{
    if (column < 0 || column >= m_info.numberOfColumns)
        return ug::OutOfRange;
    cell.copyInfoFrom(m_info.columns[std::size_t(column)].defaults);
    return ug::Success;
}

int CUGCtrl::SetColumnDefault(int column, const CUGCell &cell)
{
    if (column < 0 || column >= m_info.numberOfColumns)
        return ug::OutOfRange;
    m_info.columns[std::size_t(column)].defaults.copyInfoFrom(cell);
    return ug::Success;
}

// --- Data stores

int CUGCtrl::SetDefDataSource(CUGDataSource *store)
{
    m_info.dataSource = store ? store : m_info.ownStore.get();
    RepaintAll();
    return ug::Success;
}

CUGDataSource *CUGCtrl::GetDataSource(int column) const
{
    int storeColumn = 0;
    return storeFor(column, storeColumn);
}

int CUGCtrl::SetColumnDataSource(int column, CUGDataSource *store, int storeColumn)
{
    if (column < 0 || column >= m_info.numberOfColumns || storeColumn < 0)
        return ug::OutOfRange;
    CUGColumnInfo &info = m_info.columns[std::size_t(column)];
    info.dataSource = store;
    info.dataSourceColumn = storeColumn;
    RepaintAll();
    return ug::Success;
}

// --- Sizes

int CUGCtrl::SetColumnWidth(int column, int width)
{
    if (!isColumn(column) || width < 0)
        return ug::OutOfRange;
    if (column < 0) {
        if (width > ug::kMaxHeadingSize)
            return ug::OutOfRange;
        m_info.headingColumnWidths[std::size_t(-column - 1)] = width;
    } else {
        m_info.columns[std::size_t(column)].width = width;
    }
    updateGeometries();
    RepaintAll();
    return ug::Success;
}

int CUGCtrl::GetColumnWidth(int column) const
{
    if (!isColumn(column))
        return 0;
    return column < 0 ? m_info.headingColumnWidths[std::size_t(-column - 1)]
                      : m_info.columns[std::size_t(column)].width;
}

int CUGCtrl::SetDefColumnWidth(int width)
{
    if (width < 0)
        return ug::OutOfRange;
    m_info.defaultColumnWidth = width;
    return ug::Success;
}

int CUGCtrl::SetRowHeight(long row, int height)
{
    if (!isRow(row) || height < 0)
        return ug::OutOfRange;
    if (row < 0) {
        if (height > ug::kMaxHeadingSize)
            return ug::OutOfRange;
        m_info.headingRowHeights[std::size_t(-row - 1)] = height;
    } else if (height == m_info.defaultRowHeight) {
        m_info.rowHeights.erase(row);
    } else {
        m_info.rowHeights[row] = height;
    }
    updateGeometries();
    RepaintAll();
    return ug::Success;
}

int CUGCtrl::GetRowHeight(long row) const
{
    if (!isRow(row))
        return 0;
    if (row < 0)
        return m_info.headingRowHeights[std::size_t(-row - 1)];
    const auto found = m_info.rowHeights.find(row);
    return found == m_info.rowHeights.end() ? m_info.defaultRowHeight : found->second;
}

int CUGCtrl::SetDefRowHeight(int height)
{
    if (height < 1)
        return ug::OutOfRange;
    m_info.defaultRowHeight = height;
    updateGeometries();
    RepaintAll();
    return ug::Success;
}

namespace {

// Makes the sizes add up to the total by changing the one nearest the cells.
bool setTotal(std::vector<int> &sizes, int total)
{
    if (total < 0 || total > ug::kMaxHeadingSize)
        return false;
    int others = 0;
    for (std::size_t i = 1; i < sizes.size(); ++i)
        others += sizes[i];
    if (others > total) {
        for (std::size_t i = 1; i < sizes.size(); ++i)
            sizes[i] = total / int(sizes.size());
        others = total / int(sizes.size()) * int(sizes.size() - 1);
    }
    sizes[0] = total - others;
    return true;
}

} // namespace

int CUGCtrl::SetSideHeadingWidth(int width)
{
    if (!setTotal(m_info.headingColumnWidths, width))
        return ug::OutOfRange;
    updateGeometries();
    RepaintAll();
    return ug::Success;
}

int CUGCtrl::SetSideHeadingColumnWidth(int column, int width)
{
    return column < 0 ? SetColumnWidth(column, width) : ug::OutOfRange;
}

int CUGCtrl::GetSideHeadingWidth() const
{
    int total = 0;
    for (int width : m_info.headingColumnWidths)
        total += width;
    return total;
}

int CUGCtrl::SetTopHeadingHeight(int height)
{
    if (!setTotal(m_info.headingRowHeights, height))
        return ug::OutOfRange;
    updateGeometries();
    RepaintAll();
    return ug::Success;
}

int CUGCtrl::SetTopHeadingRowHeight(int row, int height)
{
    return row < 0 ? SetRowHeight(row, height) : ug::OutOfRange;
}

int CUGCtrl::GetTopHeadingHeight() const
{
    int total = 0;
    for (int height : m_info.headingRowHeights)
        total += height;
    return total;
}

int CUGCtrl::SetVScrollWidth(int width)
{
    if (width < 0 || width > ug::kMaxScrollBarSize)
        return ug::OutOfRange;
    m_info.vScrollWidth = width;
    setVerticalScrollBarPolicy(width == 0 ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded);
    if (width > 0)
        verticalScrollBar()->setFixedWidth(width);
    updateGeometries();
    return ug::Success;
}

int CUGCtrl::SetHScrollHeight(int height)
{
    if (height < 0 || height > ug::kMaxScrollBarSize)
        return ug::OutOfRange;
    m_info.hScrollHeight = height;
    setHorizontalScrollBarPolicy(height == 0 ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded);
    if (height > 0)
        horizontalScrollBar()->setFixedHeight(height);
    updateGeometries();
    return ug::Success;
}

int CUGCtrl::FitColumnWidths(int firstColumn, int lastColumn, long rowsToScan, int flags)
{
    if (!isColumn(firstColumn) || !isColumn(lastColumn))
        return ug::OutOfRange;
    if (lastColumn < firstColumn)
        return ug::Inverted;
    const int areaWidth = m_grid->width() > 0 ? m_grid->width() : 300;
    const long firstRow = (flags & 1) ? -long(m_info.headingRowHeights.size()) : 0;
    const long endRow = std::min(rowsToScan, m_info.numberOfRows);
    CUGCell cell;
    for (int column = firstColumn; column <= lastColumn; ++column) {
        int widest = 0;
        for (long row = firstRow; row < endRow; ++row) {
            GetCellResolved(column, row, cell);
            QSize size;
            GetCellType(cell)->MeasureCell(size, cell);
            widest = std::max(widest, size.width());
        }
        const int limit = column < 0 ? ug::kMaxHeadingSize : areaWidth;
        const int width = std::clamp(widest + 2, 3, std::max(3, limit));
        if (column < 0)
            m_info.headingColumnWidths[std::size_t(-column - 1)] = width;
        else
            m_info.columns[std::size_t(column)].width = width;
    }
    updateGeometries();
    RepaintAll();
    return ug::Success;
}

void CUGCtrl::SetUserSizingMode(bool allowed)
{
    m_info.userSizing = allowed;
}

// --- Fonts and cell types

int CUGCtrl::RegisterFont(const QFont &font)
{
    m_fonts.push_back(font);
    return int(m_fonts.size() - 1);
}

QFont CUGCtrl::GetFont(int index) const
{
    if (index < 0 || std::size_t(index) >= m_fonts.size())
        return m_defaultFont;
    return m_fonts[std::size_t(index)];
}

void CUGCtrl::SetDefFont(const QFont &font)
{
    m_defaultFont = font;
    RepaintAll();
}

QFont CUGCtrl::cellFont(const CUGCell &cell) const
{
    if (const std::optional<QFont> own = cell.font())
        return *own;
    return m_defaultFont;
}

int CUGCtrl::RegisterCellType(CUGCellType *type)
{
    if (!type)
        return -1;
    const auto known = std::find(m_cellTypes.begin(), m_cellTypes.end(), type);
    if (known != m_cellTypes.end())
        return int(known - m_cellTypes.begin());
    m_cellTypes.push_back(type);
    const int index = int(m_cellTypes.size() - 1);
    type->attach(this, index);
    return index;
}

CUGCellType *CUGCtrl::GetCellType(int index) const
{
    if (index <= 0 || std::size_t(index) >= m_cellTypes.size())
        return m_cellTypes.front();
    return m_cellTypes[std::size_t(index)];
}

CUGCellType *CUGCtrl::GetCellType(const CUGCell &cell) const
{
    return GetCellType(cell.cellType());
}

QColor CUGCtrl::paletteColour(QPalette::ColorRole role) const
{
    return palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, role);
}

// --- Hooks: the base behaviour

void CUGCtrl::OnGridInit() {}

int CUGCtrl::OnAllowCellMove(int, long, int, long)
{
    return 1;
}

int CUGCtrl::OnAllowScroll(int, long, int, long)
{
    return 1;
}

int CUGCtrl::OnAllowColumnResize(int)
{
    return 1;
}

int CUGCtrl::OnAllowRowResize(long)
{
    return 1;
}

int CUGCtrl::OnAllowTopHeadingResize()
{
    return 1;
}

int CUGCtrl::OnAllowSideHeadingResize()
{
    return 1;
}

void CUGCtrl::OnColumnChanged(int, int) {}
void CUGCtrl::OnRowChanged(long, long) {}
void CUGCtrl::OnCellChanged(int, int, long, long) {}
void CUGCtrl::OnLeftColumnChanged(int, int) {}
void CUGCtrl::OnTopRowChanged(long, long) {}
void CUGCtrl::OnCellLeftClick(int, long, bool, const QRect &, const QPoint &, bool) {}
void CUGCtrl::OnCellRightClick(int, long, bool, const QRect &, const QPoint &, bool) {}
void CUGCtrl::OnCellDoubleClick(int, long, const QRect &, const QPoint &, bool) {}
void CUGCtrl::OnTopHeadingClick(int, long, bool) {}
void CUGCtrl::OnSideHeadingClick(int, long, bool) {}
void CUGCtrl::OnCornerButtonClick(bool) {}
void CUGCtrl::OnCellKey(int &, bool) {}
void CUGCtrl::OnCellChar(QChar &, bool) {}
void CUGCtrl::OnCellRead(int, long, CUGCell &) {}
void CUGCtrl::OnCellWrite(int, long, const CUGCell &) {}

long CUGCtrl::OnCellTypeEvent(int, int, long, int, std::intptr_t)
{
    return 1;
}

int CUGCtrl::OnBeginEdit(int, long, QWidget *&)
{
    return 1;
}

int CUGCtrl::OnEditVerify(int, long, QWidget *, QChar &)
{
    return 1;
}

int CUGCtrl::OnEndEdit(int, long, QWidget *, const QString &, bool)
{
    return 1;
}

int CUGCtrl::OnEditNextCell(int, long, int &, long &)
{
    return 1;
}

void CUGCtrl::OnMenuCommand(int, long, int, int) {}

int CUGCtrl::OnCellTipText(int column, long row, int, QString &text)
{
    text = QString::asprintf("Col:%d Row:%ld", column, row);
    return 1;
}

int CUGCtrl::OnCompareCells(const CUGCell *first, const CUGCell *second, int flags)
{
    if (flags & 2)
        std::swap(first, second);
    if (!first || !second)
        return first == second ? 0 : (first ? -1 : 1);
    const int type = first->dataType();
    if (type == 2 || type == 3 || type == 5) {
        const double a = first->number();
        const double b = second->number();
        return a < b ? -1 : (a > b ? 1 : 0);
    }
    const QString &a = first->textRef();
    const QString &b = second->textRef();
    if (a.isEmpty() != b.isEmpty())
        return a.isEmpty() ? 1 : -1;
    const QByteArray bytesA = a.toUtf8();
    const QByteArray bytesB = b.toUtf8();
    const int order = bytesA.compare(bytesB);
    return order < 0 ? -1 : (order > 0 ? 1 : 0);
}

void CUGCtrl::OnLayoutComponents(Layout &) {}
void CUGCtrl::OnRowsInserted(long, long) {}
void CUGCtrl::OnRowsDeleting(long, long) {}
void CUGCtrl::OnRowTextsPermuted(long, const std::vector<long> &) {}
void CUGCtrl::OnUserActionBegins() {}
void CUGCtrl::OnUserActionEnds() {}

QColor CUGCtrl::OnDefaultBackColour(int section)
{
    return paletteColour(section == ug::CellArea ? QPalette::Base : QPalette::Button);
}

int CUGCtrl::OnAllowTopHeadingPress(int)
{
    return 1;
}

int CUGCtrl::OnAllowTopHeadingCellPress(int, long)
{
    return 1;
}

void CUGCtrl::OnContextMenu(int, long, int, const QPoint &) {}

void CUGCtrl::RunMenuCommand(int command)
{
    if (command >= 1000)
        OnMenuCommand(m_menuColumn, m_menuRow, m_menuSection, command);
}

} // namespace vyr
