// CVVyrGrid: undo and redo - recording every change of a text and every
// row inserted or deleted while a person's action runs, and playing a step
// back or forward - and copying and pasting rows through the clipboard.
#include "uikit/cvvyrgrid.h"

#include "util/tabulartext.h"

#include <QClipboard>
#include <QGuiApplication>

#include <utility>

namespace vyr {

CVVyrGrid::UndoStep::UndoStep(CVVyrGrid &grid)
    : m_grid(grid)
{
    if (!m_grid.m_replaying)
        m_grid.m_history.begin(m_grid.GetCurrentCol(), m_grid.GetCurrentRow());
}

CVVyrGrid::UndoStep::~UndoStep()
{
    if (!m_grid.m_replaying)
        m_grid.m_history.end();
}

void CVVyrGrid::OnCellWrite(int column, long row, const CUGCell &cell)
{
    if (m_replaying || isMakingRow() || column < 0 || row < 0 || row >= GetRowCount())
        return;
    // Nothing to record and nothing to forget: the text need not be read.
    if (!m_history.isOpen() && !m_history.canUndo() && !m_history.canRedo())
        return;
    // A row the open step inserted goes when the step is undone: what its
    // cells held before need not be read.
    if (m_history.isFreshRow(row)) {
        m_history.recordText(column, row, QString(), cell.text());
        return;
    }
    const QString before = GetCellText(column, row);
    if (before != cell.text())
        m_history.recordText(column, row, before, cell.text());
}

void CVVyrGrid::OnRowsInserted(long row, long count)
{
    if (!m_replaying)
        m_history.recordRowsInserted(row, count);
}

void CVVyrGrid::OnRecordsDeleting(long, long) {}

void CVVyrGrid::OnRecordsRestored(long, long) {}

void CVVyrGrid::OnRowsDeleting(long row, long count)
{
    if (!m_takingBackInsertion)
        OnRecordsDeleting(row, count);
    if (!m_replaying)
        m_history.recordRowsDeleted(row, count, m_history.isOpen() ? storedRows(row, count) : StoredRows());
    // What undo puts back is made above; the rest goes unmade.
    m_rowStore.ForgetRows(row, count);
}

void CVVyrGrid::OnRowTextsPermuted(long row, const std::vector<long> &order)
{
    if (!m_replaying)
        m_history.recordTextsPermuted(row, order);
}

StoredRows CVVyrGrid::storedRows(long row, long count)
{
    StoredRows rows(static_cast<std::size_t>(count));
    for (long offset = 0; offset < count; ++offset) {
        auto &cells = rows[std::size_t(offset)];
        cells.resize(std::size_t(GetColumnCount()));
        for (int column = 0; column < GetColumnCount(); ++column) {
            CUGCell cell;
            if (GetCell(column, row + offset, cell) == ug::Success)
                cells[std::size_t(column)] = std::move(cell);
        }
    }
    return rows;
}

void CVVyrGrid::Undo()
{
    if (IsEditing() || !m_enabled)
        return;
    if (const GridStep *step = m_history.takeUndo())
        replay(*step, true);
}

void CVVyrGrid::Redo()
{
    if (IsEditing() || !m_enabled)
        return;
    if (const GridStep *step = m_history.takeRedo())
        replay(*step, false);
}

void CVVyrGrid::restoreText(int column, long row, const QString &text)
{
    const QString before = GetCellText(column, row);
    SetCellText(column, row, text);
    OnCellChange(column, row, ug::TextRestored);
    if (text != before && m_replacedAt.emplace(std::pair(row, column), m_replacedCells.size()).second)
        m_replacedCells.push_back({column, row, before});
}

void CVVyrGrid::tellReplacedCells()
{
    m_replacedAt.clear();
    for (const ReplacedCell &cell : std::exchange(m_replacedCells, {})) {
        if (cell.row < GetRowCount() && GetCellText(cell.column, cell.row) != cell.before)
            OnCellTextReplaced(cell.column, cell.row, cell.before);
    }
}

void CVVyrGrid::replay(const GridStep &step, bool undoing)
{
    m_replaying = true;
    BeginBatch();
    if (undoing)
        undoChanges(step);
    else
        redoChanges(step);
    tellReplacedCells();
    EndBatch();
    m_replaying = false;
    // Back where the step began, or as near as the rows allow.
    const long row = std::min(step.row, GetRowCount() - 1);
    if (step.column >= 0 && row >= 0)
        GotoCell(std::min(step.column, GetColumnCount() - 1), row);
    RepaintAll();
}

void CVVyrGrid::undoChanges(const GridStep &step)
{
    // Rows the step inserted one after another go in one deletion.
    long pendingRow = 0;
    long pendingCount = 0;
    const auto flush = [&] {
        if (pendingCount > 0) {
            const bool takingBack = std::exchange(m_takingBackInsertion, true);
            DeleteRows(pendingRow, pendingCount);
            m_takingBackInsertion = takingBack;
        }
        pendingCount = 0;
    };
    for (auto change = step.changes.rbegin(); change != step.changes.rend(); ++change) {
        if (change->kind == GridChange::RowsInserted) {
            tellReplacedCells();
            if (pendingCount == 0 || change->row + change->count != pendingRow)
                flush();
            pendingRow = change->row;
            pendingCount += change->count;
            continue;
        }
        if (change->kind == GridChange::Text && change->removedByUndo)
            continue;
        flush();
        // Rows move under what was told so far.
        if (change->kind != GridChange::Text)
            tellReplacedCells();
        switch (change->kind) {
        case GridChange::Text:
            restoreText(change->column, change->row, change->before);
            break;
        case GridChange::TextsPermuted: {
            const std::vector<long> &order = change->rows->order;
            std::vector<long> inverse(order.size());
            for (std::size_t i = 0; i < order.size(); ++i)
                inverse[std::size_t(order[i])] = long(i);
            moveRowTexts(change->row, inverse);
            break;
        }
        case GridChange::RowsDeleted:
            restoreRows(change->row, change->rows->cells);
            break;
        case GridChange::RowsInserted:
            break;
        }
    }
    flush();
}

void CVVyrGrid::restoreRows(long row, const StoredRows &rows)
{
    InsertRows(row, long(rows.size()));
    for (std::size_t offset = 0; offset < rows.size(); ++offset) {
        const auto &cells = rows[offset];
        for (int column = 0; column < int(cells.size()); ++column) {
            if (cells[std::size_t(column)])
                SetCell(column, row + long(offset), *cells[std::size_t(column)]);
        }
        for (int column = 0; column < int(cells.size()); ++column)
            OnCellChange(column, row + long(offset), ug::TextRestored);
    }
    OnRecordsRestored(row, long(rows.size()));
}

void CVVyrGrid::redoChanges(const GridStep &step)
{
    for (const GridChange &change : step.changes) {
        if (change.kind != GridChange::Text)
            tellReplacedCells();
        switch (change.kind) {
        case GridChange::Text:
            restoreText(change.column, change.row, change.after);
            break;
        case GridChange::RowsInserted:
            // The rows come back blank, set up as when they were added;
            // the step's texts follow.
            if (InsertRows(change.row, change.count) == ug::Success) {
                for (long offset = 0; offset < change.count; ++offset)
                    OnRowAdded(change.row + offset);
            }
            break;
        case GridChange::RowsDeleted:
            DeleteRows(change.row, change.count);
            break;
        case GridChange::TextsPermuted:
            moveRowTexts(change.row, change.rows->order);
            break;
        }
    }
}

// --- Clipboard

QString CVVyrGrid::SelectedRowsText()
{
    const std::vector<bool> marked = markedRows();
    TextTable table;
    for (long row = 0; row < GetRowCount(); ++row) {
        if (!marked[std::size_t(row)] || isNewRow(row))
            continue;
        StringList fields;
        fields.reserve(std::size_t(GetColumnCount()));
        for (int column = 0; column < GetColumnCount(); ++column)
            fields.push_back(GetCellString(row, column).toStdString());
        table.push_back(std::move(fields));
    }
    return QString::fromStdString(formatTabularText(table));
}

void CVVyrGrid::CopySelectedRows()
{
    const QString text = SelectedRowsText();
    if (!text.isEmpty())
        QGuiApplication::clipboard()->setText(text);
}

void CVVyrGrid::Paste()
{
    PasteText(QGuiApplication::clipboard()->text());
}

long CVVyrGrid::writePastedRecord(long row, int firstColumn, const StringList &fields)
{
    long refused = 0;
    for (std::size_t field = 0; field < fields.size(); ++field) {
        const int column = firstColumn + int(field);
        if (column >= GetColumnCount())
            break;
        // Cells nobody may write are passed over; a text a writable cell
        // refuses is counted, so that the caller can say so.
        CUGCell cell;
        GetCellResolved(column, row, cell);
        if (MayWriteCell(column, row, cell)
            && WriteCheckedText(column, row, QString::fromStdString(fields[field]), ug::TextPasted, cell)
                != ug::Success)
            ++refused;
    }
    return refused;
}

CVVyrGrid::PasteResult CVVyrGrid::PasteText(const QString &text)
{
    PasteResult result;
    if (!m_enabled || IsEditing())
        return result;
    const TextTable table = parseTabularText(text.toStdString());
    if (table.empty())
        return result;
    long startRow = GetCurrentRow();
    if (startRow < 0)
        startRow = m_keepNewRow ? GetRowCount() - 1 : 0;
    const bool onNewRow = isNewRow(startRow);
    const int firstColumn = onNewRow ? 0 : std::max(0, GetCurrentCol());
    const long records = recordCount();
    const long lines = long(table.size());
    const long overwritten = std::clamp(records - startRow, 0L, lines);
    UndoStep step(*this);
    collectRefusals();
    BeginBatch();
    for (long line = 0; line < overwritten; ++line) {
        result.refusedCells += writePastedRecord(startRow + line, firstColumn, table[std::size_t(line)]);
        ++result.rows;
    }
    // The lines past the records become new ones, above the new row: opened
    // all at once, then each taken as a blank row a person added.
    const long appended = m_keepNewRow ? lines - overwritten : 0;
    const long first = records;
    if (appended > 0 && InsertRows(first, appended) == ug::Success) {
        blankDefaultTexts(first, appended);
        for (long line = 0; line < appended; ++line) {
            const long row = first + line;
            if (!OnRowAdded(row)) {
                DeleteRows(row, appended - line);
                break;
            }
            result.refusedCells += writePastedRecord(row, firstColumn, table[std::size_t(overwritten + line)]);
            ++result.rows;
        }
    }
    EndBatch();
    RepaintAll();
    tellCollectedRefusals();
    OnPasted(result);
    return result;
}

void CVVyrGrid::OnPasted(const PasteResult &) {}

} // namespace vyr
