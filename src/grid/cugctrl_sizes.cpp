// CUGCtrl: sizes of columns, rows, headings and scroll bars, best fit, and
// the fonts and cell types the grid knows.
#include "grid/cugctrl.h"

#include "grid/cugsections.h"

#include <QScrollBar>

#include <algorithm>

namespace vyr {

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

} // namespace vyr
