// The grid control through its operations, keys and mouse: result codes and
// limits, resolving cells, rows, the current cell and its notifications,
// selection, the editing life cycle and attaching to a dialog.
#include "recordinggrid.h"
#include "support/gridwindow.h"

#include "grid/cugedit.h"
#include "grid/cugmaskededit.h"
#include "grid/cugmem.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QVBoxLayout>
#include <QtTest>

using namespace vyr;
using vyr::test::RecordingGrid;
using vyr::test::showActive;

namespace {

// A store that refuses every move and every edit on its own.
struct RefusingStore : CUGMem
{
    int OnCanMove(int, long, int, long) override { return 0; }
    int OnEditFinish(int, long, QWidget *, const QString &, bool) override { return 0; }
};

} // namespace

class tst_CUGCtrl : public QObject
{
    Q_OBJECT

private slots:
    void resultCodesAndLimits_data();
    void resultCodesAndLimits();
    void shrinkingKeepsTheCurrentCellInside_data();
    void shrinkingKeepsTheCurrentCellInside();
    void resolvingLaysTheStoreOverTheDefaults();
    void everyWriteIsSeenOnceAndReplacesTheCell();
    void rowsOpenAndCloseThroughTheStore();
    void movingNotifiesInOrderUnlessRefused();
    void scrollBarsMoveTheViewUnlessRefused();
    void headingEdgesResizeColumns();
    void keyboardNavigation_data();
    void keyboardNavigation();
    void selectionFollowsControlAndShift();
    void editEndsWithTheKeyThatSaysWhereToGoOn_data();
    void editEndsWithTheKeyThatSaysWhereToGoOn();
    void editsCanBeRefused();
    void editorCharactersAreCheckedAndMayChange();
    void maskedCellsGetTheMaskedEditor();
    void attachTakesThePlaceOfADialogItem();
};

void tst_CUGCtrl::resultCodesAndLimits_data()
{
    QTest::addColumn<std::function<int(CUGCtrl &)>>("operation");
    QTest::addColumn<int>("expected");
    using Op = std::function<int(CUGCtrl &)>;
    QTest::newRow("32000 columns") << Op([](CUGCtrl &g) { return g.SetColumnCount(32000); }) << 0;
    QTest::newRow("32001 columns") << Op([](CUGCtrl &g) { return g.SetColumnCount(32001); }) << 1;
    QTest::newRow("negative rows") << Op([](CUGCtrl &g) { return g.SetRowCount(-1); }) << 1;
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
    QTest::newRow("delete row 50") << Op([](CUGCtrl &g) { return g.DeleteRow(50); }) << 1;
    QTest::newRow("insert at the end") << Op([](CUGCtrl &g) { return g.InsertRow(50); }) << 0;
    QTest::newRow("inverted range") << Op([](CUGCtrl &g) {
        g.SetMultiSelect(true);
        return g.SelectRange(3, 4, 1, 2);
    }) << 3;
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
    }
}

void tst_CUGCtrl::shrinkingKeepsTheCurrentCellInside_data()
{
    QTest::addColumn<bool>("refuseMoves");
    QTest::newRow("moves allowed") << false;
    QTest::newRow("moves refused") << true;
}

void tst_CUGCtrl::shrinkingKeepsTheCurrentCellInside()
{
    QFETCH(bool, refuseMoves);
    RecordingGrid grid;
    QCOMPARE(grid.MoveToCell(4, 30), 0);
    grid.refuseMoves = refuseMoves;
    QCOMPARE(grid.SetColumnCount(3), 0);
    QCOMPARE(grid.GetCurrentCol(), 2);
    QCOMPARE(grid.SetRowCount(10), 0);
    QCOMPARE(grid.GetCurrentRow(), 9L);
    QCOMPARE(grid.DeleteRow(9), 0);
    QCOMPARE(grid.GetCurrentRow(), 8L);
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

void tst_CUGCtrl::everyWriteIsSeenOnceAndReplacesTheCell()
{
    RecordingGrid grid;
    CUGCell cell;
    cell.setText("a");
    cell.setReadOnly(true);
    cell.setBackColor(Qt::yellow);
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

    // A property taken out of a cell goes from the store too.
    grid.GetCell(0, 0, cell);
    cell.setPropertyFlag(CUGCell::ReadOnly, false);
    cell.setPropertyFlag(CUGCell::BackColor, false);
    grid.SetCell(0, 0, cell);
    grid.GetCell(0, 0, stored);
    QVERIFY(!stored.isReadOnly());
    QVERIFY(!stored.backColor().isValid());
    QCOMPARE(stored.text(), QString("a"));
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
}

void tst_CUGCtrl::movingNotifiesInOrderUnlessRefused()
{
    RecordingGrid grid;
    QVERIFY(showActive(grid));
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
    const QRect rect = grid.cellRect(2, 40);
    QVERIFY(grid.GetGridWidget()->rect().contains(rect));
    // The focus frame is drawn for the cell's own rectangle.
    grid.repaint();
    QTRY_COMPARE(grid.focusFrame, rect);

    grid.refuseMoves = true;
    QCOMPARE(grid.MoveToCell(1, 1), 2);
    QCOMPARE(grid.GetCurrentCol(), 2);
    QTest::keyClick(&grid, Qt::Key_Down);
    QCOMPARE(grid.GetCurrentRow(), 40L);

    // A store that says no does the same, before the hook is asked.
    RefusingStore store;
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
    QVERIFY(showActive(grid));
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
    QVERIFY(grid.GetGridWidget()->rect().contains(grid.cellRect(0, grid.GetCurrentRow())));

    // A height of 0 hides the bar, not just flattens it.
    QVERIFY(grid.horizontalScrollBar()->isVisible());
    QCOMPARE(grid.SetHScrollHeight(0), 0);
    QTRY_VERIFY(!grid.horizontalScrollBar()->isVisible());
    QCOMPARE(grid.SetHScrollHeight(16), 0);
    QTRY_VERIFY(grid.horizontalScrollBar()->isVisible());
}

void tst_CUGCtrl::headingEdgesResizeColumns()
{
    RecordingGrid grid;
    QVERIFY(showActive(grid));
    QWidget *heading = grid.GetTopHeadingWidget();
    const int edge = grid.GetColumnWidth(0);
    const int y = heading->height() / 2;
    const auto drag = [heading, y](int from, int to) {
        QTest::mousePress(heading, Qt::LeftButton, {}, QPoint(from, y));
        QMouseEvent move(QEvent::MouseMove, QPointF(to, y), heading->mapToGlobal(QPointF(to, y)), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(heading, &move);
        QTest::mouseRelease(heading, Qt::LeftButton, {}, QPoint(to, y));
    };
    drag(edge - 1, edge + 29);
    QCOMPARE(grid.GetColumnWidth(0), edge + 30);

    grid.refuseColumnResize = true;
    const int second = grid.GetColumnWidth(0) + grid.GetColumnWidth(1);
    drag(second, second + 30);
    QCOMPARE(grid.GetColumnWidth(1), 75);
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
    QVERIFY(showActive(grid));
    grid.MoveToCell(2, 20);
    QTest::keyClick(&grid, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(grid.GetCurrentCol(), column);
    QCOMPARE(grid.GetCurrentRow(), row);
}

void tst_CUGCtrl::selectionFollowsControlAndShift()
{
    RecordingGrid grid;
    QVERIFY(showActive(grid));
    grid.SetMultiSelect(true);
    QWidget *cells = grid.GetGridWidget();
    QTest::mouseClick(cells, Qt::LeftButton, {}, grid.cellRect(0, 0).center());
    QTest::mouseClick(cells, Qt::LeftButton, Qt::ShiftModifier, grid.cellRect(1, 2).center());
    QTest::mouseClick(cells, Qt::LeftButton, Qt::ControlModifier, grid.cellRect(3, 4).center());
    QVERIFY(grid.IsSelected(1, 1));
    QVERIFY(grid.IsSelected(3, 4));
    QVERIFY(!grid.IsSelected(2, 2));

    // The block from the shift click and the control-clicked cell, nothing more.
    int selected = 0;
    int column = -1;
    long row = -1;
    for (int found = grid.FirstSelected(column, row); found == 0; found = grid.NextSelected(column, row))
        ++selected;
    QCOMPARE(selected, 7);

    // Shift with the keyboard extends the last block.
    QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
    QVERIFY(grid.IsSelected(3, 5));
    QVERIFY(grid.IsSelected(3, 4));
    // A plain move collapses to the current cell.
    QTest::keyClick(&grid, Qt::Key_Right);
    QVERIFY(!grid.IsSelected(0, 0));
    QVERIFY(grid.IsSelected(4, 5));

    grid.SetMultiSelect(false);
    QTest::mouseClick(cells, Qt::LeftButton, Qt::ControlModifier, grid.cellRect(0, 0).center());
    QVERIFY(!grid.IsSelected(4, 5));
}

void tst_CUGCtrl::editEndsWithTheKeyThatSaysWhereToGoOn_data()
{
    QTest::addColumn<QString>("mask");
    QTest::newRow("plain editor") << QString();
    QTest::newRow("masked editor") << QString("999");
}

// In a dialog, so that a key the grid lets through would move the focus to
// a neighbouring field or press the default button.
void tst_CUGCtrl::editEndsWithTheKeyThatSaysWhereToGoOn()
{
    QFETCH(QString, mask);
    vyr::test::GridWindow<RecordingGrid> ui(3, 4);
    RecordingGrid &grid = *ui.grid;
    for (int column = 0; column < 3 && !mask.isEmpty(); ++column)
        grid.setColumnDefault(column, [&mask](CUGCell &cell) { cell.setMask(mask); });
    QVERIFY(ui.show());
    // Enter on the grid is the grid's; Control+Enter reaches the default button.
    grid.GotoCell(0, 0);
    QTest::keyClick(&grid, Qt::Key_Return);
    QTest::keyClick(&grid, Qt::Key_Enter);
    QCOMPARE(ui.accepted, 0);
    QTest::keyClick(&grid, Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(ui.accepted, 1);

    grid.SetCellText(0, 0, "10");
    QVERIFY(grid.editAt(0, 0));
    QCOMPARE(qobject_cast<CUGMaskedEdit *>(grid.GetEditor()) != nullptr, !mask.isEmpty());
    QWidget *editor = grid.GetEditor();
    QVERIFY(editor->isVisible());
    QCOMPARE(dynamic_cast<CUGEditBase *>(editor)->editText(), QString("10"));

    // Typing replaces the selected text; Enter stores it and edits below.
    QTest::keyClicks(grid.GetEditor(), "1");
    QTest::keyClick(grid.GetEditor(), Qt::Key_Return);
    QCOMPARE(grid.GetCellText(0, 0), QString("1"));
    QCOMPARE(grid.GetCurrentRow(), 1L);
    QVERIFY(grid.IsEditing());

    // Tab goes on to the right; past the last column it wraps to column 0.
    QTest::keyClicks(grid.GetEditor(), "2");
    QTest::keyClick(grid.GetEditor(), Qt::Key_Tab);
    QCOMPARE(grid.GetCellText(0, 1), QString("2"));
    QCOMPARE(grid.GetCurrentCol(), 1);
    QTest::keyClick(grid.GetEditor(), Qt::Key_Tab);
    QCOMPARE(grid.GetCurrentCol(), 2);
    QTest::keyClick(grid.GetEditor(), Qt::Key_Tab);
    QVERIFY(grid.IsEditing());
    QCOMPARE(grid.GetCurrentCol(), 0);
    QVERIFY(!ui.after->hasFocus());

    // Escape cancels and stops.
    QTest::keyClicks(grid.GetEditor(), "3");
    QTest::keyClick(grid.GetEditor(), Qt::Key_Escape);
    QVERIFY(!grid.IsEditing());
    QVERIFY(!editor->isVisible());
    QVERIFY(grid.log.contains("end 3 cancelled"));
    QCOMPARE(grid.GetCellText(0, 1), QString("2"));

    // Shift+Tab wraps from column 0 to the last column.
    QVERIFY(grid.editAt(0, 2));
    QTest::keyClick(grid.GetEditor(), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(grid.GetCurrentCol(), 2);
    QVERIFY(!ui.before->hasFocus());

    // Keys the editor leaves alone do not act on the grid under the edit.
    for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_F2, Qt::Key_End})
        QTest::keyClick(grid.GetEditor(), key, Qt::ControlModifier);
    QTest::keyClick(grid.GetEditor(), Qt::Key_PageDown);
    QCOMPARE(grid.GetCurrentRow(), 2L);
    QVERIFY(grid.IsEditing());

    // Control+Enter keeps the text, then reaches the default button.
    QTest::keyClicks(grid.GetEditor(), "4");
    QTest::keyClick(grid.GetEditor(), Qt::Key_Return, Qt::ControlModifier);
    QVERIFY(!grid.IsEditing());
    QCOMPARE(grid.GetCellText(2, 2), QString("4"));
    QCOMPARE(ui.accepted, 2);

    QVERIFY(grid.editAt(0, 3));
    grid.CancelEdit();
    QVERIFY(!grid.IsEditing());
    QVERIFY(grid.hasFocus());
}

void tst_CUGCtrl::editsCanBeRefused()
{
    RecordingGrid grid(3, 4);
    QVERIFY(showActive(grid));
    CUGCell readOnly;
    readOnly.setReadOnly(true);
    grid.SetCell(0, 0, readOnly);
    grid.GotoCell(0, 0);
    QCOMPARE(grid.BeginEdit(0), 1);
    QVERIFY(!grid.IsEditing());
    // Without an edit in progress, ending is a cancel that stores nothing.
    grid.GotoCell(1, 1);
    grid.log.clear();
    QCOMPARE(grid.EndEdit("typed", false, false, 0, 0), 1);
    QCOMPARE(grid.log, QStringList({"end typed cancelled"}));
    QVERIFY(grid.GetCellText(1, 1).isNull());

    grid.endEdit = [](const QString &text, bool cancelled) { return cancelled || text != "bad" ? 1 : 0; };
    QVERIFY(grid.editAt(1, 1));
    QCOMPARE(grid.BeginEdit(0), 2);
    QWidget *editor = grid.GetEditor();
    QTest::keyClicks(editor, "bad");
    QTest::keyClick(editor, Qt::Key_Down);
    QVERIFY(grid.IsEditing());
    QCOMPARE(grid.GetCurrentRow(), 1L);
    QTRY_VERIFY(editor->hasFocus());
    QVERIFY(grid.GetCellText(1, 1).isNull());

    // The store is asked too, and may refuse by itself.
    RefusingStore store;
    grid.SetDefDataSource(&store);
    QCOMPARE(grid.EndEdit("good", false, false, 0, 0), 0);
    grid.SetDefDataSource(nullptr);
    QCOMPARE(grid.EndEdit("good", false, false, 0, 0), 1);
    QCOMPARE(grid.GetCellText(1, 1), QString("good"));
}

void tst_CUGCtrl::editorCharactersAreCheckedAndMayChange()
{
    RecordingGrid grid(2, 2);
    QVERIFY(showActive(grid));
    grid.verify = [](QChar &character) {
        character = character.toUpper();
        return !character.isDigit();
    };
    QVERIFY(grid.editAt(0, 0, 'a'));
    QTest::keyClicks(grid.GetEditor(), "b1c2");
    QCOMPARE(grid.GetStandardEditor()->editText(), QString("ABC"));
    QTest::keyClick(grid.GetEditor(), Qt::Key_Return);
    QCOMPARE(grid.GetCellText(0, 0), QString("ABC"));
}

void tst_CUGCtrl::maskedCellsGetTheMaskedEditor()
{
    RecordingGrid grid(2, 3);
    QVERIFY(showActive(grid));
    grid.setColumnDefault(1, [](CUGCell &cell) { cell.setMask("(000) 000"); });
    QVERIFY(grid.editAt(1, 0));
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
    grid.CancelEdit();
    QVERIFY(grid.editAt(1, 0));
    QCOMPARE(editor->text(), QString("(123) 4__"));
    grid.CancelEdit();

    // The key that starts the edit replaces the value, as does typing over
    // the selection Delete erased.
    grid.setColumnDefault(0, [](CUGCell &cell) { cell.setMask("99999999"); });
    grid.SetCellText(0, 0, "20");
    QVERIFY(grid.editAt(0, 0, '5'));
    QTest::keyClick(grid.GetEditor(), Qt::Key_Return);
    QCOMPARE(grid.GetCellText(0, 0), QString("5"));
    grid.CancelEdit();
    QVERIFY(grid.editAt(0, 0));
    QTest::keyClick(grid.GetEditor(), Qt::Key_Delete);
    QTest::keyClicks(grid.GetEditor(), "42");
    QTest::keyClick(grid.GetEditor(), Qt::Key_Return);
    QCOMPARE(grid.GetCellText(0, 0), QString("42"));
    grid.CancelEdit();
}

void tst_CUGCtrl::attachTakesThePlaceOfADialogItem()
{
    QDialog dialog;
    auto *layout = new QVBoxLayout(&dialog);
    auto *before = new QLineEdit(&dialog);
    auto *placeholder = new QWidget(&dialog);
    placeholder->setProperty("controlId", 61206);
    placeholder->setObjectName("gridHere");
    auto *label = new QLabel("&Grid:", &dialog);
    label->setBuddy(placeholder);
    for (QWidget *widget : std::initializer_list<QWidget *>{before, placeholder, new QLineEdit(&dialog), label})
        layout->addWidget(widget);
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
    QCOMPARE(grid->GetDefFont().pointSize(), 13);
    CUGCell heading;
    grid->GetHeadingDefaultCell(heading);
    QVERIFY(heading.font()->weight() > font.weight());
    QVERIFY(grid->focusPolicy() & Qt::TabFocus);
}

QTEST_MAIN(tst_CUGCtrl)
#include "tst_cugctrl.moc"
