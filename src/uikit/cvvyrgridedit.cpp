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
    const bool shift = event->modifiers() & Qt::ShiftModifier;
    CUGMaskedEdit::keyPressEvent(event);
    // A refused text keeps the edit open: then the editor stays where it is.
    if (m_grid->IsEditing())
        return;
    switch (key) {
    case Qt::Key_Tab:
        if (shift)
            m_grid->TabBackward();
        else
            m_grid->TabForward();
        break;
    case Qt::Key_Backtab:
        m_grid->TabBackward();
        break;
    case Qt::Key_Up:
        if (m_grid->GetCurrentRow() > 0)
            m_grid->GotoCell(m_grid->GetCurrentCol(), m_grid->GetCurrentRow() - 1);
        break;
    case Qt::Key_Down:
        if (m_grid->GetCurrentRow() + 1 < m_grid->GetRowCount())
            m_grid->GotoCell(m_grid->GetCurrentCol(), m_grid->GetCurrentRow() + 1);
        break;
    default:
        break;
    }
}

} // namespace vyr
