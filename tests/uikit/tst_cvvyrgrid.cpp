// The list grid through its operations and a person's keys and mouse:
// set-up, the new row, enabling, Tab out of the grid, deleting, moving and
// sorting rows, the cell type events, the clipboard, and undo and redo of
// each kind of action.
#include "listgrid.h"

#include "uikit/cvvyrbrowsebuttontype.h"
#include "uikit/cvvyrdroplisttype.h"

#include <QApplication>
#include <QClipboard>
#include <QRandomGenerator>
#include <QtTest>

#include <algorithm>
#include <numeric>

using namespace vyr;
using GridWindow = vyr::test::ListGridWindow;
using vyr::test::ListGrid;

namespace {

QStringList columnTexts(CVVyrGrid &grid, int column)
{
    QStringList texts;
    for (long row = 0; row < grid.GetRowCount(); ++row)
        texts << grid.GetCellString(row, column);
    return texts;
}

void fill(CVVyrGrid &grid, const QStringList &firstColumn)
{
    for (const QString &text : firstColumn) {
        QStringList row{text};
        for (int column = 1; column < grid.GetColumnCount(); ++column)
            row << QStringLiteral("%1.%2").arg(text).arg(column);
        grid.AppendRowTexts(row);
    }
}

// Keys as a person types them: each goes to whatever has the focus, the
// grid first and then the editor that the first key opened.
void type(const QString &text)
{
    for (QChar character : text)
        QTest::keyClick(QApplication::focusWidget(), character.toLatin1());
}

void clickCell(CVVyrGrid &grid, int column, long row, Qt::KeyboardModifiers modifiers = {})
{
    QRect rect;
    QVERIFY(grid.GetCellRect(column, row, rect) == ug::Success);
    QTest::mouseClick(grid.GetGridWidget(), Qt::LeftButton, modifiers, rect.center());
}

} // namespace

class tst_CVVyrGrid : public QObject
{
    Q_OBJECT

private slots:
    void theNewRowGrowsWhenUsed_data();
    void theNewRowGrowsWhenUsed();
    void refusedRowsLeaveNoTrace();
    void enablingCellsAndTheGrid();
    void tabWalksEnabledCellsAndLeavesAtTheEnds();
    void deleteTakesTheSelectedRowsButNeverTheNewRow();
    void movingRowsTakesTheSelectionAlong();
    void sortIsTheStableInsertionSortInLinearithmicTime();
    void cellTypeEventsGoToTheHandlerOrTheGrid();
    void copyWritesSpreadsheetText();
    void pasteOnTheNewRowAddsRecordsThroughTheTypingPath();
    void pasteOverRowsSkipsCellsThatMayNotBeWritten();
    void undoAndRedoEveryAction_data();
    void undoAndRedoEveryAction();
    void undoKeepsAHundredSteps();
    void restoredTextsReachTheSubclass();
    void disabledCellsAreNeverEdited();
    void browsingTheNewRowAddsARecordOnlyForAText();
    void replaceAllIsOneUndoStep();
};

void tst_CVVyrGrid::theNewRowGrowsWhenUsed_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("click") << "click";
    QTest::newRow("F2") << "F2";
    QTest::newRow("typing") << "typing";
}

void tst_CVVyrGrid::theNewRowGrowsWhenUsed()
{
    QFETCH(QString, how);
    GridWindow ui(2, true);
    ListGrid &grid = *ui.grid;
    fill(grid, {"one"});
    QVERIFY(ui.show());
    if (how == "click") {
        clickCell(grid, 1, 1);
    } else {
        grid.GotoCell(1, 1);
        if (how == "F2")
            QTest::keyClick(&grid, Qt::Key_F2);
        else
            QTest::keyClicks(&grid, "x");
    }
    QCOMPARE(grid.GetRowCount(), 3L);
    QCOMPARE(grid.log.first(), QString("added 1"));
    QCOMPARE(grid.GetCurrentRow(), 1L);
    if (how != "click") {
        QVERIFY(grid.IsEditing());
        QTest::keyClick(grid.GetEditor(), Qt::Key_Return);
        QCOMPARE(grid.GetCellString(1, 1), how == "typing" ? QString("x") : QString());
    }
    // The row under edit is a record now; the new row is below it.
    QVERIFY(grid.GetCellString(2, 0).isEmpty());

    // A read-only grid never grows.
    grid.EnableGrid(false);
    grid.GotoCell(0, 2);
    QTest::keyClick(&grid, Qt::Key_F2);
    QTest::keyClicks(&grid, "y");
    clickCell(grid, 0, 2);
    QCOMPARE(grid.GetRowCount(), 3L);
    QVERIFY(!grid.IsEditing());
}

void tst_CVVyrGrid::refusedRowsLeaveNoTrace()
{
    GridWindow ui(2, true);
    ListGrid &grid = *ui.grid;
    fill(grid, {"one", "two"});
    QVERIFY(ui.show());
    grid.refuseRows = true;
    grid.GotoCell(0, 1);
    QTest::keyClick(&grid, Qt::Key_Insert);
    QCOMPARE(grid.GetRowCount(), 3L);
    QCOMPARE(columnTexts(grid, 0), QStringList({"one", "two", ""}));
    QCOMPARE(grid.AppendBlankRow(), -1L);
    grid.GotoCell(0, 2);
    QTest::keyClicks(&grid, "z");
    QCOMPARE(grid.GetRowCount(), 3L);
    QVERIFY(!grid.IsEditing());

    grid.refuseRows = false;
    grid.GotoCell(0, 1);
    QTest::keyClick(&grid, Qt::Key_Insert);
    QCOMPARE(columnTexts(grid, 0), QStringList({"one", "", "two", ""}));
}

void tst_CVVyrGrid::enablingCellsAndTheGrid()
{
    GridWindow ui(3, true);
    ListGrid &grid = *ui.grid;
    fill(grid, {"a", "b"});
    QVERIFY(ui.show());
    grid.EnableCell(1, 0, false);
    QVERIFY(!grid.IsCellEnabled(1, 0));
    QVERIFY(grid.IsCellEnabled(2, 0));
    QCOMPARE(grid.GotoCell(1, 0), int(ug::Refused));
    // Hidden, a disabled cell's text is still there.
    grid.SetShowDisabledText(false);
    grid.EnableCell(1, 1, false);
    CUGCell hidden;
    grid.GetCellResolved(1, 1, hidden);
    QCOMPARE(hidden.textColor(), hidden.backColor());
    QCOMPARE(hidden.text(), QString("b.1"));
    grid.EnableCell(1, 1, true);
    grid.SetShowDisabledText(true);
    clickCell(grid, 1, 0);
    QVERIFY(grid.GetCurrentCol() != 1 || grid.GetCurrentRow() != 0);

    // Enabling again clears the mark and the disabled look.
    CUGCell cell;
    grid.GetCellResolved(1, 0, cell);
    const QColor disabledBack = cell.backColor();
    grid.EnableCell(1, 0, true);
    QVERIFY(grid.IsCellEnabled(1, 0));
    grid.GetCellResolved(1, 0, cell);
    QVERIFY(cell.backColor() != disabledBack);
    QCOMPARE(grid.GotoCell(1, 0), 0);

    // A disabled grid is read-only everywhere, and its disabled cells keep
    // their look when it is enabled again.
    grid.EnableCell(2, 1, false);
    grid.EnableGrid(false);
    QVERIFY(!grid.IsGridEnabled());
    grid.GetCellResolved(0, 0, cell);
    QVERIFY(cell.isReadOnly());
    QCOMPARE(grid.BeginEdit(0), int(ug::OutOfRange));
    QTest::keyClick(&grid, Qt::Key_Delete);
    QCOMPARE(grid.GetRowCount(), 3L);
    grid.EnableGrid(true);
    grid.GetCellResolved(2, 1, cell);
    QVERIFY(!grid.IsCellEnabled(2, 1));
    QCOMPARE(cell.backColor(), disabledBack);
    grid.GetCellResolved(0, 0, cell);
    QVERIFY(!cell.isReadOnly());
}

void tst_CVVyrGrid::tabWalksEnabledCellsAndLeavesAtTheEnds()
{
    GridWindow ui(3, false);
    ListGrid &grid = *ui.grid;
    fill(grid, {"a", "b"});
    QVERIFY(ui.show());
    grid.EnableCell(1, 0, false);
    grid.GotoCell(0, 0);
    QTest::keyClick(&grid, Qt::Key_Tab);
    QCOMPARE(grid.GetCurrentCol(), 2);
    QTest::keyClick(&grid, Qt::Key_Tab);
    QCOMPARE(grid.GetCurrentCol(), 0);
    QCOMPARE(grid.GetCurrentRow(), 1L);
    QTest::keyClick(&grid, Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(grid.GetCurrentCol(), 2);
    QCOMPARE(grid.GetCurrentRow(), 0L);
    QTest::keyClick(&grid, Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(grid.GetCurrentCol(), 0);
    QVERIFY(!grid.IsSelected(2, 0));
    QTest::keyClick(&grid, Qt::Key_Backtab, Qt::ShiftModifier);
    QTRY_VERIFY(ui.before->hasFocus());

    grid.setFocus();
    grid.GotoCell(2, 1);
    QTest::keyClick(&grid, Qt::Key_Tab);
    QTRY_VERIFY(ui.after->hasFocus());

    // Tab in the in-place editor stores the text and goes on the same way.
    grid.setFocus();
    QTRY_VERIFY(grid.hasFocus());
    grid.GotoCell(0, 0);
    QTest::keyClick(&grid, Qt::Key_F2);
    QVERIFY(grid.IsEditing());
    QTest::keyClicks(grid.GetEditor(), "typed");
    QTest::keyClick(grid.GetEditor(), Qt::Key_Tab);
    QVERIFY(!grid.IsEditing());
    QCOMPARE(grid.GetCellString(0, 0), QString("typed"));
    QCOMPARE(grid.GetCurrentCol(), 2);
    QTest::keyClick(&grid, Qt::Key_F2);
    QTest::keyClick(grid.GetEditor(), Qt::Key_Down);
    QCOMPARE(grid.GetCurrentRow(), 1L);
    QTest::keyClick(&grid, Qt::Key_F2);
    QTest::keyClick(grid.GetEditor(), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(grid.GetCurrentCol(), 1);
}

void tst_CVVyrGrid::deleteTakesTheSelectedRowsButNeverTheNewRow()
{
    GridWindow ui(2, true);
    ListGrid &grid = *ui.grid;
    QVERIFY(ui.show());
    // Only the new row: nothing to delete.
    QTest::keyClick(&grid, Qt::Key_Delete);
    QCOMPARE(grid.GetRowCount(), 1L);

    fill(grid, {"a", "b", "c", "d", "e"});
    clickCell(grid, 0, 1);
    clickCell(grid, 1, 3, Qt::ControlModifier);
    clickCell(grid, 0, 5, Qt::ControlModifier);
    QTest::keyClick(&grid, Qt::Key_Delete);
    QCOMPARE(columnTexts(grid, 0), QStringList({"a", "c", "e", ""}));
    grid.GotoCell(0, 1);
    QTest::keyClick(&grid, Qt::Key_Backspace);
    QCOMPARE(columnTexts(grid, 0), QStringList({"a", "e", ""}));
}

void tst_CVVyrGrid::movingRowsTakesTheSelectionAlong()
{
    GridWindow ui(2, true);
    ListGrid &grid = *ui.grid;
    fill(grid, {"a", "b", "c", "d", "e"});
    QVERIFY(ui.show());
    clickCell(grid, 0, 2);
    clickCell(grid, 0, 4, Qt::ControlModifier);
    grid.MoveSelectedRowsUp();
    QCOMPARE(columnTexts(grid, 0), QStringList({"a", "c", "b", "e", "d", ""}));
    QCOMPARE(columnTexts(grid, 1), QStringList({"a.1", "c.1", "b.1", "e.1", "d.1", ""}));
    QVERIFY(grid.IsSelected(0, 1));
    QVERIFY(grid.IsSelected(0, 3));
    QCOMPARE(grid.GetCurrentRow(), 3L);
    QVERIFY(grid.rowsModified());

    // A selection at the top stays where it is, in its order.
    grid.ClearSelection();
    grid.GotoCell(0, 0);
    grid.SelectRange(0, 0, 0, 1);
    grid.MoveSelectedRowsUp();
    QCOMPARE(columnTexts(grid, 0), QStringList({"a", "c", "b", "e", "d", ""}));

    // The last record cannot move into the new row, nor hold others back.
    grid.ClearSelection();
    grid.GotoCell(0, 4);
    grid.MoveSelectedRowsDown();
    QCOMPARE(columnTexts(grid, 0), QStringList({"a", "c", "b", "e", "d", ""}));
    grid.ClearSelection();
    grid.GotoCell(0, 2);
    grid.SelectCell(0, 3);
    grid.MoveSelectedRowsDown();
    QCOMPARE(columnTexts(grid, 0), QStringList({"a", "c", "d", "b", "e", ""}));
    QVERIFY(grid.IsSelected(0, 3));
    QVERIFY(grid.IsSelected(0, 4));
    QCOMPARE(grid.GetCurrentRow(), 3L);
}

void tst_CVVyrGrid::sortIsTheStableInsertionSortInLinearithmicTime()
{
    GridWindow ui(2, true);
    ListGrid &grid = *ui.grid;
    QStringList keys;
    QRandomGenerator random(17);
    const QStringList letters{"b", "B", "a", "A", "c", "ab", "Ab", ""};
    for (int i = 0; i < 60; ++i)
        keys << letters[random.bounded(int(letters.size()))];
    for (int i = 0; i < keys.size(); ++i)
        grid.AppendRowTexts({keys[i], QString::number(i)});

    // The reference: neighbours exchanged while out of order, ignoring case.
    QList<int> rows(keys.size());
    std::iota(rows.begin(), rows.end(), 0);
    for (int i = 1; i < rows.size(); ++i) {
        for (int j = i; j > 0 && keys[rows[j - 1]].compare(keys[rows[j]], Qt::CaseInsensitive) > 0; --j)
            rows.swapItemsAt(j - 1, j);
    }
    grid.setRowsModified(false);
    grid.SortByColumn(0);
    for (int i = 0; i < rows.size(); ++i)
        QCOMPARE(grid.GetCellString(i, 1), QString::number(rows[i]));
    QVERIFY(grid.GetCellString(long(rows.size()), 0).isEmpty());
    QVERIFY(grid.rowsModified());

    // Sorted already: nothing moves, nothing is modified.
    grid.setRowsModified(false);
    grid.SortByColumn(0);
    QVERIFY(!grid.rowsModified());
    grid.SortByColumn(5);
    QVERIFY(!grid.rowsModified());
}

void tst_CVVyrGrid::cellTypeEventsGoToTheHandlerOrTheGrid()
{
    struct Handler : CellActionHandler
    {
        QStringList calls;
        void OnBrowse(CVVyrGrid &, int column, long row, CUGCell &cell) override
        {
            calls << QStringLiteral("browse %1,%2").arg(column).arg(row);
            cell.setText("browsed");
        }
        void OnGetChoices(CVVyrGrid &, int, long, CUGCell &, QStringList &choices) override { choices = {"h1", "h2"}; }
        void OnChoiceSelected(CVVyrGrid &, int, long, CUGCell &, const QString &text) override
        {
            calls << "chose " + text;
        }
    } handler;

    GridWindow ui(2, false);
    ListGrid &grid = *ui.grid;
    // The program's drop list is a drop list to whoever asks.
    QCOMPARE(grid.GetCellType(grid.DropListTypeId())->TypeIdentifier(), CUGDropListType::Identifier());
    fill(grid, {"a", "b"});
    QCOMPARE(grid.AppendRowTexts({"one text too many", "x", "y"}), -1L);
    CUGCell cell;
    grid.GetCellResolved(1, 0, cell);
    cell.setCellType(grid.BrowseTypeId());
    grid.SetCellActionHandler(cell, &handler);
    grid.SetCell(1, 0, cell);
    QCOMPARE(grid.OnCellTypeEvent(grid.BrowseTypeId(), 1, 0, CVVyrGrid::kBrowseEvent, 0), 1L);
    QCOMPARE(handler.calls, QStringList({"browse 1,0"}));
    QCOMPARE(grid.GetCellString(0, 1), QString("browsed"));
    QVERIFY(grid.log.contains("change 1,0 2"));

    QStringList entries{"label entry"};
    QCOMPARE(grid.OnCellTypeEvent(grid.DropListTypeId(), 1, 0, ug::DropListStart, std::intptr_t(&entries)), 1L);
    QCOMPARE(entries, QStringList({"h1", "h2"}));
    QString chosen = "h2";
    QCOMPARE(grid.OnCellTypeEvent(grid.DropListTypeId(), 1, 0, ug::DropListSelect, std::intptr_t(&chosen)), 1L);
    QCOMPARE(handler.calls.last(), QString("chose h2"));

    // Without a handler the grid's own hooks answer.
    grid.choices = [](int, long, QStringList &list) { list << "grid"; };
    entries = {"label entry"};
    grid.OnCellTypeEvent(grid.DropListTypeId(), 0, 1, ug::DropListStart, std::intptr_t(&entries));
    QCOMPARE(entries, QStringList({"label entry", "grid"}));
    chosen = "refused";
    QCOMPARE(grid.OnCellTypeEvent(grid.DropListTypeId(), 0, 1, ug::DropListSelect, std::intptr_t(&chosen)), 0L);
    QCOMPARE(grid.OnCellTypeEvent(grid.BrowseTypeId(), 0, 1, CVVyrGrid::kBrowseEvent, 0), 1L);
    QVERIFY(grid.log.contains("browse 0,1"));

    // A disabled cell answers nothing.
    grid.EnableCell(1, 0, false);
    handler.calls.clear();
    QCOMPARE(grid.OnCellTypeEvent(grid.BrowseTypeId(), 1, 0, CVVyrGrid::kBrowseEvent, 0), 0L);
    QVERIFY(handler.calls.isEmpty());
}

void tst_CVVyrGrid::copyWritesSpreadsheetText()
{
    GridWindow ui(3, true);
    ListGrid &grid = *ui.grid;
    grid.AppendRowTexts({"plain", "with\ttab", "with \"quotes\""});
    grid.AppendRowTexts({"second", "", "two\nlines"});
    grid.AppendRowTexts({"third", "x", "y"});
    QVERIFY(ui.show());
    clickCell(grid, 0, 0);
    clickCell(grid, 2, 1, Qt::ControlModifier);
    grid.SelectCell(0, 3);
    const QString expected = "plain\t\"with\ttab\"\t\"with \"\"quotes\"\"\"\nsecond\t\t\"two\nlines\"\n";
    QCOMPARE(grid.SelectedRowsText(), expected);
    QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), expected);

    // The text pasted back gives the same records.
    GridWindow other(3, true);
    QVERIFY(other.show());
    QApplication::clipboard()->setText(expected);
    QTest::keyClick(other.grid, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(other.grid->GetRowCount(), 3L);
    for (int column = 0; column < 3; ++column) {
        QCOMPARE(other.grid->GetCellString(0, column), grid.GetCellString(0, column));
        QCOMPARE(other.grid->GetCellString(1, column), grid.GetCellString(1, column));
    }
}

void tst_CVVyrGrid::pasteOnTheNewRowAddsRecordsThroughTheTypingPath()
{
    GridWindow ui(2, true);
    ListGrid &grid = *ui.grid;
    grid.upperCaseColumn0 = true;
    fill(grid, {"KEPT"});
    QVERIFY(ui.show());
    grid.GotoCell(1, 1);
    const CVVyrGrid::PasteResult result = grid.PasteText("alpha\t1\r\nbeta\t2\tsurplus\r\ngamma\n");
    QCOMPARE(result.rows, 3L);
    QCOMPARE(result.refusedCells, 0L);
    QCOMPARE(columnTexts(grid, 0), QStringList({"KEPT", "ALPHA", "BETA", "GAMMA", ""}));
    QCOMPARE(columnTexts(grid, 1), QStringList({"KEPT.1", "1", "2", "", ""}));
    QCOMPARE(grid.log.filter("added").size(), 3);
    QVERIFY(grid.log.contains(QStringLiteral("change 0,1 %1").arg(int(ug::TextPasted))));

    // A refused row stops the paste.
    grid.refuseRows = true;
    grid.GotoCell(0, 4);
    QCOMPARE(grid.PasteText("delta\n").rows, 0L);
    QCOMPARE(grid.GetRowCount(), 5L);
}

void tst_CVVyrGrid::pasteOverRowsSkipsCellsThatMayNotBeWritten()
{
    GridWindow ui(3, true);
    ListGrid &grid = *ui.grid;
    fill(grid, {"a", "b"});
    grid.EnableCell(2, 0, false);
    CUGCell cell;
    grid.GetCellResolved(1, 1, cell);
    cell.setReadOnly(true);
    grid.SetCell(1, 1, cell);
    CUGCell masked;
    grid.GetColumnDefault(1, masked);
    masked.setMask("99");
    grid.SetColumnDefault(1, masked);
    QVERIFY(ui.show());
    grid.GotoCell(1, 0);
    const CVVyrGrid::PasteResult result = grid.PasteText("12\tx\nzz\ty\n42\tz\n");
    QCOMPARE(result.rows, 3L);
    QCOMPARE(result.refusedCells, 0L);
    QCOMPARE(columnTexts(grid, 1), QStringList({"12", "b.1", "42", ""}));
    QCOMPARE(columnTexts(grid, 2), QStringList({"a.2", "y", "z", ""}));
    QCOMPARE(grid.GetCellString(2, 0), QString());

    // A text the cell's mask refuses is counted.
    grid.GotoCell(1, 0);
    QCOMPARE(grid.PasteText("ab\n").refusedCells, 1L);
    QCOMPARE(grid.GetCellString(0, 1), QString("12"));
}

void tst_CVVyrGrid::undoAndRedoEveryAction_data()
{
    QTest::addColumn<QString>("action");
    for (const char *action : {"edit", "paste", "insert", "delete", "move", "sort", "choice", "browse"})
        QTest::newRow(action) << QString(action);
}

void tst_CVVyrGrid::undoAndRedoEveryAction()
{
    QFETCH(QString, action);
    struct Browser : CellActionHandler
    {
        void OnBrowse(CVVyrGrid &, int, long, CUGCell &cell) override { cell.setText("from the editor"); }
    } browser;

    GridWindow ui(2, true);
    ListGrid &grid = *ui.grid;
    fill(grid, {"d", "b", "c", "a"});
    CUGCell cell;
    grid.GetColumnDefault(1, cell);
    cell.setCellType(grid.DropListTypeId());
    cell.setLabel("red\ngreen\nblue\n");
    grid.SetColumnDefault(1, cell);
    grid.GetCellResolved(0, 3, cell);
    cell.setCellType(grid.BrowseTypeId());
    grid.SetCellActionHandler(cell, &browser);
    grid.SetCell(0, 3, cell);
    QVERIFY(ui.show());
    const QStringList before0 = columnTexts(grid, 0);
    const QStringList before1 = columnTexts(grid, 1);
    QVERIFY(!grid.CanUndo());

    if (action == "edit") {
        grid.GotoCell(0, 1);
        type("new");
        QTest::keyClick(grid.GetEditor(), Qt::Key_Return);
    } else if (action == "paste") {
        grid.GotoCell(0, 4);
        grid.PasteText("p\tred\nq\tblue\n");
    } else if (action == "insert") {
        grid.GotoCell(0, 2);
        QTest::keyClick(&grid, Qt::Key_Insert);
    } else if (action == "delete") {
        clickCell(grid, 0, 1);
        clickCell(grid, 0, 2, Qt::ShiftModifier);
        QTest::keyClick(&grid, Qt::Key_Delete);
    } else if (action == "move") {
        grid.GotoCell(0, 2);
        grid.MoveSelectedRowsUp();
    } else if (action == "sort") {
        grid.SortByColumn(0);
    } else if (action == "choice") {
        grid.GotoCell(1, 0);
        QTest::keyClick(&grid, Qt::Key_F4);
        auto *type = static_cast<CUGDropListType *>(grid.GetCellType(grid.DropListTypeId()));
        QTRY_VERIFY(type->IsListOpen());
        QTest::keyClick(type->ListBox(), Qt::Key_G);
        QTest::keyClick(type->ListBox(), Qt::Key_Return);
        QCOMPARE(grid.GetCellString(0, 1), QString("green"));
    } else if (action == "browse") {
        grid.GotoCell(0, 3);
        QTest::keyClick(&grid, Qt::Key_Return);
        QCOMPARE(grid.GetCellString(3, 0), QString("from the editor"));
    }
    const QStringList after0 = columnTexts(grid, 0);
    const QStringList after1 = columnTexts(grid, 1);
    QVERIFY(after0 != before0 || after1 != before1);
    QVERIFY(grid.CanUndo());

    QTest::keyClick(&grid, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(columnTexts(grid, 0), before0);
    QCOMPARE(columnTexts(grid, 1), before1);
    QVERIFY(!grid.CanUndo());
    QTest::keyClick(&grid, Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(columnTexts(grid, 0), after0);
    QCOMPARE(columnTexts(grid, 1), after1);
    QTest::keyClick(&grid, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&grid, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(columnTexts(grid, 0), after0);

    // A change that is not a person's (a page reloading its rows) makes the
    // history meaningless.
    grid.AppendRowTexts({"loaded", "x"});
    QVERIFY(!grid.CanUndo());
}

void tst_CVVyrGrid::undoKeepsAHundredSteps()
{
    GridWindow ui(1, true);
    ListGrid &grid = *ui.grid;
    QVERIFY(ui.show());
    for (int step = 0; step < 150; ++step) {
        grid.GotoCell(0, grid.GetRowCount() - 1);
        grid.PasteText(QString::number(step));
    }
    QCOMPARE(grid.GetRowCount(), 151L);
    for (int step = 0; step < 100; ++step)
        grid.Undo();
    QCOMPARE(grid.GetRowCount(), 51L);
    QCOMPARE(grid.GetCellString(49, 0), QString("49"));
    grid.Redo();
    QCOMPARE(grid.GetCellString(50, 0), QString("50"));
    // A new action drops what could have been redone.
    grid.GotoCell(0, 0);
    grid.PasteText("over");
    QVERIFY(!grid.CanRedo());
}

void tst_CVVyrGrid::restoredTextsReachTheSubclass()
{
    GridWindow ui(2, true);
    ListGrid &grid = *ui.grid;
    grid.upperCaseColumn0 = true;
    fill(grid, {"OLD"});
    QVERIFY(ui.show());
    grid.GotoCell(0, 0);
    type("name");
    QTest::keyClick(grid.GetEditor(), Qt::Key_Return);
    QCOMPARE(grid.GetCellString(0, 0), QString("NAME"));
    grid.log.clear();
    grid.Undo();
    QCOMPARE(grid.GetCellString(0, 0), QString("OLD"));
    QVERIFY(grid.log.contains(QStringLiteral("change 0,0 %1").arg(int(ug::TextRestored))));
    grid.Redo();
    // What the subclass made of the typed text comes back with it.
    QCOMPARE(grid.GetCellString(0, 0), QString("NAME"));

    // A record begun by typing on the blank row goes with one undo, and an
    // edit begun there and cancelled leaves its blank record a step of its
    // own.
    grid.GotoCell(0, 1);
    type("x");
    QTest::keyClick(grid.GetEditor(), Qt::Key_Return);
    QCOMPARE(grid.GetRowCount(), 3L);
    grid.Undo();
    QCOMPARE(grid.GetRowCount(), 2L);
    grid.GotoCell(0, 1);
    type("y");
    QTest::keyClick(grid.GetEditor(), Qt::Key_Escape);
    QCOMPARE(grid.GetRowCount(), 3L);
    grid.GotoCell(0, 0);
    type("z");
    QTest::keyClick(grid.GetEditor(), Qt::Key_Return);
    grid.Undo();
    QCOMPARE(grid.GetCellString(0, 0), QString("NAME"));
    QCOMPARE(grid.GetRowCount(), 3L);

    // A read-only grid is not changed by undo either.
    grid.EnableGrid(false);
    grid.Undo();
    QCOMPARE(grid.GetRowCount(), 3L);
}

void tst_CVVyrGrid::disabledCellsAreNeverEdited()
{
    GridWindow ui(2, false);
    ListGrid &grid = *ui.grid;
    fill(grid, {"a", "b"});
    QVERIFY(ui.show());
    // The current cell becomes disabled under the person's feet.
    grid.GotoCell(1, 0);
    grid.EnableCell(1, 0, false);
    QTest::keyClick(&grid, Qt::Key_F2);
    QTest::keyClicks(&grid, "x");
    QVERIFY(!grid.IsEditing());
    QCOMPARE(grid.GetCellString(0, 1), QString("a.1"));
    // A double click on a disabled cell edits no other cell either.
    grid.GotoCell(0, 1);
    grid.EnableCell(1, 1, false);
    QRect rect;
    grid.GetCellRect(1, 1, rect);
    QTest::mouseDClick(grid.GetGridWidget(), Qt::LeftButton, {}, rect.center());
    QVERIFY(!grid.IsEditing());
}

void tst_CVVyrGrid::browsingTheNewRowAddsARecordOnlyForAText()
{
    struct Browser : CellActionHandler
    {
        QString text;
        void OnBrowse(CVVyrGrid &, int, long, CUGCell &cell) override
        {
            if (!text.isNull())
                cell.setText(text);
        }
    } browser;
    GridWindow ui(1, true);
    ListGrid &grid = *ui.grid;
    CUGCell cell;
    grid.GetColumnDefault(0, cell);
    cell.setCellType(grid.BrowseTypeId());
    grid.SetCellActionHandler(cell, &browser);
    grid.SetColumnDefault(0, cell);
    QVERIFY(ui.show());
    grid.GotoCell(0, 0);
    QTest::keyClick(&grid, Qt::Key_Return);
    QCOMPARE(grid.GetRowCount(), 1L);
    browser.text = "chosen";
    QTest::keyClick(&grid, Qt::Key_Return);
    QCOMPARE(grid.GetRowCount(), 2L);
    QCOMPARE(grid.GetCellString(0, 0), QString("chosen"));
    QVERIFY(grid.GetCellString(1, 0).isEmpty());
    grid.Undo();
    QCOMPARE(grid.GetRowCount(), 1L);
}

void tst_CVVyrGrid::replaceAllIsOneUndoStep()
{
    GridWindow ui(1, true);
    ListGrid &grid = *ui.grid;
    fill(grid, {"Item 1", "Item 2", "other", "Item 4"});
    QVERIFY(ui.show());
    grid.GotoCell(0, 0);
    QCOMPARE(grid.FindReplace("Item", "Row", ug::FindPartial | ug::FindReplace, CUGCtrl::ReplaceAllRequest), 0);
    QCOMPARE(columnTexts(grid, 0), QStringList({"Row 1", "Row 2", "other", "Row 4", ""}));
    grid.Undo();
    QCOMPARE(columnTexts(grid, 0), QStringList({"Item 1", "Item 2", "other", "Item 4", ""}));
    QVERIFY(!grid.CanUndo());
}

QTEST_MAIN(tst_CVVyrGrid)
#include "tst_cvvyrgrid.moc"
