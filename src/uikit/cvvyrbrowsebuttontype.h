// The program's button cells.
//
// CVVyrBrowseButtonType: a button showing the cell's label ("..." without
// one) that raises kBrowseEvent when used - pressed, double-clicked, or
// Enter, F4, Space, or Down with Alt or Control on the current cell - so
// that the grid runs the cell's CellActionHandler or its own OnBrowse.
// With parameter bit 16 the cell shows its text, which can be typed, and
// the button is a strip at its right edge.
//
// CVVyrColourPickType: the same button opening the colour dialog on the
// cell's colour text ("r,g,b" fractions, util/colourtext.h); in the
// editable look a swatch of the colour stands left of the button.
//
// Neither does anything for a disabled cell. A read-only cell's button may
// open its editor to show the value (the grid keeps the cell as it was);
// the colour dialog, which has nothing to show, stays shut.
#ifndef VYR_UIKIT_CVVYRBROWSEBUTTONTYPE_H
#define VYR_UIKIT_CVVYRBROWSEBUTTONTYPE_H

#include "grid/cugcelltype.h"

namespace vyr {

class CVVyrBrowseButtonType : public CUGCellType
{
public:
    QString TypeName() const override;
    const void *TypeIdentifier() const override;
    // Empty, unless the cell is editable: then the area left of the button.
    void EditRect(QRect &rect, const CUGCell &cell) const override;
    int OnLeftClick(int column, long row, bool pressed, const QRect &rect, const QPoint &point) override;
    int OnDoubleClick(int column, long row, const QRect &rect, const QPoint &point) override;
    int OnKey(int column, long row, int &key) override;
    void Paint(QPainter &painter, const QRect &rect, int column, long row, const CUGCell &cell, bool selected,
               bool current) override;
    void MeasureCell(QSize &size, const CUGCell &cell) const override;

    QAccessible::Role AccessibleRole(const CUGCell &cell) const override;
    QString AccessibleName(const CUGCell &cell) const override;
    QStringList AccessibleActions(const CUGCell &cell) const override;
    void DoAccessibleAction(int column, long row, const QString &action) override;

    // The button was used on the cell.
    virtual void Browse(int column, long row);

    int buttonWidth() const;

protected:
    // Whether the cell may be browsed: not disabled, and - unless only to
    // view it - not read-only.
    bool mayBrowse(int column, long row, bool toView) const;
    // The button and, in the editable look, the text beside it.
    void paintButton(QPainter &painter, const QRect &rect, const CUGCell &cell, bool selected,
                     QRect *textArea) const;
};

class CVVyrColourPickType final : public CVVyrBrowseButtonType
{
public:
    QString TypeName() const override;
    const void *TypeIdentifier() const override;
    void Paint(QPainter &painter, const QRect &rect, int column, long row, const CUGCell &cell, bool selected,
               bool current) override;
    QString AccessibleName(const CUGCell &cell) const override;
    void Browse(int column, long row) override;
};

} // namespace vyr

#endif // VYR_UIKIT_CVVYRBROWSEBUTTONTYPE_H
