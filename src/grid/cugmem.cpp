#include "grid/cugmem.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace vyr {

CUGMem::CUGMem() = default;
CUGMem::~CUGMem() = default;

CUGMem::Row *CUGMem::row(long number) const
{
    if (number >= 0)
        return m_rows.find(number);
    const auto found = m_headingRows.find(number);
    return found == m_headingRows.end() ? nullptr : const_cast<Row *>(&found->second);
}

CUGMem::Row &CUGMem::rowForWriting(long number)
{
    if (number < 0)
        return m_headingRows[number];
    if (Row *stored = row(number))
        return *stored;
    return m_rows.findOrCreate(number);
}

const CUGCell *CUGMem::cellOf(const Row &row, int column)
{
    // A row written in every column up to this one holds it at its index.
    if (column >= 0 && column < row.size() && row[column].first == column)
        return &row[column].second;
    const auto found
        = std::lower_bound(row.begin(), row.end(), column,
                           [](const std::pair<int, CUGCell> &entry, int wanted) { return entry.first < wanted; });
    return found != row.end() && found->first == column ? &found->second : nullptr;
}

int CUGMem::InsertRow(long number)
{
    if (number < 0)
        return 1;
    m_rows.insertRow(number);
    return 0;
}

int CUGMem::DeleteRow(long number)
{
    if (number < 0)
        return 1;
    uncountRows(number, 1);
    m_rows.removeRow(number);
    return 0;
}

long CUGMem::InsertRows(long number, long count)
{
    if (number < 0 || count < 0)
        return 0;
    m_rows.insertRows(number, count);
    return count;
}

long CUGMem::DeleteRows(long number, long count)
{
    if (number < 0 || count < 0)
        return 0;
    uncountRows(number, count);
    m_rows.removeRows(number, count);
    return count;
}

int CUGMem::GetCell(int column, long number, CUGCell &cell)
{
    const Row *stored = row(number);
    const CUGCell *found = stored ? cellOf(*stored, column) : nullptr;
    if (!found)
        return 1;
    cell.addInfoFrom(*found);
    return 0;
}

CUGCell &CUGMem::cellForWriting(Row &row, int column)
{
    auto at = std::lower_bound(row.begin(), row.end(), column,
                               [](const std::pair<int, CUGCell> &entry, int wanted) { return entry.first < wanted; });
    if (at == row.end() || at->first != column)
        at = row.emplace(at, column, CUGCell());
    return at->second;
}

int CUGMem::SetCell(int column, long number, const CUGCell &cell)
{
    // What the grid stores is the whole cell: a property it left unset is
    // cleared, so that a cell once disabled or coloured can be restored.
    CUGCell &stored = cellForWriting(rowForWriting(number), column);
    if (number >= 0)
        uncount(column, &stored);
    stored.copyInfoFrom(cell);
    if (number >= 0)
        count(column, &stored);
    return 0;
}

int CUGMem::DeleteCell(int column, long number)
{
    if (Row *stored = row(number)) {
        if (number >= 0)
            uncount(column, cellOf(*stored, column));
        stored->erase(std::remove_if(stored->begin(), stored->end(),
                                     [column](const std::pair<int, CUGCell> &entry) { return entry.first == column; }),
                      stored->end());
    }
    return 0;
}

int CUGMem::PermuteTexts(const std::vector<int> &columns, long firstRow, const std::vector<long> &order)
{
    if (firstRow < 0)
        return CUGDataSource::PermuteTexts(columns, firstRow, order);
    // The rows are found once, in order (each in constant time), and keep
    // their place in memory; the texts leave their cells and go to their
    // new rows without a cell being copied.
    const std::size_t count = order.size();
    std::vector<Row *> rows(count);
    for (std::size_t i = 0; i < count; ++i)
        rows[i] = row(firstRow + long(i));
    std::vector<QString> texts(count);
    std::vector<char> hadText(count);
    for (const int column : columns) {
        for (std::size_t i = 0; i < count; ++i) {
            auto *cell = rows[i] ? const_cast<CUGCell *>(cellOf(*rows[i], column)) : nullptr;
            hadText[i] = cell && cell->isSet(CUGCell::Text);
            if (hadText[i])
                texts[i] = cell->takeText();
        }
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t from = std::size_t(order[i]);
            if (!hadText[from])
                continue;
            if (!rows[i])
                rows[i] = &rowForWriting(firstRow + long(i));
            cellForWriting(*rows[i], column).setText(std::move(texts[from]));
        }
    }
    return 0;
}

void CUGMem::uncount(int column, const CUGCell *cell)
{
    if (!cell || cell->textRef().isEmpty())
        return;
    const auto counted = m_textCounts.find(column);
    if (counted == m_textCounts.end())
        return;
    const auto found = counted->second.find(cell->textRef());
    if (found != counted->second.end() && --found.value() == 0)
        counted->second.erase(found);
}

void CUGMem::count(int column, const CUGCell *cell)
{
    if (!cell || cell->textRef().isEmpty())
        return;
    if (const auto counted = m_textCounts.find(column); counted != m_textCounts.end())
        ++counted->second[cell->textRef()];
}

void CUGMem::uncountRows(long first, long count)
{
    if (m_textCounts.empty() || count <= 0)
        return;
    m_rows.forEachFrom(first, [&](long number, Row &stored) {
        if (number >= first + count)
            return false;
        for (const auto &entry : m_textCounts)
            uncount(entry.first, cellOf(stored, entry.first));
        return true;
    });
}

long CUGMem::CountText(int column, const QString &text)
{
    auto counted = m_textCounts.find(column);
    if (counted == m_textCounts.end()) {
        QHash<QString, long> &counts = m_textCounts[column];
        m_rows.forEach([&](long, Row &stored) {
            if (const CUGCell *cell = cellOf(stored, column); cell && !cell->textRef().isEmpty())
                ++counts[cell->textRef()];
        });
        counted = m_textCounts.find(column);
    }
    return text.isEmpty() ? 0 : counted->second.value(text);
}

bool findMatches(const QString &text, const QString &wanted, int flags)
{
    const Qt::CaseSensitivity sensitivity
        = flags & CUGDataSource::FindIgnoreCase ? Qt::CaseInsensitive : Qt::CaseSensitive;
    return flags & CUGDataSource::FindPartial ? text.contains(wanted, sensitivity)
                                              : text.compare(wanted, sensitivity) == 0;
}

int findAlong(const QString &wanted, long &row, int flags, const FindWalk &walk)
{
    const bool up = flags & CUGDataSource::FindUp;
    std::optional<long> hit;
    walk(up ? row - 1 : row + 1, up, [&](long at, const QString &text) {
        if (findMatches(text, wanted, flags))
            hit = at;
        return !hit;
    });
    if (!hit)
        return 1;
    row = *hit;
    return 0;
}

int CUGMem::FindNext(const QString &text, int &column, long &number, int flags)
{
    // Only the rows past the start are visited, and the search stops at the
    // first hit, so a replace-all over a column stays linear.
    return findAlong(text, number, flags, [&](long first, bool up, const FindVisit &visit) {
        bool going = true;
        const auto visitRow = [&](long rowNumber, const Row &stored) {
            const CUGCell *cell = cellOf(stored, column);
            return going = !cell || visit(rowNumber, cell->text());
        };
        if (up) {
            if (first >= 0)
                m_rows.forEachBackFrom(first, visitRow);
            for (auto it = m_headingRows.rbegin(); going && it != m_headingRows.rend(); ++it) {
                if (it->first <= first)
                    visitRow(it->first, it->second);
            }
        } else {
            for (auto it = m_headingRows.begin(); going && it != m_headingRows.end(); ++it) {
                if (it->first >= first)
                    visitRow(it->first, it->second);
            }
            if (going)
                m_rows.forEachFrom(std::max(0L, first), visitRow);
        }
    });
}

std::size_t CUGMem::storedRows() const
{
    return m_rows.storedRows() + m_headingRows.size();
}

} // namespace vyr
