// Faults the grid control once had, each pinned by the test named after it:
// Tab lost in the masked editor, Enter pressing a dialog's default button,
// the focus trapped in an empty grid, a layout override that never ended,
// replacing text that did not match, and the smaller slips of scroll bars,
// shrinking, ending edits and focus frames.
#include "recordinggrid.h"

#include "grid/cugedit.h"
#include "grid/cugmaskededit.h"
#include "grid/cugmem.h"
#include "support/gridwindow.h"
#include "support/modalanswers.h"

#include <QAccessible>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <QtTest>

using namespace vyr;
using vyr::test::RecordingGrid;
using vyr::test::showActive;
using GridDialog = vyr::test::GridWindow<RecordingGrid>;

namespace {

// Sets every column to an equal share of the cell area, as list grids do.
class EvenColumnsGrid : public RecordingGrid
{
public:
    using RecordingGrid::RecordingGrid;
    int layouts = 0;

protected:
    void OnLayoutComponents(Layout &layout) override
    {
        ++layouts;
        QVERIFY2(layouts < 1000, "the layout keeps laying out");
        for (int column = 0; column < GetColumnCount(); ++column)
            SetColumnWidth(column, layout.grid.width() / GetColumnCount());
    }
};

// Remembers the rectangle the focus frame is drawn for.
class FrameGrid : public RecordingGrid
{
public:
    using RecordingGrid::RecordingGrid;
    QRect frame;

protected:
    void OnPaintFocusFrame(QPainter &, const QRect &rect) override { frame = rect; }
};

} // namespace

class tst_CUGCtrlFaults : public QObject
{
    Q_OBJECT

private slots:
    void storingACellCanClearAProperty();
    void tabInTheMaskedEditorMovesToTheNextCell();
    void enterInAGridDoesNotPressTheDialogsDefaultButton();
    void tabLeavesAGridWithoutCells_data();
    void tabLeavesAGridWithoutCells();
    void layoutOverrideThatSetsColumnWidthsEnds();
    void replaceLeavesACellThatDoesNotMatch();
    void replaceAllReplacesOnlyWhatMatches();
    void replaceNeverWritesACellThatMayNotBeWritten();
    void assistiveTechnologyCannotWriteAReadOnlyCell();
    void hScrollHeightZeroHidesTheBar();
    void refusedMoveWhileShrinkingKeepsTheCurrentCellInside();
    void endEditWithoutAnEditCountsAsCancelled();
    void editVerifyMayChangeTheCharacterInThePlainEditor();
    void focusFrameGetsTheCellsOwnRectangle();
    void keysTheEditorLeavesAloneDoNotReachTheGrid();
    void typingInAMaskedCellReplacesItsValue();
};

void tst_CUGCtrlFaults::storingACellCanClearAProperty()
{
    RecordingGrid grid(2, 2);
    CUGCell cell;
    cell.setText("x");
    cell.setReadOnly(true);
    cell.setBackColor(Qt::yellow);
    grid.SetCell(0, 0, cell);
    CUGCell raw;
    grid.GetCell(0, 0, raw);
    raw.setPropertyFlag(CUGCell::ReadOnly, false);
    raw.setPropertyFlag(CUGCell::BackColor, false);
    grid.SetCell(0, 0, raw);
    CUGCell stored;
    grid.GetCell(0, 0, stored);
    QVERIFY(!stored.isReadOnly());
    QVERIFY(!stored.backColor().isValid());
    QCOMPARE(stored.text(), QString("x"));
}

void tst_CUGCtrlFaults::tabInTheMaskedEditorMovesToTheNextCell()
{
    GridDialog ui(3, 2);
    QVERIFY(showActive(ui.window));
    CUGCell masked;
    masked.setMask("000");
    ui.grid->SetColumnDefault(0, masked);
    ui.grid->setFocus();
    ui.grid->MoveToCell(0, 0);
    QCOMPARE(ui.grid->BeginEdit(0), 0);
    QVERIFY(qobject_cast<CUGMaskedEdit *>(ui.grid->GetEditor()));
    QTRY_VERIFY(ui.grid->GetEditor()->hasFocus());
    QTest::keyClicks(ui.grid->GetEditor(), "12");
    QTest::keyClick(ui.grid->GetEditor(), Qt::Key_Tab);
    QCOMPARE(ui.grid->GetCellText(0, 0), QString("12"));
    QCOMPARE(ui.grid->GetCurrentCol(), 1);
    QVERIFY(ui.grid->IsEditing());
    QVERIFY(!ui.after->hasFocus());

    ui.grid->CancelEdit();
    ui.grid->MoveToCell(0, 1);
    ui.grid->BeginEdit(0);
    QTRY_VERIFY(ui.grid->GetEditor()->hasFocus());
    QTest::keyClick(ui.grid->GetEditor(), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(ui.grid->GetCurrentCol(), 2);
    QVERIFY(!ui.before->hasFocus());
    ui.grid->CancelEdit();
}

void tst_CUGCtrlFaults::enterInAGridDoesNotPressTheDialogsDefaultButton()
{
    GridDialog ui(2, 2);
    QVERIFY(showActive(ui.window));
    ui.grid->setFocus();
    ui.grid->MoveToCell(0, 0);
    QTest::keyClick(ui.grid, Qt::Key_Return);
    QTest::keyClick(ui.grid, Qt::Key_Enter);
    QCOMPARE(ui.accepted, 0);
    QVERIFY(ui.window.isVisible());
    // Control+Enter is the way to the default button from a grid.
    QTest::keyClick(ui.grid, Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(ui.accepted, 1);
}

void tst_CUGCtrlFaults::tabLeavesAGridWithoutCells_data()
{
    QTest::addColumn<int>("columns");
    QTest::addColumn<long>("rows");
    QTest::newRow("no rows") << 3 << 0L;
    QTest::newRow("no columns") << 0 << 4L;
}

void tst_CUGCtrlFaults::tabLeavesAGridWithoutCells()
{
    QFETCH(int, columns);
    QFETCH(long, rows);
    GridDialog ui(columns, rows);
    QVERIFY(showActive(ui.window));
    ui.grid->setFocus();
    QTRY_VERIFY(ui.grid->hasFocus());
    QTest::keyClick(ui.grid, Qt::Key_Tab);
    QTRY_VERIFY(ui.after->hasFocus());
    ui.grid->setFocus();
    QTRY_VERIFY(ui.grid->hasFocus());
    QTest::keyClick(ui.grid, Qt::Key_Backtab, Qt::ShiftModifier);
    QTRY_VERIFY(ui.before->hasFocus());
}

void tst_CUGCtrlFaults::layoutOverrideThatSetsColumnWidthsEnds()
{
    EvenColumnsGrid grid(4, 10);
    grid.resize(400, 200);
    grid.show();
    QVERIFY(QTest::qWaitForWindowExposed(&grid));
    const int share = grid.GetGridWidget()->width() / 4;
    QCOMPARE(grid.GetColumnWidth(0), share);
    QCOMPARE(grid.GetColumnWidth(3), share);
    grid.layouts = 0;
    grid.resize(600, 200);
    QTRY_COMPARE(grid.GetColumnWidth(2), grid.GetGridWidget()->width() / 4);
    QVERIFY(grid.layouts < 10);
}

void tst_CUGCtrlFaults::replaceLeavesACellThatDoesNotMatch()
{
    RecordingGrid grid(1, 3);
    grid.SetCellText(0, 0, "Item 1");
    grid.SetCellText(0, 1, "Item 2");
    grid.SetCellText(0, 2, "other");
    grid.MoveToCell(0, 0);
    const int partial = ug::FindPartial | ug::FindReplace;
    // Nothing matches: the current cell keeps its text.
    vyr::test::ShownMessage shown;
    vyr::test::answerNextMessageBox(&shown);
    QCOMPARE(grid.FindReplace("zzz", "LOST", partial, CUGCtrl::ReplaceRequest), 1);
    QCOMPARE(shown.text, QString("Item not found"));
    QCOMPARE(grid.GetCellText(0, 0), QString("Item 1"));
    // A match is replaced in its place, and the search goes on to the next.
    QCOMPARE(grid.FindReplace("Item", "Row", partial, CUGCtrl::ReplaceRequest), 0);
    QCOMPARE(grid.GetCellText(0, 0), QString("Row 1"));
    QCOMPARE(grid.GetCurrentRow(), 1L);
}

void tst_CUGCtrlFaults::replaceAllReplacesOnlyWhatMatches()
{
    RecordingGrid grid(2, 4);
    grid.SetCellText(0, 0, "Item 1");
    grid.SetCellText(0, 1, "555-0101");
    grid.SetCellText(0, 2, "item 3");
    grid.SetCellText(0, 3, "Item");
    grid.SetCellText(1, 1, "Item");
    grid.MoveToCell(0, 1);
    QCOMPARE(grid.FindReplace("Item", "Row", ug::FindPartial | ug::FindReplace, CUGCtrl::ReplaceAllRequest), 0);
    QCOMPARE(grid.GetCellText(0, 1), QString("555-0101"));
    QCOMPARE(grid.GetCellText(0, 2), QString("item 3"));
    QCOMPARE(grid.GetCellText(0, 3), QString("Row"));
    QCOMPARE(grid.GetCellText(1, 1), QString("Item")); // other columns are not searched
    QCOMPARE(grid.GetCellText(0, 0), QString("Item 1")); // the search goes down from the current cell

    // Whole-text matching ignoring case replaces the whole text.
    grid.MoveToCell(0, 0);
    grid.FindReplace("ITEM 3", "three", ug::FindIgnoreCase | ug::FindReplace, CUGCtrl::ReplaceAllRequest);
    QCOMPARE(grid.GetCellText(0, 2), QString("three"));
}

void tst_CUGCtrlFaults::replaceNeverWritesACellThatMayNotBeWritten()
{
    RecordingGrid grid(1, 4);
    for (long row = 0; row < 4; ++row)
        grid.SetCellText(0, row, QStringLiteral("Item %1").arg(row));
    CUGCell readOnly;
    grid.GetCellResolved(0, 1, readOnly);
    readOnly.setReadOnly(true);
    grid.SetCell(0, 1, readOnly);
    grid.endEdit = [](const QString &text, bool) { return text != "Row 2" ? 1 : 0; };
    grid.verify = [](QChar &character) { return character != u'#'; };
    grid.SetCellText(0, 3, "Item #");
    grid.MoveToCell(0, 0);
    grid.FindReplace("Item", "Row", ug::FindPartial | ug::FindReplace, CUGCtrl::ReplaceAllRequest);
    QCOMPARE(grid.GetCellText(0, 0), QString("Row 0")); // the current cell, a hit, first
    QCOMPARE(grid.GetCellText(0, 1), QString("Item 1")); // read-only
    QCOMPARE(grid.GetCellText(0, 2), QString("Item 2")); // refused by OnEndEdit
    QCOMPARE(grid.GetCellText(0, 3), QString("Item #")); // a character OnEditVerify refuses
}

void tst_CUGCtrlFaults::assistiveTechnologyCannotWriteAReadOnlyCell()
{
    RecordingGrid grid(2, 2);
    grid.SetCellText(0, 0, "kept");
    CUGCell cell;
    grid.GetCellResolved(0, 0, cell);
    cell.setReadOnly(true);
    grid.SetCell(0, 0, cell);
    QAccessibleInterface *table = QAccessible::queryAccessibleInterface(&grid);
    QVERIFY(table && table->tableInterface());
    table->tableInterface()->cellAt(0, 0)->setText(QAccessible::Value, "changed");
    QCOMPARE(grid.GetCellText(0, 0), QString("kept"));
    table->tableInterface()->cellAt(0, 1)->setText(QAccessible::Value, "written");
    QCOMPARE(grid.GetCellText(1, 0), QString("written"));
    grid.endEdit = [](const QString &, bool) { return 0; };
    table->tableInterface()->cellAt(0, 1)->setText(QAccessible::Value, "refused");
    QCOMPARE(grid.GetCellText(1, 0), QString("written"));
}

void tst_CUGCtrlFaults::hScrollHeightZeroHidesTheBar()
{
    RecordingGrid grid(30, 100);
    QVERIFY(showActive(grid));
    QVERIFY(grid.horizontalScrollBar()->isVisible());
    QCOMPARE(grid.SetHScrollHeight(0), 0);
    QTRY_VERIFY(!grid.horizontalScrollBar()->isVisible());
    QCOMPARE(grid.SetHScrollHeight(16), 0);
    QTRY_VERIFY(grid.horizontalScrollBar()->isVisible());
}

void tst_CUGCtrlFaults::refusedMoveWhileShrinkingKeepsTheCurrentCellInside()
{
    RecordingGrid grid(5, 50);
    grid.MoveToCell(4, 40);
    grid.refuseMoves = true;
    QCOMPARE(grid.SetRowCount(10), 0);
    QVERIFY(grid.GetCurrentRow() < 10);
    QCOMPARE(grid.SetColumnCount(2), 0);
    QVERIFY(grid.GetCurrentCol() < 2);
    QCOMPARE(grid.DeleteRow(9), 0);
    QVERIFY(grid.GetCurrentRow() < 9);
}

void tst_CUGCtrlFaults::endEditWithoutAnEditCountsAsCancelled()
{
    RecordingGrid grid(2, 2);
    grid.MoveToCell(1, 1);
    grid.log.clear();
    QCOMPARE(grid.EndEdit("typed", false, false, 0, 0), 1);
    QCOMPARE(grid.log, QStringList({"end typed cancelled"}));
    QVERIFY(grid.GetCellText(1, 1).isNull());
}

void tst_CUGCtrlFaults::editVerifyMayChangeTheCharacterInThePlainEditor()
{
    RecordingGrid grid(2, 2);
    QVERIFY(showActive(grid));
    grid.verify = [](QChar &character) {
        character = character.toUpper();
        return true;
    };
    grid.MoveToCell(0, 0);
    grid.BeginEdit(0);
    QTRY_VERIFY(grid.GetEditor()->hasFocus());
    QTest::keyClicks(grid.GetEditor(), "abc");
    QCOMPARE(grid.GetStandardEditor()->editText(), QString("ABC"));
    grid.CancelEdit();
}

void tst_CUGCtrlFaults::focusFrameGetsTheCellsOwnRectangle()
{
    FrameGrid grid(3, 3);
    QVERIFY(showActive(grid));
    grid.MoveToCell(1, 1);
    QRect cell;
    grid.GetCellRect(1, 1, cell);
    grid.repaint();
    QTRY_COMPARE(grid.frame, cell);
}

void tst_CUGCtrlFaults::keysTheEditorLeavesAloneDoNotReachTheGrid()
{
    RecordingGrid grid(2, 60);
    QVERIFY(showActive(grid));
    grid.GotoCell(0, 10);
    grid.BeginEdit(0);
    QTRY_VERIFY(grid.GetEditor()->hasFocus());
    QTest::keyClicks(grid.GetEditor(), "kept");
    for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_F2, Qt::Key_End})
        QTest::keyClick(grid.GetEditor(), key, Qt::ControlModifier);
    QTest::keyClick(grid.GetEditor(), Qt::Key_PageDown);
    QCOMPARE(grid.GetCurrentRow(), 10L);
    QVERIFY(grid.IsEditing());
    QTest::keyClick(grid.GetEditor(), Qt::Key_Escape);
    grid.EndEdit("kept", false, false, 0, 0);
}

void tst_CUGCtrlFaults::typingInAMaskedCellReplacesItsValue()
{
    RecordingGrid grid(1, 2);
    QVERIFY(showActive(grid));
    CUGCell masked;
    masked.setMask("99999999");
    grid.SetColumnDefault(0, masked);
    grid.SetCellText(0, 0, "20");
    grid.GotoCell(0, 0);
    grid.BeginEdit('5');
    QTest::keyClick(grid.GetEditor(), Qt::Key_Return);
    QCOMPARE(grid.GetCellText(0, 0), QString("5"));
    // Enter went on to edit the next row.
    grid.CancelEdit();
    // A selection erased as a whole.
    grid.GotoCell(0, 0);
    grid.BeginEdit(0);
    QTest::keyClick(grid.GetEditor(), Qt::Key_Delete);
    QTest::keyClicks(grid.GetEditor(), "42");
    QTest::keyClick(grid.GetEditor(), Qt::Key_Return);
    QCOMPARE(grid.GetCellText(0, 0), QString("42"));
    grid.CancelEdit();
}

QTEST_MAIN(tst_CUGCtrlFaults)
#include "tst_cugctrlfaults.moc"
