#include "uikit/cvvyrbrowsebuttontype.h"

#include "grid/cugcell.h"
#include "grid/cugctrl.h"
#include "uikit/cellbuttonpainter.h"
#include "uikit/cvvyrgrid.h"
#include "uikit/pageaccessible.h"
#include "util/colourtext.h"

#include <QColorDialog>
#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

namespace vyr {

namespace {

const char kBrowseIdentifier = 0;
const char kColourIdentifier = 0;

bool isEditable(const CUGCell &cell)
{
    return cell.cellTypeParam() & ug::ParamEditable;
}

QString buttonLabel(const CUGCell &cell)
{
    const QString label = cell.label();
    return label.isEmpty() ? QStringLiteral("...") : label;
}

std::optional<QColor> colourOf(const QString &text)
{
    const std::optional<Rgb> rgb = parseColourText(text.toStdString());
    if (!rgb)
        return std::nullopt;
    return QColor(rgb->red, rgb->green, rgb->blue);
}

} // namespace

// --- Browse button

QString CVVyrBrowseButtonType::TypeName() const
{
    return QStringLiteral("Loomhouse Browse-Button Cell");
}

const void *CVVyrBrowseButtonType::TypeIdentifier() const
{
    return &kBrowseIdentifier;
}

int CVVyrBrowseButtonType::buttonWidth() const
{
    return ctrl()->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, ctrl());
}

void CVVyrBrowseButtonType::EditRect(QRect &rect, const CUGCell &cell) const
{
    if (isEditable(cell))
        rect.setRight(rect.right() - (buttonWidth() + 1));
    else
        rect = QRect(rect.topLeft(), QSize(0, 0));
}

bool CVVyrBrowseButtonType::mayBrowse(int column, long row, bool toView) const
{
    CUGCell cell;
    ctrl()->GetCellResolved(column, row, cell);
    return !isDisabledCell(cell) && (toView || !cell.isReadOnly());
}

void CVVyrBrowseButtonType::Browse(int column, long row)
{
    // A read-only cell's editor may still show its value; the grid keeps the
    // cell as it was.
    if (mayBrowse(column, row, true))
        RaiseEvent(column, row, CVVyrGrid::kBrowseEvent, 0);
}

int CVVyrBrowseButtonType::OnLeftClick(int column, long row, bool pressed, const QRect &rect, const QPoint &point)
{
    if (!pressed)
        return 0;
    CUGCell cell;
    ctrl()->GetCellResolved(column, row, cell);
    if (isEditable(cell) && point.x() <= rect.right() - buttonWidth())
        return 0;
    Browse(column, row);
    return 1;
}

int CVVyrBrowseButtonType::OnDoubleClick(int column, long row, const QRect &, const QPoint &)
{
    Browse(column, row);
    return 1;
}

int CVVyrBrowseButtonType::OnKey(int column, long row, int &key)
{
    const Qt::KeyboardModifiers modifiers = ctrl()->KeyModifiers();
    CUGCell cell;
    ctrl()->GetCellResolved(column, row, cell);
    // Space types into an editable cell rather than pressing its button.
    const bool space = key == Qt::Key_Space && !isEditable(cell) && !(modifiers & Qt::ControlModifier);
    // Control+Enter is the window's (OK), not the cell's.
    const bool enter = (key == Qt::Key_Return || key == Qt::Key_Enter) && !(modifiers & Qt::ControlModifier);
    const bool pressing = enter || key == Qt::Key_F4 || space
        || (key == Qt::Key_Down && (modifiers & (Qt::ControlModifier | Qt::AltModifier)));
    if (!pressing)
        return 0;
    ctrl()->MoveToCell(column, row);
    Browse(column, row);
    key = 0;
    return 1;
}

void CVVyrBrowseButtonType::paintButton(QPainter &painter, const QRect &rect, const CUGCell &cell, bool selected,
                                        QRect *textArea) const
{
    DrawBackground(painter, rect, cell, selected);
    QRect inside = rect;
    DrawBorder(painter, inside, cell);
    const bool editable = isEditable(cell);
    const CellButtonPainter button(*ctrl(), inside, buttonWidth(), editable);
    button.drawSeparator(painter);
    button.drawFace(painter, false);
    button.drawLabel(painter, buttonLabel(cell), ctrl()->cellFont(cell), textColour(cell, false));
    if (editable) {
        DrawText(painter, button.textArea(), cell, selected);
        if (textArea)
            *textArea = button.textArea();
    }
}

void CVVyrBrowseButtonType::Paint(QPainter &painter, const QRect &rect, int, long, const CUGCell &cell,
                                  bool selected, bool)
{
    paintButton(painter, rect, cell, selected, nullptr);
}

void CVVyrBrowseButtonType::MeasureCell(QSize &size, const CUGCell &cell) const
{
    const QFontMetrics metrics(ctrl()->cellFont(cell));
    int width = metrics.horizontalAdvance(buttonLabel(cell)) + 2 * ctrl()->cellMargin();
    if (isEditable(cell))
        width += metrics.horizontalAdvance(cell.textRef()) + 2 * ctrl()->cellMargin();
    size = QSize(width, metrics.height() + 2);
}

QAccessible::Role CVVyrBrowseButtonType::AccessibleRole(const CUGCell &cell) const
{
    return isEditable(cell) ? QAccessible::EditableText : QAccessible::Button;
}

QString CVVyrBrowseButtonType::AccessibleName(const CUGCell &cell) const
{
    // A cell that shows its text is named by it, as any text cell; a bare
    // button says what it does and to what ("Edit LandUseClass"), since
    // "..." or "Edit..." alone tells a listener nothing.
    if (isEditable(cell))
        return cell.text();
    QString action = withoutMnemonics(buttonLabel(cell));
    if (action.endsWith(QLatin1String("...")))
        action.chop(3);
    else if (action.endsWith(QChar(0x2026)))
        action.chop(1);
    const QString subject = cell.text().simplified();
    return subject.isEmpty() || action.isEmpty() ? action + subject : action + u' ' + subject;
}

QStringList CVVyrBrowseButtonType::AccessibleActions(const CUGCell &cell) const
{
    if (isDisabledCell(cell))
        return {};
    return {QAccessibleActionInterface::pressAction()};
}

void CVVyrBrowseButtonType::DoAccessibleAction(int column, long row, const QString &action)
{
    if (action == QAccessibleActionInterface::pressAction())
        Browse(column, row);
}

// --- Colour pick

QString CVVyrColourPickType::TypeName() const
{
    return QStringLiteral("Loomhouse Colour-Pick Cell");
}

const void *CVVyrColourPickType::TypeIdentifier() const
{
    return &kColourIdentifier;
}

void CVVyrColourPickType::Browse(int column, long row)
{
    if (!mayBrowse(column, row, false))
        return;
    const QString text = ctrl()->GetCellText(column, row);
    const std::optional<QColor> current = colourOf(text);
    const QColor chosen = QColorDialog::getColor(current.value_or(QColor(Qt::black)), ctrl());
    // The colour the cell had keeps its text ("0.85" is no "216/255"); a
    // cell without a colour takes even the black the dialog offered.
    if (!chosen.isValid() || (current && chosen.rgb() == current->rgb()))
        return;
    const Rgb rgb{std::uint8_t(chosen.red()), std::uint8_t(chosen.green()), std::uint8_t(chosen.blue())};
    ctrl()->StoreUserText(column, row, QString::fromStdString(formatColourText(rgb)), ug::TextBrowsed);
    ctrl()->RepaintCell(column, row);
}

void CVVyrColourPickType::Paint(QPainter &painter, const QRect &rect, int, long, const CUGCell &cell, bool selected,
                                bool)
{
    QRect textArea;
    paintButton(painter, rect, cell, selected, &textArea);
    const std::optional<QColor> colour = colourOf(cell.text());
    if (textArea.isEmpty() || !colour)
        return;
    // The swatch stands just left of the button, one button wide.
    const int width = buttonWidth();
    const int border = 1;
    QRect swatch(rect.right() - 2 * width - 2 * border, rect.top() + border, width, rect.height() - 2 * border);
    swatch = swatch.intersected(textArea);
    painter.fillRect(swatch, *colour);
    painter.setPen(ctrl()->paletteColour(QPalette::Text));
    painter.drawRect(swatch.adjusted(0, 0, -1, -1));
}

QString CVVyrColourPickType::AccessibleName(const CUGCell &cell) const
{
    // The colour itself is what a listener needs; the button says "...".
    const std::optional<QColor> colour = colourOf(cell.text());
    return colour ? colour->name() : CVVyrBrowseButtonType::AccessibleName(cell);
}

} // namespace vyr
