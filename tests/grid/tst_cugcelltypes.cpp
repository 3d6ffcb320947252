// The standard cell types, best fit, find and replace, and what assistive
// technology sees of a grid.
#include "recordinggrid.h"
#include "support/gridwindow.h"
#include "support/modalanswers.h"

#include "grid/cugstandardtypes.h"

#include <QAccessible>
#include <QCheckBox>
#include <QRadioButton>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

using namespace vyr;
using vyr::test::RecordingGrid;
using vyr::test::showActive;

class tst_CUGCellTypes : public QObject
{
    Q_OBJECT

private slots:
    void standardTypesHaveTheirIndices();
    void checkBoxCycles_data();
    void checkBoxCycles();
    void dropListOpensChoosesClosesAndRefuses();
    void dropListEntriesNeedALineFeed();
    void fitColumnWidthsMeasuresTheCells();
    void findAndReplace();
    void replaceAllReplacesOnlyWhatMayBeReplaced();
    void accessibleTable();
    void accessibleCellsSayWhereTheyAreAndWhatTheyHold();
};

void tst_CUGCellTypes::standardTypesHaveTheirIndices()
{
    RecordingGrid grid;
    // Unknown indices fall back to the normal type.
    QCOMPARE(grid.GetCellType(-3), grid.GetCellType(0));
    QCOMPARE(grid.GetCellType(99), grid.GetCellType(0));
    CUGCheckBoxType added;
    QCOMPARE(grid.RegisterCellType(&added), 4);
    QCOMPARE(grid.RegisterCellType(&added), 4);
    QCOMPARE(grid.RegisterCellType(nullptr), -1);
    QCOMPARE(added.RaiseEvent(0, 0, 77, 5), 1L);
    QCOMPARE(grid.log.last(), QString("event 77"));
}

void tst_CUGCellTypes::checkBoxCycles_data()
{
    QTest::addColumn<int>("parameter");
    QTest::addColumn<bool>("readOnly");
    QTest::addColumn<QList<int>>("values");
    QTest::newRow("two states") << 0 << false << QList<int>{1, 0, 1};
    QTest::newRow("three states") << int(ug::ParamCheckTriState) << false << QList<int>{1, 2, 0};
    QTest::newRow("read-only") << 0 << true << QList<int>{0, 0, 0};
}

void tst_CUGCellTypes::checkBoxCycles()
{
    QFETCH(int, parameter);
    QFETCH(bool, readOnly);
    QFETCH(QList<int>, values);
    RecordingGrid grid;
    QVERIFY(showActive(grid));
    CUGCell cell;
    cell.setCellType(2);
    cell.setCellTypeParam(parameter);
    cell.setReadOnly(readOnly);
    grid.SetColumnDefault(1, cell);
    grid.MoveToCell(1, 2);
    const QRect box = CUGCheckBoxType::BoxRect(grid.cellRect(1, 2).adjusted(0, 0, -1, -1), cell);

    const auto value = [&grid, &cell] {
        grid.GetCellResolved(1, 2, cell);
        return int(cell.number());
    };
    const QPoint beside(box.right() + 20, box.center().y());

    // A press in the box, a double click, then Space: one step each.
    QTest::mouseClick(grid.GetGridWidget(), Qt::LeftButton, {}, box.center());
    QCOMPARE(value(), values[0]);
    QTest::mouseDClick(grid.GetGridWidget(), Qt::LeftButton, {}, beside);
    QCOMPARE(value(), values[1]);
    QTest::keyClick(&grid, Qt::Key_Space);
    QCOMPARE(value(), values[2]);
    QCOMPARE(grid.log.count("event 53"), readOnly ? 0 : 3);
    QCOMPARE(grid.writes, readOnly ? 0 : 3);
    // A press beside the box does nothing.
    QTest::mouseClick(grid.GetGridWidget(), Qt::LeftButton, {}, beside);
    QCOMPARE(value(), values[2]);
}

void tst_CUGCellTypes::dropListOpensChoosesClosesAndRefuses()
{
    RecordingGrid grid;
    QVERIFY(showActive(grid));
    CUGCell cell;
    cell.setCellType(1);
    cell.setLabel("Red\nGreen\nBlue\n");
    grid.SetColumnDefault(0, cell);
    auto *type = static_cast<CUGDropListType *>(grid.GetCellType(1));

    const QRect rect = grid.cellRect(0, 3);
    grid.log.clear();
    QTest::mouseClick(grid.GetGridWidget(), Qt::LeftButton, {}, QPoint(rect.right() - 3, rect.center().y()));
    QVERIFY(type->IsListOpen());
    QCOMPARE(grid.GetCurrentRow(), 3L);
    CUGLstBox *list = type->ListBox();
    QCOMPARE(list->count(), 3);
    QCOMPARE(list->item(2)->text(), QString("Blue"));
    QCOMPARE(list->currentRow(), -1);
    QVERIFY(grid.log.contains("event 100"));

    grid.log.clear();
    grid.writes = 0;
    list->setCurrentRow(1);
    QTest::keyClick(list, Qt::Key_Return);
    QCOMPARE(grid.log.filter("event"), QStringList({"event 102", "event 101", "event 103"}));
    QCOMPARE(grid.GetCellText(0, 3), QString("Green"));
    QCOMPARE(grid.writes, 1);
    QTRY_VERIFY(!type->IsListOpen());

    // Enter on the cell opens it again; Escape closes it without a choice.
    QTest::keyClick(&grid, Qt::Key_Return);
    QVERIFY(type->IsListOpen());
    grid.log.clear();
    QTest::keyClick(type->ListBox(), Qt::Key_Escape);
    QTRY_VERIFY(!type->IsListOpen());
    QVERIFY(grid.log.filter("event 10").isEmpty());
    QCOMPARE(grid.GetCellText(0, 3), QString("Green"));

    // Moving elsewhere closes an open list.
    QVERIFY(type->OpenList(0, 3));
    grid.MoveToCell(1, 1);
    QTRY_VERIFY(!type->IsListOpen());

    // The hooks may keep the list shut, change it or refuse the choice.
    grid.MoveToCell(0, 0);
    grid.typeEvent = [](int, long, int message, std::intptr_t) { return message == ug::DropListStart ? 0L : 1L; };
    QVERIFY(!type->OpenList(0, 0));
    QVERIFY(!type->IsListOpen());
    grid.typeEvent = [](int, long, int message, std::intptr_t parameter) {
        if (message == ug::DropListStart)
            reinterpret_cast<QStringList *>(parameter)->append("added");
        return message == ug::DropListSelect ? 0L : 1L;
    };
    QVERIFY(type->OpenList(0, 0));
    QCOMPARE(type->ListBox()->count(), 4);
    type->ListBox()->setCurrentRow(3);
    type->ListBox()->chooseCurrent();
    QVERIFY(grid.GetCellText(0, 0).isNull());
    QTRY_VERIFY(!type->IsListOpen());

    cell.setReadOnly(true);
    grid.SetCell(0, 1, cell);
    QVERIFY(!type->OpenList(0, 1));
}

void tst_CUGCellTypes::dropListEntriesNeedALineFeed()
{
    QCOMPARE(CUGDropListType::EntriesOf("a\nb\n"), QStringList({"a", "b"}));
    QCOMPARE(CUGDropListType::EntriesOf("a\nb"), QStringList({"a"}));
    QCOMPARE(CUGDropListType::EntriesOf(""), QStringList());
    QCOMPARE(CUGDropListType::EntriesOf("\n"), QStringList({""}));
}

void tst_CUGCellTypes::fitColumnWidthsMeasuresTheCells()
{
    RecordingGrid grid(3, 10);
    QVERIFY(showActive(grid));
    grid.SetCellText(0, 4, "a rather long text in one cell");
    grid.SetCellText(0, 9, QString(200, QChar('w')));
    grid.SetCellText(0, -1, "Heading that is longer still than the rest");
    grid.SetCellText(1, 0, "");
    QCOMPARE(grid.FitColumnWidths(0, 1, 5, 0), 0);
    CUGCell cell;
    grid.GetCellResolved(0, 4, cell);
    QSize size;
    grid.GetCellType(0)->MeasureCell(size, cell);
    QCOMPARE(grid.GetColumnWidth(0), size.width() + 2);
    QVERIFY(grid.GetColumnWidth(1) >= 3);
    // Flag 1 measures the headings too; a width never passes the area.
    QCOMPARE(grid.FitColumnWidths(0, 0, 5, 1), 0);
    QVERIFY(grid.GetColumnWidth(0) > size.width() + 2);
    QCOMPARE(grid.FitColumnWidths(0, 0, 10, 0), 0);
    QCOMPARE(grid.GetColumnWidth(0), grid.GetGridWidget()->width());
    // A heading column may take up to 1,024 pixels.
    grid.SetCellText(-1, 2, QString(400, QChar('w')));
    QCOMPARE(grid.FitColumnWidths(-1, -1, 10, 0), 0);
    QCOMPARE(grid.GetColumnWidth(-1), 1024);
}

void tst_CUGCellTypes::findAndReplace()
{
    RecordingGrid grid(2, 20);
    QVERIFY(showActive(grid));
    grid.SetCellText(0, 2, "Alpha");
    grid.SetCellText(0, 7, "alphabet");
    grid.SetCellText(0, 12, "beta");
    grid.SetCellText(1, 15, "alpha in column 1");
    grid.MoveToCell(0, 0);

    const int partialAnyCase = ug::FindPartial | ug::FindIgnoreCase;
    QCOMPARE(grid.FindReplace("alpha", {}, partialAnyCase, CUGCtrl::FindNextRequest), 0);
    QCOMPARE(grid.GetCurrentRow(), 2L);
    QCOMPARE(grid.FindReplace("alpha", {}, partialAnyCase, CUGCtrl::FindNextRequest), 0);
    QCOMPARE(grid.GetCurrentRow(), 7L);
    QCOMPARE(grid.FindReplace("alpha", {}, partialAnyCase | ug::FindUp, CUGCtrl::FindNextRequest), 0);
    QCOMPARE(grid.GetCurrentRow(), 2L);

    // Whole and case-sensitive: only "Alpha"; nothing below it.
    test::ShownMessage shown;
    test::answerNextMessageBox(&shown);
    QCOMPARE(grid.FindReplace("Alpha", {}, 0, CUGCtrl::FindNextRequest), 1);
    QCOMPARE(shown.caption, QString("Not Found"));
    QCOMPARE(shown.text, QString("Item not found"));
    QCOMPARE(grid.GetCurrentRow(), 2L);
    // A Replace that finds nothing leaves the current cell as it is.
    test::answerNextMessageBox(&shown);
    QCOMPARE(grid.FindReplace("zzz", "lost", partialAnyCase | ug::FindReplace, CUGCtrl::ReplaceRequest), 1);
    QCOMPARE(grid.GetCellText(0, 2), QString("Alpha"));

    // Replace replaces the hit in the current cell, then finds the next one.
    QCOMPARE(grid.FindReplace("alpha", "omega", partialAnyCase | ug::FindReplace, CUGCtrl::ReplaceRequest), 0);
    QCOMPARE(grid.GetCellText(0, 2), QString("omega"));
    QCOMPARE(grid.GetCurrentRow(), 7L);
    // A replacement holding what is searched for is not found again.
    test::answerNextMessageBox(&shown);
    QCOMPARE(grid.FindReplace("alpha", "alphas", partialAnyCase | ug::FindReplace, CUGCtrl::ReplaceRequest), 0);
    QCOMPARE(grid.GetCellText(0, 7), QString("alphasbet"));
    QCOMPARE(grid.GetCurrentRow(), 7L);

    // Control+F opens the dialog; its boxes make the store's flags.
    QTest::keyClick(&grid, Qt::Key_F, Qt::ControlModifier);
    CUGFindDialog *dialog = grid.GetFindDialog();
    QVERIFY(dialog && dialog->isVisible());
    QCOMPARE(dialog->storeFlags(), partialAnyCase);
    dialog->wholeWordBox()->setChecked(true);
    dialog->matchCaseBox()->setChecked(true);
    dialog->upButton()->setChecked(true);
    QCOMPARE(dialog->storeFlags(), int(ug::FindUp));
    dialog->setReplaceDialog(true);
    QCOMPARE(dialog->storeFlags(), int(ug::FindReplace));
    dialog->setReplaceDialog(false);
    dialog->downButton()->setChecked(true);
    QTest::keyClicks(dialog->findEdit(), "beta");
    QTest::mouseClick(dialog->findNextButton(), Qt::LeftButton);
    QCOMPARE(grid.GetCurrentRow(), 12L);
}

void tst_CUGCellTypes::replaceAllReplacesOnlyWhatMayBeReplaced()
{
    RecordingGrid grid(2, 9);
    const QStringList texts{"Item 0", "Item 1", "555-0101", "item 3", "Item", "Item 5", "Item 6", "Item #", "Item 8"};
    for (long row = 0; row < texts.size(); ++row)
        grid.SetCellText(0, row, texts[row]);
    grid.SetCellText(1, 1, "Item");
    CUGCell readOnly;
    grid.GetCellResolved(0, 5, readOnly);
    readOnly.setReadOnly(true);
    grid.SetCell(0, 5, readOnly);
    grid.endEdit = [](const QString &text, bool) { return text != "Row 6" ? 1 : 0; };
    grid.verify = [](QChar &character) { return character != u'#'; };
    grid.GotoCell(0, 1);
    QCOMPARE(grid.FindReplace("Item", "Row", ug::FindPartial | ug::FindReplace, CUGCtrl::ReplaceAllRequest), 0);
    // From the current cell down, in its column only, never where a hook or read-only says no.
    const QStringList replaced{"Item 0", "Row 1", "555-0101", "item 3", "Row", "Item 5", "Item 6", "Item #", "Row 8"};
    for (long row = 0; row < replaced.size(); ++row)
        QCOMPARE(grid.GetCellText(0, row), replaced[row]);
    QCOMPARE(grid.GetCellText(1, 1), QString("Item"));

    // Whole-text matching ignoring case replaces the whole text.
    grid.GotoCell(0, 0);
    QCOMPARE(grid.FindReplace("ITEM 3", "three", ug::FindIgnoreCase | ug::FindReplace, CUGCtrl::ReplaceAllRequest), 0);
    QCOMPARE(grid.GetCellText(0, 3), QString("three"));
}

void tst_CUGCellTypes::accessibleTable()
{
    RecordingGrid grid(3, 4);
    QVERIFY(showActive(grid));
    grid.SetCellText(1, -1, "Heading");
    grid.SetCellText(1, 2, "value");
    grid.MoveToCell(1, 2);
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(&grid);
    QVERIFY(iface);
    QCOMPARE(iface->role(), QAccessible::Table);
    QAccessibleTableInterface *table = iface->tableInterface();
    QVERIFY(table);
    QCOMPARE(table->rowCount(), 4);
    QCOMPARE(table->columnCount(), 3);
    QCOMPARE(iface->childCount(), 12);
    QAccessibleInterface *cell = table->cellAt(2, 1);
    QVERIFY(cell);
    QCOMPARE(cell->text(QAccessible::Name), QString("value"));
    QCOMPARE(iface->indexOfChild(cell), 7);
    QCOMPARE(iface->child(7), cell);
    QCOMPARE(iface->focusChild(), cell);
    QVERIFY(cell->state().selected);
    QAccessibleTableCellInterface *asCell = cell->tableCellInterface();
    QVERIFY(asCell);
    const QList<QAccessibleInterface *> headers = asCell->columnHeaderCells();
    QCOMPARE(headers.size(), 1);
    QCOMPARE(headers[0]->role(), QAccessible::ColumnHeader);
    QCOMPARE(headers[0]->text(QAccessible::Name), QString("Heading"));
    QCOMPARE(table->columnDescription(1), QString("Heading"));
    QCOMPARE(table->selectedCellCount(), 1);
    QVERIFY(table->selectRow(3));
    QCOMPARE(grid.GetCurrentRow(), 3L);

    // Writes go through the edit hooks and never into a read-only cell.
    table->cellAt(0, 0)->setText(QAccessible::Value, "written");
    QCOMPARE(grid.GetCellText(0, 0), QString("written"));
    CUGCell readOnly;
    grid.GetCellResolved(1, 2, readOnly);
    readOnly.setReadOnly(true);
    grid.SetCell(1, 2, readOnly);
    cell->setText(QAccessible::Value, "changed");
    QCOMPARE(grid.GetCellText(1, 2), QString("value"));
    grid.endEdit = [](const QString &, bool) { return 0; };
    table->cellAt(0, 0)->setText(QAccessible::Value, "refused");
    QCOMPARE(grid.GetCellText(0, 0), QString("written"));

    // The cells go when the shape changes, and come back for the new one.
    QAccessibleTableModelChangeEvent reset(&grid, QAccessibleTableModelChangeEvent::ModelReset);
    table->modelChange(&reset);
    grid.SetRowCount(2);
    QVERIFY(!table->cellAt(3, 1));
    QCOMPARE(table->cellAt(1, 1)->text(QAccessible::Name), QString("Heading"));
}

// A listener moving through a grid hears every cell: its column and row, its
// tick, whether it can be changed, and a text even when it is empty; cells of
// a grid that is not shown are not showing.
void tst_CUGCellTypes::accessibleCellsSayWhereTheyAreAndWhatTheyHold()
{
    RecordingGrid grid(3, 2);
    QVERIFY(showActive(grid));
    grid.SetCellText(0, -1, "Name");
    grid.SetCellText(1, -1, "Ticked");
    grid.SetRowNameColumn(0);
    grid.setColumnDefault(1, [](CUGCell &cell) { cell.setCellType(ug::CheckBoxCellType); });
    grid.SetCellText(0, 0, "alpha");
    grid.SetCellText(1, 0, "1");
    grid.SetCellText(1, 1, "0");
    grid.enabled = [](int column, long row) { return !(column == 2 && row == 0); };
    QAccessibleTableInterface *table = QAccessible::queryAccessibleInterface(&grid)->tableInterface();
    struct Expected
    {
        int column;
        long row;
        QAccessible::Role role;
        const char *name;
        const char *description;
        bool checked;
        bool enabled;
    };
    const Expected expected[] = {
        {0, 0, QAccessible::Cell, "alpha", "Name, alpha", false, true},
        {1, 0, QAccessible::CheckBox, "alpha", "Ticked, alpha", true, true},
        {2, 0, QAccessible::Cell, "alpha", "alpha", false, false},
        {0, 1, QAccessible::Cell, "Name", "Name, Row 2", false, true},
        {1, 1, QAccessible::CheckBox, "Row 2", "Ticked, Row 2", false, true},
    };
    for (const Expected &want : expected) {
        const QString where = QStringLiteral("%1,%2").arg(want.column).arg(want.row);
        QAccessibleInterface *cell = table->cellAt(int(want.row), want.column);
        QVERIFY2(cell, qPrintable(where));
        QCOMPARE(cell->role(), want.role);
        QCOMPARE(cell->text(QAccessible::Name), QString(want.name));
        QCOMPARE(cell->text(QAccessible::Description), QString(want.description));
        QCOMPARE(bool(cell->state().checked), want.checked);
        QCOMPARE(bool(cell->state().disabled), !want.enabled);
        QVERIFY2(cell->textInterface(), qPrintable(where));
        QCOMPARE(cell->textInterface()->text(0, -1), cell->text(QAccessible::Value));
        QVERIFY(!cell->state().invisible);
    }
    // The editor over a cell is named as the cell's place, not left silent.
    QVERIFY(grid.editAt(0, 1));
    QCOMPARE(grid.GetEditor()->accessibleName(), QString("Name"));
    QCOMPARE(grid.GetEditor()->accessibleDescription(), QString("Name, Row 2"));
    grid.CancelEdit();
    grid.hide();
    QVERIFY(table->cellAt(0, 0)->state().invisible);
}

QTEST_MAIN(tst_CUGCellTypes)
#include "tst_cugcelltypes.moc"
