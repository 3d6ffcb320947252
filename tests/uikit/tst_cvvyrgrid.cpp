// The list grid through its operations and a person's keys and mouse:
// set-up, the new row, enabling, Tab out of the grid, deleting, moving and
// sorting rows, the cell type events, the clipboard, and undo and redo of
// each kind of action.
#include "listgrid.h"

#include "grid/cugfinddialog.h"
#include "uikit/cvvyrdroplisttype.h"
#include "uikit/gridrowstore.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QRandomGenerator>
#include <QtTest>

#include <algorithm>
#include <tuple>

using namespace vyr;
using namespace vyr::test;

namespace {

// Keys as a person types them: each goes to whatever has the focus, the
// grid first and then the editor that the first key opened.
void typeInto(CVVyrGrid &grid, int column, long row, const QString &text, Qt::Key end = Qt::Key_Return)
{
    grid.GotoCell(column, row);
    for (QChar character : text)
        QTest::keyClick(QApplication::focusWidget(), character.toLatin1());
    QTest::keyClick(grid.GetEditor(), end);
}

void clickCell(CVVyrGrid &grid, int column, long row, Qt::KeyboardModifiers modifiers = {})
{
    QRect rect;
    QVERIFY(grid.GetCellRect(column, row, rect) == ug::Success);
    QTest::mouseClick(grid.GetGridWidget(), Qt::LeftButton, modifiers, rect.center());
}

// Writes down what reaches it; `browsed` is what the person picks, null
// when they cancel.
struct Handler : CellActionHandler
{
    QStringList calls;
    QString browsed = QStringLiteral("browsed");
    void OnBrowse(CVVyrGrid &, int column, long row, CUGCell &cell) override
    {
        calls << QStringLiteral("browse %1,%2").arg(column).arg(row);
        if (!browsed.isNull())
            cell.setText(browsed);
    }
    void OnGetChoices(CVVyrGrid &, int, long, CUGCell &, QStringList &choices) override { choices = {"h1", "h2"}; }
    void OnChoiceSelected(CVVyrGrid &, int, long, CUGCell &, const QString &text) override { calls << "chose " + text; }
};

// Rows whose last cell takes a text only while the middle one holds one,
// as an attribute's argument follows its type: filled from records at once,
// or loaded from them and made when shown or touched.
class RecordGrid : public ListGrid
{
public:
    RecordGrid(std::vector<QStringList> records, bool loaded, QWidget *parent)
        : ListGrid(3, true, parent)
        , m_records(std::move(records))
        , m_loaded(loaded)
    {
    }
    long made = 0;

    void Fill()
    {
        if (m_loaded) {
            AppendLoadedRows(0, long(m_records.size()));
            return;
        }
        for (const QStringList &texts : m_records)
            follow(AppendRowTexts(texts));
    }
    QList<bool> argumentsTaken()
    {
        QList<bool> taken;
        for (long row = 0; row < recordCount(); ++row)
            taken << IsCellEnabled(2, row);
        return taken;
    }

protected:
    QString LoadedText(std::size_t record, int column) override { return m_records[record][column]; }
    bool IsLoadedCellEnabled(std::size_t record, int column) override
    {
        return column != 2 || !m_records[record][1].isEmpty();
    }
    void MakeLoadedRow(long row, std::size_t record) override
    {
        ++made;
        for (int column = 0; column < 3; ++column)
            SetCellText(column, row, m_records[record][column]);
        follow(row);
    }
    void OnCellChange(int column, long row, ug::TextSource source) override
    {
        ListGrid::OnCellChange(column, row, source);
        if (column == 1)
            follow(row);
    }

private:
    void follow(long row) { EnableCell(2, row, !GetCellString(row, 1).isEmpty()); }

    std::vector<QStringList> m_records;
    bool m_loaded;
};

} // namespace

class tst_CVVyrGrid : public ListGridTest
{
    Q_OBJECT

private slots:
    void cleanup() { ui.reset(); }
    void disabledCellsAndGridsAreNeverEdited();
    void tabWalksEnabledCellsAndLeavesAtTheEnds();
    void keyMovesLandOnTheNearestEnabledCell_data();
    void keyMovesLandOnTheNearestEnabledCell();
    void enterKeepsTheTextAndGoesDownToTheNextRecord();
    void deletingAndMovingRowsFollowTheSelection();
    void sortIsStableAndIgnoresCase();
    void cellTypeEventsGoToTheHandlerOrTheGrid();
    void copyWritesSpreadsheetText();
    void theNewRowTakesPastedRecordsUnlessRowsAreRefused();
    void pasteOverRowsSkipsCellsThatMayNotBeWritten();
    void undoAndRedoEveryAction_data();
    void undoAndRedoEveryAction();
    void undoKeepsAHundredSteps();
    void restoredTextsReachTheSubclass();
    void findAndReplaceSpeakTheUsersLanguage();
    void loadedRowsActAsRowsFilledAtOnce_data();
    void loadedRowsActAsRowsFilledAtOnce();
    void recordsPastTheStoresReachAreRefused();
};

void tst_CVVyrGrid::disabledCellsAndGridsAreNeverEdited()
{
    ListGrid &grid = shownGrid(3, true, {"a", "b"});
    // The current cell becomes disabled under the person's feet.
    grid.GotoCell(1, 0);
    grid.EnableCell(1, 0, false);
    QTest::keyClick(&grid, Qt::Key_F2);
    QTest::keyClicks(&grid, "x");
    QVERIFY(!grid.IsEditing());
    QCOMPARE(grid.GetCellString(0, 1), QString("a.1"));
    grid.GotoCell(0, 0);
    QCOMPARE(grid.GotoCell(1, 0), int(ug::Refused));
    clickCell(grid, 1, 0);
    QVERIFY(grid.GetCurrentCol() != 1 || grid.GetCurrentRow() != 0);

    // Hidden, a disabled cell's text is still there, and a double click on
    // it edits no other cell either.
    grid.SetShowDisabledText(false);
    grid.EnableCell(1, 1, false);
    CUGCell cell;
    grid.GetCellResolved(1, 1, cell);
    QCOMPARE(cell.textColor(), cell.backColor());
    QCOMPARE(cell.text(), QString("b.1"));
    grid.GotoCell(0, 1);
    QRect rect;
    grid.GetCellRect(1, 1, rect);
    QTest::mouseDClick(grid.GetGridWidget(), Qt::LeftButton, {}, rect.center());
    QVERIFY(!grid.IsEditing());
    grid.EnableCell(1, 1, true);
    grid.SetShowDisabledText(true);

    // Enabling again clears the mark and the disabled look.
    grid.GetCellResolved(1, 0, cell);
    const QColor disabledBack = cell.backColor();
    grid.EnableCell(1, 0, true);
    grid.GetCellResolved(1, 0, cell);
    QVERIFY(cell.backColor() != disabledBack);
    QCOMPARE(grid.GotoCell(1, 0), 0);

    // A disabled grid is read-only everywhere, never grows, and its
    // disabled cells keep their look when it is enabled again.
    grid.EnableCell(2, 1, false);
    grid.EnableGrid(false);
    grid.GetCellResolved(0, 0, cell);
    QVERIFY(cell.isReadOnly());
    QCOMPARE(grid.BeginEdit(0), int(ug::OutOfRange));
    QTest::keyClick(&grid, Qt::Key_Delete);
    grid.GotoCell(0, 2);
    QTest::keyClick(&grid, Qt::Key_F2);
    QTest::keyClicks(&grid, "y");
    clickCell(grid, 0, 2);
    QCOMPARE(grid.GetRowCount(), 3L);
    QVERIFY(!grid.IsEditing());
    grid.EnableGrid(true);
    grid.GetCellResolved(2, 1, cell);
    QVERIFY(!grid.IsCellEnabled(2, 1));
    QCOMPARE(cell.backColor(), disabledBack);
    grid.GetCellResolved(0, 0, cell);
    QVERIFY(!cell.isReadOnly());
}

void tst_CVVyrGrid::tabWalksEnabledCellsAndLeavesAtTheEnds()
{
    ListGrid &grid = shownGrid(3, false, {"a", "b"});
    grid.EnableCell(1, 0, false);
    grid.GotoCell(0, 0);
    const auto at = [&grid] { return QPoint(grid.GetCurrentCol(), int(grid.GetCurrentRow())); };
    const std::tuple<bool, Qt::Key, QPoint> walk[]
        = {{false, Qt::Key_Tab, {2, 0}},     {false, Qt::Key_Tab, {0, 1}}, {false, Qt::Key_Backtab, {2, 0}},
           {false, Qt::Key_Backtab, {0, 0}}, {true, Qt::Key_Tab, {2, 0}},  {true, Qt::Key_Down, {2, 1}},
           {true, Qt::Key_Backtab, {1, 1}}};
    for (const auto &[inEditor, key, cell] : walk) {
        // In the in-place editor the same keys store the text first.
        const QPoint from = at();
        if (inEditor) {
            QTest::keyClick(&grid, Qt::Key_F2);
            QVERIFY(grid.IsEditing());
            QTest::keyClicks(grid.GetEditor(), "typed");
        }
        QTest::keyClick(QApplication::focusWidget(), key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        QVERIFY(!grid.IsEditing());
        QCOMPARE(at(), cell);
        QVERIFY(!grid.IsSelected(from.x(), from.y()));
        QCOMPARE(grid.GetCellString(from.y(), from.x()) == "typed", inEditor);
    }

    // At the ends Tab leaves the grid.
    grid.GotoCell(0, 0);
    QTest::keyClick(&grid, Qt::Key_Backtab, Qt::ShiftModifier);
    QTRY_VERIFY(ui->before->hasFocus());
    grid.setFocus();
    grid.GotoCell(2, 1);
    QTest::keyClick(&grid, Qt::Key_Tab);
    QTRY_VERIFY(ui->after->hasFocus());
}

void tst_CVVyrGrid::keyMovesLandOnTheNearestEnabledCell_data()
{
    QTest::addColumn<QPoint>("from");
    QTest::addColumn<bool>("editing");
    QTest::addColumn<QKeyCombination>("keys");
    QTest::addColumn<QPoint>("to");
    // The cells, enabled (o) and disabled (x):  o x o / x o o / o x x
    QTest::newRow("Control+Home, the column disabled at the top")
        << QPoint(1, 1) << false << (Qt::ControlModifier | Qt::Key_Home) << QPoint(0, 0);
    QTest::newRow("Control+End, the bottom row's nearest")
        << QPoint(2, 1) << false << (Qt::ControlModifier | Qt::Key_End) << QPoint(0, 2);
    QTest::newRow("Home, the first enabled cell") << QPoint(2, 1) << false << QKeyCombination(Qt::Key_Home)
                                                  << QPoint(1, 1);
    QTest::newRow("Right, on past a disabled cell") << QPoint(0, 0) << false << QKeyCombination(Qt::Key_Right)
                                                    << QPoint(2, 0);
    QTest::newRow("Down, the next row's nearest") << QPoint(1, 1) << false << QKeyCombination(Qt::Key_Down)
                                                  << QPoint(0, 2);
    QTest::newRow("Enter in the editor") << QPoint(1, 1) << true << QKeyCombination(Qt::Key_Return) << QPoint(0, 2);
}

void tst_CVVyrGrid::keyMovesLandOnTheNearestEnabledCell()
{
    QFETCH(QPoint, from);
    QFETCH(bool, editing);
    QFETCH(QKeyCombination, keys);
    QFETCH(QPoint, to);
    ListGrid &grid = shownGrid(3, false, {"a", "b", "c"});
    for (const QPoint cell : {QPoint(1, 0), QPoint(0, 1), QPoint(1, 2), QPoint(2, 2)})
        grid.EnableCell(cell.x(), cell.y(), false);
    QCOMPARE(grid.GotoCell(from.x(), from.y()), int(ug::Success));
    if (editing) {
        QTest::keyClick(&grid, Qt::Key_F2);
        QVERIFY(grid.IsEditing());
    }
    QTest::keyClick(QApplication::focusWidget(), keys.key(), keys.keyboardModifiers());
    QVERIFY(!grid.IsEditing());
    QCOMPARE(QPoint(grid.GetCurrentCol(), int(grid.GetCurrentRow())), to);
}

// Entering a list row after row: Enter keeps the text and goes down in the
// same column; on the new row it keeps the record and waits on the blank
// row opened below, ready for the next.
void tst_CVVyrGrid::enterKeepsTheTextAndGoesDownToTheNextRecord()
{
    ListGrid &grid = shownGrid(2, true, {"a", "b"});
    const auto at = [&grid] { return QPoint(grid.GetCurrentCol(), int(grid.GetCurrentRow())); };
    typeInto(grid, 1, 0, "x");
    QVERIFY(!grid.IsEditing());
    QCOMPARE(at(), QPoint(1, 1));
    typeInto(grid, 1, 2, "y");
    QCOMPARE(at(), QPoint(1, 3));
    QTest::keyClicks(&grid, "z");
    QTest::keyClick(grid.GetEditor(), Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(at(), QPoint(1, 4));
    QCOMPARE(rows(grid), QStringList({"a|x", "b|b.1", "|y", "|z", "|"}));

    // Enter on a cell that is not being edited edits it.
    grid.GotoCell(0, 0);
    QTest::keyClick(&grid, Qt::Key_Return);
    QVERIFY(grid.IsEditing());
    QCOMPARE(grid.refusedKeys, 0);
}

void tst_CVVyrGrid::deletingAndMovingRowsFollowTheSelection()
{
    // Only the new row: nothing to delete.
    QTest::keyClick(&shownGrid(2, true), Qt::Key_Delete);
    QCOMPARE(ui->grid->GetRowCount(), 1L);

    ListGrid &grid = shownGrid(2, true, {"a", "b", "c", "d", "e"});
    clickCell(grid, 0, 2);
    clickCell(grid, 0, 4, Qt::ControlModifier);
    grid.MoveSelectedRowsUp();
    const QStringList moved{"a|a.1", "c|c.1", "b|b.1", "e|e.1", "d|d.1", "|"};
    QCOMPARE(rows(grid), moved);
    QVERIFY(grid.IsSelected(0, 1) && grid.IsSelected(0, 3));
    QCOMPARE(grid.GetCurrentRow(), 3L);
    QVERIFY(grid.rowsModified());

    // A selection at the top stays where it is, in its order.
    grid.ClearSelection();
    grid.GotoCell(0, 0);
    grid.SelectRange(0, 0, 0, 1);
    grid.MoveSelectedRowsUp();
    QCOMPARE(rows(grid), moved);

    // The last record cannot move into the new row, nor hold others back.
    grid.ClearSelection();
    grid.GotoCell(0, 4);
    grid.MoveSelectedRowsDown();
    QCOMPARE(rows(grid), moved);
    grid.ClearSelection();
    grid.GotoCell(0, 2);
    grid.SelectCell(0, 3);
    grid.MoveSelectedRowsDown();
    QCOMPARE(rows(grid, 0), QStringList({"a", "c", "d", "b", "e", ""}));
    QVERIFY(grid.IsSelected(0, 3) && grid.IsSelected(0, 4));
    QCOMPARE(grid.GetCurrentRow(), 3L);

    // Delete takes every selected record, but the new row stays.
    clickCell(grid, 0, 1);
    clickCell(grid, 1, 3, Qt::ControlModifier);
    clickCell(grid, 0, 5, Qt::ControlModifier);
    QTest::keyClick(&grid, Qt::Key_Delete);
    QCOMPARE(rows(grid), QStringList({"a|a.1", "d|d.1", "e|e.1", "|"}));
    grid.GotoCell(0, 1);
    QTest::keyClick(&grid, Qt::Key_Backspace);
    QCOMPARE(rows(grid, 0), QStringList({"a", "e", ""}));
}

void tst_CVVyrGrid::sortIsStableAndIgnoresCase()
{
    ListGrid &grid = shownGrid(2, true);
    QStringList expected;
    QRandomGenerator random(17);
    const QStringList letters{"b", "B", "a", "A", "c", "ab", "Ab", ""};
    for (int i = 0; i < 60; ++i) {
        const QString key = letters[random.bounded(int(letters.size()))];
        grid.AppendRowTexts({key, QString::number(i)});
        expected << key + '|' + QString::number(i);
    }
    std::ranges::stable_sort(expected, [](const QString &a, const QString &b) {
        return a.section('|', 0, 0).compare(b.section('|', 0, 0), Qt::CaseInsensitive) < 0;
    });
    grid.setRowsModified(false);
    grid.SortByColumn(0);
    QCOMPARE(rows(grid), expected << "|");
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
    Handler handler;
    ListGrid &grid = shownGrid(2, false, {"a", "b"});
    QCOMPARE(grid.AppendRowTexts({"one text too many", "x", "y"}), -1L);
    setCellType(grid, 1, 0, grid.BrowseTypeId(), {}, 0, &handler);
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
    ListGrid &grid = shownGrid(3, true);
    grid.AppendRowTexts({"plain", "with\ttab", "with \"quotes\""});
    grid.AppendRowTexts({"second", "", "two\nlines"});
    grid.AppendRowTexts({"third", "x", "y"});
    clickCell(grid, 0, 0);
    clickCell(grid, 2, 1, Qt::ControlModifier);
    grid.SelectCell(0, 3);
    const QString expected = "plain\t\"with\ttab\"\t\"with \"\"quotes\"\"\"\nsecond\t\t\"two\nlines\"\n";
    QCOMPARE(grid.SelectedRowsText(), expected);
    QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), expected);

    // The text pasted back on the new row gives the same records.
    grid.GotoCell(0, 3);
    QTest::keyClick(&grid, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(rows(grid).mid(3), rows(grid).mid(0, 2) << "||");
}

void tst_CVVyrGrid::theNewRowTakesPastedRecordsUnlessRowsAreRefused()
{
    ListGrid &grid = shownGrid(2, true, {"KEPT"});
    grid.upperCaseColumn0 = true;
    grid.GotoCell(1, 1);
    const CVVyrGrid::PasteResult result = grid.PasteText("alpha\t1\r\nbeta\t2\tsurplus\r\ngamma\n");
    QCOMPARE(result.rows, 3L);
    QCOMPARE(result.refusedCells, 0L);
    QCOMPARE(rows(grid), QStringList({"KEPT|KEPT.1", "ALPHA|1", "BETA|2", "GAMMA|", "|"}));
    QCOMPARE(grid.log.filter("added").size(), 3);
    QVERIFY(grid.log.contains(QStringLiteral("change 0,1 %1").arg(int(ug::TextPasted))));

    // A refused row stops the paste, and leaves no trace of any other kind.
    grid.refuseRows = true;
    grid.GotoCell(0, 4);
    QCOMPARE(grid.PasteText("delta\n").rows, 0L);
    QTest::keyClicks(&grid, "z");
    QVERIFY(!grid.IsEditing());
    QCOMPARE(grid.AppendBlankRow(), -1L);
    grid.GotoCell(0, 1);
    QTest::keyClick(&grid, Qt::Key_Insert);
    QCOMPARE(rows(grid, 0), QStringList({"KEPT", "ALPHA", "BETA", "GAMMA", ""}));
    grid.refuseRows = false;
    QTest::keyClick(&grid, Qt::Key_Insert);
    QCOMPARE(rows(grid, 0), QStringList({"KEPT", "", "ALPHA", "BETA", "GAMMA", ""}));
}

void tst_CVVyrGrid::pasteOverRowsSkipsCellsThatMayNotBeWritten()
{
    ListGrid &grid = shownGrid(3, true, {"a", "b"});
    grid.EnableCell(2, 0, false);
    CUGCell cell;
    grid.GetCellResolved(1, 1, cell);
    cell.setReadOnly(true);
    grid.SetCell(1, 1, cell);
    CUGCell masked;
    grid.GetColumnDefault(1, masked);
    masked.setMask("99");
    grid.SetColumnDefault(1, masked);
    grid.GotoCell(1, 0);
    const CVVyrGrid::PasteResult result = grid.PasteText("12\tx\nzz\ty\n42\tz\n");
    QCOMPARE(result.rows, 3L);
    QCOMPARE(result.refusedCells, 0L);
    QCOMPARE(rows(grid), QStringList({"a|12|a.2", "b|b.1|y", "|42|z", "||"}));

    // A text the cell's mask refuses is counted.
    grid.GotoCell(1, 0);
    QCOMPARE(grid.PasteText("ab\n").refusedCells, 1L);
    QCOMPARE(grid.GetCellString(0, 1), QString("12"));
}

void tst_CVVyrGrid::undoAndRedoEveryAction_data()
{
    QTest::addColumn<QString>("action");
    for (const char *action : {"new row by click", "new row by F2", "new row by typing", "edit", "paste", "insert",
                               "delete", "move", "sort", "choice", "browse", "browse on the new row", "replace all"})
        QTest::newRow(action) << QString(action);
}

void tst_CVVyrGrid::undoAndRedoEveryAction()
{
    QFETCH(QString, action);
    Handler browser;
    ListGrid &grid = shownGrid(3, true, {"db", "b", "cb", "a"});
    setCellType(grid, 1, -1, grid.DropListTypeId(), "red\ngreen\nblue\n");
    setCellType(grid, 2, -1, grid.BrowseTypeId(), {}, 0, &browser);
    const QStringList before = rows(grid);
    QVERIFY(!grid.CanUndo());

    if (action.startsWith("new row by")) {
        if (action.endsWith("click")) {
            clickCell(grid, 0, 4);
        } else {
            grid.GotoCell(0, 4);
            QTest::keyClick(&grid, action.endsWith("F2") ? Qt::Key_F2 : Qt::Key_X);
        }
        // The row under edit is a record now; the new row is below it.
        QCOMPARE(rows(grid).mid(4), QStringList({"||", "||"}));
        QCOMPARE(grid.log.filter("added"), QStringList({"added 4"}));
        QCOMPARE(grid.GetCurrentRow(), 4L);
        QCOMPARE(grid.IsEditing(), !action.endsWith("click"));
        if (grid.IsEditing())
            QTest::keyClick(grid.GetEditor(), Qt::Key_Return);
        QCOMPARE(grid.GetCellString(4, 0), action.endsWith("typing") ? QString("x") : QString());
    } else if (action == "edit") {
        typeInto(grid, 0, 1, "new");
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
        grid.GotoCell(2, 3);
        QTest::keyClick(&grid, Qt::Key_Return);
        QCOMPARE(grid.GetCellString(3, 2), QString("browsed"));
    } else if (action == "browse on the new row") {
        // Only a text makes the new row a record, and the two are one step.
        browser.browsed = QString();
        grid.GotoCell(2, 4);
        QTest::keyClick(&grid, Qt::Key_Return);
        QCOMPARE(grid.GetRowCount(), 5L);
        browser.browsed = "chosen";
        QTest::keyClick(&grid, Qt::Key_Return);
        QCOMPARE(rows(grid).mid(4), QStringList({"||chosen", "||"}));
    } else if (action == "replace all") {
        grid.GotoCell(0, 0);
        QCOMPARE(grid.FindReplace("b", "x", ug::FindPartial | ug::FindReplace, CUGCtrl::ReplaceAllRequest), 0);
        QCOMPARE(rows(grid, 0), QStringList({"dx", "x", "cx", "a", ""}));
    }
    const QStringList after = rows(grid);
    QVERIFY(after != before);
    QVERIFY(grid.CanUndo());

    QTest::keyClick(&grid, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(rows(grid), before);
    QVERIFY(!grid.CanUndo());
    QTest::keyClick(&grid, Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(rows(grid), after);
    QTest::keyClick(&grid, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&grid, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(rows(grid), after);

    // A change that is not a person's (a page reloading its rows) makes the
    // history meaningless.
    QVERIFY(grid.AppendRowTexts({"loaded", "x", "y"}) >= 0);
    QVERIFY(!grid.CanUndo());
}

void tst_CVVyrGrid::undoKeepsAHundredSteps()
{
    ListGrid &grid = shownGrid(1, true);
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
    ListGrid &grid = shownGrid(2, true, {"OLD"});
    grid.upperCaseColumn0 = true;
    typeInto(grid, 0, 0, "name");
    QCOMPARE(grid.GetCellString(0, 0), QString("NAME"));
    grid.log.clear();
    grid.Undo();
    QCOMPARE(grid.GetCellString(0, 0), QString("OLD"));
    QVERIFY(grid.log.contains(QStringLiteral("change 0,0 %1").arg(int(ug::TextRestored))));
    grid.Redo();
    // What the subclass made of the typed text comes back with it.
    QCOMPARE(grid.GetCellString(0, 0), QString("NAME"));

    // An edit begun on the blank row and cancelled leaves its blank record
    // a step of its own.
    typeInto(grid, 0, 1, "y", Qt::Key_Escape);
    QCOMPARE(grid.GetRowCount(), 3L);
    typeInto(grid, 0, 0, "z");
    grid.Undo();
    QCOMPARE(grid.GetCellString(0, 0), QString("NAME"));
    QCOMPARE(grid.GetRowCount(), 3L);

    // A read-only grid is not changed by undo either.
    grid.EnableGrid(false);
    grid.Undo();
    QCOMPARE(grid.GetRowCount(), 3L);
}

QTEST_MAIN(tst_CVVyrGrid)
#include "tst_cvvyrgrid.moc"

// The grid's Find and Replace dialog speaks the user's language like the
// pages around it, and each underlined letter leads to one control.
void tst_CVVyrGrid::findAndReplaceSpeakTheUsersLanguage()
{
    ListGrid &grid = shownGrid(2, true, {"a", "b"});
    QTest::keyClick(&grid, Qt::Key_F, Qt::ControlModifier);
    CUGFindDialog *dialog = grid.GetFindDialog();
    QVERIFY(dialog);
    const bool german = qEnvironmentVariableIsSet("VYR_EXPECT_GERMAN");
    QCOMPARE(dialog->windowTitle(), german ? QString("Suchen") : QString("Find"));
    for (const bool replace : {false, true}) {
        dialog->setReplaceDialog(replace);
        QMap<QChar, QString> owners;
        for (QWidget *widget : dialog->findChildren<QWidget *>()) {
            QString text;
            if (auto *label = qobject_cast<QLabel *>(widget))
                text = label->text();
            else if (auto *button = qobject_cast<QAbstractButton *>(widget))
                text = button->text();
            const qsizetype mark = text.indexOf(u'&');
            if (!widget->isVisibleTo(dialog) || mark < 0 || mark + 1 >= text.size())
                continue;
            const QChar letter = text.at(mark + 1).toLower();
            QVERIFY2(!owners.contains(letter),
                     qPrintable(QString("%1 and %2 share Alt+%3").arg(owners.value(letter), text, letter)));
            owners.insert(letter, text);
        }
        QCOMPARE(owners.size(), replace ? 7 : 6);
    }
    QCOMPARE(dialog->findNextButton()->text(), german ? QString("&Weitersuchen") : QString("&Find Next"));
    dialog->close();
}

void tst_CVVyrGrid::loadedRowsActAsRowsFilledAtOnce_data()
{
    QTest::addColumn<QString>("actions");
    QTest::newRow("shown") << "";
    QTest::newRow("sorted by the column that decides") << "sort 1";
    QTest::newRow("edited, then sorted") << "edit 40,sort 0";
    QTest::newRow("sorted, edited, sorted back by undo") << "sort 0,edit 3,undo,undo";
    QTest::newRow("moved and deleted") << "select 5,down,down,select 900,up,delete";
    QTest::newRow("pasted over, then found and replaced") << "paste 7,replace,sort 1";
}

// A thousand records loaded behave as the same records filled at once -
// texts, counts, searches and the cells their texts decide - while only the
// rows shown or touched are made.
void tst_CVVyrGrid::loadedRowsActAsRowsFilledAtOnce()
{
    QFETCH(QString, actions);
    std::vector<QStringList> records;
    QRandomGenerator random(5);
    for (int i = 0; i < 1000; ++i)
        records.push_back({QStringLiteral("k%1").arg(random.bounded(300)), i % 3 ? QStringLiteral("t%1").arg(i % 7) : QString(),
                           i % 3 ? QString::number(i) : QString()});
    GridWindow<RecordGrid> filled(records, false);
    GridWindow<RecordGrid> loaded(records, true);
    for (RecordGrid *grid : {filled.grid, loaded.grid}) {
        grid->Fill();
        QVERIFY(showActive(*grid->window()));
        for (const QString &action : actions.split(',', Qt::SkipEmptyParts)) {
            const QString verb = action.section(' ', 0, 0);
            const long at = action.section(' ', 1).toLong();
            if (verb == "sort") {
                grid->SortByColumn(int(at));
            } else if (verb == "edit") {
                grid->StoreUserText(1, at, QString(), ug::TextEdited);
            } else if (verb == "undo") {
                grid->Undo();
            } else if (verb == "select") {
                grid->GotoCell(0, at);
            } else if (verb == "down" || verb == "up") {
                verb == "down" ? grid->MoveSelectedRowsDown() : grid->MoveSelectedRowsUp();
            } else if (verb == "delete") {
                grid->DeleteSelectedRows();
            } else if (verb == "paste") {
                grid->GotoCell(0, at);
                grid->PasteText(QStringLiteral("k9\t\t\nk9\tt1\t5\n"));
            } else if (verb == "replace") {
                grid->GotoCell(0, 0);
                grid->FindReplace(QStringLiteral("k29"), QStringLiteral("k9"), ug::FindPartial, CUGCtrl::ReplaceAllRequest);
            }
        }
        QCoreApplication::processEvents();
    }
    QCOMPARE(rows(*loaded.grid), rows(*filled.grid));
    QCOMPARE(loaded.grid->argumentsTaken(), filled.grid->argumentsTaken());
    QCOMPARE(loaded.grid->CountColumnText(0, QStringLiteral("k9")), filled.grid->CountColumnText(0, QStringLiteral("k9")));
    long foundRow = -1;
    for (RecordGrid *grid : {filled.grid, loaded.grid}) {
        int column = 0;
        long row = 0;
        QCOMPARE(grid->GetDataSource(0)->FindNext(QStringLiteral("k1"), column, row, ug::FindPartial), 0);
        QVERIFY(foundRow < 0 || row == foundRow);
        foundRow = row;
    }
    QVERIFY2(loaded.grid->made < 200, qPrintable(QString::number(loaded.grid->made)));
}

void tst_CVVyrGrid::recordsPastTheStoresReachAreRefused()
{
    struct Records : GridRowStore::Loader
    {
        QString LoadedText(std::size_t record, int) override { return QString::number(record); }
        void MakeLoadedRow(long, std::size_t, bool) override {}
    } records;
    GridRowStore store(records);
    const std::size_t last = GridRowStore::kRecordLimit - 1;
    store.LoadNextRows(last);
    QCOMPARE(store.InsertRows(0, 2), 0L);
    QCOMPARE(store.loadedRows(), 0L);
    store.LoadNextRows(last);
    QCOMPARE(store.InsertRows(0, 1), 1L);
    QCOMPARE(store.recordOf(0), std::optional(last));
    // Marked, the last record must not read as a made row.
    store.MarkLoadedRows();
    QCOMPARE(store.recordOf(0), std::optional(last));
}
