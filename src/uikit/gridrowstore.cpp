#include "uikit/gridrowstore.h"

#include <algorithm>
#include <utility>

namespace vyr {

GridRowStore::Loader::~Loader() = default;

GridRowStore::GridRowStore(Loader &loader)
    : m_loader(loader)
{
}

GridRowStore::~GridRowStore() = default;

std::optional<std::size_t> GridRowStore::recordOf(long row) const
{
    if (row < 0 || std::size_t(row) >= m_records.size() || m_records[std::size_t(row)] == kMade)
        return std::nullopt;
    return m_records[std::size_t(row)] & ~kMarked;
}

void GridRowStore::MakeRow(long row)
{
    const std::optional<std::size_t> record = recordOf(row);
    if (!record)
        return;
    const bool restyled = m_records[std::size_t(row)] & kMarked;
    uncountLoaded(row, 1);
    m_records[std::size_t(row)] = kMade;
    if (--m_loaded == 0) {
        // Every row is made: the store is a plain one again.
        m_records = {};
        m_loadedCounts.clear();
    }
    m_loader.MakeLoadedRow(row, *record, restyled);
}

void GridRowStore::MarkLoadedRows()
{
    for (std::uint32_t &entry : m_records) {
        if (entry != kMade)
            entry |= kMarked;
    }
}

void GridRowStore::ForgetRows(long row, long count)
{
    const long end = std::min(row + count, long(m_records.size()));
    if (row < 0 || row >= end)
        return;
    uncountLoaded(row, end - row);
    for (long at = row; at < end; ++at) {
        std::uint32_t &entry = m_records[std::size_t(at)];
        if (entry != kMade) {
            entry = kMade;
            --m_loaded;
        }
    }
    if (m_loaded == 0) {
        m_records = {};
        m_loadedCounts.clear();
    }
}

QHash<QString, long> &GridRowStore::loadedCounts(int column)
{
    const auto [counted, added] = m_loadedCounts.try_emplace(column);
    if (added) {
        for (const std::uint32_t entry : m_records) {
            if (entry == kMade)
                continue;
            if (QString text = m_loader.LoadedText(entry & ~kMarked, column); !text.isEmpty())
                ++counted->second[std::move(text)];
        }
    }
    return counted->second;
}

void GridRowStore::countRecord(std::size_t record, long by)
{
    for (auto &[column, counts] : m_loadedCounts) {
        QString text = m_loader.LoadedText(record, column);
        if (text.isEmpty())
            continue;
        const auto found = counts.find(text);
        if (found == counts.end()) {
            if (by > 0)
                counts.insert(std::move(text), by);
        } else if ((found.value() += by) <= 0) {
            counts.erase(found);
        }
    }
}

void GridRowStore::uncountLoaded(long first, long count)
{
    if (m_loadedCounts.empty())
        return;
    const long end = std::min(first + count, long(m_records.size()));
    for (long row = std::max(0L, first); row < end; ++row) {
        if (const std::uint32_t entry = m_records[std::size_t(row)]; entry != kMade)
            countRecord(entry & ~kMarked, -1);
    }
}

int GridRowStore::InsertRow(long row)
{
    return InsertRows(row, 1) == 1 ? 0 : 1;
}

int GridRowStore::DeleteRow(long row)
{
    return DeleteRows(row, 1) == 1 ? 0 : 1;
}

long GridRowStore::InsertRows(long row, long count)
{
    const std::optional<std::size_t> firstRecord = std::exchange(m_nextRecord, std::nullopt);
    // A record the store cannot number is refused rather than taken for
    // another.
    if (firstRecord && (*firstRecord > kRecordLimit || std::size_t(std::max(0L, count)) > kRecordLimit - *firstRecord))
        return 0;
    const long inserted = m_cells.InsertRows(row, count);
    if (inserted <= 0)
        return inserted;
    if (firstRecord) {
        if (m_records.size() < std::size_t(row))
            m_records.resize(std::size_t(row), kMade);
        const auto at = m_records.insert(m_records.begin() + row, std::size_t(inserted), kMade);
        for (long i = 0; i < inserted; ++i)
            at[i] = std::uint32_t(*firstRecord + std::size_t(i));
        m_loaded += inserted;
        for (long i = 0; i < inserted && !m_loadedCounts.empty(); ++i)
            countRecord(*firstRecord + std::size_t(i), 1);
    } else if (std::size_t(row) < m_records.size()) {
        m_records.insert(m_records.begin() + row, std::size_t(inserted), kMade);
    }
    return inserted;
}

long GridRowStore::DeleteRows(long row, long count)
{
    if (row >= 0 && count > 0 && std::size_t(row) < m_records.size()) {
        ForgetRows(row, count);
        if (!m_records.empty()) {
            const std::size_t end = std::min(m_records.size(), std::size_t(row + count));
            m_records.erase(m_records.begin() + row, m_records.begin() + long(end));
        }
    }
    return m_cells.DeleteRows(row, count);
}

int GridRowStore::GetCell(int column, long row, CUGCell &cell)
{
    MakeRow(row);
    return m_cells.GetCell(column, row, cell);
}

int GridRowStore::SetCell(int column, long row, const CUGCell &cell)
{
    MakeRow(row);
    return m_cells.SetCell(column, row, cell);
}

int GridRowStore::DeleteCell(int column, long row)
{
    MakeRow(row);
    return m_cells.DeleteCell(column, row);
}

int GridRowStore::PermuteTexts(const std::vector<int> &columns, long firstRow, const std::vector<long> &order)
{
    const std::size_t count = order.size();
    bool anyLoaded = false;
    for (std::size_t i = 0; i < count && !anyLoaded; ++i)
        anyLoaded = order[i] != long(i) && (isLoaded(firstRow + long(i)) || isLoaded(firstRow + order[i]));
    if (!anyLoaded || firstRow < 0)
        return m_cells.PermuteTexts(columns, firstRow, order);
    // What each moving row takes, read before anything moves: a loaded
    // row's record, or a made row's texts (none where a cell has none).
    struct Taken
    {
        std::size_t at;
        std::optional<std::size_t> record;
        std::vector<std::optional<QString>> texts;
    };
    std::vector<Taken> moves;
    for (std::size_t i = 0; i < count; ++i) {
        if (order[i] == long(i))
            continue;
        const long from = firstRow + order[i];
        Taken taken{i, recordOf(from), {}};
        if (!taken.record) {
            for (const int column : columns) {
                CUGCell cell;
                m_cells.GetCell(column, from, cell);
                taken.texts.push_back(cell.isSet(CUGCell::Text) ? std::optional(cell.textRef()) : std::nullopt);
            }
        }
        moves.push_back(std::move(taken));
    }
    // A loaded row that takes a made row's texts is made first, from its
    // own record, as it would have been before its texts were replaced.
    for (const Taken &taken : moves) {
        if (!taken.record)
            MakeRow(firstRow + long(taken.at));
    }
    for (const Taken &taken : moves) {
        const long row = firstRow + long(taken.at);
        if (taken.record && isLoaded(row)) {
            // A loaded row takes a loaded row's record; its mark says how
            // its place was styled, and stays.
            std::uint32_t &entry = m_records[std::size_t(row)];
            if (!m_loadedCounts.empty()) {
                countRecord(entry & ~kMarked, -1);
                countRecord(*taken.record, 1);
            }
            entry = (entry & kMarked) | std::uint32_t(*taken.record);
            continue;
        }
        for (std::size_t c = 0; c < columns.size(); ++c) {
            const std::optional<QString> text
                = taken.record ? std::optional(m_loader.LoadedText(*taken.record, columns[c])) : taken.texts[c];
            CUGCell cell;
            const bool stored = m_cells.GetCell(columns[c], row, cell) == 0;
            if (!text && !stored)
                continue;
            if (text)
                cell.setText(*text);
            else
                cell.takeText();
            m_cells.SetCell(columns[c], row, cell);
        }
    }
    return 0;
}

int GridRowStore::FindNext(const QString &text, int &column, long &row, int flags)
{
    long hit = row;
    const bool found = m_cells.FindNext(text, column, hit, flags) == 0;
    // A loaded row between the start and the made row found is nearer.
    const auto walkLoaded = [&](long first, bool up, const FindVisit &visit) {
        const long last = long(m_records.size()) - 1;
        const long step = up ? -1 : 1;
        for (long at = up ? std::min(first, last) : std::max(0L, first);
             at >= 0 && at <= last && (!found || (up ? at > hit : at < hit)); at += step) {
            if (const std::optional<std::size_t> record = recordOf(at);
                record && !visit(at, m_loader.LoadedText(*record, column)))
                return;
        }
    };
    if (m_loaded > 0 && findAlong(text, row, flags, walkLoaded) == 0)
        return 0;
    if (!found)
        return 1;
    row = hit;
    return 0;
}

long GridRowStore::CountText(int column, const QString &text)
{
    const long made = m_cells.CountText(column, text);
    if (m_loaded == 0 || text.isEmpty())
        return made;
    return made + loadedCounts(column).value(text);
}

} // namespace vyr
