#include "uikit/gridhistory.h"

#include <utility>

namespace vyr {

GridHistory::GridHistory(std::size_t limit)
    : m_limit(limit)
{
}

void GridHistory::begin(int column, long row)
{
    if (m_depth++ > 0)
        return;
    if (std::exchange(m_joinNext, false) && !m_undo.empty() && m_redo.empty()) {
        // Rows the last step made stay fresh in the joined one.
        m_open.emplace(std::move(m_undo.back()));
        m_undo.pop_back();
        return;
    }
    m_open.emplace();
    m_open->column = column;
    m_open->row = row;
    m_freshFirst = 0;
    m_freshEnd = 0;
}

void GridHistory::end()
{
    if (m_depth == 0 || --m_depth > 0)
        return;
    if (m_open && !m_open->changes.empty()) {
        m_undo.push_back(std::move(*m_open));
        m_redo.clear();
        while (m_undo.size() > m_limit)
            m_undo.pop_front();
    }
    m_open.reset();
}

void GridHistory::recordText(int column, long row, const QString &before, const QString &after)
{
    if (!m_open)
        return;
    GridChange change;
    change.kind = GridChange::Text;
    change.column = column;
    change.row = row;
    change.before = before;
    change.after = after;
    change.removedByUndo = row >= m_freshFirst && row < m_freshEnd;
    m_open->changes.push_back(std::move(change));
}

void GridHistory::recordRowsInserted(long row, long count)
{
    if (!m_open || count <= 0)
        return;
    GridChange change;
    change.kind = GridChange::RowsInserted;
    change.row = row;
    change.count = count;
    m_open->changes.push_back(std::move(change));
    // The run of fresh rows grows when the rows join it, and shifts when
    // they come before it; rows inserted apart start a new run.
    if (m_freshFirst == m_freshEnd || row > m_freshEnd) {
        m_freshFirst = row;
        m_freshEnd = row + count;
    } else if (row >= m_freshFirst) {
        m_freshEnd += count;
    } else {
        m_freshFirst += count;
        m_freshEnd += count;
    }
}

void GridHistory::recordRowsRemoved(long row, long count)
{
    const long end = row + count;
    if (end <= m_freshFirst) {
        m_freshFirst -= count;
        m_freshEnd -= count;
    } else if (row < m_freshEnd) {
        // Rows of the run go with others: keep what stays of the run only
        // when the removed rows lie inside it.
        if (row >= m_freshFirst && end <= m_freshEnd) {
            m_freshEnd -= count;
        } else {
            m_freshFirst = 0;
            m_freshEnd = 0;
        }
    }
}

void GridHistory::recordRowsDeleted(long row, long count, StoredRows cells)
{
    if (!m_open || count <= 0)
        return;
    GridChange change;
    change.kind = GridChange::RowsDeleted;
    change.row = row;
    change.count = count;
    change.rows = std::make_unique<GridChange::Rows>();
    change.rows->cells = std::move(cells);
    m_open->changes.push_back(std::move(change));
    recordRowsRemoved(row, count);
}

void GridHistory::recordTextsPermuted(long row, std::vector<long> order)
{
    if (!m_open || order.empty())
        return;
    GridChange change;
    change.kind = GridChange::TextsPermuted;
    change.row = row;
    change.count = long(order.size());
    change.rows = std::make_unique<GridChange::Rows>();
    change.rows->order = std::move(order);
    m_open->changes.push_back(std::move(change));
}

void GridHistory::clear()
{
    m_joinNext = false;
    m_undo.clear();
    m_redo.clear();
    if (m_open)
        m_open->changes.clear();
    m_freshFirst = 0;
    m_freshEnd = 0;
}

const GridStep *GridHistory::takeUndo()
{
    if (m_undo.empty())
        return nullptr;
    m_redo.push_back(std::move(m_undo.back()));
    m_undo.pop_back();
    return &m_redo.back();
}

const GridStep *GridHistory::takeRedo()
{
    if (m_redo.empty())
        return nullptr;
    m_undo.push_back(std::move(m_redo.back()));
    m_redo.pop_back();
    return &m_undo.back();
}

} // namespace vyr
