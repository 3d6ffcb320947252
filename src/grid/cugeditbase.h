// CUGEditBase: what both in-place editors share - the keys that end an edit
// and say where to go on, the check of every typed character, and ending the
// edit when the editor loses the focus (taking it back when the grid refuses
// the text).
//
// The keys: Tab and Shift+Tab go on in the next or previous column, Enter
// in the next row, Up and Down in the previous or next row, Escape cancels.
// Control+Enter keeps the text and passes the key on to the grid, which
// hands it to the window (OK); a cell whose type parameter has bit 2 takes
// it as a line break instead.
#ifndef VYR_GRID_CUGEDITBASE_H
#define VYR_GRID_CUGEDITBASE_H

#include <QString>

class QFocusEvent;
class QKeyEvent;
class QWidget;

namespace vyr {

class CUGCtrl;

class CUGEditBase
{
public:
    explicit CUGEditBase(CUGCtrl *ctrl);
    virtual ~CUGEditBase();
    CUGEditBase(const CUGEditBase &) = delete;
    CUGEditBase &operator=(const CUGEditBase &) = delete;

    virtual QWidget *editorWidget() = 0;
    virtual QString editText() const = 0;
    // The text the edit starts with; a masked editor also takes the mask.
    virtual void startText(const QString &text, const QString &mask) = 0;
    virtual void setEditReadOnly(bool readOnly) = 0;
    // Puts typed text in at the caret, as a key would.
    virtual void insertTyped(const QString &text) = 0;

    // How the edit is to end when the focus leaves next.
    struct Ending
    {
        bool cancelled = false;
        bool continueEditing = false;
        int nextColumn = 0;
        long nextRow = 0;
    };
    const Ending &ending() const { return m_ending; }
    void resetEnding() { m_ending = Ending(); }

protected:
    // True when the key was taken (an ending key, or a refused character).
    bool editorKey(QKeyEvent *event);
    // The character may go in; it may come back changed.
    bool verifyCharacter(QChar &character);
    // Whether the cell takes Control+Enter as a line break rather than
    // leaving it to the window.
    bool keepsControlEnter() const;
    void editorFocusOut(QFocusEvent *event);
    CUGCtrl *ctrl() const { return m_ctrl; }

private:
    void endBy(bool cancelled, bool continueEditing, int columnStep, long rowStep);

    CUGCtrl *m_ctrl;
    Ending m_ending;
};

} // namespace vyr

#endif // VYR_GRID_CUGEDITBASE_H
