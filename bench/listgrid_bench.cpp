// The list grid against Qt's QTableView over a QStandardItemModel doing the
// same work, side by side, on 10,000 records of 5 columns: filling,
// disabling and enabling every cell, sorting random texts, deleting every
// other row, moving every other row down, pasting 5,000 rows and undoing
// that paste. Ratios above 1 mean the list grid is faster. Each run starts
// from a freshly filled grid and table, set up outside the timing.
#include "ratioreporter.h"

#include "uikit/cvvyrgrid.h"

#include <QApplication>
#include <QRandomGenerator>
#include <QStandardItemModel>
#include <QTableView>

#include <memory>

namespace {

constexpr int kRecords = 10000;
constexpr int kColumns = 5;
constexpr int kPasted = 5000;
const QSize kViewport(800, 600);

QStringList recordTexts(int row)
{
    // Random first texts, so that sorting has work to do.
    static const std::vector<QString> keys = [] {
        QRandomGenerator random(42);
        std::vector<QString> made;
        for (int i = 0; i < kRecords + kPasted; ++i)
            made.push_back(QString::number(random.generate(), 36));
        return made;
    }();
    QStringList texts{keys[std::size_t(row)]};
    for (int column = 1; column < kColumns; ++column)
        texts << QStringLiteral("r%1c%2").arg(row).arg(column);
    return texts;
}

QString pastedText()
{
    QString text;
    for (int row = 0; row < kPasted; ++row)
        text += recordTexts(kRecords + row).join(u'\t') + u'\n';
    return text;
}

struct ListGrid
{
    ListGrid()
        : grid(kColumns, true)
    {
        grid.resize(kViewport);
        grid.setAttribute(Qt::WA_DontShowOnScreen);
        grid.show();
        grid.InitializeGrid();
    }
    void fill()
    {
        for (int row = 0; row < kRecords; ++row)
            grid.AppendRowTexts(recordTexts(row));
    }
    void selectEveryOtherRow()
    {
        grid.GotoCell(0, 0);
        for (long row = 2; row < kRecords; row += 2)
            grid.SelectCell(0, row);
    }
    vyr::CVVyrGrid grid;
};

struct Table
{
    Table()
    {
        view.resize(kViewport);
        view.setModel(&model);
        model.setColumnCount(kColumns);
        view.setAttribute(Qt::WA_DontShowOnScreen);
        view.show();
    }
    static QList<QStandardItem *> items(const QStringList &texts)
    {
        QList<QStandardItem *> row;
        for (const QString &text : texts)
            row.append(new QStandardItem(text));
        return row;
    }
    // Filled away from the view, the quick way Qt code fills a model.
    void fill()
    {
        view.setModel(nullptr);
        for (int row = 0; row < kRecords; ++row)
            model.appendRow(items(recordTexts(row)));
        view.setModel(&model);
    }
    QStandardItemModel model;
    QTableView view;
};

// Runs `work` on a fresh `Subject`, prepared by `prepare` outside the timing.
template <class Subject, class Prepare, class Work>
void timed(benchmark::State &state, Prepare prepare, Work work)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto subject = std::make_unique<Subject>();
        prepare(*subject);
        state.ResumeTiming();
        work(*subject);
        state.PauseTiming();
        subject.reset();
        state.ResumeTiming();
    }
}

void gridFill(benchmark::State &state)
{
    timed<ListGrid>(state, [](ListGrid &) {}, [](ListGrid &g) { g.fill(); });
}

void tableFill(benchmark::State &state)
{
    timed<Table>(state, [](Table &) {}, [](Table &t) { t.fill(); });
}

void gridDisableEnable(benchmark::State &state)
{
    timed<ListGrid>(state, [](ListGrid &g) { g.fill(); },
                    [](ListGrid &g) {
                        g.grid.EnableGrid(false);
                        g.grid.EnableGrid(true);
                    });
}

// Every item read-only and back, as a model keeps per-cell editing state.
void tableDisableEnable(benchmark::State &state)
{
    timed<Table>(state, [](Table &t) { t.fill(); },
                 [](Table &t) {
                     for (const bool enabled : {false, true}) {
                         for (int row = 0; row < t.model.rowCount(); ++row)
                             for (int column = 0; column < kColumns; ++column)
                                 t.model.item(row, column)->setEnabled(enabled);
                     }
                 });
}

void gridSort(benchmark::State &state)
{
    timed<ListGrid>(state, [](ListGrid &g) { g.fill(); }, [](ListGrid &g) { g.grid.SortByColumn(0); });
}

void tableSort(benchmark::State &state)
{
    timed<Table>(state, [](Table &t) { t.fill(); }, [](Table &t) { t.model.sort(0); });
}

void gridDeleteEveryOther(benchmark::State &state)
{
    timed<ListGrid>(state,
                    [](ListGrid &g) {
                        g.fill();
                        g.selectEveryOtherRow();
                    },
                    [](ListGrid &g) { g.grid.DeleteSelectedRows(); });
}

void tableDeleteEveryOther(benchmark::State &state)
{
    timed<Table>(state, [](Table &t) { t.fill(); },
                 [](Table &t) {
                     for (int row = kRecords - 2; row >= 0; row -= 2)
                         t.model.removeRow(row);
                 });
}

void gridMoveEveryOtherDown(benchmark::State &state)
{
    timed<ListGrid>(state,
                    [](ListGrid &g) {
                        g.fill();
                        g.selectEveryOtherRow();
                    },
                    [](ListGrid &g) { g.grid.MoveSelectedRowsDown(); });
}

// The model cannot move rows: each is taken out and put in below.
void tableMoveEveryOtherDown(benchmark::State &state)
{
    timed<Table>(state, [](Table &t) { t.fill(); },
                 [](Table &t) {
                     for (int row = kRecords - 2; row >= 0; row -= 2)
                         t.model.insertRow(row + 1, t.model.takeRow(row));
                 });
}

void gridPaste(benchmark::State &state)
{
    const QString text = pastedText();
    timed<ListGrid>(state,
                    [](ListGrid &g) {
                        g.fill();
                        g.grid.GotoCell(0, g.grid.GetRowCount() - 1);
                    },
                    [&text](ListGrid &g) { g.grid.PasteText(text); });
}

// The same text cut into lines and fields, each line a row of items.
void tablePaste(benchmark::State &state)
{
    const QString text = pastedText();
    timed<Table>(state, [](Table &t) { t.fill(); },
                 [&text](Table &t) {
                     const QStringList lines = text.split(u'\n', Qt::SkipEmptyParts);
                     for (const QString &line : lines)
                         t.model.appendRow(Table::items(line.split(u'\t')));
                 });
}

void gridUndoPaste(benchmark::State &state)
{
    const QString text = pastedText();
    timed<ListGrid>(state,
                    [&text](ListGrid &g) {
                        g.fill();
                        g.grid.GotoCell(0, g.grid.GetRowCount() - 1);
                        g.grid.PasteText(text);
                    },
                    [](ListGrid &g) { g.grid.Undo(); });
}

void tableUndoPaste(benchmark::State &state)
{
    const QString text = pastedText();
    timed<Table>(state,
                 [&text](Table &t) {
                     t.fill();
                     for (const QString &line : text.split(u'\n', Qt::SkipEmptyParts))
                         t.model.appendRow(Table::items(line.split(u'\t')));
                 },
                 [](Table &t) { t.model.removeRows(kRecords, kPasted); });
}

} // namespace

BENCHMARK(gridFill)->Unit(benchmark::kMillisecond);
BENCHMARK(tableFill)->Unit(benchmark::kMillisecond);
BENCHMARK(gridDisableEnable)->Unit(benchmark::kMillisecond);
BENCHMARK(tableDisableEnable)->Unit(benchmark::kMillisecond);
BENCHMARK(gridSort)->Unit(benchmark::kMillisecond);
BENCHMARK(tableSort)->Unit(benchmark::kMillisecond);
BENCHMARK(gridDeleteEveryOther)->Unit(benchmark::kMillisecond);
BENCHMARK(tableDeleteEveryOther)->Unit(benchmark::kMillisecond);
BENCHMARK(gridMoveEveryOtherDown)->Unit(benchmark::kMillisecond);
BENCHMARK(tableMoveEveryOtherDown)->Unit(benchmark::kMillisecond);
BENCHMARK(gridPaste)->Unit(benchmark::kMillisecond);
BENCHMARK(tablePaste)->Unit(benchmark::kMillisecond);
BENCHMARK(gridUndoPaste)->Unit(benchmark::kMillisecond);
BENCHMARK(tableUndoPaste)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    return vyr::bench::runBenchmarks(argc, argv,
                                     {{"gridFill", "tableFill"},
                                      {"gridDisableEnable", "tableDisableEnable"},
                                      {"gridSort", "tableSort"},
                                      {"gridDeleteEveryOther", "tableDeleteEveryOther"},
                                      {"gridMoveEveryOtherDown", "tableMoveEveryOtherDown"},
                                      {"gridPaste", "tablePaste"},
                                      {"gridUndoPaste", "tableUndoPaste"}});
}
