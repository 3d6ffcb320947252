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
#include <QPushButton>
#include <QtTest>

#include <tuple>

using namespace vyr;
using namespace vyr::test;

namespace {

CUGDropListType &dropList(CVVyrGrid &grid)
{
    return *static_cast<CUGDropListType *>(grid.GetCellType(grid.DropListTypeId()));
}

bool paintsColour(CVVyrGrid &grid, int column, long row, const QColor &colour)
{
    QRect rect;
    grid.GetCellRect(column, row, rect);
    const QImage image = grid.GetGridWidget()->grab(rect).toImage();
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) == colour)
                return true;
    return false;
}

} // namespace

class tst_CVVyrCellTypes : public ListGridTest
{
    Q_OBJECT

private slots:
    void cleanup() { ui.reset(); }
    void dropListOpensByKeyboardAndTypingFindsEntries_data();
    void dropListOpensByKeyboardAndTypingFindsEntries();
    void buttonsAnswerOnlyWhereTheyShould();
    void keysACellTakesNoTextForAreRefused_data();
    void keysACellTakesNoTextForAreRefused();
    void colourCellsPickAndShowTheirColour();
    void colourCellsKeepTheTextOfAnUnchangedColour_data();
    void colourCellsKeepTheTextOfAnUnchangedColour();
    void assistiveTechnologyHearsEachType();
    void gridEditDialogKeepsCompleteRowsAndEscapeEndsTheEditFirst();
    void gridEditDialogOffersUnusedChoicesAndItsButtonsWorkTheRows();
};

void tst_CVVyrCellTypes::dropListOpensByKeyboardAndTypingFindsEntries_data()
{
    QTest::addColumn<QKeyCombination>("keys");
    QTest::newRow("F4") << QKeyCombination(Qt::Key_F4);
    QTest::newRow("Alt+Down") << (Qt::AltModifier | Qt::Key_Down);
    QTest::newRow("Control+Down") << (Qt::ControlModifier | Qt::Key_Down);
    QTest::newRow("Enter") << QKeyCombination(Qt::Key_Return);
}

void tst_CVVyrCellTypes::dropListOpensByKeyboardAndTypingFindsEntries()
{
    QFETCH(QKeyCombination, keys);
    ListGrid &grid = shownGrid(2, false, {"x\tapple"});
    setCellType(grid, 1, 0, grid.DropListTypeId(), "apple\nbanana\nblueberry\ncherry\n");
    grid.GotoCell(1, 0);
    QTest::keyClick(&grid, keys.key(), keys.keyboardModifiers());
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

void tst_CVVyrCellTypes::buttonsAnswerOnlyWhereTheyShould()
{
    ListGrid &grid = shownGrid(2, false, {"x\ta", "y\tvalue"});
    setCellType(grid, 1, 0, grid.DropListTypeId(), "a\nb\n");
    setCellType(grid, 1, 1, grid.BrowseTypeId(), "Edit...");
    const auto browsed = [&grid] { return grid.log.filter("browse 1,1").size(); };
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

    grid.GotoCell(1, 1);
    for (const int key : {int(Qt::Key_Return), int(Qt::Key_F4), int(Qt::Key_Space)})
        QTest::keyClick(&grid, Qt::Key(key));
    QCOMPARE(browsed(), 3);
    grid.GetCellRect(1, 1, rect);
    QTest::mouseClick(grid.GetGridWidget(), Qt::LeftButton, {}, rect.center());
    QCOMPARE(browsed(), 4);

    // Only the editable look takes typing, left of the button; there a
    // press only moves to the cell.
    for (const long row : {0L, 1L}) {
        grid.GotoCell(1, row);
        QCOMPARE(grid.BeginEdit(0), int(ug::Refused));
        setCellType(grid, 1, row, row ? grid.BrowseTypeId() : grid.DropListTypeId(), row ? "Edit..." : "a\nb\n",
                    ug::ParamEditable);
        grid.GetCellRect(1, row, rect);
        QTest::mouseClick(grid.GetGridWidget(), Qt::LeftButton, {}, rect.topLeft() + QPoint(5, 5));
        QVERIFY(!dropList(grid).IsListOpen());
        QCOMPARE(browsed(), 4);
        QCOMPARE(grid.BeginEdit(0), 0);
        const QRect editor = grid.GetEditor()->geometry();
        QVERIFY(editor.width() > 10 && editor.right() < rect.right() - 10);
        grid.CancelEdit();
    }

    // Neither a read-only grid nor a disabled cell opens or browses.
    grid.EnableGrid(false);
    QVERIFY(!dropList(grid).OpenList(1, 0));
    grid.GotoCell(1, 1);
    QTest::keyClick(&grid, Qt::Key_Return);
    grid.EnableGrid(true);
    grid.EnableCell(1, 0, false);
    QVERIFY(!dropList(grid).OpenList(1, 0));
    grid.EnableCell(1, 1, false);
    static_cast<CVVyrBrowseButtonType *>(grid.GetCellType(grid.BrowseTypeId()))->Browse(1, 1);
    QCOMPARE(browsed(), 4);
}

void tst_CVVyrCellTypes::keysACellTakesNoTextForAreRefused_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<long>("row");
    QTest::addColumn<QKeyCombination>("keys");
    QTest::newRow("typing on a button") << "button" << 0L << QKeyCombination(Qt::Key_Q);
    QTest::newRow("F2 on a button") << "button" << 0L << QKeyCombination(Qt::Key_F2);
    QTest::newRow("typing on a drop list") << "list" << 0L << QKeyCombination(Qt::Key_Q);
    QTest::newRow("typing on a check box") << "check box" << 0L << QKeyCombination(Qt::Key_Q);
    QTest::newRow("Enter on a check box") << "check box" << 0L << QKeyCombination(Qt::Key_Return);
    // Not even the new row becomes a record for it.
    QTest::newRow("typing on the new row's button") << "button" << 1L << QKeyCombination(Qt::Key_Q);
}

void tst_CVVyrCellTypes::keysACellTakesNoTextForAreRefused()
{
    QFETCH(QString, type);
    QFETCH(long, row);
    QFETCH(QKeyCombination, keys);
    ListGrid &grid = shownGrid(2, true, {"x\t0"});
    const int typeId = type == "button" ? grid.BrowseTypeId()
        : type == "list"                ? grid.DropListTypeId()
                                        : int(ug::CheckBoxCellType);
    setCellType(grid, 1, row, typeId, type == "list" ? "0\n1\n" : "Edit...");
    const QStringList before = rows(grid);
    grid.GotoCell(1, row);
    QTest::keyClick(&grid, keys.key(), keys.keyboardModifiers());
    QVERIFY(!grid.IsEditing());
    QCOMPARE(rows(grid), before);
    QCOMPARE(grid.refusedKeys, 1);
}

void tst_CVVyrCellTypes::colourCellsPickAndShowTheirColour()
{
    ListGrid &grid = shownGrid(2, false, {"x\t1, 0.5 ,0", "y\t0.5,0.5"});
    setCellType(grid, 1, 0, grid.ColourTypeId(), QString(), ug::ParamEditable);
    setCellType(grid, 1, 1, grid.ColourTypeId(), QString(), ug::ParamEditable);
    QVERIFY(paintsColour(grid, 1, 0, QColor(255, 127, 0)));
    QVERIFY(!paintsColour(grid, 1, 1, QColor(127, 127, 0)));

    // The colour dialog starts on the cell's colour; OK writes fractions.
    QColor initial;
    onNextModalDialog([&initial](QDialog *dialog) {
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
    answerNextDialog([](QDialog *) { return false; });
    QTest::keyClick(&grid, Qt::Key_F4);
    QCOMPARE(grid.GetCellString(0, 1), QString("0,0.2,1"));
}

void tst_CVVyrCellTypes::colourCellsKeepTheTextOfAnUnchangedColour_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("parameter");
    QTest::addColumn<QColor>("chosen");
    QTest::addColumn<QString>("written");
    // An invalid colour (`chosen`) leaves the dialog's own colour alone.
    QTest::newRow("unchanged") << "0.85,0.85,0.85" << 0 << QColor() << "0.85,0.85,0.85";
    QTest::newRow("unchanged, editable look") << " 1 , 0.5 ,0" << int(ug::ParamEditable) << QColor() << " 1 , 0.5 ,0";
    // A new colour: each fraction the shortest that reads back as its byte.
    QTest::newRow("changed") << "0.85,0.85,0.85" << 0 << QColor(200, 100, 50) << "0.785,0.393,0.197";
    QTest::newRow("no colour before") << "" << 0 << QColor() << "0,0,0";
}

void tst_CVVyrCellTypes::colourCellsKeepTheTextOfAnUnchangedColour()
{
    QFETCH(QString, text);
    QFETCH(int, parameter);
    QFETCH(QColor, chosen);
    QFETCH(QString, written);
    ListGrid &grid = shownGrid(2, false, {"x\t" + text});
    setCellType(grid, 1, 0, grid.ColourTypeId(), QString(), parameter);
    grid.GotoCell(1, 0);
    onNextModalDialog([chosen](QDialog *dialog) {
        auto *picker = qobject_cast<QColorDialog *>(dialog);
        QVERIFY(picker);
        if (chosen.isValid())
            picker->setCurrentColor(chosen);
        QTest::keyClick(picker, Qt::Key_Return);
    });
    QTest::keyClick(&grid, Qt::Key_Return);
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(grid.GetCellString(0, 1), written);
    QCOMPARE(grid.CanUndo(), written != text);
}

void tst_CVVyrCellTypes::assistiveTechnologyHearsEachType()
{
    ListGrid &grid = shownGrid(4, false, {"plain\tchosen\tpacked\t1,0,0"});
    setCellType(grid, 1, 0, grid.DropListTypeId(), "chosen\nother\n");
    setCellType(grid, 2, 0, grid.BrowseTypeId(), "Edit...");
    setCellType(grid, 3, 0, grid.ColourTypeId());
    QAccessibleInterface *table = QAccessible::queryAccessibleInterface(&grid);
    QVERIFY(table && table->tableInterface());
    const std::tuple<QAccessible::Role, QString, QString, QString> expected[] = {
        {QAccessible::Cell, "plain", "plain", QString()},
        {QAccessible::ComboBox, "chosen", "chosen", QAccessibleActionInterface::showMenuAction()},
        {QAccessible::Button, "Edit packed", "packed", QAccessibleActionInterface::pressAction()},
        {QAccessible::Button, "#ff0000", "1,0,0", QAccessibleActionInterface::pressAction()},
    };
    for (int column = 0; column < 4; ++column) {
        const auto &[role, name, value, action] = expected[column];
        QAccessibleInterface *cell = table->tableInterface()->cellAt(0, column);
        QCOMPARE(cell->role(), role);
        QCOMPARE(cell->text(QAccessible::Name), name);
        QCOMPARE(cell->text(QAccessible::Value), value);
        QVERIFY(cell->actionInterface());
        QCOMPARE(cell->actionInterface()->actionNames().value(0), action);
    }
    // Pressing the button through assistive technology browses.
    table->tableInterface()->cellAt(0, 2)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QVERIFY(grid.log.contains("browse 2,0"));
}

void tst_CVVyrCellTypes::gridEditDialogKeepsCompleteRowsAndEscapeEndsTheEditFirst()
{
    CGridEditDlg dialog(2, "Map", "&Keys and values:", {"x", "y", "z", ""}, true, {}, "Note", "topic.htm");
    QVERIFY(dialog.Create());
    QVERIFY(!dialog.GetDlgItem(kIdHelp)->isHidden());
    QVERIFY(!dialog.GetDlgItem(CGridEditDlg::kIdSecondLabel)->isHidden());
    onNextModalDialog([&dialog](QDialog *) {
        CVVyrGrid &grid = *dialog.grid();
        QTRY_VERIFY(grid.hasFocus());
        grid.GotoCell(0, 0);
        QTest::keyClick(&grid, Qt::Key_F2);
        QVERIFY(grid.IsEditing());
        QTest::keyClicks(grid.GetEditor(), "changed");
        QTest::keyClick(grid.GetEditor(), Qt::Key_Escape);
        QVERIFY(!grid.IsEditing());
        QVERIFY(dialog.isVisible());
        QCOMPARE(grid.GetCellString(0, 0), QString("x"));
        QTest::keyClick(&grid, Qt::Key_Escape);
    });
    QCOMPARE(dialog.DoModal(), int(kEndCancel));
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

void tst_CVVyrCellTypes::gridEditDialogOffersUnusedChoicesAndItsButtonsWorkTheRows()
{
    CGridEditDlg dialog(1, "List", "&Items in order:", {"c", "a", "b"}, true, {"a", "x", "b", "c", "y"}, QString(),
                        std::string());
    QVERIFY(dialog.Create());
    dialog.show();
    CVVyrGrid &grid = *dialog.grid();
    CUGCell cell;
    grid.GetCellResolved(0, 3, cell);
    QCOMPARE(cell.cellType(), grid.DropListTypeId());
    QCOMPARE(cell.cellTypeParam(), int(ug::ParamEditable));
    QStringList entries;
    QCOMPARE(grid.OnCellTypeEvent(grid.DropListTypeId(), 0, 3, ug::DropListStart, std::intptr_t(&entries)), 1L);
    QCOMPARE(entries, QStringList({"x", "y"}));

    const auto press = [&dialog](unsigned id) { qobject_cast<QPushButton *>(dialog.GetDlgItem(id))->click(); };
    press(CGridEditDlg::kIdSort);
    QCOMPARE(rows(grid), QStringList({"a", "b", "c", ""}));
    grid.GotoCell(0, 2);
    press(CGridEditDlg::kIdMoveUp);
    QCOMPARE(rows(grid), QStringList({"a", "c", "b", ""}));
    press(CGridEditDlg::kIdMoveDown);
    QCOMPARE(rows(grid), QStringList({"a", "b", "c", ""}));
    grid.GotoCell(0, 0);
    press(CGridEditDlg::kIdDelete);
    QCOMPARE(rows(grid), QStringList({"b", "c", ""}));
}

QTEST_MAIN(tst_CVVyrCellTypes)
#include "tst_cvvyrcelltypes.moc"
