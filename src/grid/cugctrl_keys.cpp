// CUGCtrl: keys and focus - what the cell area does with a key after its
// cell type and OnCellKey had it, and how the focus enters and leaves.
#include "grid/cugctrl.h"

#include <QApplication>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>

#include <algorithm>

namespace vyr {

// --- Keys

bool CUGCtrl::event(QEvent *event)
{
    WantRowsIfVisible();
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
    // Tab moves between cells; Control+Tab leaves the grid, and so does Tab
    // when there is no cell to move to.
    const bool hasCells = m_info.numberOfColumns > 0 && m_info.numberOfRows > 0;
    if (hasCells && hasFocus() && !(QGuiApplication::keyboardModifiers() & Qt::ControlModifier))
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
        moveCurrentNear(std::max(0, currentColumn - 1), currentRow, mode);
        return true;
    case Qt::Key_Right:
        moveCurrentNear(std::min(m_info.numberOfColumns - 1, currentColumn + 1), currentRow, mode);
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
        moveCurrentNear(currentColumn, std::clamp(target, 0L, std::max(0L, m_info.numberOfRows - 1)), mode);
        return true;
    }
    case Qt::Key_PageUp:
        moveCurrentNear(currentColumn, std::max(0L, currentRow - GetPageRows()), mode);
        return true;
    case Qt::Key_PageDown:
        moveCurrentNear(currentColumn, std::min(m_info.numberOfRows - 1, currentRow + GetPageRows()), mode);
        return true;
    case Qt::Key_Home:
        if (control)
            moveCurrentNear(currentColumn, 0, mode);
        else
            moveCurrentNear(0, currentRow, mode);
        return true;
    case Qt::Key_End:
        if (control)
            moveCurrentNear(currentColumn, m_info.numberOfRows - 1, mode);
        else
            moveCurrentNear(m_info.numberOfColumns - 1, currentRow, mode);
        return true;
    case Qt::Key_F2:
        if (BeginEdit(0) != ug::Success)
            OnKeyRefused();
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
    // A key the in-place editor left alone reaches the grid through its
    // parents; while an edit is open the grid acts on none of them, or a
    // row could open under the edit or a list over it.
    if (m_editing) {
        event->ignore();
        return;
    }
    m_keyModifiers = event->modifiers();
    const bool hasCells = m_info.numberOfColumns > 0 && m_info.numberOfRows > 0;
    const bool consumed = hasCells && handleCellKey(event);
    m_keyModifiers = Qt::NoModifier;
    if (consumed)
        return;
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        // Enter belongs to the grid, not to the dialog's default button;
        // Control+Enter is passed on to the window, and to a window that
        // does not take it as a plain Enter, for its default button.
        event->accept();
        if ((event->modifiers() & Qt::ControlModifier) && window() != this) {
            QKeyEvent asTyped(QEvent::KeyPress, event->key(), event->modifiers(), event->text());
            QCoreApplication::sendEvent(window(), &asTyped);
            if (asTyped.isAccepted())
                return;
            QKeyEvent plain(QEvent::KeyPress, event->key(), event->modifiers() & ~Qt::ControlModifier,
                            event->text());
            QCoreApplication::sendEvent(window(), &plain);
        }
        return;
    }
    QAbstractScrollArea::keyPressEvent(event);
}

void CUGCtrl::keyReleaseEvent(QKeyEvent *event)
{
    if (!event->isAutoRepeat())
        m_repeatCount = 0;
    QAbstractScrollArea::keyReleaseEvent(event);
}

} // namespace vyr
