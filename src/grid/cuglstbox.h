// CUGLstBox: the pop-up list of a drop list cell. A release of the mouse on
// an entry, or Enter, chooses it; Escape closes without a choice, and so
// does a click elsewhere. Control+Enter chooses too (or closes, with no
// entry current) and then goes on to the grid, which hands it to the window
// (OK) - unless the cell did not take the choice.
#ifndef VYR_GRID_CUGLSTBOX_H
#define VYR_GRID_CUGLSTBOX_H

#include <QListWidget>

namespace vyr {

class CUGDropListType;

class CUGLstBox : public QListWidget
{
    Q_OBJECT

public:
    CUGLstBox(CUGDropListType *type, QWidget *parent);

    // Chooses the current entry, as Enter does; whether the cell took it.
    bool chooseCurrent();
    // Closes the list for the grid, with nothing to report.
    void dismiss();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;

private:
    void closeWithoutChoice();

    CUGDropListType *m_type;
    bool m_done = false;
};

} // namespace vyr

#endif // VYR_GRID_CUGLSTBOX_H
