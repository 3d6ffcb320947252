#include "uikit/cvvyrgridedit.h"

#include "uikit/cvvyrgrid.h"

#include <QKeyEvent>

namespace vyr {

CVVyrGridEdit::CVVyrGridEdit(CVVyrGrid *grid, QWidget *parent)
    : CUGMaskedEdit(grid, parent)
    , m_grid(grid)
{
    setObjectName(QStringLiteral("CVVyrGridEdit"));
}

void CVVyrGridEdit::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    CUGMaskedEdit::keyPressEvent(event);
    // A refused text keeps the edit open: then the editor stays where it is.
    if (m_grid->IsEditing())
        return;
    const int column = m_grid->GetCurrentCol();
    const long row = m_grid->GetCurrentRow();
    switch (key) {
    case Qt::Key_Tab:
        if (modifiers & Qt::ShiftModifier)
            m_grid->TabBackward();
        else
            m_grid->TabForward();
        break;
    case Qt::Key_Backtab:
        m_grid->TabBackward();
        break;
    case Qt::Key_Up:
        if (row > 0)
            m_grid->GotoNearestCell(column, row - 1);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // Control+Enter went on to the window; on the new row the record
        // was made and a blank row opened below, which this reaches.
        if (modifiers & Qt::ControlModifier)
            break;
        Q_FALLTHROUGH();
    case Qt::Key_Down:
        if (row + 1 < m_grid->GetRowCount())
            m_grid->GotoNearestCell(column, row + 1);
        break;
    default:
        break;
    }
}

} // namespace vyr
