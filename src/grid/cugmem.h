// CUGMem: the in-memory data store. Sparse: a cell exists once something
// was written to it. Rows open and close in time that does not grow with
// their position, so a 100,000-row grid edits its middle as fast as its top.
// Heading rows (negative numbers) are kept apart and never shift. A column
// whose texts are counted (from the first CountText on) answers "how many
// rows hold this text" at once, so that a grid of 10,000 names checks a new
// one without reading the others.
#ifndef VYR_GRID_CUGMEM_H
#define VYR_GRID_CUGMEM_H

#include "grid/cugcell.h"
#include "grid/cugdatasource.h"
#include "grid/sparserows.h"

#include <QHash>
#include <QVarLengthArray>

#include <functional>
#include <map>
#include <utility>
#include <vector>

namespace vyr {

class CUGMem : public CUGDataSource
{
public:
    CUGMem();
    ~CUGMem() override;

    int InsertRow(long row) override;
    int DeleteRow(long row) override;
    long InsertRows(long row, long count) override;
    long DeleteRows(long row, long count) override;
    int GetCell(int column, long row, CUGCell &cell) override;
    int SetCell(int column, long row, const CUGCell &cell) override;
    int DeleteCell(int column, long row) override;
    int FindNext(const QString &text, int &column, long &row, int flags) override;
    // Moves the stored texts themselves, without copying a cell.
    int PermuteTexts(const std::vector<int> &columns, long firstRow, const std::vector<long> &order) override;
    long CountText(int column, const QString &text) override;

    // Rows with at least one stored cell, heading rows included.
    std::size_t storedRows() const;

private:
    // The cells of a row by column, sorted. Rows hold a few cells each,
    // kept inside the row itself up to a handful of columns.
    using Row = QVarLengthArray<std::pair<int, CUGCell>, 6>;

    Row *row(long number) const;
    Row &rowForWriting(long number);
    static const CUGCell *cellOf(const Row &row, int column);
    // The row's cell of the column, made empty when there is none.
    static CUGCell &cellForWriting(Row &row, int column);

    // Keeps the counted columns' counts as a body cell's text goes and comes.
    void uncount(int column, const CUGCell *cell);
    void count(int column, const CUGCell *cell);
    void uncountRows(long first, long count);

    SparseRows<Row> m_rows;
    // For each counted column, its non-empty texts by the rows holding them.
    std::map<int, QHash<QString, long>> m_textCounts;
    std::map<long, Row> m_headingRows;
};

// Whether `text` is what a find for `wanted` with `flags` looks for.
bool findMatches(const QString &text, const QString &wanted, int flags);

// The rows a find looks at: walk(first, up, visit) calls visit(row, text)
// for rows from `first` on, downwards with `up`, nearest first, until visit
// answers false; rows without a text may be passed over.
using FindVisit = std::function<bool(long row, const QString &text)>;
using FindWalk = std::function<void(long first, bool up, const FindVisit &visit)>;
// A find's search: the nearest row past `row` (before it with FindUp) whose
// text matches; 0 with `row` moved there, else 1.
int findAlong(const QString &wanted, long &row, int flags, const FindWalk &walk);

} // namespace vyr

#endif // VYR_GRID_CUGMEM_H
