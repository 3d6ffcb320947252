#include "uikit/tooltipctrl.h"

#include <QHelpEvent>
#include <QToolTip>

namespace vyr {

CVYRToolTipCtrl::CVYRToolTipCtrl(QWidget *parent)
    : m_parent(parent)
{
    m_parent->installEventFilter(this);
}

void CVYRToolTipCtrl::addTool(QWidget *tool)
{
    if (!tool || m_tools.contains(tool))
        return;
    m_tools.append(tool);
    tool->installEventFilter(this);
}

QWidget *CVYRToolTipCtrl::toolAt(QPoint point) const
{
    for (const QPointer<QWidget> &tool : m_tools) {
        if (tool && tool->isVisible() && QRect(tool->mapTo(m_parent, QPoint(0, 0)), tool->size()).contains(point))
            return tool;
    }
    return nullptr;
}

bool CVYRToolTipCtrl::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QObject::eventFilter(watched, event);
    const auto *help = static_cast<QHelpEvent *>(event);
    QWidget *tool = nullptr;
    if (watched == m_parent)
        tool = toolAt(help->pos());
    else if (auto *widget = qobject_cast<QWidget *>(watched); widget && !widget->isEnabled())
        tool = widget;
    if (!tool || tool->toolTip().isEmpty())
        return QObject::eventFilter(watched, event);
    QToolTip::showText(help->globalPos(), tool->toolTip(), tool);
    return true;
}

} // namespace vyr
