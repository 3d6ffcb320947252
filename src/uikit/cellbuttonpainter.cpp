#include "uikit/cellbuttonpainter.h"

#include "grid/cugcelltype.h"
#include "grid/cugctrl.h"

#include <QPainter>

namespace vyr {

CellButtonPainter::CellButtonPainter(const CUGCtrl &grid, const QRect &cell, int buttonWidth, bool strip)
    : m_grid(grid)
    , m_cell(cell)
    , m_button(cell)
    , m_strip(strip)
{
    if (strip)
        m_button.setLeft(cell.right() - buttonWidth + 1);
}

QRect CellButtonPainter::textArea() const
{
    if (!m_strip)
        return QRect();
    QRect area = m_cell;
    area.setRight(m_button.left() - 2);
    return area;
}

void CellButtonPainter::drawSeparator(QPainter &painter) const
{
    if (!m_strip)
        return;
    painter.setPen(m_grid.paletteColour(QPalette::Button));
    painter.drawLine(m_button.topLeft() - QPoint(1, 0), m_button.bottomLeft() - QPoint(1, 0));
}

void CellButtonPainter::drawFace(QPainter &painter, bool pressed) const
{
    painter.fillRect(m_button, m_grid.paletteColour(QPalette::Button));
    drawCellBevel(painter, m_button, !pressed, m_grid.paletteColour(QPalette::Light),
                  m_grid.paletteColour(QPalette::Dark));
}

void CellButtonPainter::drawDownArrow(QPainter &painter, const QColor &colour) const
{
    const QPoint centre = m_button.center();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (int line = 0; line < 3; ++line) {
        const int half = 2 - line;
        const int y = centre.y() - 1 + line;
        painter.fillRect(QRect(centre.x() - half, y, 2 * half + 1, 1), colour);
    }
    painter.restore();
}

void CellButtonPainter::drawLabel(QPainter &painter, const QString &label, const QFont &font,
                                  const QColor &colour) const
{
    painter.save();
    painter.setFont(font);
    painter.setPen(colour);
    painter.setBackgroundMode(Qt::TransparentMode);
    painter.drawText(m_button, Qt::AlignCenter | Qt::TextSingleLine, label);
    painter.restore();
}

} // namespace vyr
