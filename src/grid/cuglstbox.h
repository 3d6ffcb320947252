// CUGLstBox: the pop-up list of a drop list cell. A release of the mouse on
// an entry, or Enter, chooses it; Escape closes without a choice, and so
// does a click elsewhere.
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

    // Chooses the current entry, as Enter does.
    void chooseCurrent();
    // Closes the list for the grid, with nothing to report.
    void dismiss();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;

private:
    CUGDropListType *m_type;
    bool m_done = false;
};

} // namespace vyr

#endif // VYR_GRID_CUGLSTBOX_H
