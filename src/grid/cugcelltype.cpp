#include "grid/cugcelltype.h"

#include "grid/cugcell.h"
#include "grid/cugctrl.h"

#include <QFontMetrics>
#include <QPainter>

namespace vyr {

namespace {

const char kNormalIdentifier = 0;

} // namespace

void drawCellBevel(QPainter &painter, const QRect &rect, bool raised, const QColor &light, const QColor &dark)
{
    painter.setPen(raised ? light : dark);
    painter.drawLine(rect.topLeft(), rect.topRight());
    painter.drawLine(rect.topLeft(), rect.bottomLeft());
    painter.setPen(raised ? dark : light);
    painter.drawLine(rect.bottomLeft(), rect.bottomRight());
    painter.drawLine(rect.topRight(), rect.bottomRight());
}

CUGCellType::CUGCellType() = default;
CUGCellType::~CUGCellType() = default;

QString CUGCellType::TypeName() const
{
    return QStringLiteral("Normal Cell Type (default)");
}

const void *CUGCellType::TypeIdentifier() const
{
    return &kNormalIdentifier;
}

void CUGCellType::EditRect(QRect &, const CUGCell &) const {}

int CUGCellType::OnLeftClick(int, long, bool, const QRect &, const QPoint &)
{
    return 0;
}

int CUGCellType::OnRightClick(int, long, bool, const QRect &, const QPoint &)
{
    return 0;
}

int CUGCellType::OnDoubleClick(int, long, const QRect &, const QPoint &)
{
    return 0;
}

int CUGCellType::OnKey(int, long, int &)
{
    return 0;
}

int CUGCellType::OnCharDown(int, long, QChar &)
{
    return 0;
}

int CUGCellType::OnMouseOver(int, long, const QPoint &, Qt::KeyboardModifiers)
{
    return 0;
}

int CUGCellType::OnPaintFocusFrame(QPainter &, const QRect &)
{
    return 0;
}

void CUGCellType::OnSetFocus(int, long) {}
void CUGCellType::OnKillFocus(int, long) {}
void CUGCellType::OnScrolled() {}
void CUGCellType::OnChangedCellWidth(int, long, int) {}
void CUGCellType::OnChangedCellHeight(int, long, int) {}
void CUGCellType::OnClosePopups() {}

QAccessible::Role CUGCellType::AccessibleRole(const CUGCell &) const
{
    return QAccessible::Cell;
}

QString CUGCellType::AccessibleName(const CUGCell &cell) const
{
    return cell.text();
}

QString CUGCellType::AccessibleValue(const CUGCell &cell) const
{
    return cell.text();
}

QStringList CUGCellType::AccessibleActions(const CUGCell &) const
{
    return {};
}

void CUGCellType::DoAccessibleAction(int, long, const QString &) {}

void CUGCellType::AccessibleState(const CUGCell &, QAccessible::State &) const {}

void CUGCellType::attach(CUGCtrl *ctrl, int id)
{
    m_ctrl = ctrl;
    m_id = id;
}

long CUGCellType::RaiseEvent(int column, long row, int message, std::intptr_t parameter)
{
    return m_ctrl ? m_ctrl->OnCellTypeEvent(m_id, column, row, message, parameter) : 0;
}

QColor CUGCellType::textColour(const CUGCell &cell, bool selected) const
{
    if (selected) {
        const QColor set = cell.highlightTextColor();
        return set.isValid() ? set : m_ctrl->paletteColour(QPalette::HighlightedText);
    }
    const QColor set = cell.textColor();
    return set.isValid() ? set : m_ctrl->paletteColour(QPalette::Text);
}

void CUGCellType::DrawBackground(QPainter &painter, const QRect &rect, const CUGCell &cell, bool selected) const
{
    QColor colour = selected ? cell.highlightBackColor() : cell.backColor();
    if (!colour.isValid())
        colour = m_ctrl->paletteColour(selected ? QPalette::Highlight : QPalette::Base);
    painter.fillRect(rect, colour);
}

void CUGCellType::DrawBorder(QPainter &painter, QRect &rect, const CUGCell &cell) const
{
    const int style = cell.borderStyle();
    if (style & (ug::BorderRaised | ug::BorderSunken)) {
        drawCellBevel(painter, rect, style & ug::BorderRaised, m_ctrl->paletteColour(QPalette::Light),
                      m_ctrl->paletteColour(QPalette::Dark));
        rect.adjust(1, 1, -1, -1);
        return;
    }
    if (!(style & (ug::BorderLeft | ug::BorderTop | ug::BorderRight | ug::BorderBottom)))
        return;
    QColor colour = cell.borderColor();
    if (!colour.isValid())
        colour = m_ctrl->paletteColour(QPalette::Text);
    QPen pen(colour);
    pen.setWidth(style & ug::BorderThick ? 2 : 1);
    painter.setPen(pen);
    if (style & ug::BorderLeft)
        painter.drawLine(rect.topLeft(), rect.bottomLeft());
    if (style & ug::BorderTop)
        painter.drawLine(rect.topLeft(), rect.topRight());
    if (style & ug::BorderRight)
        painter.drawLine(rect.topRight(), rect.bottomRight());
    if (style & ug::BorderBottom)
        painter.drawLine(rect.bottomLeft(), rect.bottomRight());
}

void CUGCellType::DrawText(QPainter &painter, const QRect &rect, const CUGCell &cell, bool selected) const
{
    const int margin = m_ctrl->cellMargin();
    QRect area = rect;
    const QImage bitmap = cell.bitmap();
    if (!bitmap.isNull()) {
        const QSize size = bitmap.size().boundedTo(QSize(area.height(), area.height()));
        const QRect place(area.left() + 1, area.top() + (area.height() - size.height()) / 2, size.width(),
                          size.height());
        painter.drawImage(place, bitmap);
        area.setLeft(place.right() + 1);
    }
    const QString &text = cell.textRef();
    if (text.isEmpty())
        return;
    const int alignment = cell.alignment();
    int flags = Qt::TextSingleLine;
    if (alignment & CUGCell::AlignRight)
        flags |= Qt::AlignRight;
    else if (alignment & CUGCell::AlignCenter)
        flags |= Qt::AlignHCenter;
    else
        flags |= Qt::AlignLeft;
    if (alignment & CUGCell::AlignBottom)
        flags |= Qt::AlignBottom;
    else if (alignment & CUGCell::AlignVCenter)
        flags |= Qt::AlignVCenter;
    else
        flags |= Qt::AlignTop;
    // The margin from the left or right edge; one pixel from the top or bottom.
    const QRect textArea = area.adjusted(margin, 1, -margin, -1);
    painter.setFont(m_ctrl->cellFont(cell));
    painter.setPen(textColour(cell, selected));
    const QFontMetrics metrics(painter.font());
    painter.drawText(textArea, flags, metrics.elidedText(text, Qt::ElideRight, textArea.width()));
}

void CUGCellType::Paint(QPainter &painter, const QRect &rect, int, long, const CUGCell &cell, bool selected,
                        bool)
{
    DrawBackground(painter, rect, cell, selected);
    QRect inside = rect;
    DrawBorder(painter, inside, cell);
    DrawText(painter, inside, cell, selected);
}

void CUGCellType::MeasureCell(QSize &size, const CUGCell &cell) const
{
    const QFontMetrics metrics(m_ctrl->cellFont(cell));
    int width = metrics.horizontalAdvance(cell.textRef()) + 2 * m_ctrl->cellMargin();
    const QImage bitmap = cell.bitmap();
    if (!bitmap.isNull())
        width += bitmap.width() + 1;
    size = QSize(width, metrics.height() + 2);
}

} // namespace vyr
