// CUGCtrl: the editing life cycle - starting an in-place editor over the
// current cell, checking typed characters, ending (or refusing to end) the
// edit, and going on in the next cell.
#include "grid/cugctrl.h"

#include "grid/cugaccessible.h"
#include "grid/cugedit.h"
#include "grid/cugmaskededit.h"
#include "grid/cugsections.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace vyr {

int CUGCtrl::BeginEdit(int firstKey)
{
    if (m_editing)
        return ug::Refused;
    const int column = m_info.currentColumn;
    const long row = m_info.currentRow;
    if (column < 0 || row < 0)
        return ug::OutOfRange;
    m_editing = true;
    m_editSelection = m_info.selection;
    m_info.selection.collapseTo(column, row);

    GetCellResolved(column, row, m_editCell);
    CUGCellType *type = GetCellType(m_editCell);
    if (!type->allowsEditing() || m_editCell.isReadOnly()) {
        m_editing = false;
        return ug::OutOfRange;
    }
    QRect rect;
    if (!scrollToShow(column, row) || GetCellRect(column, row, rect) != ug::Success) {
        m_editing = false;
        return ug::OutOfRange;
    }
    rect.adjust(0, 0, -1, -1);
    type->EditRect(rect, m_editCell);

    CUGEditBase *editor = m_editCell.isSet(CUGCell::Mask) ? static_cast<CUGEditBase *>(m_maskedEdit)
                                                          : static_cast<CUGEditBase *>(m_edit);
    editor->resetEnding();
    editor->startText(m_editCell.text(), m_editCell.mask());
    QWidget *widget = editor->editorWidget();
    if (!m_info.dataSource->OnEditStart(column, row, widget) || !OnBeginEdit(column, row, widget)) {
        m_editing = false;
        return ug::Refused;
    }
    // A hook may hand over an editor of its own making.
    if (auto *handed = dynamic_cast<CUGEditBase *>(widget); handed && handed != editor) {
        editor = handed;
        editor->resetEnding();
        editor->startText(m_editCell.text(), m_editCell.mask());
    }
    m_editColumn = column;
    m_editRow = row;
    m_activeEditor = widget;
    describeEditor(this, widget, column, row);
    editor->setEditReadOnly(false);
    widget->setFont(cellFont(m_editCell));
    if (widget->parentWidget() != m_grid)
        widget->setParent(m_grid);
    widget->setGeometry(rect);
    widget->show();
    widget->raise();
    widget->setFocus(Qt::OtherFocusReason);
    if (firstKey != 0) {
        const QString text = QString(QChar(char16_t(firstKey)));
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, text);
        QCoreApplication::sendEvent(widget, &press);
    }
    RepaintCell(column, row);
    return ug::Success;
}

int CUGCtrl::EndEdit(const QString &text, bool cancelled, bool continueEditing, int nextColumn, long nextRow)
{
    // Without an edit in progress there is nothing to store: the ending
    // is a cancel of the current cell's.
    if (!m_editing) {
        if (m_info.currentColumn < 0 || m_info.currentRow < 0)
            return 1;
        cancelled = true;
    }
    const int column = m_editing ? m_editColumn : m_info.currentColumn;
    const long row = m_editing ? m_editRow : m_info.currentRow;
    QWidget *editor = m_activeEditor;
    if (!m_info.dataSource->OnEditFinish(column, row, editor, text, cancelled)
        || !OnEndEdit(column, row, editor, text, cancelled))
        return 0;

    m_endingEdit = true;
    const bool focusInCells = hasFocus() || (editor && editor->hasFocus());
    if (editor && editor->hasFocus())
        setFocus(Qt::OtherFocusReason);
    if (editor)
        editor->hide();
    m_editing = false;
    m_activeEditor = nullptr;
    m_endingEdit = false;
    if (!cancelled)
        StoreUserText(column, row, text, ug::TextEdited);
    // Only the edit that just ended was begun over that selection.
    m_editSelection.clear();

    if (continueEditing && focusInCells && m_info.numberOfColumns > 0 && m_info.numberOfRows > 0) {
        if (nextColumn >= m_info.numberOfColumns)
            nextColumn = 0;
        else if (nextColumn < 0)
            nextColumn = m_info.numberOfColumns - 1;
        if (nextRow >= m_info.numberOfRows)
            nextRow = 0;
        else if (nextRow < 0)
            nextRow = m_info.numberOfRows - 1;
        if (m_info.dataSource->OnEditContinue(column, row, nextColumn, nextRow)
            && OnEditNextCell(column, row, nextColumn, nextRow)
            && moveCurrentTo(nextColumn, nextRow, DragMode::None) == ug::Success) {
            BeginEdit(0);
            return 1;
        }
    }
    RepaintCell(column, row);
    return 1;
}

void CUGCtrl::CancelEdit()
{
    if (!m_editing)
        return;
    auto *editor = dynamic_cast<CUGEditBase *>(m_activeEditor);
    EndEdit(editor ? editor->editText() : QString(), true, false, 0, 0);
}

void CUGCtrl::editorFinished(CUGEditBase *editor, bool refocus)
{
    if (m_endingEdit || !m_editing || editor->editorWidget() != m_activeEditor)
        return;
    const CUGEditBase::Ending ending = editor->ending();
    editor->resetEnding();
    if (EndEdit(editor->editText(), ending.cancelled, ending.continueEditing, ending.nextColumn, ending.nextRow))
        return;
    // Refused: back to the edited cell, and the editor takes the focus
    // again once the focus change under way has settled.
    moveCurrentTo(m_editColumn, m_editRow, DragMode::None);
    if (refocus) {
        QWidget *widget = editor->editorWidget();
        QMetaObject::invokeMethod(
            widget,
            [this, widget] {
                if (m_editing && m_activeEditor == widget)
                    widget->setFocus(Qt::OtherFocusReason);
            },
            Qt::QueuedConnection);
    }
}

bool CUGCtrl::editorVerify(QChar &character)
{
    return m_info.dataSource->OnEditVerify(m_editColumn, m_editRow, m_activeEditor, character)
        && OnEditVerify(m_editColumn, m_editRow, m_activeEditor, character);
}

} // namespace vyr
