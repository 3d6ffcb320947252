// CUGCellType: how a kind of cell looks and reacts. A grid holds its cell
// types by index; a cell names the index of its type. This base is the
// normal text cell; the drop list, check box and arrow types build on it.
//
// Positions are grid positions (heading rows and columns negative);
// rectangles are in the coordinates of the widget being painted.
#ifndef VYR_GRID_CUGCELLTYPE_H
#define VYR_GRID_CUGCELLTYPE_H

#include <QAccessible>
#include <QColor>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>

#include <cstdint>

class QPainter;

namespace vyr {

class CUGCell;
class CUGCtrl;

// A one-pixel 3D frame on the rectangle's edges: light above and left, dark
// below and right when raised; the other way round when sunken.
void drawCellBevel(QPainter &painter, const QRect &rect, bool raised, const QColor &light, const QColor &dark);

class CUGCellType
{
public:
    CUGCellType();
    virtual ~CUGCellType();
    CUGCellType(const CUGCellType &) = delete;
    CUGCellType &operator=(const CUGCellType &) = delete;

    virtual QString TypeName() const;
    // A fixed identifier of the kind; types that behave as another kind
    // answer that kind's identifier.
    virtual const void *TypeIdentifier() const;
    // The part of the cell an in-place editor may use.
    virtual void EditRect(QRect &rect, const CUGCell &cell) const;

    // Mouse and keys: non-zero when the type handled them. A handled key
    // is set to 0.
    virtual int OnLeftClick(int column, long row, bool pressed, const QRect &rect, const QPoint &point);
    virtual int OnRightClick(int column, long row, bool pressed, const QRect &rect, const QPoint &point);
    virtual int OnDoubleClick(int column, long row, const QRect &rect, const QPoint &point);
    virtual int OnKey(int column, long row, int &key);
    virtual int OnCharDown(int column, long row, QChar &character);
    virtual int OnMouseOver(int column, long row, const QPoint &point, Qt::KeyboardModifiers modifiers);

    // Draws the cell: border, background, bitmap and text.
    virtual void Paint(QPainter &painter, const QRect &rect, int column, long row, const CUGCell &cell,
                       bool selected, bool current);
    // Draws the focus frame of the current cell; 0 leaves it to the grid.
    virtual int OnPaintFocusFrame(QPainter &painter, const QRect &rect);

    // Notifications; the base does nothing.
    virtual void OnSetFocus(int column, long row);
    virtual void OnKillFocus(int column, long row);
    virtual void OnScrolled();
    virtual void OnChangedCellWidth(int column, long row, int width);
    virtual void OnChangedCellHeight(int column, long row, int height);
    // The grid is about to close an open pop-up (a drop list's).
    virtual void OnClosePopups();

    // The size that shows the cell's content, for best fit.
    virtual void MeasureCell(QSize &size, const CUGCell &cell) const;

    // How assistive technology sees a cell of this type: its role, its name
    // and value, and what it can be asked to do (QAccessibleActionInterface
    // names). The base is a text cell named and valued by its text.
    virtual QAccessible::Role AccessibleRole(const CUGCell &cell) const;
    virtual QString AccessibleName(const CUGCell &cell) const;
    virtual QString AccessibleValue(const CUGCell &cell) const;
    virtual QStringList AccessibleActions(const CUGCell &cell) const;
    // States beyond those every cell has (a check box's tick). Base: none.
    virtual void AccessibleState(const CUGCell &cell, QAccessible::State &state) const;
    virtual void DoAccessibleAction(int column, long row, const QString &action);

    // Hands an event to the grid's OnCellTypeEvent and returns its answer.
    long RaiseEvent(int column, long row, int message, std::intptr_t parameter);

    bool allowsEditing() const { return m_allowsEditing; }
    void setAllowsEditing(bool allows) { m_allowsEditing = allows; }

    // Set when the type is added to a grid.
    void attach(CUGCtrl *ctrl, int id);
    CUGCtrl *ctrl() const { return m_ctrl; }
    int id() const { return m_id; }

protected:
    // The pieces Paint is made of, for derived types.
    void DrawBackground(QPainter &painter, const QRect &rect, const CUGCell &cell, bool selected) const;
    void DrawBorder(QPainter &painter, QRect &rect, const CUGCell &cell) const;
    void DrawText(QPainter &painter, const QRect &rect, const CUGCell &cell, bool selected) const;
    QColor textColour(const CUGCell &cell, bool selected) const;

private:
    CUGCtrl *m_ctrl = nullptr;
    int m_id = -1;
    bool m_allowsEditing = true;
};

} // namespace vyr

#endif // VYR_GRID_CUGCELLTYPE_H
