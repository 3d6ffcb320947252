// CUGMaskedEdit: the single-line in-place editor, scrolling horizontally.
// With a mask it shows the mask's literals and "_" for empty positions,
// overwrites as the user types and refuses what the mask does not accept
// (see maskedtext.h); its value has blanks for unfilled positions.
#ifndef VYR_GRID_CUGMASKEDEDIT_H
#define VYR_GRID_CUGMASKEDEDIT_H

#include "grid/cugeditbase.h"
#include "grid/maskedtext.h"

#include <QLineEdit>

namespace vyr {

class CUGMaskedEdit : public QLineEdit, public CUGEditBase
{
    Q_OBJECT

public:
    explicit CUGMaskedEdit(CUGCtrl *ctrl, QWidget *parent);

    QWidget *editorWidget() override { return this; }
    QString editText() const override;
    void startText(const QString &text, const QString &mask) override;
    void setEditReadOnly(bool readOnly) override;
    void insertTyped(const QString &text) override;

    QString editMask() const { return m_masked.mask(); }

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    // Tab ends the edit and goes on in the grid, never to the next control.
    bool focusNextPrevChild(bool) override { return false; }

private:
    bool maskedKey(QKeyEvent *event);
    void showMasked(int caret);

    MaskedText m_masked;
};

} // namespace vyr

#endif // VYR_GRID_CUGMASKEDEDIT_H
