// CVYRToolTipCtrl: a dialog's tool tips, shown over disabled controls too.
//
// A disabled control does not react to the mouse, so its tool tip request
// may reach the dialog instead. The control registers its tools in order;
// a tool tip request on the dialog goes to the first tool under the mouse,
// enabled or not, and shows that tool's tip.
#ifndef VYR_UIKIT_TOOLTIPCTRL_H
#define VYR_UIKIT_TOOLTIPCTRL_H

#include <QList>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QWidget>

namespace vyr {

class CVYRToolTipCtrl : public QObject
{
    Q_OBJECT

public:
    explicit CVYRToolTipCtrl(QWidget *parent);

    QWidget *parentWidget() const { return m_parent; }
    // Appends `tool`; its tip is its toolTip property.
    void addTool(QWidget *tool);
    // The first registered tool whose rectangle holds `point` (in the
    // parent's coordinates), or null.
    QWidget *toolAt(QPoint point) const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *m_parent;
    QList<QPointer<QWidget>> m_tools;
};

} // namespace vyr

#endif // VYR_UIKIT_TOOLTIPCTRL_H
