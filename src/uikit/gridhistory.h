// GridHistory: what each thing a person did changed in a grid, so that it
// can be undone and redone.
//
// A step is opened (begin) before a person's action and closed (end) after
// it; steps opened inside an open step join it. While a step is open the
// grid reports every change of a cell's text and every row inserted or
// deleted. A change reported outside any step (a page loading its rows, a
// format change) makes the recorded steps meaningless: it clears them.
//
// The history keeps at most `limit` steps; the oldest go first.
#ifndef VYR_UIKIT_GRIDHISTORY_H
#define VYR_UIKIT_GRIDHISTORY_H

#include "grid/cugcell.h"

#include <QString>

#include <cstddef>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

namespace vyr {

// The stored cells of a run of rows, by row and then by column; a column
// with nothing stored has no value.
using StoredRows = std::vector<std::vector<std::optional<CUGCell>>>;

struct GridChange
{
    enum Kind { Text, RowsInserted, RowsDeleted, TextsPermuted };

    Kind kind = Text;
    int column = 0;
    long row = 0;
    // RowsInserted and RowsDeleted: how many rows from `row`.
    long count = 0;
    QString before;
    QString after;
    // A text written into a row the same step inserted: undoing the step
    // removes the row, so the text need not be put back first.
    bool removedByUndo = false;
    // What the rare kinds carry, kept apart so that the common change - a
    // text - stays small.
    struct Rows
    {
        // RowsDeleted: what the rows held.
        StoredRows cells;
        // TextsPermuted: row `row` + i took the texts of row `row` + order[i].
        std::vector<long> order;
    };
    std::unique_ptr<Rows> rows;
};

struct GridStep
{
    // A deque: a step of many thousand changes grows without moving them.
    std::deque<GridChange> changes;
    // The current cell when the step began, where undo leaves it.
    int column = -1;
    long row = -1;
};

class GridHistory
{
public:
    explicit GridHistory(std::size_t limit);

    // Opens a step (or joins the open one) at the current cell.
    void begin(int column, long row);
    // Closes the step opened by the matching begin; an outermost step that
    // changed nothing is dropped.
    void end();
    bool isOpen() const { return m_depth > 0; }
    // The next step joins the last one: a blank row made for an edit and
    // the edit are one action. cancelJoin when the edit does not happen.
    void joinNext() { m_joinNext = true; }
    void cancelJoin() { m_joinNext = false; }

    // Each record* adds to the open step, or clears the history when no
    // step is open.
    void recordText(int column, long row, const QString &before, const QString &after);
    // Whether the open step inserted the row (texts written there are
    // never put back by undo).
    bool isFreshRow(long row) const { return m_open && row >= m_freshFirst && row < m_freshEnd; }
    void recordRowsInserted(long row, long count);
    void recordRowsDeleted(long row, long count, StoredRows cells);
    void recordTextsPermuted(long row, std::vector<long> order);
    void clear();

    bool canUndo() const { return !m_undo.empty(); }
    bool canRedo() const { return !m_redo.empty(); }
    std::size_t undoCount() const { return m_undo.size(); }
    // The step to undo, moved to the redo list; null when there is none.
    const GridStep *takeUndo();
    // The step to redo, moved back to the undo list; null when there is none.
    const GridStep *takeRedo();

private:
    // Clears the history when no step is open; says whether it did.
    bool forgetIfClosed();
    GridChange &push(GridChange::Kind kind, long row, long count);

    std::size_t m_limit;
    int m_depth = 0;
    bool m_joinNext = false;
    std::optional<GridStep> m_open;
    std::deque<GridStep> m_undo;
    std::deque<GridStep> m_redo;
    // Rows the open step inserted, as one run [first, end): texts written
    // there need no undo of their own.
    long m_freshFirst = 0;
    long m_freshEnd = 0;
};

} // namespace vyr

#endif // VYR_UIKIT_GRIDHISTORY_H
