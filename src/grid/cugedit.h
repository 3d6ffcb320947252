// CUGEdit: the standard in-place editor, several lines, scrolling
// vertically.
#ifndef VYR_GRID_CUGEDIT_H
#define VYR_GRID_CUGEDIT_H

#include "grid/cugeditbase.h"

#include <QPlainTextEdit>

namespace vyr {

class CUGEdit final : public QPlainTextEdit, public CUGEditBase
{
    Q_OBJECT

public:
    explicit CUGEdit(CUGCtrl *ctrl, QWidget *parent);

    QWidget *editorWidget() override { return this; }
    QString editText() const override;
    void startText(const QString &text, const QString &mask) override;
    void setEditReadOnly(bool readOnly) override;
    void insertTyped(const QString &text) override;

protected:
    // Claims Control+Enter from the window's shortcuts in a cell that takes
    // it as a line break.
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    // Tab ends the edit and goes on in the grid, never to the next control.
    bool focusNextPrevChild(bool) override { return false; }
};

} // namespace vyr

#endif // VYR_GRID_CUGEDIT_H
