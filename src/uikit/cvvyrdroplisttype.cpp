#include "uikit/cvvyrdroplisttype.h"

#include "grid/cugctrl.h"
#include "uikit/cellbuttonpainter.h"
#include "uikit/cvvyrgrid.h"

#include <QPainter>

namespace vyr {

CVVyrDLListBox::CVVyrDLListBox(CUGDropListType *type, QWidget *parent)
    : CUGLstBox(type, parent)
{
    setObjectName(QStringLiteral("CVVyrDLListBox"));
}

QString CVVYRDropListType::TypeName() const
{
    return QStringLiteral("Standard DropList");
}

CUGLstBox *CVVYRDropListType::CreateListBox()
{
    return new CVVyrDLListBox(this, ctrl());
}

bool CVVYRDropListType::Choose(int index, const QString &text)
{
    auto *grid = qobject_cast<CVVyrGrid *>(ctrl());
    if (!grid)
        return CUGDropListType::Choose(index, text);
    CVVyrGrid::UndoStep step(*grid);
    return CUGDropListType::Choose(index, text);
}

void CVVYRDropListType::Paint(QPainter &painter, const QRect &rect, int, long, const CUGCell &cell, bool selected,
                              bool current)
{
    DrawBackground(painter, rect, cell, selected);
    QRect inside = rect;
    DrawBorder(painter, inside, cell);
    const CellButtonPainter button(*ctrl(), inside, buttonWidth(), true);
    button.drawSeparator(painter);
    button.drawFace(painter, isPressed() && current);
    button.drawDownArrow(painter, textColour(cell, selected));
    DrawText(painter, button.textArea(), cell, selected);
}

} // namespace vyr
