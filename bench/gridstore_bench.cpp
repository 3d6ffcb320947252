// The grid's in-memory store against Qt's QStandardItemModel doing the same
// work: fill 100,000 rows x 5 columns of text, read every cell back, and open
// then close 1,000 rows in the middle. Ratios above 1 mean the store is
// faster.
#include "ratioreporter.h"

#include "grid/cugmem.h"

#include <QStandardItemModel>

namespace {

constexpr int kRows = 100000;
constexpr int kColumns = 5;
constexpr int kMiddleRows = 1000;

QString cellText(int column, int row)
{
    return QStringLiteral("r%1c%2").arg(row).arg(column);
}

void fillStore(vyr::CUGMem &store)
{
    vyr::CUGCell cell;
    for (int row = 0; row < kRows; ++row) {
        for (int column = 0; column < kColumns; ++column) {
            cell.setText(cellText(column, row));
            store.SetCell(column, row, cell);
        }
    }
}

void fillModel(QStandardItemModel &model)
{
    model.setRowCount(kRows);
    model.setColumnCount(kColumns);
    for (int row = 0; row < kRows; ++row) {
        for (int column = 0; column < kColumns; ++column)
            model.setItem(row, column, new QStandardItem(cellText(column, row)));
    }
}

void storeFill(benchmark::State &state)
{
    for (auto _ : state) {
        vyr::CUGMem store;
        fillStore(store);
    }
}

void modelFill(benchmark::State &state)
{
    for (auto _ : state) {
        QStandardItemModel model;
        fillModel(model);
    }
}

void storeRead(benchmark::State &state)
{
    vyr::CUGMem store;
    fillStore(store);
    // One cell reused for every read, as the grid resolves cells.
    vyr::CUGCell cell;
    for (auto _ : state) {
        qsizetype length = 0;
        for (int row = 0; row < kRows; ++row) {
            for (int column = 0; column < kColumns; ++column) {
                cell.clearAll();
                store.GetCell(column, row, cell);
                length += cell.textRef().size();
            }
        }
        benchmark::DoNotOptimize(length);
    }
}

void modelRead(benchmark::State &state)
{
    QStandardItemModel model;
    fillModel(model);
    for (auto _ : state) {
        qsizetype length = 0;
        for (int row = 0; row < kRows; ++row) {
            for (int column = 0; column < kColumns; ++column)
                length += model.item(row, column)->text().size();
        }
        benchmark::DoNotOptimize(length);
    }
}

void storeMiddleRows(benchmark::State &state)
{
    vyr::CUGMem store;
    fillStore(store);
    for (auto _ : state) {
        for (int i = 0; i < kMiddleRows; ++i)
            store.InsertRow(kRows / 2);
        for (int i = 0; i < kMiddleRows; ++i)
            store.DeleteRow(kRows / 2);
    }
}

void modelMiddleRows(benchmark::State &state)
{
    QStandardItemModel model;
    fillModel(model);
    for (auto _ : state) {
        for (int i = 0; i < kMiddleRows; ++i)
            model.insertRow(kRows / 2);
        for (int i = 0; i < kMiddleRows; ++i)
            model.removeRow(kRows / 2);
    }
}

} // namespace

BENCHMARK(storeFill)->Unit(benchmark::kMillisecond);
BENCHMARK(modelFill)->Unit(benchmark::kMillisecond);
BENCHMARK(storeRead)->Unit(benchmark::kMillisecond);
BENCHMARK(modelRead)->Unit(benchmark::kMillisecond);
BENCHMARK(storeMiddleRows)->Unit(benchmark::kMillisecond);
BENCHMARK(modelMiddleRows)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    return vyr::bench::runBenchmarks(
        argc, argv, {{"storeFill", "modelFill"}, {"storeRead", "modelRead"}, {"storeMiddleRows", "modelMiddleRows"}});
}
