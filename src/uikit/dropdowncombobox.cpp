#include "uikit/dropdowncombobox.h"

#include "uikit/pageaccessible.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>

namespace vyr {

namespace {

// The label that names `widget` (its buddy), if any.
const QLabel *labelOf(const QWidget *widget)
{
    const QWidget *window = widget->window();
    const QList<QLabel *> labels = window->findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        if (label->buddy() == widget)
            return label;
    }
    return nullptr;
}

class ComboBoxAccessible final : public QAccessibleWidget
{
public:
    explicit ComboBoxAccessible(QComboBox *combo)
        : QAccessibleWidget(combo, QAccessible::ComboBox)
    {
    }
    QComboBox *combo() const { return static_cast<QComboBox *>(object()); }

    // An editable box's text field, and the list while it is dropped down: a
    // closed list's items would claim to be shown.
    QLineEdit *field() const { return combo()->lineEdit(); }
    QAbstractItemView *openList() const { return combo()->view()->isVisible() ? combo()->view() : nullptr; }
    int childCount() const override { return (field() ? 1 : 0) + (openList() ? 1 : 0); }
    QAccessibleInterface *child(int index) const override
    {
        if (QLineEdit *edit = field(); edit && index == 0) {
            // The field is the combo box to a listener and has no label of its
            // own: it takes the combo box's, once there is one (named by its
            // value, it would keep its first value as its name).
            if (edit->accessibleName().isEmpty()) {
                if (const QLabel *label = labelOf(combo()))
                    edit->setAccessibleName(withoutMnemonics(label->text()));
            }
            return QAccessible::queryAccessibleInterface(edit);
        }
        if (QAbstractItemView *list = openList(); list && index == (field() ? 1 : 0))
            return QAccessible::queryAccessibleInterface(list);
        return nullptr;
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        for (int i = 0; i < childCount(); ++i) {
            if (this->child(i) == child)
                return i;
        }
        return -1;
    }
    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Value)
            return combo()->lineEdit() ? combo()->lineEdit()->text() : combo()->currentText();
        if (kind == QAccessible::Name && combo()->accessibleName().isEmpty()) {
            if (const QLabel *label = labelOf(combo()))
                return withoutMnemonics(label->text());
            return combo()->currentText();
        }
        return QAccessibleWidget::text(kind);
    }
    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.expandable = true;
        state.expanded = combo()->view()->isVisible();
        state.collapsed = !state.expanded;
        state.editable = combo()->isEditable();
        state.hasPopup = true;
        return state;
    }
    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (combo()->isEnabled())
            names.prepend(showMenuAction());
        return names;
    }
    void doAction(const QString &action) override
    {
        if (action == showMenuAction() || action == pressAction())
            combo()->showPopup();
        else
            QAccessibleWidget::doAction(action);
    }
    QStringList keyBindingsForAction(const QString &action) const override
    {
        const QLabel *label = labelOf(combo());
        const QKeySequence keys = label ? QKeySequence::mnemonic(label->text()) : QKeySequence();
        if (keys.isEmpty() || (action != showMenuAction() && action != setFocusAction()))
            return QAccessibleWidget::keyBindingsForAction(action);
        return {keys.toString(QKeySequence::NativeText)};
    }
};

QAccessibleInterface *comboBoxFactory(const QString &, QObject *object)
{
    if (auto *combo = qobject_cast<ComboBox *>(object))
        return new ComboBoxAccessible(combo);
    return nullptr;
}

} // namespace

ComboBox::ComboBox(QWidget *parent)
    : QComboBox(parent)
{
    static const bool installed = [] {
        QAccessible::installFactory(comboBoxFactory);
        return true;
    }();
    Q_UNUSED(installed);
}

DropDownComboBox::DropDownComboBox(QWidget *parent)
    : ComboBox(parent)
{
    // Its items come from the data (thousands of attribute names, say) and
    // change as it drops down: sized by them, it would measure every item
    // when first laid out and change its width with the data.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(kShownCharacters);
}

void DropDownComboBox::showPopup()
{
    emit dropDown();
    QComboBox::showPopup();
}

} // namespace vyr
