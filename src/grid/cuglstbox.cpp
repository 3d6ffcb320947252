#include "grid/cuglstbox.h"

#include "grid/cugctrl.h"
#include "grid/cugstandardtypes.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>

namespace vyr {

CUGLstBox::CUGLstBox(CUGDropListType *type, QWidget *parent)
    : QListWidget(parent)
    , m_type(type)
{
    setObjectName(QStringLiteral("CUGLstBox"));
    setWindowFlags(Qt::Popup);
    setAttribute(Qt::WA_DeleteOnClose);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setMouseTracking(true);
    // Hovering moves the current entry, as pop-up lists do.
    connect(this, &QListWidget::itemEntered, this, [this](QListWidgetItem *item) { setCurrentItem(item); });
}

bool CUGLstBox::chooseCurrent()
{
    const int index = currentRow();
    if (index < 0 || m_done)
        return false;
    m_done = true;
    const QString text = item(index)->text();
    CUGDropListType *type = m_type;
    close();
    return type->Choose(index, text);
}

void CUGLstBox::closeWithoutChoice()
{
    m_done = true;
    close();
    m_type->closedWithoutChoice(false);
}

void CUGLstBox::dismiss()
{
    m_done = true;
    close();
}

void CUGLstBox::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: {
        const bool control = event->modifiers() & Qt::ControlModifier;
        CUGCtrl *grid = m_type->ctrl();
        if (currentRow() >= 0) {
            if (!chooseCurrent())
                return;
        } else if (control) {
            closeWithoutChoice();
        }
        if (control)
            QCoreApplication::sendEvent(grid, event);
        return;
    }
    case Qt::Key_Escape:
        closeWithoutChoice();
        return;
    default:
        QListWidget::keyPressEvent(event);
    }
}

void CUGLstBox::mouseReleaseEvent(QMouseEvent *event)
{
    QListWidget::mouseReleaseEvent(event);
    if (QListWidgetItem *under = itemAt(event->position().toPoint())) {
        setCurrentItem(under);
        chooseCurrent();
    }
}

void CUGLstBox::focusInEvent(QFocusEvent *event)
{
    // Item views make the first entry current on focus; a drop list opens
    // with nothing chosen.
    const int before = currentRow();
    QListWidget::focusInEvent(event);
    if (before < 0 && currentRow() >= 0)
        setCurrentRow(-1);
}

void CUGLstBox::hideEvent(QHideEvent *event)
{
    QListWidget::hideEvent(event);
    if (!m_done) {
        // A click elsewhere took the list away - unless no button is down,
        // as when another window took the focus.
        m_done = true;
        m_type->closedWithoutChoice(QGuiApplication::mouseButtons() != Qt::NoButton);
        close();
    }
}

} // namespace vyr
