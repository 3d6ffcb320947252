// CUGCtrl: painting - the cell area row by row over the dirty region, the
// headings, the corner and the current cell's frame.
#include "grid/cugctrl.h"

#include "grid/cugsections.h"

#include <QPainter>
#include <QStyleOptionFocusRect>

namespace vyr {

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
    if (m_batchDepth > 0) {
        m_batchDirty = true;
        return;
    }
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

CUGCell CUGCtrl::headingLook(int section)
{
    CUGCell look;
    look.copyInfoFrom(m_info.headingDefault);
    if (!look.isSet(CUGCell::BackColor))
        look.setBackColor(OnDefaultBackColour(section));
    if (!look.isSet(CUGCell::TextColor))
        look.setTextColor(paletteColour(QPalette::ButtonText));
    return look;
}

void CUGCtrl::paintOneCell(QPainter &painter, int column, long row, const QRect &rect, const CUGCell *look)
{
    CUGCell cell;
    GetCellResolved(column, row, cell);
    const QRect inner = rect.adjusted(0, 0, -1, -1);
    if (look) {
        // Over the look, whose colours the cell shares unless it has its own.
        CUGCell shown;
        shown.copyInfoFrom(*look);
        shown.addInfoFrom(cell);
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
        OnPaintFocusFrame(painter, rect);
}

void CUGCtrl::OnPaintFocusFrame(QPainter &painter, const QRect &cellRect)
{
    // Inside the grid lines, which take the cell's last column and row.
    const QRect rect = cellRect.adjusted(0, 0, -1, -1);
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
                    paintOneCell(painter, column, row, rect, nullptr);
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
    const CUGCell look = headingLook(ug::TopHeading);
    const int rows = int(m_info.headingRowHeights.size());
    for (int headingRow = -rows; headingRow < 0; ++headingRow) {
        const int y = headingRowY(headingRow);
        const int height = m_info.headingRowHeights[std::size_t(-headingRow - 1)];
        int x = 0;
        for (int column = m_info.leftColumn; column < m_info.numberOfColumns && x < m_topHeading->width(); ++column) {
            const int width = m_info.columns[std::size_t(column)].width;
            const QRect rect(x, y, width, height);
            if (rect.intersects(dirty))
                paintOneCell(painter, column, headingRow, rect, &look);
            x += width;
        }
    }
}

void CUGCtrl::paintSideHeading(QPainter &painter, const QRect &dirty)
{
    painter.fillRect(dirty, OnDefaultBackColour(ug::SideHeading));
    const CUGCell look = headingLook(ug::SideHeading);
    const int columns = int(m_info.headingColumnWidths.size());
    int y = 0;
    for (long row = m_info.topRow; row < m_info.numberOfRows && y < m_sideHeading->height(); ++row) {
        const int height = GetRowHeight(row);
        for (int headingColumn = -columns; headingColumn < 0; ++headingColumn) {
            const QRect rect(headingColumnX(headingColumn), y,
                             m_info.headingColumnWidths[std::size_t(-headingColumn - 1)], height);
            if (rect.intersects(dirty))
                paintOneCell(painter, headingColumn, row, rect, &look);
        }
        y += height;
    }
}

void CUGCtrl::paintCorner(QPainter &painter)
{
    const CUGCell look = headingLook(ug::TopHeading);
    paintOneCell(painter, -1, -1, m_corner->rect(), &look);
}

} // namespace vyr
