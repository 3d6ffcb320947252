// Faults the grid control once had, each pinned by the test named after it:
// the focus trapped in an empty grid and a layout override that never ended.
// The others found in review are pinned beside the behaviour they broke, in
// tst_cugctrl and tst_cugcelltypes.
#include "recordinggrid.h"
#include "support/gridwindow.h"

#include <QLineEdit>
#include <QtTest>

using vyr::test::RecordingGrid;

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

} // namespace

class tst_CUGCtrlFaults : public QObject
{
    Q_OBJECT

private slots:
    void tabLeavesAGridWithoutCells_data();
    void tabLeavesAGridWithoutCells();
    void layoutOverrideThatSetsColumnWidthsEnds();
};

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
    vyr::test::GridWindow<RecordingGrid> ui(columns, rows);
    QVERIFY(ui.show());
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

QTEST_MAIN(tst_CUGCtrlFaults)
#include "tst_cugctrlfaults.moc"
