#include "grid/cugedit.h"

#include "grid/ugdefs.h"

#include <QKeyEvent>

namespace vyr {

CUGEdit::CUGEdit(CUGCtrl *ctrl, QWidget *parent)
    : QPlainTextEdit(parent)
    , CUGEditBase(ctrl)
{
    setObjectName(QStringLiteral("CUGEdit"));
    setProperty("controlId", int(ug::EditId));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setFrameShape(QFrame::NoFrame);
    setTabChangesFocus(false);
    document()->setDocumentMargin(1);
    hide();
}

QString CUGEdit::editText() const
{
    return toPlainText();
}

void CUGEdit::startText(const QString &text, const QString &)
{
    setPlainText(text);
    selectAll();
}

void CUGEdit::setEditReadOnly(bool readOnly)
{
    setReadOnly(readOnly);
}

void CUGEdit::insertTyped(const QString &text)
{
    insertPlainText(text);
}

bool CUGEdit::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter)
            && (key->modifiers() & Qt::ControlModifier) && keepsControlEnter()) {
            event->accept();
            return true;
        }
    }
    return QPlainTextEdit::event(event);
}

void CUGEdit::keyPressEvent(QKeyEvent *event)
{
    if (editorKey(event))
        return;
    QPlainTextEdit::keyPressEvent(event);
}

void CUGEdit::focusInEvent(QFocusEvent *event)
{
    QPlainTextEdit::focusInEvent(event);
    selectAll();
}

void CUGEdit::focusOutEvent(QFocusEvent *event)
{
    QPlainTextEdit::focusOutEvent(event);
    editorFocusOut(event);
}

} // namespace vyr
