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

void GridRowStore::uncountLoaded(long first, long count)
{
    if (m_loadedCounts.empty())
        return;
    const long end = std::min(first + count, long(m_records.size()));
    for (long row = std::max(0L, first); row < end; ++row) {
        const std::uint32_t entry = m_records[std::size_t(row)];
        if (entry == kMade)
            continue;
        for (auto &[column, counts] : m_loadedCounts) {
            const QString text = m_loader.LoadedText(entry & ~kMarked, column);
            if (text.isEmpty())
                continue;
            const auto found = counts.find(text);
            if (found != counts.end() && --found.value() == 0)
                counts.erase(found);
        }
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
        for (auto &[column, counts] : m_loadedCounts) {
            for (long i = 0; i < inserted; ++i) {
                if (QString text = m_loader.LoadedText(*firstRecord + std::size_t(i), column); !text.isEmpty())
                    ++counts[std::move(text)];
            }
        }
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
    if (m_loaded > 0 && firstRow >= 0) {
        // Along each cycle of the order, a row takes the texts of the next.
        // A cycle of loaded rows passes its records round; a cycle with a
        // made row in it moves texts between made rows only.
        std::vector<char> visited(count, 0);
        std::vector<std::size_t> cycle;
        for (std::size_t start = 0; start < count; ++start) {
            if (visited[start] || order[start] == long(start))
                continue;
            cycle.clear();
            bool anyMade = false;
            for (std::size_t at = start; !visited[at]; at = std::size_t(order[at])) {
                visited[at] = 1;
                cycle.push_back(at);
                anyMade = anyMade || !isLoaded(firstRow + long(at));
            }
            if (anyMade) {
                for (const std::size_t at : cycle)
                    MakeRow(firstRow + long(at));
                continue;
            }
            std::vector<std::uint32_t> taken(cycle.size());
            for (std::size_t i = 0; i < cycle.size(); ++i)
                taken[i] = m_records[std::size_t(firstRow) + std::size_t(order[cycle[i]])] & ~kMarked;
            // A row's mark says how its place was styled: it stays.
            for (std::size_t i = 0; i < cycle.size(); ++i) {
                std::uint32_t &entry = m_records[std::size_t(firstRow) + cycle[i]];
                entry = (entry & kMarked) | taken[i];
            }
        }
    }
    return m_cells.PermuteTexts(columns, firstRow, order);
}

int GridRowStore::FindNext(const QString &text, int &column, long &row, int flags)
{
    long hit = row;
    const bool found = m_cells.FindNext(text, column, hit, flags) == 0;
    if (m_loaded > 0) {
        // A loaded row between the start and the made row found is nearer.
        const auto matches = [&](long at) {
            const std::optional<std::size_t> record = recordOf(at);
            return record && findMatches(m_loader.LoadedText(*record, column), text, flags);
        };
        const long last = long(m_records.size()) - 1;
        if (flags & FindUp) {
            for (long at = std::min(row - 1, last); at >= 0 && (!found || at > hit); --at) {
                if (matches(at)) {
                    row = at;
                    return 0;
                }
            }
        } else {
            for (long at = std::max(0L, row + 1); at <= last && (!found || at < hit); ++at) {
                if (matches(at)) {
                    row = at;
                    return 0;
                }
            }
        }
    }
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
