// CVVYRDropListType: the program's drop list cell. It behaves as the grid's
// standard drop list and reports the same identifier, so code that asks
// "is this a drop list" gets the same answer for both; it draws its own
// button, and a choice and what the grid's handler does with it are one
// undo step. Parameter bit 16 gives the editable look: the text can be typed
// left of the button.
#ifndef VYR_UIKIT_CVVYRDROPLISTTYPE_H
#define VYR_UIKIT_CVVYRDROPLISTTYPE_H

#include "grid/cuglstbox.h"
#include "grid/cugstandardtypes.h"

namespace vyr {

// The pop-up list of a CVVYRDropListType: Enter or a click chooses the
// entry, Escape or a click elsewhere closes it, typing jumps to the next
// entry that begins with the typed text.
class CVVyrDLListBox final : public CUGLstBox
{
    Q_OBJECT

public:
    CVVyrDLListBox(CUGDropListType *type, QWidget *parent);
};

class CVVYRDropListType final : public CUGDropListType
{
public:
    QString TypeName() const override;
    void Paint(QPainter &painter, const QRect &rect, int column, long row, const CUGCell &cell, bool selected,
               bool current) override;

protected:
    CUGLstBox *CreateListBox() override;
    bool Choose(int index, const QString &text) override;
};

} // namespace vyr

#endif // VYR_UIKIT_CVVYRDROPLISTTYPE_H
