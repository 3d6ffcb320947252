// A list grid for tests: it writes down its hooks, counts the keys it
// refuses (rather than beeping), can refuse new rows and choices, and
// upper-cases what a person types into column 0 (as a subclass that makes
// names legal would). GridWindow<ListGrid> puts it in a window;
// ListGridTest gives each test a fresh one, shown and focused.
#ifndef VYR_TESTS_LISTGRID_H
#define VYR_TESTS_LISTGRID_H

#include "support/gridwindow.h"
#include "uikit/cvvyrgrid.h"

#include <QStringList>

#include <functional>
#include <memory>

namespace vyr::test {

class ListGrid : public CVVyrGrid
{
public:
    using CVVyrGrid::CVVyrGrid;

    QStringList log;
    int refusedKeys = 0;
    bool refuseRows = false;
    bool upperCaseColumn0 = false;
    std::function<void(int, long, QStringList &)> choices;

protected:
    void OnKeyRefused() override { ++refusedKeys; }
    bool OnRowAdded(long row) override
    {
        log << QStringLiteral("added %1").arg(row);
        return !refuseRows;
    }
    void OnCellChange(int column, long row, ug::TextSource source) override
    {
        log << QStringLiteral("change %1,%2 %3").arg(column).arg(row).arg(int(source));
        if (upperCaseColumn0 && column == 0 && source != ug::TextRestored) {
            const QString text = GetCellString(row, 0);
            if (text != text.toUpper())
                SetCellText(0, row, text.toUpper());
        }
    }
    bool OnChoiceSelected(int column, long row, const QString &text) override
    {
        log << QStringLiteral("chose %1 at %2,%3").arg(text).arg(column).arg(row);
        return text != QStringLiteral("refused");
    }
    void OnGetChoices(int column, long row, QStringList &list) override
    {
        if (choices)
            choices(column, row, list);
    }
    int OnBrowse(int column, long row) override
    {
        log << QStringLiteral("browse %1,%2").arg(column).arg(row);
        return 1;
    }
};

using ListGridWindow = GridWindow<ListGrid>;

// A test case base holding the window of the grid under test, kept until
// the next one is opened.
class ListGridTest : public QObject
{
protected:
    std::unique_ptr<ListGridWindow> ui;

    // A new list grid in a window shown with the grid focused, and a record
    // for each of `records`: its cells' texts split by tabs, and those it
    // leaves out made from the first ("a" gives "a", "a.1", "a.2").
    ListGrid &shownGrid(int columns, bool keepNewRow, const QStringList &records = {})
    {
        // The old window goes first, so that nothing competes for activation.
        ui.reset();
        ui = std::make_unique<ListGridWindow>(columns, keepNewRow);
        for (const QString &record : records) {
            QStringList texts = record.split('\t');
            for (int column = int(texts.size()); column < columns; ++column)
                texts << QStringLiteral("%1.%2").arg(texts.first()).arg(column);
            ui->grid->AppendRowTexts(texts);
        }
        if (!ui->show())
            QTest::qFail("The grid's window did not become active", __FILE__, __LINE__);
        return *ui->grid;
    }
};

// Each row's texts (of one column, or of all joined), so that whole grids
// compare at once.
inline QStringList rows(CVVyrGrid &grid, int onlyColumn = -1)
{
    QStringList rows;
    for (long row = 0; row < grid.GetRowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < grid.GetColumnCount(); ++column)
            if (onlyColumn < 0 || column == onlyColumn)
                cells << grid.GetCellString(row, column);
        rows << cells.join('|');
    }
    return rows;
}

// Gives a cell, or with row -1 the column's default, a cell type.
inline void setCellType(CVVyrGrid &grid, int column, long row, int type, const QString &label = {}, int parameter = 0,
                        CellActionHandler *handler = nullptr)
{
    CUGCell cell;
    row < 0 ? grid.GetColumnDefault(column, cell) : grid.GetCellResolved(column, row, cell);
    cell.setCellType(type);
    cell.setLabel(label);
    cell.setCellTypeParam(parameter);
    if (handler)
        grid.SetCellActionHandler(cell, handler);
    row < 0 ? grid.SetColumnDefault(column, cell) : grid.SetCell(column, row, cell);
}

} // namespace vyr::test

#endif // VYR_TESTS_LISTGRID_H
