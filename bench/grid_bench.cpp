// The grid control against Qt's QTableView over a QStandardItemModel doing
// the same work, side by side: fill 100,000 rows x 5 columns of text, read
// every cell back, paint one full viewport, scroll one page (and paint it),
// and open then close 1,000 rows in the middle. Ratios above 1 mean the
// grid is faster. Runs on the offscreen platform unless told otherwise.
#include "ratioreporter.h"

#include "grid/cugctrl.h"

#include <QApplication>
#include <QHeaderView>
#include <QImage>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTableView>

#include <memory>

namespace {

constexpr int kRows = 100000;
constexpr int kColumns = 5;
constexpr int kMiddleRows = 1000;
const QSize kViewport(800, 600);

QString cellText(int column, int row)
{
    return QStringLiteral("r%1c%2").arg(row).arg(column);
}

struct Grid
{
    Grid()
    {
        grid.resize(kViewport);
        grid.SetColumnCount(kColumns);
        grid.SetRowCount(kRows);
        // Laid out as when shown, without showing.
        grid.setAttribute(Qt::WA_DontShowOnScreen);
        grid.show();
    }
    void fill()
    {
        for (int row = 0; row < kRows; ++row) {
            for (int column = 0; column < kColumns; ++column)
                grid.SetCellText(column, row, cellText(column, row));
        }
    }
    vyr::CUGCtrl grid;
};

struct Table
{
    Table()
    {
        view.resize(kViewport);
        view.setModel(&model);
        model.setRowCount(kRows);
        model.setColumnCount(kColumns);
        view.setAttribute(Qt::WA_DontShowOnScreen);
        view.show();
    }
    // The model is filled away from the view and then attached, the quick
    // way Qt code fills one: with the view attached each item costs the
    // view an update, and the fill takes minutes.
    void fill()
    {
        view.setModel(nullptr);
        for (int row = 0; row < kRows; ++row) {
            for (int column = 0; column < kColumns; ++column)
                model.setItem(row, column, new QStandardItem(cellText(column, row)));
        }
        view.setModel(&model);
    }
    QStandardItemModel model;
    QTableView view;
};

void gridFill(benchmark::State &state)
{
    for (auto _ : state) {
        Grid grid;
        grid.fill();
    }
}

void tableFill(benchmark::State &state)
{
    for (auto _ : state) {
        Table table;
        table.fill();
    }
}

void gridRead(benchmark::State &state)
{
    Grid grid;
    grid.fill();
    for (auto _ : state) {
        qsizetype length = 0;
        for (int row = 0; row < kRows; ++row) {
            for (int column = 0; column < kColumns; ++column)
                length += grid.grid.GetCellText(column, row).size();
        }
        benchmark::DoNotOptimize(length);
    }
}

void tableRead(benchmark::State &state)
{
    Table table;
    table.fill();
    for (auto _ : state) {
        qsizetype length = 0;
        for (int row = 0; row < kRows; ++row) {
            for (int column = 0; column < kColumns; ++column)
                length += table.model.data(table.model.index(row, column)).toString().size();
        }
        benchmark::DoNotOptimize(length);
    }
}

void gridPaint(benchmark::State &state)
{
    Grid grid;
    grid.fill();
    QImage image(kViewport, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state)
        grid.grid.render(&image);
}

void tablePaint(benchmark::State &state)
{
    Table table;
    table.fill();
    QImage image(kViewport, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state)
        table.view.render(&image);
}

void gridScroll(benchmark::State &state)
{
    Grid grid;
    grid.fill();
    QImage image(kViewport, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        const long next = grid.grid.GetTopRow() + grid.grid.GetPageRows();
        grid.grid.SetTopRow(next < kRows - 100 ? next : 0);
        grid.grid.render(&image);
    }
}

void tableScroll(benchmark::State &state)
{
    Table table;
    table.fill();
    QImage image(kViewport, QImage::Format_ARGB32_Premultiplied);
    QScrollBar *bar = table.view.verticalScrollBar();
    for (auto _ : state) {
        const int next = bar->value() + bar->pageStep();
        bar->setValue(next < bar->maximum() ? next : 0);
        table.view.render(&image);
    }
}

void gridMiddleRows(benchmark::State &state)
{
    Grid grid;
    grid.fill();
    for (auto _ : state) {
        for (int i = 0; i < kMiddleRows; ++i)
            grid.grid.InsertRow(kRows / 2);
        for (int i = 0; i < kMiddleRows; ++i)
            grid.grid.DeleteRow(kRows / 2);
    }
}

void tableMiddleRows(benchmark::State &state)
{
    Table table;
    table.fill();
    for (auto _ : state) {
        for (int i = 0; i < kMiddleRows; ++i)
            table.model.insertRow(kRows / 2);
        for (int i = 0; i < kMiddleRows; ++i)
            table.model.removeRow(kRows / 2);
    }
}

} // namespace

BENCHMARK(gridFill)->Unit(benchmark::kMillisecond);
BENCHMARK(tableFill)->Unit(benchmark::kMillisecond);
BENCHMARK(gridRead)->Unit(benchmark::kMillisecond);
BENCHMARK(tableRead)->Unit(benchmark::kMillisecond);
BENCHMARK(gridPaint)->Unit(benchmark::kMillisecond);
BENCHMARK(tablePaint)->Unit(benchmark::kMillisecond);
BENCHMARK(gridScroll)->Unit(benchmark::kMillisecond);
BENCHMARK(tableScroll)->Unit(benchmark::kMillisecond);
BENCHMARK(gridMiddleRows)->Unit(benchmark::kMillisecond);
BENCHMARK(tableMiddleRows)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    return vyr::bench::runBenchmarks(argc, argv,
                                     {{"gridFill", "tableFill"},
                                      {"gridRead", "tableRead"},
                                      {"gridPaint", "tablePaint"},
                                      {"gridScroll", "tableScroll"},
                                      {"gridMiddleRows", "tableMiddleRows"}});
}
