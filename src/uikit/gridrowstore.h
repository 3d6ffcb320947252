// GridRowStore: the data store of every list grid (CVVyrGrid).
//
// A row is either made - its cells kept in a CUGMem, as any grid keeps
// them - or loaded: a record of the grid's row model with no cells yet. The
// store keeps only the record's number for it; the Loader (the grid) says
// what texts the record's cells hold, and makes its cells the first time
// one of them is read or written (a paint, a screen reader, an edit). From
// then on the row is a made row like any other.
//
// Texts of loaded rows are answered from the records without making them:
// the counts of a column's texts, searches, and texts moving between rows (a
// sort, a move). A loaded row's cells must follow from its record's texts
// alone, so that a loaded row that takes another loaded row's texts is
// simply that row's record; a loaded row that takes a made row's texts is
// made first, so that it moves as a made row does, and a made row takes a
// loaded row's texts as its record has them.
#ifndef VYR_UIKIT_GRIDROWSTORE_H
#define VYR_UIKIT_GRIDROWSTORE_H

#include "grid/cugmem.h"

#include <QHash>
#include <QString>

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace vyr {

class GridRowStore final : public CUGDataSource
{
public:
    class Loader
    {
    public:
        virtual ~Loader();
        // The text the record's cell of `column` holds once made.
        virtual QString LoadedText(std::size_t record, int column) = 0;
        // Makes the cells of `row`, which shows the record; the row is no
        // longer loaded while this runs. `restyled`: the grid's look changed
        // since the row was loaded (MarkLoadedRows).
        virtual void MakeLoadedRow(long row, std::size_t record, bool restyled) = 0;
    };

    explicit GridRowStore(Loader &loader);
    ~GridRowStore() override;

    // The records a loaded row may show are those below this; an
    // InsertRows that would load any other opens no row. A row's entry
    // keeps its record beside a mark in the top bit, and all ones is a
    // made row: the record with every lower bit set is not a record.
    static constexpr std::size_t kRecordLimit = 0x7fffffffu;
    // The rows opened by the next InsertRows are loaded, showing the
    // records `firstRecord`, `firstRecord` + 1, ...
    void LoadNextRows(std::size_t firstRecord) { m_nextRecord = firstRecord; }
    // The record a loaded row shows; nothing for a made row.
    std::optional<std::size_t> recordOf(long row) const;
    bool isLoaded(long row) const { return recordOf(row).has_value(); }
    long loadedRows() const { return m_loaded; }
    // Makes the row's cells, when it is loaded.
    void MakeRow(long row);
    // Marks every loaded row: the grid's look changed since it was loaded.
    void MarkLoadedRows();
    // The loaded rows from `row` on are about to leave the grid (deleted,
    // or cut off by a smaller row count): they are forgotten unmade.
    void ForgetRows(long row, long count);

    int InsertRow(long row) override;
    int DeleteRow(long row) override;
    long InsertRows(long row, long count) override;
    long DeleteRows(long row, long count) override;
    int GetCell(int column, long row, CUGCell &cell) override;
    int SetCell(int column, long row, const CUGCell &cell) override;
    int DeleteCell(int column, long row) override;
    int PermuteTexts(const std::vector<int> &columns, long firstRow, const std::vector<long> &order) override;
    int FindNext(const QString &text, int &column, long &row, int flags) override;
    long CountText(int column, const QString &text) override;

private:
    // A made row, in m_records.
    static constexpr std::uint32_t kMade = 0xffffffffu;
    // The mark of MarkLoadedRows, beside a loaded row's record.
    static constexpr std::uint32_t kMarked = 0x80000000u;

    // Adds `by` to the counts of the record's texts.
    void countRecord(std::size_t record, long by);
    void uncountLoaded(long first, long count);
    QHash<QString, long> &loadedCounts(int column);

    Loader &m_loader;
    CUGMem m_cells;
    // Per row, the record it shows while it is loaded (with the mark), or
    // kMade; empty while no row is loaded.
    std::vector<std::uint32_t> m_records;
    long m_loaded = 0;
    std::optional<std::size_t> m_nextRecord;
    // For each column asked about, the non-empty texts of the loaded rows by
    // the rows holding them.
    std::map<int, QHash<QString, long>> m_loadedCounts;
};

} // namespace vyr

#endif // VYR_UIKIT_GRIDROWSTORE_H
