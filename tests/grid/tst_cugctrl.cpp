// The grid control through its operations, keys and mouse: result codes and
// limits, resolving cells, rows, the current cell and its notifications,
// selection, the editing life cycle, tips and attaching to a dialog.
#include "recordinggrid.h"

#include "grid/cugedit.h"
#include "grid/cugmaskededit.h"
#include "grid/cugmem.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QHelpEvent>
#include <QScrollBar>
#include <QToolTip>
#include <QVBoxLayout>
#include <QtTest>

using namespace vyr;
using vyr::test::RecordingGrid;

class tst_CUGCtrl : public QObject
{
    Q_OBJECT

private slots:
    void resultCodesAndLimits_data();
    void resultCodesAndLimits();
    void shrinkingMovesTheCurrentCellInside();
    void resolvingLaysTheStoreOverTheDefaults();
    void everyWriteIsSeenOnce();
    void rowsOpenAndCloseThroughTheStore();
    void movingNotifiesInOrder();
    void refusedMovesKeepTheCurrentCell();
    void scrollBarsMoveTheViewUnlessRefused();
    void headingEdgesResizeColumns();
    void keyboardNavigation_data();
    void keyboardNavigation();
    void selectionFollowsControlAndShift();
    void editEndsWithTheKeyThatSaysWhereToGoOn();
    void editRefusedStaysOpenAndTakesTheFocusBack();
    void editorCharactersAreChecked();
    void maskedCellsGetTheMaskedEditor();
    void readOnlyCellsAreNotEdited();
    void tipsNameTheCell();
    void compareCells_data();
    void compareCells();
    void attachTakesThePlaceOfADialogItem();

private:
    static void showActive(QWidget &widget)
    {
        widget.show();
        widget.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&widget));
    }
};

void tst_CUGCtrl::resultCodesAndLimits_data()
{
    QTest::addColumn<std::function<int(CUGCtrl &)>>("operation");
    QTest::addColumn<int>("expected");
    using Op = std::function<int(CUGCtrl &)>;
    QTest::newRow("32000 columns") << Op([](CUGCtrl &g) { return g.SetColumnCount(32000); }) << 0;
    QTest::newRow("32001 columns") << Op([](CUGCtrl &g) { return g.SetColumnCount(32001); }) << 1;
    QTest::newRow("negative rows") << Op([](CUGCtrl &g) { return g.SetRowCount(-1); }) << 1;
    QTest::newRow("no heading rows") << Op([](CUGCtrl &g) { return g.SetTopHeadingRows(0); }) << 1;
    QTest::newRow("65 heading rows") << Op([](CUGCtrl &g) { return g.SetTopHeadingRows(65); }) << 1;
    QTest::newRow("64 heading columns") << Op([](CUGCtrl &g) { return g.SetSideHeadingColumns(64); }) << 0;
    QTest::newRow("wide side heading") << Op([](CUGCtrl &g) { return g.SetSideHeadingWidth(1025); }) << 1;
    QTest::newRow("tall heading row") << Op([](CUGCtrl &g) { return g.SetRowHeight(-1, 1025); }) << 1;
    QTest::newRow("width of column 5") << Op([](CUGCtrl &g) { return g.SetColumnWidth(5, 10); }) << 1;
    QTest::newRow("width of heading column") << Op([](CUGCtrl &g) { return g.SetColumnWidth(-1, 40); }) << 0;
    QTest::newRow("move outside") << Op([](CUGCtrl &g) { return g.MoveToCell(0, 50); }) << 1;
    QTest::newRow("move to a heading") << Op([](CUGCtrl &g) { return g.MoveToCell(-1, 0); }) << 1;
    QTest::newRow("cell below the rows") << Op([](CUGCtrl &g) { return g.SetCellText(0, 50, "x"); }) << 1;
    QTest::newRow("heading cell") << Op([](CUGCtrl &g) { return g.SetCellText(2, -1, "x"); }) << 0;
    QTest::newRow("inverted fit") << Op([](CUGCtrl &g) { return g.FitColumnWidths(3, 1, 10, 0); }) << 3;
    QTest::newRow("fit outside") << Op([](CUGCtrl &g) { return g.FitColumnWidths(0, 9, 10, 0); }) << 1;
    QTest::newRow("cell style 4") << Op([](CUGCtrl &g) { return g.SetCurrentCellStyle(4); }) << 1;
    QTest::newRow("delete row 50") << Op([](CUGCtrl &g) { return g.DeleteRow(50); }) << 1;
    QTest::newRow("insert at the end") << Op([](CUGCtrl &g) { return g.InsertRow(50); }) << 0;
    QTest::newRow("inverted range") << Op([](CUGCtrl &g) {
        g.SetMultiSelect(true);
        return g.SelectRange(3, 4, 1, 2);
    }) << 3;
    QTest::newRow("scroll bar too wide") << Op([](CUGCtrl &g) { return g.SetVScrollWidth(1025); }) << 1;
}

void tst_CUGCtrl::resultCodesAndLimits()
{
    QFETCH(std::function<int(CUGCtrl &)>, operation);
    QFETCH(int, expected);
    RecordingGrid grid;
    QCOMPARE(operation(grid), expected);
    if (expected != 0) {
        QCOMPARE(grid.GetColumnCount(), 5);
        QCOMPARE(grid.GetRowCount(), 50L);
        QCOMPARE(grid.GetTopHeadingRows(), 1);
    }
}

void tst_CUGCtrl::shrinkingMovesTheCurrentCellInside()
{
    RecordingGrid grid;
    QCOMPARE(grid.MoveToCell(4, 30), 0);
    QCOMPARE(grid.SetColumnCount(3), 0);
    QCOMPARE(grid.GetCurrentCol(), 2);
    QCOMPARE(grid.SetRowCount(10), 0);
    QCOMPARE(grid.GetCurrentRow(), 9L);
    QCOMPARE(grid.SetRowCount(0), 0);
    QCOMPARE(grid.GetCurrentRow(), -1L);
}

void tst_CUGCtrl::resolvingLaysTheStoreOverTheDefaults()
{
    RecordingGrid grid;
    CUGCell columnDefault;
    columnDefault.setBackColor(Qt::yellow);
    columnDefault.setAlignment(CUGCell::AlignRight);
    QCOMPARE(grid.SetColumnDefault(1, columnDefault), 0);
    CUGCell gridDefault;
    gridDefault.setTextColor(Qt::blue);
    grid.SetDefaultCell(gridDefault);

    CUGCell cell;
    QCOMPARE(grid.GetCell(1, 3, cell), 1);
    QCOMPARE(grid.GetCellResolved(1, 3, cell), 0);
    QCOMPARE(cell.propertyMask(), columnDefault.propertyMask());
    QVERIFY(cell.text().isNull());

    grid.SetCellText(1, 3, "stored");
    grid.GetCellResolved(1, 3, cell);
    QCOMPARE(cell.text(), QString("stored"));
    QCOMPARE(cell.backColor(), QColor(Qt::yellow));
    QCOMPARE(cell.dataType(), CUGCell::TextData);

    // Heading cells start from the grid default, not the column's.
    grid.GetCellResolved(1, -1, cell);
    QCOMPARE(cell.textColor(), QColor(Qt::blue));
    QVERIFY(!cell.backColor().isValid());
    grid.GetCellResolved(-1, 3, cell);
    QCOMPARE(cell.textColor(), QColor(Qt::blue));

    grid.read = [](int column, long row, CUGCell &read) {
        if (column == 0)
            read.setText(QString::number(row * 2));
    };
    QCOMPARE(grid.GetCellText(0, 21), QString("42"));
    QCOMPARE(grid.GetCellText(1, 3), QString("stored"));
}

void tst_CUGCtrl::everyWriteIsSeenOnce()
{
    RecordingGrid grid;
    CUGCell cell;
    cell.setText("a");
    grid.SetCell(0, 0, cell);
    grid.SetCellText(1, 1, "b");
    grid.SetCellText(-1, 1, "heading");
    QCOMPARE(grid.writes, 3);
    QCOMPARE(grid.SetCellText(0, 99, "outside"), 1);
    QCOMPARE(grid.writes, 3);
    // A heading column is kept in the sheet's store.
    CUGCell stored;
    QCOMPARE(grid.GetDataSource(-1)->GetCell(-1, 1, stored), 0);
    QCOMPARE(stored.text(), QString("heading"));
}

void tst_CUGCtrl::rowsOpenAndCloseThroughTheStore()
{
    RecordingGrid grid(2, 5);
    for (long row = 0; row < 5; ++row)
        grid.SetCellText(0, row, QString::number(row));
    QCOMPARE(grid.InsertRow(2), 0);
    QCOMPARE(grid.GetRowCount(), 6L);
    QVERIFY(grid.GetCellText(0, 2).isNull());
    QCOMPARE(grid.GetCellText(0, 3), QString("2"));
    QCOMPARE(grid.DeleteRow(0), 0);
    QCOMPARE(grid.GetCellText(0, 0), QString("1"));
    QCOMPARE(grid.GetCellText(0, 4), QString("4"));
    QCOMPARE(grid.AppendRow(), 0);
    QCOMPARE(grid.GetRowCount(), 6L);

    // Another store for one column, read through its own column numbers.
    CUGMem other;
    CUGCell cell;
    cell.setText("from the other store");
    other.SetCell(7, 1, cell);
    QCOMPARE(grid.SetColumnDataSource(1, &other, 7), 0);
    QCOMPARE(grid.GetCellText(1, 1), QString("from the other store"));
    grid.SetColumnDataSource(1, nullptr, 1);
}

void tst_CUGCtrl::movingNotifiesInOrder()
{
    RecordingGrid grid;
    grid.show();
    QVERIFY(QTest::qWaitForWindowExposed(&grid));
    grid.MoveToCell(0, 0);
    grid.log.clear();
    QCOMPARE(grid.MoveToCell(2, 3), 0);
    QCOMPARE(grid.log, QStringList({"allow 2,3", "column 0>2", "row 0>3", "cell"}));
    grid.log.clear();
    QCOMPARE(grid.MoveToCell(2, 3), 0);
    QVERIFY(grid.log.isEmpty());
    QCOMPARE(grid.MoveToCell(2, 40), 0);
    QCOMPARE(grid.log.first(), QString("allow 2,40"));
    QCOMPARE(grid.log.mid(1, 2), QStringList({"row 3>40", "cell"}));
    QVERIFY2(grid.log.last().startsWith("top "), qPrintable(grid.log.join('|')));
    QVERIFY(grid.GetTopRow() > 0);
    QRect rect;
    QCOMPARE(grid.GetCellRect(2, 40, rect), 0);
    QVERIFY(grid.GetGridWidget()->rect().contains(rect));
}

void tst_CUGCtrl::refusedMovesKeepTheCurrentCell()
{
    RecordingGrid grid;
    grid.MoveToCell(1, 1);
    grid.refuseMoves = true;
    QCOMPARE(grid.MoveToCell(2, 2), 2);
    QCOMPARE(grid.GetCurrentCol(), 1);
    QTest::keyClick(&grid, Qt::Key_Down);
    QCOMPARE(grid.GetCurrentRow(), 1L);

    // A store that says no does the same, before the hook is asked.
    struct Refusing : CUGMem
    {
        int OnCanMove(int, long, int, long) override { return 0; }
    } store;
    grid.refuseMoves = false;
    grid.SetDefDataSource(&store);
    grid.log.clear();
    QCOMPARE(grid.MoveToCell(3, 3), 2);
    QVERIFY(grid.log.isEmpty());
    grid.SetDefDataSource(nullptr);
}

void tst_CUGCtrl::scrollBarsMoveTheViewUnlessRefused()
{
    RecordingGrid grid(20, 500);
    showActive(grid);
    grid.log.clear();
    grid.verticalScrollBar()->setValue(100);
    QCOMPARE(grid.GetTopRow(), 100L);
    QVERIFY(grid.log.contains("top 100"));
    grid.horizontalScrollBar()->setValue(3);
    QCOMPARE(grid.GetLeftCol(), 3);
    QVERIFY(grid.log.contains("left 3"));

    grid.refuseScroll = true;
    grid.verticalScrollBar()->setValue(200);
    QCOMPARE(grid.GetTopRow(), 100L);
    QCOMPARE(grid.verticalScrollBar()->value(), 100);
    QCOMPARE(grid.SetTopRow(300), 2);
    grid.refuseScroll = false;

    // Page Down moves by the rows that fit and keeps the current row shown.
    grid.MoveToCell(0, 100);
    const long page = grid.GetPageRows();
    QTest::keyClick(&grid, Qt::Key_PageDown);
    QCOMPARE(grid.GetCurrentRow(), 100 + page);
    QRect rect;
    QCOMPARE(grid.GetCellRect(0, grid.GetCurrentRow(), rect), 0);
    QVERIFY(grid.GetGridWidget()->rect().contains(rect));
}

void tst_CUGCtrl::headingEdgesResizeColumns()
{
    RecordingGrid grid;
    showActive(grid);
    QWidget *heading = grid.GetTopHeadingWidget();
    const int edge = grid.GetColumnWidth(0);
    const int y = heading->height() / 2;
    QTest::mousePress(heading, Qt::LeftButton, {}, QPoint(edge - 1, y));
    QMouseEvent move(QEvent::MouseMove, QPointF(edge + 29, y), heading->mapToGlobal(QPointF(edge + 29, y)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(heading, &move);
    QTest::mouseRelease(heading, Qt::LeftButton, {}, QPoint(edge + 29, y));
    QCOMPARE(grid.GetColumnWidth(0), edge + 30);

    grid.refuseColumnResize = true;
    const int second = grid.GetColumnWidth(0) + grid.GetColumnWidth(1);
    QTest::mousePress(heading, Qt::LeftButton, {}, QPoint(second, y));
    QApplication::sendEvent(heading, &move);
    QTest::mouseRelease(heading, Qt::LeftButton, {}, QPoint(second + 30, y));
    QCOMPARE(grid.GetColumnWidth(1), 75);

    grid.SetUserSizingMode(false);
    grid.refuseColumnResize = false;
    QTest::mousePress(heading, Qt::LeftButton, {}, QPoint(edge + 30, y));
    QApplication::sendEvent(heading, &move);
    QCOMPARE(grid.GetColumnWidth(0), edge + 30);
}

void tst_CUGCtrl::keyboardNavigation_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<int>("column");
    QTest::addColumn<long>("row");
    // From column 2, row 20.
    QTest::newRow("left") << int(Qt::Key_Left) << 0 << 1 << 20L;
    QTest::newRow("right") << int(Qt::Key_Right) << 0 << 3 << 20L;
    QTest::newRow("up") << int(Qt::Key_Up) << 0 << 2 << 19L;
    QTest::newRow("down") << int(Qt::Key_Down) << 0 << 2 << 21L;
    QTest::newRow("tab") << int(Qt::Key_Tab) << 0 << 3 << 20L;
    QTest::newRow("home") << int(Qt::Key_Home) << 0 << 0 << 20L;
    QTest::newRow("end") << int(Qt::Key_End) << 0 << 4 << 20L;
    QTest::newRow("control home") << int(Qt::Key_Home) << int(Qt::ControlModifier) << 2 << 0L;
    QTest::newRow("control end") << int(Qt::Key_End) << int(Qt::ControlModifier) << 2 << 49L;
}

void tst_CUGCtrl::keyboardNavigation()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(int, column);
    QFETCH(long, row);
    RecordingGrid grid;
    showActive(grid);
    grid.MoveToCell(2, 20);
    QTest::keyClick(&grid, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(grid.GetCurrentCol(), column);
    QCOMPARE(grid.GetCurrentRow(), row);
}

void tst_CUGCtrl::selectionFollowsControlAndShift()
{
    RecordingGrid grid;
    showActive(grid);
    grid.SetMultiSelect(true);
    QRect rect;
    grid.GetCellRect(0, 0, rect);
    QWidget *cells = grid.GetGridWidget();
    QTest::mouseClick(cells, Qt::LeftButton, {}, rect.center());
    grid.GetCellRect(1, 2, rect);
    QTest::mouseClick(cells, Qt::LeftButton, Qt::ShiftModifier, rect.center());
    grid.GetCellRect(3, 4, rect);
    QTest::mouseClick(cells, Qt::LeftButton, Qt::ControlModifier, rect.center());
    QVERIFY(grid.IsSelected(1, 1));
    QVERIFY(grid.IsSelected(3, 4));
    QVERIFY(!grid.IsSelected(2, 2));

    QList<QPair<int, long>> seen;
    int column = -1;
    long row = -1;
    for (int found = grid.FirstSelected(column, row); found == 0; found = grid.NextSelected(column, row))
        seen.append({column, row});
    QCOMPARE(seen.size(), 7);
    QCOMPARE(seen.first(), qMakePair(0, 0L));
    QCOMPARE(seen.last(), qMakePair(3, 4L));

    // Shift with the keyboard extends the last block.
    QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
    QVERIFY(grid.IsSelected(3, 5));
    QVERIFY(grid.IsSelected(3, 4));
    // A plain move collapses to the current cell.
    QTest::keyClick(&grid, Qt::Key_Right);
    QVERIFY(!grid.IsSelected(0, 0));
    QVERIFY(grid.IsSelected(4, 5));

    grid.SetMultiSelect(false);
    grid.GetCellRect(0, 0, rect);
    QTest::mouseClick(cells, Qt::LeftButton, Qt::ControlModifier, rect.center());
    QVERIFY(!grid.IsSelected(4, 5));
}

void tst_CUGCtrl::editEndsWithTheKeyThatSaysWhereToGoOn()
{
    RecordingGrid grid(3, 4);
    showActive(grid);
    grid.SetCellText(0, 0, "first");
    grid.MoveToCell(0, 0);
    QCOMPARE(grid.BeginEdit(0), 0);
    auto *editor = qobject_cast<CUGEdit *>(grid.GetEditor());
    QVERIFY(editor);
    QVERIFY(editor->isVisible());
    QCOMPARE(editor->toPlainText(), QString("first"));
    QTRY_VERIFY(editor->hasFocus());

    // Typing replaces the selected text; Enter stores it and edits below.
    QTest::keyClicks(editor, "one");
    QTest::keyClick(editor, Qt::Key_Return);
    QCOMPARE(grid.GetCellText(0, 0), QString("one"));
    QCOMPARE(grid.GetCurrentRow(), 1L);
    QVERIFY(grid.IsEditing());

    // Tab goes on to the right; past the last column it wraps to column 0.
    QTest::keyClicks(grid.GetEditor(), "two");
    QTest::keyClick(grid.GetEditor(), Qt::Key_Tab);
    QCOMPARE(grid.GetCellText(0, 1), QString("two"));
    QCOMPARE(grid.GetCurrentCol(), 1);
    QTest::keyClick(grid.GetEditor(), Qt::Key_Tab);
    QCOMPARE(grid.GetCurrentCol(), 2);
    QTest::keyClick(grid.GetEditor(), Qt::Key_Tab);
    QVERIFY(grid.IsEditing());
    QCOMPARE(grid.GetCurrentCol(), 0);

    // Up goes on a row up; Escape cancels and stops.
    QTest::keyClicks(grid.GetEditor(), "lost");
    QTest::keyClick(grid.GetEditor(), Qt::Key_Escape);
    QVERIFY(!grid.IsEditing());
    QVERIFY(!editor->isVisible());
    QVERIFY(grid.log.contains("end lost cancelled"));
    QCOMPARE(grid.GetCellText(0, 1), QString("two"));

    // Shift+Tab wraps from column 0 to the last column.
    grid.MoveToCell(0, 2);
    grid.BeginEdit(0);
    QTest::keyClick(grid.GetEditor(), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(grid.GetCurrentCol(), 2);
    grid.CancelEdit();
    QVERIFY(!grid.IsEditing());
    QVERIFY(grid.hasFocus());
}

void tst_CUGCtrl::editRefusedStaysOpenAndTakesTheFocusBack()
{
    RecordingGrid grid(3, 4);
    showActive(grid);
    grid.endEdit = [](const QString &text, bool cancelled) { return cancelled || text != "bad" ? 1 : 0; };
    grid.MoveToCell(1, 1);
    grid.BeginEdit(0);
    QWidget *editor = grid.GetEditor();
    QTRY_VERIFY(editor->hasFocus());
    QTest::keyClicks(editor, "bad");
    QTest::keyClick(editor, Qt::Key_Down);
    QVERIFY(grid.IsEditing());
    QCOMPARE(grid.GetCurrentRow(), 1L);
    QTRY_VERIFY(editor->hasFocus());
    QVERIFY(grid.GetCellText(1, 1).isNull());

    // The store is asked too, and may refuse by itself.
    struct Refusing : CUGMem
    {
        int OnEditFinish(int, long, QWidget *, const QString &, bool) override { return 0; }
    } store;
    grid.SetDefDataSource(&store);
    QCOMPARE(grid.EndEdit("good", false, false, 0, 0), 0);
    grid.SetDefDataSource(nullptr);
    QCOMPARE(grid.EndEdit("good", false, false, 0, 0), 1);
    QCOMPARE(grid.GetCellText(1, 1), QString("good"));
    // Without an edit in progress, ending is a cancel that stores nothing.
    QCOMPARE(grid.EndEdit("ignored", false, false, 0, 0), 1);
    QCOMPARE(grid.GetCellText(1, 1), QString("good"));
}

void tst_CUGCtrl::editorCharactersAreChecked()
{
    RecordingGrid grid(2, 2);
    showActive(grid);
    grid.verify = [](QChar &character) { return !character.isDigit(); };
    grid.MoveToCell(0, 0);
    grid.BeginEdit('a');
    QTest::keyClicks(grid.GetEditor(), "b1c2");
    QCOMPARE(grid.GetStandardEditor()->editText(), QString("abc"));
    QTest::keyClick(grid.GetEditor(), Qt::Key_Return);
    QCOMPARE(grid.GetCellText(0, 0), QString("abc"));
}

void tst_CUGCtrl::maskedCellsGetTheMaskedEditor()
{
    RecordingGrid grid(2, 3);
    showActive(grid);
    CUGCell masked;
    masked.setMask("(000) 000");
    grid.SetColumnDefault(1, masked);
    grid.MoveToCell(1, 0);
    grid.BeginEdit(0);
    auto *editor = qobject_cast<CUGMaskedEdit *>(grid.GetEditor());
    QVERIFY(editor);
    QCOMPARE(editor->text(), QString("(___) ___"));
    QTest::keyClicks(editor, "12x3");
    QCOMPARE(editor->text(), QString("(123) ___"));
    QTest::keyClicks(editor, "45");
    QTest::keyClick(editor, Qt::Key_Backspace);
    QCOMPARE(editor->text(), QString("(123) 4__"));
    QTest::keyClick(editor, Qt::Key_Return);
    QCOMPARE(grid.GetCellText(1, 0), QString("(123) 4"));
    // The next row's edit starts over the stored value.
    grid.CancelEdit();
    grid.MoveToCell(1, 0);
    grid.BeginEdit(0);
    QCOMPARE(qobject_cast<CUGMaskedEdit *>(grid.GetEditor())->text(), QString("(123) 4__"));
    grid.CancelEdit();
}

void tst_CUGCtrl::readOnlyCellsAreNotEdited()
{
    RecordingGrid grid(2, 2);
    CUGCell cell;
    cell.setReadOnly(true);
    grid.SetCell(0, 0, cell);
    grid.MoveToCell(0, 0);
    QCOMPARE(grid.BeginEdit(0), 1);
    QVERIFY(!grid.IsEditing());
    grid.MoveToCell(1, 1);
    QCOMPARE(grid.BeginEdit(0), 0);
    QCOMPARE(grid.BeginEdit(0), 2);
    grid.CancelEdit();
}

void tst_CUGCtrl::tipsNameTheCell()
{
    RecordingGrid grid;
    showActive(grid);
    QRect rect;
    grid.GetCellRect(1, 2, rect);
    QWidget *cells = grid.GetGridWidget();
    QHelpEvent help(QEvent::ToolTip, rect.center(), cells->mapToGlobal(rect.center()));
    QApplication::sendEvent(cells, &help);
    QTRY_VERIFY(QToolTip::isVisible());
    QCOMPARE(QToolTip::text(), QString("Col:1 Row:2"));
    QToolTip::hideText();
}

void tst_CUGCtrl::compareCells_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<bool>("numbers");
    QTest::addColumn<int>("flags");
    QTest::addColumn<int>("expected");
    QTest::newRow("texts") << "apple" << "banana" << false << 0 << -1;
    QTest::newRow("descending") << "apple" << "banana" << false << 2 << 1;
    QTest::newRow("empty after text") << "" << "a" << false << 0 << 1;
    QTest::newRow("numbers by value") << "10" << "9" << true << 0 << 1;
    QTest::newRow("texts by byte") << "10" << "9" << false << 0 << -1;
    QTest::newRow("equal") << "x" << "x" << false << 0 << 0;
}

void tst_CUGCtrl::compareCells()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(bool, numbers);
    QFETCH(int, flags);
    QFETCH(int, expected);
    RecordingGrid grid;
    CUGCell a;
    CUGCell b;
    if (numbers) {
        a.setNumber(first.toDouble());
        b.setNumber(second.toDouble());
    } else {
        a.setText(first);
        b.setText(second);
    }
    QCOMPARE(grid.OnCompareCells(&a, &b, flags), expected);
    QCOMPARE(grid.OnCompareCells(nullptr, &b, 0), 1);
    QCOMPARE(grid.OnCompareCells(&a, nullptr, 0), -1);
}

void tst_CUGCtrl::attachTakesThePlaceOfADialogItem()
{
    QDialog dialog;
    auto *layout = new QVBoxLayout(&dialog);
    auto *before = new QLineEdit(&dialog);
    auto *placeholder = new QWidget(&dialog);
    placeholder->setProperty("controlId", 61206);
    placeholder->setObjectName("gridHere");
    auto *after = new QLineEdit(&dialog);
    auto *label = new QLabel("&Grid:", &dialog);
    label->setBuddy(placeholder);
    layout->addWidget(before);
    layout->addWidget(placeholder);
    layout->addWidget(after);
    layout->addWidget(label);
    QFont font = dialog.font();
    font.setPointSize(13);
    dialog.setFont(font);

    auto *grid = new RecordingGrid(2, 2);
    QCOMPARE(grid->AttachToDialogItem(&dialog, 4242), 0);
    QCOMPARE(grid->AttachToDialogItem(&dialog, 61206), 1);
    QCOMPARE(grid->parentWidget(), &dialog);
    QCOMPARE(grid->objectName(), QString("gridHere"));
    QCOMPARE(grid->gridInits, 1);
    QCOMPARE(layout->indexOf(grid), 1);
    // It takes the placeholder's place in the tab order and as a buddy.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(before->nextInFocusChain(), static_cast<QWidget *>(grid));
    QCOMPARE(label->buddy(), static_cast<QWidget *>(grid));
    Q_UNUSED(after);
    QCOMPARE(grid->GetDefFont().pointSize(), 13);
    CUGCell heading;
    grid->GetHeadingDefaultCell(heading);
    QVERIFY(heading.font()->weight() > font.weight());
    QVERIFY(grid->focusPolicy() & Qt::TabFocus);
}

QTEST_MAIN(tst_CUGCtrl)
#include "tst_cugctrl.moc"
