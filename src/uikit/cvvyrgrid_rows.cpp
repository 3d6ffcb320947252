// CVVyrGrid: records and rows - appending, reading, deleting, moving,
// swapping and sorting - and the keys, typing and Tab walk that a person
// uses on them.
#include "uikit/cvvyrgrid.h"

#include <algorithm>
#include <numeric>

namespace vyr {

bool CVVyrGrid::isNewRow(long row) const
{
    return m_keepNewRow && row >= 0 && row == GetRowCount() - 1;
}

long CVVyrGrid::recordCount() const
{
    return m_keepNewRow ? std::max(0L, GetRowCount() - 1) : GetRowCount();
}

void CVVyrGrid::FocusCell(int column, long row)
{
    CommitEdit();
    GotoCell(column, row);
    setFocus(Qt::OtherFocusReason);
}

long CVVyrGrid::addBlankRowAt(long row)
{
    if (InsertRow(row) != ug::Success)
        return -1;
    blankDefaultTexts(row, 1);
    if (!OnRowAdded(row)) {
        DeleteRow(row);
        return -1;
    }
    return row;
}

void CVVyrGrid::blankDefaultTexts(long row, long count)
{
    // A new row reads its column defaults; only a default text needs
    // covering with the empty one.
    CUGCell defaults;
    for (int column = 0; column < GetColumnCount(); ++column) {
        defaults.clearAll();
        GetColumnDefault(column, defaults);
        if (!defaults.isSet(CUGCell::Text) || defaults.text().isEmpty())
            continue;
        for (long offset = 0; offset < count; ++offset)
            SetCellText(column, row + offset, QString());
    }
}

long CVVyrGrid::AppendRowTexts(const QStringList &texts)
{
    if (texts.size() != m_columnCount)
        return -1;
    const long row = recordCount();
    if (InsertRow(row) != ug::Success)
        return -1;
    // The inserted row brings the screen up to date when control returns to
    // the event loop, once for a whole run of records.
    for (int column = 0; column < m_columnCount; ++column)
        SetCellText(column, row, texts[column]);
    return row;
}

long CVVyrGrid::AppendBlankRow()
{
    return addBlankRowAt(recordCount());
}

bool CVVyrGrid::useNewRow()
{
    UndoStep step(*this);
    return AppendBlankRow() >= 0;
}

void CVVyrGrid::GetRowTexts(long row, QStringList &texts)
{
    if (row < 0 || row >= GetRowCount())
        return;
    for (int column = 0; column < GetColumnCount(); ++column)
        texts.append(GetCellString(row, column));
}

QString CVVyrGrid::GetCellString(long row, int column)
{
    if (const std::optional<std::size_t> record = LoadedRecordOf(row); record && column >= 0 && column < GetColumnCount())
        return LoadedText(*record, column);
    return GetCellText(column, row);
}

std::vector<bool> CVVyrGrid::markedRows(bool atEdit)
{
    std::vector<bool> marked(std::size_t(std::max(0L, GetRowCount())), false);
    const long rows = GetRowCount();
    const CUGSelection &selection = atEdit && !editSelection().isEmpty() ? editSelection() : gridInfo().selection;
    for (const CUGSelection::Block &block : selection.blocks()) {
        for (long row = std::max(0L, block.top()); row <= std::min(rows - 1, block.bottom()); ++row)
            marked[std::size_t(row)] = true;
    }
    if (GetCurrentRow() >= 0 && GetCurrentRow() < rows)
        marked[std::size_t(GetCurrentRow())] = true;
    return marked;
}

std::vector<long> CVVyrGrid::SelectedRecords(bool atEdit)
{
    const std::vector<bool> marked = markedRows(atEdit);
    std::vector<long> rows;
    for (long row = 0; row < recordCount(); ++row) {
        if (marked[std::size_t(row)])
            rows.push_back(row);
    }
    return rows;
}

void CVVyrGrid::DeleteSelectedRows()
{
    if (!m_keepNewRow || GetRowCount() < 2)
        return;
    UndoStep step(*this);
    const std::vector<bool> marked = markedRows();
    BeginBatch();
    // From the bottom up, a run of marked rows at a time; the new row stays.
    for (long row = GetRowCount() - 2; row >= 0;) {
        if (!marked[std::size_t(row)]) {
            --row;
            continue;
        }
        long first = row;
        while (first > 0 && marked[std::size_t(first - 1)])
            --first;
        DeleteRows(first, row - first + 1);
        row = first - 1;
    }
    ClearSelection();
    EndBatch();
    RepaintAll();
}

void CVVyrGrid::reselect(const std::vector<SelectedCells> &cells)
{
    ClearSelection();
    for (const SelectedCells &selected : cells) {
        if (GetMultiSelect())
            SelectRange(selected.left, selected.row, selected.right, selected.row);
        else
            SelectCell(selected.left, selected.row);
    }
}

void CVVyrGrid::MoveSelectedRowsUp()
{
    moveSelectedRows(-1);
}

void CVVyrGrid::MoveSelectedRowsDown()
{
    moveSelectedRows(1);
}

void CVVyrGrid::moveSelectedRows(int step)
{
    if (!m_keepNewRow)
        return;
    UndoStep undoStep(*this);
    const int currentColumn = GetCurrentCol();
    const long currentRow = GetCurrentRow();
    if (currentColumn >= 0 && currentRow >= 0)
        SelectCell(currentColumn, currentRow);
    const long records = GetRowCount() - 1;
    const std::vector<bool> marked = markedRows();
    // A selected row moves unless it is the first record on its way (the
    // top going up, the last record going down - never into the new row),
    // or is held there by the selected rows before it that cannot move
    // either.
    const long first = step < 0 ? 0 : records - 1;
    std::vector<bool> moves(marked.size(), false);
    bool held = true;
    for (long row = first; row >= 0 && row < records; row -= step) {
        held = marked[std::size_t(row)] && held;
        moves[std::size_t(row)] = marked[std::size_t(row)] && !held;
    }
    std::vector<SelectedCells> cells;
    for (const CUGSelection::Block &block : gridInfo().selection.blocks()) {
        for (long row = std::max(0L, block.top()); row <= std::min(records - 1, block.bottom()); ++row)
            cells.push_back({moves[std::size_t(row)] ? row + step : row, block.left(), block.right()});
    }
    BeginBatch();
    for (long row = first - step; row >= 0 && row < records; row -= step) {
        if (moves[std::size_t(row)])
            SwapRows(row, row + step);
    }
    if (currentRow >= 0 && currentRow < records && moves[std::size_t(currentRow)])
        GotoCell(currentColumn, currentRow + step);
    reselect(cells);
    EndBatch();
    RepaintAll();
}

void CVVyrGrid::moveRowTexts(long row, const std::vector<long> &order)
{
    if (PermuteRowTexts(row, order) != ug::Success)
        return;
    for (std::size_t i = 0; i < order.size(); ++i) {
        // A row still loaded is made from the texts it took, when it is.
        if (order[i] == long(i) || LoadedRecordOf(row + long(i)))
            continue;
        for (int column = 0; column < GetColumnCount(); ++column)
            OnCellChange(column, row + long(i), ug::TextRestored);
    }
}

void CVVyrGrid::SwapRows(long first, long second)
{
    const long rows = GetRowCount();
    if (!m_keepNewRow || first < 0 || second < 0 || first >= rows || second >= rows || first == second)
        return;
    UndoStep step(*this);
    const long top = std::min(first, second);
    std::vector<long> order(static_cast<std::size_t>(std::max(first, second) - top + 1));
    std::iota(order.begin(), order.end(), 0L);
    std::swap(order.front(), order.back());
    moveRowTexts(top, order);
    m_rowsModified = true;
    RepaintAll();
}

void CVVyrGrid::SortByColumn(int column)
{
    const long rows = GetRowCount();
    if (!m_keepNewRow || column < 0 || column >= GetColumnCount() || rows <= 2)
        return;
    // The records, not the new row: a stable sort of their texts is what
    // exchanging neighbours out of order gives, without its quadratic time.
    // Texts folded once compare as the texts compare ignoring case.
    const long records = rows - 1;
    std::vector<QString> keys(static_cast<std::size_t>(records));
    for (long row = 0; row < records; ++row)
        keys[std::size_t(row)] = GetCellString(row, column).toCaseFolded();
    std::vector<long> order(static_cast<std::size_t>(records));
    std::iota(order.begin(), order.end(), 0L);
    std::stable_sort(order.begin(), order.end(),
                     [&keys](long a, long b) { return keys[std::size_t(a)] < keys[std::size_t(b)]; });
    if (std::is_sorted(order.begin(), order.end()))
        return;
    UndoStep step(*this);
    BeginBatch();
    moveRowTexts(0, order);
    EndBatch();
    m_rowsModified = true;
    RepaintAll();
}

// --- Moving through the cells

void CVVyrGrid::MoveToNextCell(int column, long row)
{
    for (;;) {
        if (row >= GetRowCount()) {
            // Past the last cell: on to the dialog's next control.
            QAbstractScrollArea::focusNextPrevChild(true);
            return;
        }
        if (column >= GetColumnCount()) {
            column = 0;
            ++row;
            continue;
        }
        if (row >= 0 && GotoCell(column, row) == ug::Success)
            return;
        ++column;
    }
}

void CVVyrGrid::TabForward()
{
    MoveToNextCell(GetCurrentCol() + 1, std::max(0L, GetCurrentRow()));
}

void CVVyrGrid::MoveToPreviousCell(int column, long row)
{
    for (;;) {
        if (row < 0 || GetColumnCount() == 0) {
            QAbstractScrollArea::focusNextPrevChild(false);
            return;
        }
        if (column < 0) {
            column = GetColumnCount() - 1;
            --row;
            continue;
        }
        if (row < GetRowCount() && GotoCell(column, row) == ug::Success)
            return;
        --column;
    }
}

void CVVyrGrid::TabBackward()
{
    // Shift is held: with multi-select on the move would extend the selection.
    const bool multiSelect = GetMultiSelect();
    SetMultiSelect(false);
    const long row = GetCurrentRow() < 0 ? GetRowCount() - 1 : GetCurrentRow();
    const int column = GetCurrentRow() < 0 ? GetColumnCount() - 1 : GetCurrentCol() - 1;
    MoveToPreviousCell(column, row);
    SetMultiSelect(multiSelect);
}

// --- Keys and typing

CVVyrGrid::EditShortcut CVVyrGrid::editShortcut(int key, Qt::KeyboardModifiers modifiers)
{
    modifiers &= ~Qt::KeypadModifier;
    if (modifiers == (Qt::ControlModifier | Qt::ShiftModifier))
        return key == Qt::Key_Z ? EditShortcut::Redo : EditShortcut::None;
    if (modifiers != Qt::ControlModifier)
        return EditShortcut::None;
    switch (key) {
    case Qt::Key_C:
        return EditShortcut::Copy;
    case Qt::Key_V:
        return EditShortcut::Paste;
    case Qt::Key_Z:
        return EditShortcut::Undo;
    case Qt::Key_Y:
        return EditShortcut::Redo;
    default:
        return EditShortcut::None;
    }
}

void CVVyrGrid::OnCellKey(int &key, bool)
{
    const Qt::KeyboardModifiers modifiers = KeyModifiers();
    const bool control = modifiers & Qt::ControlModifier;
    const bool shift = modifiers & Qt::ShiftModifier;
    if (const EditShortcut shortcut = editShortcut(key, modifiers); shortcut != EditShortcut::None) {
        if (shortcut == EditShortcut::Copy)
            CopySelectedRows();
        else if (shortcut == EditShortcut::Paste)
            Paste();
        else if (shortcut == EditShortcut::Undo)
            Undo();
        else
            Redo();
        key = 0;
        return;
    }
    switch (key) {
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        if (m_enabled && m_keepNewRow)
            DeleteSelectedRows();
        else
            OnKeyRefused();
        key = 0;
        return;
    case Qt::Key_Tab:
        if (control)
            return;
        if (shift)
            TabBackward();
        else
            TabForward();
        key = 0;
        return;
    case Qt::Key_Backtab:
        if (control)
            return;
        TabBackward();
        key = 0;
        return;
    case Qt::Key_Insert:
        if (m_enabled && m_keepNewRow && GetCurrentRow() >= 0) {
            UndoStep step(*this);
            addBlankRowAt(GetCurrentRow());
        } else {
            OnKeyRefused();
        }
        key = 0;
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // Control+Enter is the window's (OK): the grid control passes it on.
        if (control)
            return;
        key = 0;
        editCurrentCellByKey(0);
        return;
    case Qt::Key_F2:
        key = 0;
        editCurrentCellByKey(0);
        return;
    default:
        return;
    }
}

void CVVyrGrid::OnCellChar(QChar &character, bool)
{
    if (character == u'\t' || character == QChar(0x1b) || character == u'\b')
        return;
    editCurrentCellByKey(character.unicode());
}

void CVVyrGrid::editCurrentCellByKey(int firstKey)
{
    if (!editCurrentCell(firstKey))
        OnKeyRefused();
}

bool CVVyrGrid::editCurrentCell(int firstKey)
{
    // A read-only grid never grows, not even by its new row; nor does a key
    // the cell would refuse anyway.
    CUGCell cell;
    GetCellResolved(GetCurrentCol(), GetCurrentRow(), cell);
    if (!m_enabled || !takesTyping(cell))
        return false;
    const bool madeRecord = isNewRow(GetCurrentRow());
    if (madeRecord && !useNewRow())
        return false;
    if (BeginEdit(firstKey) != ug::Success)
        return false;
    // The blank row made for the edit and the edit undo as one.
    if (madeRecord)
        m_history.joinNext();
    return true;
}

} // namespace vyr
