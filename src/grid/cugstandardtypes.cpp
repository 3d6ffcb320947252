#include "grid/cugstandardtypes.h"

#include "grid/cugaccessible.h"
#include "grid/cugcell.h"
#include "grid/cugctrl.h"
#include "grid/cuglstbox.h"

#include <QApplication>
#include <QFontMetrics>
#include <QLocale>
#include <QPainter>
#include <QScreen>
#include <QStyle>
#include <QStyleOptionButton>

#include <algorithm>

namespace vyr {

namespace {

const char kDropListIdentifier = 0;
const char kCheckBoxIdentifier = 0;
const char kArrowIdentifier = 0;

// A filled triangle pointing down, left or right, centred in the rectangle.
void drawArrow(QPainter &painter, const QRect &area, Qt::ArrowType direction, const QColor &colour)
{
    const int size = std::max(3, std::min(area.width(), area.height()) / 3);
    const QPoint centre = area.center();
    QPolygon triangle;
    switch (direction) {
    case Qt::DownArrow:
        triangle << QPoint(centre.x() - size, centre.y() - size / 2) << QPoint(centre.x() + size, centre.y() - size / 2)
                 << QPoint(centre.x(), centre.y() + size / 2 + 1);
        break;
    case Qt::LeftArrow:
        triangle << QPoint(centre.x() + size / 2, centre.y() - size) << QPoint(centre.x() + size / 2, centre.y() + size)
                 << QPoint(centre.x() - size / 2 - 1, centre.y());
        break;
    default:
        triangle << QPoint(centre.x() - size / 2, centre.y() - size) << QPoint(centre.x() - size / 2, centre.y() + size)
                 << QPoint(centre.x() + size / 2 + 1, centre.y());
        break;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawPolygon(triangle);
    painter.restore();
}

} // namespace

// --- Drop list

CUGDropListType::CUGDropListType() = default;

CUGDropListType::~CUGDropListType()
{
    delete m_list.data();
}

QString CUGDropListType::TypeName() const
{
    return QStringLiteral("DropList");
}

const void *CUGDropListType::Identifier()
{
    return &kDropListIdentifier;
}

const void *CUGDropListType::TypeIdentifier() const
{
    return Identifier();
}

QAccessible::Role CUGDropListType::AccessibleRole(const CUGCell &) const
{
    return QAccessible::ComboBox;
}

QStringList CUGDropListType::AccessibleActions(const CUGCell &cell) const
{
    if (cell.isReadOnly())
        return {};
    return {QAccessibleActionInterface::showMenuAction()};
}

void CUGDropListType::DoAccessibleAction(int column, long row, const QString &action)
{
    if (action == QAccessibleActionInterface::showMenuAction()) {
        ctrl()->MoveToCell(column, row);
        OpenList(column, row);
    }
}

CUGLstBox *CUGDropListType::CreateListBox()
{
    return new CUGLstBox(this, ctrl());
}

int CUGDropListType::buttonWidth() const
{
    return ctrl()->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, ctrl());
}

void CUGDropListType::EditRect(QRect &rect, const CUGCell &) const
{
    rect.setRight(rect.right() - (buttonWidth() + 1));
}

QStringList CUGDropListType::EntriesOf(const QString &label)
{
    QStringList entries = label.split(u'\n');
    // The last piece has no line feed after it.
    entries.removeLast();
    return entries;
}

bool CUGDropListType::IsListOpen() const
{
    return m_list && m_list->isVisible();
}

int CUGDropListType::OnLeftClick(int column, long row, bool pressed, const QRect &rect, const QPoint &point)
{
    if (!pressed) {
        if (m_pressed) {
            m_pressed = false;
            ctrl()->RepaintCell(column, row);
        }
        return 0;
    }
    if ((column == m_openColumn && row == m_openRow) || m_openColumn == -2) {
        m_openColumn = -1;
        m_openRow = -1;
        OnClosePopups();
        return 1;
    }
    CUGCell cell;
    ctrl()->GetCellResolved(column, row, cell);
    const bool onButton = point.x() > rect.right() - buttonWidth();
    if ((cell.cellTypeParam() & ug::ParamEditable) && !onButton)
        return 0;
    m_pressed = true;
    ctrl()->MoveToCell(column, row);
    ctrl()->RepaintCell(column, row);
    OpenList(column, row);
    return 1;
}

int CUGDropListType::OnDoubleClick(int, long, const QRect &, const QPoint &)
{
    return 1;
}

int CUGDropListType::OnKey(int column, long row, int &key)
{
    const Qt::KeyboardModifiers modifiers = ctrl()->KeyModifiers();
    // Control+Enter is the window's (OK), not the cell's.
    const bool enter = (key == Qt::Key_Return || key == Qt::Key_Enter) && !(modifiers & Qt::ControlModifier);
    const bool opening = enter || key == Qt::Key_F4
        || (key == Qt::Key_Down && (modifiers & (Qt::ControlModifier | Qt::AltModifier)));
    if (opening) {
        ctrl()->MoveToCell(column, row);
        OpenList(column, row);
        key = 0;
        return 1;
    }
    return 0;
}

bool CUGDropListType::OpenList(int column, long row)
{
    if (IsListOpen())
        return false;
    CUGCell cell;
    ctrl()->GetCellResolved(column, row, cell);
    if (cell.isReadOnly())
        return false;
    QStringList entries = EntriesOf(cell.label());
    if (!RaiseEvent(column, row, ug::DropListStart, reinterpret_cast<std::intptr_t>(&entries)))
        return false;
    QRect rect;
    if (ctrl()->GetCellRect(column, row, rect) != ug::Success)
        return false;

    CUGLstBox *list = CreateListBox();
    describeEditor(ctrl(), list, column, row);
    list->setFont(ctrl()->cellFont(cell));
    list->addItems(entries);
    const QFontMetrics metrics(list->font());
    const int itemHeight = std::max(metrics.height(), 12);
    const int frame = list->frameWidth();
    int widest = 0;
    for (const QString &entry : std::as_const(entries))
        widest = std::max(widest, metrics.horizontalAdvance(entry));
    const int visible = std::min<int>(int(entries.size()), 15);
    const int height = (visible + 1) * itemHeight + 2 + 2 * frame;
    const int width = std::max(rect.width(), widest + 2 * frame + 2 * ctrl()->cellMargin()
                                                 + ctrl()->style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    QWidget *shownIn = ctrl()->widgetShowing(row, column);
    QPoint topLeft = shownIn->mapToGlobal(QPoint(rect.left() + 10, rect.bottom() + 1));
    // Keep it on the screen: above the cell when there is no room below.
    if (const QScreen *screen = shownIn->screen()) {
        const QRect available = screen->availableGeometry();
        if (topLeft.y() + height > available.bottom())
            topLeft.setY(shownIn->mapToGlobal(rect.topLeft()).y() - height);
        topLeft.setX(std::min(topLeft.x(), available.right() - width));
    }
    list->setGeometry(QRect(topLeft, QSize(width, height)));
    m_list = list;
    m_openColumn = column;
    m_openRow = row;
    list->show();
    list->setFocus(Qt::PopupFocusReason);
    return true;
}

bool CUGDropListType::Choose(int index, const QString &text)
{
    const int column = m_openColumn;
    const long row = m_openRow;
    m_openColumn = -1;
    m_openRow = -1;
    m_pressed = false;
    RaiseEvent(column, row, ug::DropListSelectIndex, index);
    QString chosen = text;
    bool taken = false;
    if (RaiseEvent(column, row, ug::DropListSelect, reinterpret_cast<std::intptr_t>(&chosen))) {
        taken = ctrl()->StoreUserText(column, row, chosen, ug::TextChosen) == ug::Success;
        RaiseEvent(column, row, ug::DropListPostSelect, reinterpret_cast<std::intptr_t>(&chosen));
    }
    ctrl()->RepaintAll();
    ctrl()->setFocus(Qt::PopupFocusReason);
    return taken;
}

void CUGDropListType::closedWithoutChoice(bool byClick)
{
    // The click that took the list away must not open it again at once.
    m_openColumn = byClick ? -2 : -1;
    m_openRow = byClick ? -2 : -1;
    m_pressed = false;
    ctrl()->RepaintAll();
    ctrl()->setFocus(Qt::PopupFocusReason);
}

void CUGDropListType::OnClosePopups()
{
    m_pressed = false;
    if (IsListOpen()) {
        CUGLstBox *list = m_list;
        m_list = nullptr;
        list->dismiss();
    }
    if (m_openColumn != -2) {
        m_openColumn = -1;
        m_openRow = -1;
    }
}

void CUGDropListType::Paint(QPainter &painter, const QRect &rect, int column, long row, const CUGCell &cell,
                            bool selected, bool current)
{
    DrawBackground(painter, rect, cell, selected);
    QRect inside = rect;
    DrawBorder(painter, inside, cell);
    const int width = buttonWidth();
    QRect button(inside.right() - width + 1, inside.top(), width, inside.height());
    painter.setPen(ctrl()->paletteColour(QPalette::Button));
    painter.drawLine(button.topLeft() - QPoint(1, 0), button.bottomLeft() - QPoint(1, 0));
    QStyleOptionButton option;
    option.initFrom(ctrl());
    option.rect = button;
    option.state |= (m_pressed && current) ? QStyle::State_Sunken : QStyle::State_Raised;
    ctrl()->style()->drawControl(QStyle::CE_PushButtonBevel, &option, &painter, ctrl());
    drawArrow(painter, button, Qt::DownArrow, ctrl()->paletteColour(QPalette::ButtonText));
    QRect textArea = inside;
    textArea.setRight(button.left() - 2);
    DrawText(painter, textArea, cell, selected);
    Q_UNUSED(column);
    Q_UNUSED(row);
}

void CUGDropListType::MeasureCell(QSize &size, const CUGCell &cell) const
{
    CUGCellType::MeasureCell(size, cell);
    size.rwidth() += buttonWidth() + 1;
}

// --- Check box

QString CUGCheckBoxType::TypeName() const
{
    return QStringLiteral("CheckBox");
}

const void *CUGCheckBoxType::TypeIdentifier() const
{
    return &kCheckBoxIdentifier;
}

QRect CUGCheckBoxType::BoxRect(const QRect &cellRect, const CUGCell &cell)
{
    const int side = std::min(12, cellRect.height() - 6);
    int left = cellRect.left() + 3;
    int top = cellRect.top() + (cellRect.height() - side) / 2;
    if (cell.cellTypeParam() & ug::ParamCheckAligned) {
        const int alignment = cell.alignment();
        if (alignment & CUGCell::AlignRight)
            left = cellRect.right() - 3 - side + 1;
        else if (alignment & CUGCell::AlignCenter)
            left = cellRect.left() + (cellRect.width() - side) / 2;
        if (alignment & CUGCell::AlignBottom)
            top = cellRect.bottom() - 3 - side + 1;
        else if (!(alignment & CUGCell::AlignVCenter))
            top = cellRect.top() + 3;
    }
    return QRect(left, top, std::max(side, 0), std::max(side, 0));
}

int CUGCheckBoxType::NextValue(int value, int parameter)
{
    const int states = (parameter & ug::ParamCheckTriState) ? 3 : 2;
    return ((value % states) + states + 1) % states;
}

QAccessible::Role CUGCheckBoxType::AccessibleRole(const CUGCell &) const
{
    return QAccessible::CheckBox;
}

QString CUGCheckBoxType::AccessibleName(const CUGCell &cell) const
{
    return cell.label();
}

void CUGCheckBoxType::AccessibleState(const CUGCell &cell, QAccessible::State &state) const
{
    const int value = int(cell.number());
    state.checkable = true;
    state.checked = value == 1;
    state.checkStateMixed = value == 2 && (cell.cellTypeParam() & ug::ParamCheckTriState);
}

QStringList CUGCheckBoxType::AccessibleActions(const CUGCell &cell) const
{
    if (cell.isReadOnly())
        return {};
    return {QAccessibleActionInterface::toggleAction()};
}

void CUGCheckBoxType::DoAccessibleAction(int column, long row, const QString &action)
{
    if (action == QAccessibleActionInterface::toggleAction())
        advance(column, row);
}

void CUGCheckBoxType::advance(int column, long row)
{
    CUGCell cell;
    ctrl()->GetCellResolved(column, row, cell);
    if (!ctrl()->IsCellWritable(column, row))
        return;
    const int value = NextValue(int(cell.number()), cell.cellTypeParam());
    // A tick is a text a person gives the cell, as a choice from a list is:
    // it goes where those go, with its checks and its step of the history.
    ctrl()->StoreUserText(column, row, QLocale().toString(value), ug::TextChosen);
    RaiseEvent(column, row, ug::CheckChanged, value);
    ctrl()->RepaintCell(column, row);
}

int CUGCheckBoxType::OnLeftClick(int column, long row, bool pressed, const QRect &rect, const QPoint &point)
{
    if (!pressed)
        return 0;
    CUGCell cell;
    ctrl()->GetCellResolved(column, row, cell);
    if (!BoxRect(rect, cell).contains(point))
        return 0;
    advance(column, row);
    return 1;
}

int CUGCheckBoxType::OnDoubleClick(int column, long row, const QRect &, const QPoint &)
{
    advance(column, row);
    return 1;
}

int CUGCheckBoxType::OnKey(int column, long row, int &key)
{
    if (key != Qt::Key_Space)
        return 0;
    advance(column, row);
    key = 0;
    return 1;
}

void CUGCheckBoxType::Paint(QPainter &painter, const QRect &rect, int, long, const CUGCell &cell, bool selected,
                            bool)
{
    DrawBackground(painter, rect, cell, selected);
    QRect inside = rect;
    DrawBorder(painter, inside, cell);
    const QRect box = BoxRect(inside, cell);
    QStyleOptionButton option;
    option.initFrom(ctrl());
    option.rect = box;
    const int value = int(cell.number());
    option.state |= value == 1 ? QStyle::State_On : value == 2 ? QStyle::State_NoChange : QStyle::State_Off;
    if (cell.isReadOnly())
        option.state &= ~QStyle::State_Enabled;
    ctrl()->style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &painter, ctrl());
    // The label, when there is one, beside the box.
    const QString label = cell.label();
    if (!label.isEmpty()) {
        CUGCell shown;
        shown.copyInfoFrom(cell);
        shown.setText(label);
        QRect textArea = inside;
        textArea.setLeft(box.right() + 1);
        DrawText(painter, textArea, shown, selected);
    }
}

void CUGCheckBoxType::MeasureCell(QSize &size, const CUGCell &cell) const
{
    const QFontMetrics metrics(ctrl()->cellFont(cell));
    size = QSize(12 + 6 + metrics.horizontalAdvance(cell.label()) + ctrl()->cellMargin(), std::max(18, metrics.height() + 2));
}

// --- Arrow

QString CUGArrowType::TypeName() const
{
    return QStringLiteral("Side Arrows");
}

const void *CUGArrowType::TypeIdentifier() const
{
    return &kArrowIdentifier;
}

void CUGArrowType::Paint(QPainter &painter, const QRect &rect, int, long, const CUGCell &cell, bool selected, bool)
{
    DrawBackground(painter, rect, cell, selected);
    QRect inside = rect;
    DrawBorder(painter, inside, cell);
    const QColor colour = textColour(cell, selected);
    switch (cell.cellTypeParam()) {
    case ug::ArrowLeft:
        drawArrow(painter, inside, Qt::LeftArrow, colour);
        break;
    case ug::ArrowBoth: {
        QRect left = inside;
        left.setRight(inside.center().x());
        QRect right = inside;
        right.setLeft(inside.center().x() + 1);
        drawArrow(painter, left, Qt::LeftArrow, colour);
        drawArrow(painter, right, Qt::RightArrow, colour);
        break;
    }
    default:
        drawArrow(painter, inside, Qt::RightArrow, colour);
        break;
    }
}

} // namespace vyr
