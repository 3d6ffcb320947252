// How the program's cells draw a button: filled with the palette's button
// colour in a raised frame (sunken while pressed), either over the whole
// cell or as a strip one button wide at the cell's right edge with the
// cell's text area left of it. Palette colours only, so themes and dark
// modes show through.
#ifndef VYR_UIKIT_CELLBUTTONPAINTER_H
#define VYR_UIKIT_CELLBUTTONPAINTER_H

#include <QColor>
#include <QFont>
#include <QRect>
#include <QString>

class QPainter;

namespace vyr {

class CUGCtrl;

class CellButtonPainter
{
public:
    // `strip` false: the button is the whole cell.
    CellButtonPainter(const CUGCtrl &grid, const QRect &cell, int buttonWidth, bool strip);

    const QRect &button() const { return m_button; }
    // Where the cell's text goes: left of the strip, empty without one.
    QRect textArea() const;

    // A one-pixel line in the button colour left of the strip.
    void drawSeparator(QPainter &painter) const;
    void drawFace(QPainter &painter, bool pressed) const;
    // An arrow pointing down, rows of 5, 3 and 1 pixels, centred.
    void drawDownArrow(QPainter &painter, const QColor &colour) const;
    // One line, centred both ways.
    void drawLabel(QPainter &painter, const QString &label, const QFont &font, const QColor &colour) const;

private:
    const CUGCtrl &m_grid;
    QRect m_cell;
    QRect m_button;
    bool m_strip;
};

} // namespace vyr

#endif // VYR_UIKIT_CELLBUTTONPAINTER_H
