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

bool GridHistory::forgetIfClosed()
{
    if (m_open)
        return false;
    clear();
    return true;
}

GridChange &GridHistory::push(GridChange::Kind kind, long row, long count)
{
    GridChange &change = m_open->changes.emplace_back();
    change.kind = kind;
    change.row = row;
    change.count = count;
    return change;
}

void GridHistory::recordText(int column, long row, const QString &before, const QString &after)
{
    if (forgetIfClosed())
        return;
    GridChange &change = push(GridChange::Text, row, 0);
    change.column = column;
    change.before = before;
    change.after = after;
    change.removedByUndo = isFreshRow(row);
}

void GridHistory::recordRowsInserted(long row, long count)
{
    if (forgetIfClosed() || count <= 0)
        return;
    push(GridChange::RowsInserted, row, count);
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

void GridHistory::recordRowsDeleted(long row, long count, StoredRows cells)
{
    if (forgetIfClosed() || count <= 0)
        return;
    push(GridChange::RowsDeleted, row, count).rows = std::make_unique<GridChange::Rows>(GridChange::Rows{std::move(cells), {}});
    // Rows of the fresh run shift up, or - when others go with them - the
    // run is given up.
    const long end = row + count;
    if (end <= m_freshFirst) {
        m_freshFirst -= count;
        m_freshEnd -= count;
    } else if (row < m_freshEnd) {
        if (row >= m_freshFirst && end <= m_freshEnd) {
            m_freshEnd -= count;
        } else {
            m_freshFirst = 0;
            m_freshEnd = 0;
        }
    }
}

void GridHistory::recordTextsPermuted(long row, std::vector<long> order)
{
    if (forgetIfClosed() || order.empty())
        return;
    const long count = long(order.size());
    push(GridChange::TextsPermuted, row, count).rows
        = std::make_unique<GridChange::Rows>(GridChange::Rows{{}, std::move(order)});
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
