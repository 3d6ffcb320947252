// The end of an accessible tree below a widget: a part of it with no object
// and no children of its own (a grid's cell, a tab bar's tab). What such a
// part is, says and does is the subclass's.
#ifndef VYR_GRID_ACCESSIBLELEAF_H
#define VYR_GRID_ACCESSIBLELEAF_H

#include <QAccessible>

namespace vyr {

class AccessibleLeaf : public QAccessibleInterface
{
public:
    explicit AccessibleLeaf(QObject *owner)
        : m_owner(owner)
    {
    }

    QObject *object() const override { return nullptr; }
    QAccessibleInterface *parent() const override { return QAccessible::queryAccessibleInterface(m_owner); }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }

private:
    QObject *m_owner;
};

} // namespace vyr

#endif // VYR_GRID_ACCESSIBLELEAF_H
