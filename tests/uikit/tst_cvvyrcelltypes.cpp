// The program's cell types and the grid edit dialog: drop list entries,
// opening and choosing by keyboard, the mark that keeps a click from
// reopening a list, button cells and their keys, colour cells, what
// assistive technology is told, and the grid edit dialog's choices, rows
// kept on OK, Escape and buttons.
#include "listgrid.h"

#include "support/modalanswers.h"
#include "uikit/cgrideditdlg.h"
#include "uikit/cvvyrbrowsebuttontype.h"
#include "uikit/cvvyrdroplisttype.h"
#include "uikit/unattendedrun.h"

#include <QAccessible>
#include <QColorDialog>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

using namespace vyr;
using GridWindow = vyr::test::ListGridWindow;
using vyr::test::ListGrid;

namespace {

CUGDropListType &dropList(CVVyrGrid &grid)
{
    return *static_cast<CUGDropListType *>(grid.GetCellType(grid.DropListTypeId()));
}

void setCellType(CVVyrGrid &grid, int column, long row, int type, const QString &label, int parameter = 0)
{
    CUGCell cell;
    grid.GetCellResolved(column, row, cell);
    cell.setCellType(type);
    cell.setLabel(label);
    cell.setCellTypeParam(parameter);
    grid.SetCell(column, row, cell);
}

QImage paintedCell(CVVyrGrid &grid, int column, long row)
{
    QRect rect;
    grid.GetCellRect(column, row, rect);
    return grid.GetGridWidget()->grab(rect).toImage();
}

} // namespace

class tst_CVVyrCellTypes : public QObject
{
    Q_OBJECT

private slots:
    void dropListOpensByKeyboardAndTypingFindsEntries_data();
    void dropListOpensByKeyboardAndTypingFindsEntries();
    void aClickThatClosedAListDoesNotReopenIt();
    void disabledAndReadOnlyCellsOpenNothing();
    void buttonCellsBrowseByKeyAndMouse();
    void colourCellsPickAndShowTheirColour();
    void assistiveTechnologyHearsEachType();
    void gridEditDialogOffersUnusedChoices();
    void gridEditDialogKeepsCompleteRows();
    void escapeEndsTheEditBeforeTheDialog();
    void gridEditDialogButtonsWorkTheRows();
};

void tst_CVVyrCellTypes::dropListOpensByKeyboardAndTypingFindsEntries_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::newRow("F4") << int(Qt::Key_F4) << 0;
    QTest::newRow("Alt+Down") << int(Qt::Key_Down) << int(Qt::AltModifier);
    QTest::newRow("Control+Down") << int(Qt::Key_Down) << int(Qt::ControlModifier);
    QTest::newRow("Enter") << int(Qt::Key_Return) << 0;
}

void tst_CVVyrCellTypes::dropListOpensByKeyboardAndTypingFindsEntries()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    GridWindow ui(2, false);
    ListGrid &grid = *ui.grid;
    grid.AppendRowTexts({"x", "apple"});
    setCellType(grid, 1, 0, grid.DropListTypeId(), "apple\nbanana\nblueberry\ncherry\n");
    QVERIFY(ui.show());
    grid.GotoCell(1, 0);
    QTest::keyClick(&grid, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QTRY_VERIFY(dropList(grid).IsListOpen());
    CUGLstBox *list = dropList(grid).ListBox();
    QCOMPARE(list->count(), 4);
    QCOMPARE(list->currentRow(), -1);
    QTest::keyClick(list, Qt::Key_B);
    QCOMPARE(list->currentItem()->text(), QString("banana"));
    QTest::keyClick(list, Qt::Key_L);
    QCOMPARE(list->currentItem()->text(), QString("blueberry"));
    QTest::keyClick(list, Qt::Key_Return);
    QVERIFY(!dropList(grid).IsListOpen());
    QCOMPARE(grid.GetCellString(0, 1), QString("blueberry"));
    QVERIFY(grid.log.contains(QStringLiteral("chose blueberry at 1,0")));
    QTRY_VERIFY(grid.hasFocus());

    // Escape closes without a choice.
    QTest::keyClick(&grid, Qt::Key_F4);
    QTRY_VERIFY(dropList(grid).IsListOpen());
    QTest::keyClick(dropList(grid).ListBox(), Qt::Key_Escape);
    QVERIFY(!dropList(grid).IsListOpen());
    QCOMPARE(grid.GetCellString(0, 1), QString("blueberry"));
}

void tst_CVVyrCellTypes::aClickThatClosedAListDoesNotReopenIt()
{
    GridWindow ui(2, false);
    ListGrid &grid = *ui.grid;
    grid.AppendRowTexts({"x", "a"});
    setCellType(grid, 1, 0, grid.DropListTypeId(), "a\nb\n");
    QVERIFY(ui.show());
    QRect rect;
    grid.GetCellRect(1, 0, rect);
    const QPoint button(rect.right() - 3, rect.center().y());
    QTest::mousePress(grid.GetGridWidget(), Qt::LeftButton, {}, button);
    QTRY_VERIFY(dropList(grid).IsListOpen());
    // The click that takes the list away lands on the button again.
    dropList(grid).ListBox()->hide();
    QVERIFY(!dropList(grid).IsListOpen());
    QTest::mousePress(grid.GetGridWidget(), Qt::LeftButton, {}, button);
    QVERIFY(!dropList(grid).IsListOpen());
    QTest::mousePress(grid.GetGridWidget(), Qt::LeftButton, {}, button);
    QTRY_VERIFY(dropList(grid).IsListOpen());
    dropList(grid).OnClosePopups();

    // Only the editable look takes typing, left of the button; there a
    // press only moves to the cell.
    QCOMPARE(grid.BeginEdit(0), int(ug::Refused));
    setCellType(grid, 1, 0, grid.DropListTypeId(), "a\nb\n", ug::ParamEditable);
    QTest::mousePress(grid.GetGridWidget(), Qt::LeftButton, {}, rect.topLeft() + QPoint(5, 5));
    QVERIFY(!dropList(grid).IsListOpen());
    QCOMPARE(grid.BeginEdit(0), 0);
    QVERIFY(grid.GetEditor()->geometry().right() < rect.right() - 10);
    grid.CancelEdit();
}

void tst_CVVyrCellTypes::disabledAndReadOnlyCellsOpenNothing()
{
    GridWindow ui(2, false);
    ListGrid &grid = *ui.grid;
    grid.AppendRowTexts({"x", "a"});
    grid.AppendRowTexts({"y", "b"});
    setCellType(grid, 1, 0, grid.DropListTypeId(), "a\nb\n");
    setCellType(grid, 1, 1, grid.BrowseTypeId(), QString());
    QVERIFY(ui.show());
    grid.EnableGrid(false);
    QVERIFY(!dropList(grid).OpenList(1, 0));
    grid.GotoCell(1, 1);
    QTest::keyClick(&grid, Qt::Key_Return);
    QVERIFY(!grid.log.join('|').contains("browse"));
    grid.EnableGrid(true);
    grid.EnableCell(1, 0, false);
    QVERIFY(!dropList(grid).OpenList(1, 0));
    grid.EnableCell(1, 1, false);
    static_cast<CVVyrBrowseButtonType *>(grid.GetCellType(grid.BrowseTypeId()))->Browse(1, 1);
    QVERIFY(!grid.log.join('|').contains("browse"));
}

void tst_CVVyrCellTypes::buttonCellsBrowseByKeyAndMouse()
{
    GridWindow ui(2, false);
    ListGrid &grid = *ui.grid;
    grid.AppendRowTexts({"x", "value"});
    setCellType(grid, 1, 0, grid.BrowseTypeId(), "Edit...");
    QVERIFY(ui.show());
    grid.GotoCell(1, 0);
    for (const int key : {int(Qt::Key_Return), int(Qt::Key_F4), int(Qt::Key_Space)})
        QTest::keyClick(&grid, Qt::Key(key));
    QCOMPARE(grid.log.filter("browse 1,0").size(), 3);
    QRect rect;
    grid.GetCellRect(1, 0, rect);
    QTest::mouseClick(grid.GetGridWidget(), Qt::LeftButton, {}, rect.center());
    QCOMPARE(grid.log.filter("browse 1,0").size(), 4);
    // A pure button takes no typing; the editable look types left of it.
    QCOMPARE(grid.BeginEdit(0), int(ug::Refused));
    setCellType(grid, 1, 0, grid.BrowseTypeId(), "Edit...", ug::ParamEditable);
    QTest::mouseClick(grid.GetGridWidget(), Qt::LeftButton, {}, rect.topLeft() + QPoint(4, 4));
    QCOMPARE(grid.log.filter("browse 1,0").size(), 4);
    QCOMPARE(grid.BeginEdit(0), 0);
    QVERIFY(grid.GetEditor()->width() > 10);
    grid.CancelEdit();
}

void tst_CVVyrCellTypes::colourCellsPickAndShowTheirColour()
{
    GridWindow ui(2, false);
    ListGrid &grid = *ui.grid;
    grid.AppendRowTexts({"x", "1, 0.5 ,0"});
    grid.AppendRowTexts({"y", "0.5,0.5"});
    setCellType(grid, 1, 0, grid.ColourTypeId(), QString(), ug::ParamEditable);
    setCellType(grid, 1, 1, grid.ColourTypeId(), QString(), ug::ParamEditable);
    QVERIFY(ui.show());
    const QImage withColour = paintedCell(grid, 1, 0);
    const QImage without = paintedCell(grid, 1, 1);
    const auto hasPixel = [](const QImage &image, const QColor &colour) {
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixelColor(x, y) == colour)
                    return true;
        return false;
    };
    QVERIFY(hasPixel(withColour, QColor(255, 127, 0)));
    QVERIFY(!hasPixel(without, QColor(127, 127, 0)));

    // The colour dialog starts on the cell's colour; OK writes fractions.
    QColor initial;
    test::onNextModalDialog([&initial](QDialog *dialog) {
        auto *picker = qobject_cast<QColorDialog *>(dialog);
        QVERIFY(picker);
        initial = picker->currentColor();
        picker->setCurrentColor(QColor(0, 51, 255));
        picker->accept();
    });
    grid.GotoCell(1, 0);
    QTest::keyClick(&grid, Qt::Key_F4);
    QCOMPARE(initial, QColor(255, 127, 0));
    QCOMPARE(grid.GetCellString(0, 1), QString("0,0.2,1"));
    QVERIFY(grid.CanUndo());
    test::answerNextDialog([](QDialog *) { return false; });
    QTest::keyClick(&grid, Qt::Key_F4);
    QCOMPARE(grid.GetCellString(0, 1), QString("0,0.2,1"));
}

void tst_CVVyrCellTypes::assistiveTechnologyHearsEachType()
{
    GridWindow ui(4, false);
    ListGrid &grid = *ui.grid;
    grid.AppendRowTexts({"plain", "chosen", "packed", "1,0,0"});
    setCellType(grid, 1, 0, grid.DropListTypeId(), "chosen\nother\n");
    setCellType(grid, 2, 0, grid.BrowseTypeId(), "Edit...");
    setCellType(grid, 3, 0, grid.ColourTypeId(), QString());
    QAccessibleInterface *table = QAccessible::queryAccessibleInterface(&grid);
    QVERIFY(table && table->tableInterface());
    const struct
    {
        int column;
        QAccessible::Role role;
        QString name;
        QString value;
        QString action;
    } expected[] = {
        {0, QAccessible::Cell, "plain", "plain", QString()},
        {1, QAccessible::ComboBox, "chosen", "chosen", QAccessibleActionInterface::showMenuAction()},
        {2, QAccessible::Button, "Edit...", "packed", QAccessibleActionInterface::pressAction()},
        {3, QAccessible::Button, "#ff0000", "1,0,0", QAccessibleActionInterface::pressAction()},
    };
    for (const auto &e : expected) {
        QAccessibleInterface *cell = table->tableInterface()->cellAt(0, e.column);
        QCOMPARE(cell->role(), e.role);
        QCOMPARE(cell->text(QAccessible::Name), e.name);
        QCOMPARE(cell->text(QAccessible::Value), e.value);
        QAccessibleActionInterface *actions = cell->actionInterface();
        QVERIFY(actions);
        QCOMPARE(actions->actionNames().value(0), e.action);
    }
    // Pressing the button through assistive technology browses.
    table->tableInterface()->cellAt(0, 2)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QVERIFY(grid.log.contains("browse 2,0"));
}

void tst_CVVyrCellTypes::gridEditDialogOffersUnusedChoices()
{
    CGridEditDlg dialog(1, "Values", "&Values:", {"b"}, true, {"a", "b", "c"}, QString(), std::string());
    QVERIFY(dialog.Create());
    CVVyrGrid &grid = *dialog.grid();
    QCOMPARE(grid.GetRowCount(), 2L);
    CUGCell cell;
    grid.GetCellResolved(0, 1, cell);
    QCOMPARE(cell.cellType(), grid.DropListTypeId());
    QCOMPARE(cell.cellTypeParam(), int(ug::ParamEditable));
    QStringList entries;
    QCOMPARE(grid.OnCellTypeEvent(grid.DropListTypeId(), 0, 1, ug::DropListStart, std::intptr_t(&entries)), 1L);
    QCOMPARE(entries, QStringList({"a", "c"}));
}

void tst_CVVyrCellTypes::gridEditDialogKeepsCompleteRows()
{
    CGridEditDlg dialog(2, "Map", "&Keys and values:", {"x", "y", "z", ""}, true, {}, "Note", "topic.htm");
    QVERIFY(dialog.Create());
    QVERIFY(!dialog.GetDlgItem(kIdHelp)->isHidden());
    QVERIFY(!dialog.GetDlgItem(CGridEditDlg::kIdSecondLabel)->isHidden());
    dialog.show();
    UnattendedRun run;
    QVERIFY(run.accept(dialog));
    QCOMPARE(dialog.result(), QStringList({"x", "y"}));

    // Read-only: the grid takes nothing and the row buttons are off.
    CGridEditDlg readOnly(1, "Set", "&Values:", {"a"}, false, {}, QString(), std::string());
    QVERIFY(readOnly.Create());
    QVERIFY(!readOnly.grid()->IsGridEnabled());
    QVERIFY(!readOnly.GetDlgItem(CGridEditDlg::kIdDelete)->isEnabled());
    QVERIFY(!readOnly.GetDlgItem(CGridEditDlg::kIdSort)->isEnabled());
}

void tst_CVVyrCellTypes::escapeEndsTheEditBeforeTheDialog()
{
    CGridEditDlg dialog(1, "Set", "&Values:", {"a"}, true, {}, QString(), std::string());
    QVERIFY(dialog.Create());
    test::onNextModalDialog([&dialog](QDialog *) {
        CVVyrGrid &grid = *dialog.grid();
        QTRY_VERIFY(grid.hasFocus());
        grid.GotoCell(0, 0);
        QTest::keyClick(&grid, Qt::Key_F2);
        QVERIFY(grid.IsEditing());
        QTest::keyClicks(grid.GetEditor(), "changed");
        QTest::keyClick(grid.GetEditor(), Qt::Key_Escape);
        QVERIFY(!grid.IsEditing());
        QVERIFY(dialog.isVisible());
        QCOMPARE(grid.GetCellString(0, 0), QString("a"));
        QTest::keyClick(&grid, Qt::Key_Escape);
    });
    QCOMPARE(dialog.DoModal(), int(kEndCancel));
}

void tst_CVVyrCellTypes::gridEditDialogButtonsWorkTheRows()
{
    CGridEditDlg dialog(1, "List", "&Items in order:", {"c", "a", "b"}, true, {}, QString(), std::string());
    QVERIFY(dialog.Create());
    dialog.show();
    CVVyrGrid &grid = *dialog.grid();
    const auto texts = [&grid] {
        QStringList list;
        for (long row = 0; row + 1 < grid.GetRowCount(); ++row)
            list << grid.GetCellString(row, 0);
        return list;
    };
    const auto press = [&dialog](unsigned id) { qobject_cast<QPushButton *>(dialog.GetDlgItem(id))->click(); };
    press(CGridEditDlg::kIdSort);
    QCOMPARE(texts(), QStringList({"a", "b", "c"}));
    grid.GotoCell(0, 2);
    press(CGridEditDlg::kIdMoveUp);
    QCOMPARE(texts(), QStringList({"a", "c", "b"}));
    press(CGridEditDlg::kIdMoveDown);
    QCOMPARE(texts(), QStringList({"a", "b", "c"}));
    grid.GotoCell(0, 0);
    press(CGridEditDlg::kIdDelete);
    QCOMPARE(texts(), QStringList({"b", "c"}));
}

QTEST_MAIN(tst_CVVyrCellTypes)
#include "tst_cvvyrcelltypes.moc"
