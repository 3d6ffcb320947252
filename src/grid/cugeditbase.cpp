#include "grid/cugeditbase.h"

#include "grid/cugctrl.h"

#include <QCoreApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QWidget>

namespace vyr {

CUGEditBase::CUGEditBase(CUGCtrl *ctrl)
    : m_ctrl(ctrl)
{
}

CUGEditBase::~CUGEditBase() = default;

void CUGEditBase::endBy(bool cancelled, bool continueEditing, int columnStep, long rowStep)
{
    m_ending.cancelled = cancelled;
    m_ending.continueEditing = continueEditing;
    m_ending.nextColumn = m_ctrl->m_editColumn + columnStep;
    m_ending.nextRow = m_ctrl->m_editRow + rowStep;
    // Giving the focus back to the cell area ends the edit (editorFocusOut).
    m_ctrl->setFocus(Qt::OtherFocusReason);
}

bool CUGEditBase::editorKey(QKeyEvent *event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    switch (event->key()) {
    case Qt::Key_Tab:
        endBy(false, true, (modifiers & Qt::ShiftModifier) ? -1 : 1, 0);
        return true;
    case Qt::Key_Backtab:
        endBy(false, true, -1, 0);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!(modifiers & Qt::ControlModifier)) {
            endBy(false, true, 0, 1);
            return true;
        }
        if (keepsControlEnter())
            return false;
        // Control+Enter is the window's (OK): the text is kept first, and
        // the key goes on through the grid only when it was taken.
        endBy(false, false, 0, 0);
        if (!m_ctrl->m_editing)
            QCoreApplication::sendEvent(m_ctrl, event);
        return true;
    case Qt::Key_Up:
        endBy(false, true, 0, -1);
        return true;
    case Qt::Key_Down:
        endBy(false, true, 0, 1);
        return true;
    case Qt::Key_Escape:
        endBy(true, false, 0, 0);
        return true;
    default:
        break;
    }
    const QString typed = event->text();
    if (typed.isEmpty() || (modifiers & Qt::ControlModifier))
        return false;
    QString accepted;
    for (QChar character : typed) {
        if (!character.isPrint())
            return false;
        if (verifyCharacter(character))
            accepted.append(character);
    }
    if (accepted == typed)
        return false;
    // The check dropped or changed a character: what it let through goes in
    // instead of the key's own text.
    if (!accepted.isEmpty())
        insertTyped(accepted);
    return true;
}

bool CUGEditBase::keepsControlEnter() const
{
    return m_ctrl->m_editing && (m_ctrl->m_editCell.cellTypeParam() & ug::ParamMultiLine);
}

bool CUGEditBase::verifyCharacter(QChar &character)
{
    return m_ctrl->editorVerify(character);
}

void CUGEditBase::editorFocusOut(QFocusEvent *event)
{
    // Leaving the window or opening a menu does not end the edit.
    if (event->reason() == Qt::ActiveWindowFocusReason || event->reason() == Qt::PopupFocusReason)
        return;
    m_ctrl->editorFinished(this, true);
}

} // namespace vyr
