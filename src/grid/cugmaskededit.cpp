#include "grid/cugmaskededit.h"

#include "grid/ugdefs.h"

#include <QKeyEvent>

namespace vyr {

CUGMaskedEdit::CUGMaskedEdit(CUGCtrl *ctrl, QWidget *parent)
    : QLineEdit(parent)
    , CUGEditBase(ctrl)
{
    setObjectName(QStringLiteral("CUGMaskedEdit"));
    setProperty("controlId", int(ug::MaskedEditId));
    setFrame(false);
    hide();
}

QString CUGMaskedEdit::editText() const
{
    return m_masked.mask().isEmpty() ? text() : m_masked.value();
}

void CUGMaskedEdit::startText(const QString &value, const QString &mask)
{
    m_masked = MaskedText(mask, value);
    if (mask.isEmpty()) {
        setText(value);
    } else {
        showMasked(m_masked.nextInput(0));
    }
    // The first key replaces the value, as in the plain editor.
    selectAll();
}

void CUGMaskedEdit::setEditReadOnly(bool readOnly)
{
    setReadOnly(readOnly);
}

void CUGMaskedEdit::insertTyped(const QString &text)
{
    insert(text);
}

void CUGMaskedEdit::showMasked(int caret)
{
    setText(m_masked.display());
    setCursorPosition(caret);
}

bool CUGMaskedEdit::maskedKey(QKeyEvent *event)
{
    if (m_masked.mask().isEmpty() || isReadOnly())
        return false;
    const QString typed = event->text();
    const bool typing = !typed.isEmpty() && typed[0].isPrint() && !(event->modifiers() & Qt::ControlModifier);
    const bool erasing = event->key() == Qt::Key_Backspace || event->key() == Qt::Key_Delete;
    // A selection goes first: its input positions are emptied, and typing
    // or erasing starts where it began.
    if (hasSelectedText() && (typing || erasing)) {
        const int start = selectionStart();
        const int end = start + int(selectedText().size());
        for (int position = start; position < end; ++position)
            m_masked.erase(position);
        showMasked(m_masked.nextInput(start));
        if (erasing)
            return true;
    }
    const int caret = cursorPosition();
    switch (event->key()) {
    case Qt::Key_Backspace:
        showMasked(m_masked.backspace(caret));
        return true;
    case Qt::Key_Delete:
        showMasked(m_masked.erase(caret));
        return true;
    default:
        break;
    }
    if (!typing)
        return false;
    int at = caret;
    for (QChar character : typed) {
        if (!verifyCharacter(character))
            break;
        const int next = m_masked.type(at, character);
        if (next < 0)
            break;
        at = m_masked.nextInput(next);
    }
    showMasked(at);
    return true;
}

void CUGMaskedEdit::keyPressEvent(QKeyEvent *event)
{
    // Ending keys first; with a mask, characters are checked in maskedKey
    // so that the store sees each once.
    const bool masked = !m_masked.mask().isEmpty();
    if (masked) {
        switch (event->key()) {
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_Escape:
            if (editorKey(event))
                return;
            break;
        default:
            if (maskedKey(event))
                return;
            break;
        }
        QLineEdit::keyPressEvent(event);
        return;
    }
    if (editorKey(event))
        return;
    QLineEdit::keyPressEvent(event);
}

void CUGMaskedEdit::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    selectAll();
}

void CUGMaskedEdit::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    editorFocusOut(event);
}

} // namespace vyr
