// The grid's own cell types beside the normal one, at indices 1..3 of every
// grid: a drop list, a check box and an arrow.
#ifndef VYR_GRID_CUGSTANDARDTYPES_H
#define VYR_GRID_CUGSTANDARDTYPES_H

#include "grid/cugcelltype.h"
#include "grid/cuglstbox.h"

#include <QPointer>
#include <QStringList>

namespace vyr {

// A button at the cell's right edge opens a list of the label's entries
// (each ended by a line feed). With parameter bit 16 the cell is editable
// beside the button. Enter, F4, and Down with Alt or Control open the list;
// typing in an open list jumps to the next entry that begins with the text. Raises 100 before opening (the QStringList, a zero
// answer keeps it closed), 102 with the chosen index, 101 with the chosen
// text (a zero answer keeps the old text), and 103 after storing it.
class CUGDropListType : public CUGCellType
{
public:
    CUGDropListType();
    ~CUGDropListType() override;

    QString TypeName() const override;
    const void *TypeIdentifier() const override;
    void EditRect(QRect &rect, const CUGCell &cell) const override;
    int OnLeftClick(int column, long row, bool pressed, const QRect &rect, const QPoint &point) override;
    int OnDoubleClick(int column, long row, const QRect &rect, const QPoint &point) override;
    int OnKey(int column, long row, int &key) override;
    void Paint(QPainter &painter, const QRect &rect, int column, long row, const CUGCell &cell, bool selected,
               bool current) override;
    void OnClosePopups() override;
    void MeasureCell(QSize &size, const CUGCell &cell) const override;

    // The identifier every drop list type reports.
    static const void *Identifier();

    QAccessible::Role AccessibleRole(const CUGCell &cell) const override;
    QStringList AccessibleActions(const CUGCell &cell) const override;
    void DoAccessibleAction(int column, long row, const QString &action) override;

    // Opens the list of the cell; false when it stays closed.
    bool OpenList(int column, long row);
    // The entries a label lists: pieces ended by a line feed.
    static QStringList EntriesOf(const QString &label);
    bool IsListOpen() const;
    CUGLstBox *ListBox() const { return m_list; }
    int buttonWidth() const;

protected:
    // The pop-up list a derived type shows its entries in.
    virtual CUGLstBox *CreateListBox();
    // An entry of the open list was chosen: 102, then 101, and when that
    // agrees the text is stored and 103 raised. Whether the cell took it.
    virtual bool Choose(int index, const QString &text);
    // The button shows pressed.
    bool isPressed() const { return m_pressed; }

private:
    friend class CUGLstBox;
    void closedWithoutChoice(bool byClick);

    QPointer<CUGLstBox> m_list;
    int m_openColumn = -1;
    long m_openRow = -1;
    bool m_pressed = false;
};

// A check box: the cell's number is 0 unchecked, 1 checked, 2 a third state
// with parameter bit 0x2000. A press in the box, a double click or Space
// advances it (not in a read-only cell) and raises 53 with the new value.
class CUGCheckBoxType : public CUGCellType
{
public:
    QString TypeName() const override;
    const void *TypeIdentifier() const override;
    int OnLeftClick(int column, long row, bool pressed, const QRect &rect, const QPoint &point) override;
    int OnDoubleClick(int column, long row, const QRect &rect, const QPoint &point) override;
    int OnKey(int column, long row, int &key) override;
    void Paint(QPainter &painter, const QRect &rect, int column, long row, const CUGCell &cell, bool selected,
               bool current) override;
    void MeasureCell(QSize &size, const CUGCell &cell) const override;

    // Where the box is drawn in a cell's rectangle.
    static QRect BoxRect(const QRect &cellRect, const CUGCell &cell);
    // The value after one press.
    static int NextValue(int value, int parameter);

    QAccessible::Role AccessibleRole(const CUGCell &cell) const override;
    QString AccessibleName(const CUGCell &cell) const override;
    void AccessibleState(const CUGCell &cell, QAccessible::State &state) const override;
    QStringList AccessibleActions(const CUGCell &cell) const override;
    void DoAccessibleAction(int column, long row, const QString &action) override;

private:
    void advance(int column, long row);
};

// An arrow pointing right (left with parameter 1, both ways with 2), as a
// row marker in a heading column.
class CUGArrowType : public CUGCellType
{
public:
    QString TypeName() const override;
    const void *TypeIdentifier() const override;
    void Paint(QPainter &painter, const QRect &rect, int column, long row, const CUGCell &cell, bool selected,
               bool current) override;
};

} // namespace vyr

#endif // VYR_GRID_CUGSTANDARDTYPES_H
