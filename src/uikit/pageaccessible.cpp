#include "uikit/pageaccessible.h"

#include "grid/accessibleleaf.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHash>
#include <QLabel>

namespace vyr {

namespace {

const char kPageProperty[] = "vyrPage";



// One tab of the list; it reads the tab bar each time, so it never goes stale
// as tabs come and go (an index past the end is simply invalid).
class TabAccessible final : public AccessibleLeaf, public QAccessibleActionInterface
{
public:
    TabAccessible(QTabBar *tabs, int index)
        : AccessibleLeaf(tabs)
        , m_tabs(tabs)
        , m_index(index)
    {
    }

    bool isValid() const override { return m_tabs && m_index < m_tabs->count(); }
    QString text(QAccessible::Text kind) const override
    {
        if (!isValid())
            return QString();
        if (kind == QAccessible::Name)
            return withoutMnemonics(m_tabs->tabText(m_index));
        if (kind == QAccessible::Description)
            return m_tabs->tabToolTip(m_index);
        return QString();
    }
    void setText(QAccessible::Text, const QString &) override {}
    QRect rect() const override
    {
        if (!isValid())
            return QRect();
        const QRect local = m_tabs->tabRect(m_index);
        return QRect(m_tabs->mapToGlobal(local.topLeft()), local.size());
    }
    QAccessible::Role role() const override { return QAccessible::PageTab; }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        const bool current = m_tabs->currentIndex() == m_index;
        state.focusable = true;
        state.selectable = true;
        state.selected = current;
        state.focused = current && m_tabs->hasFocus();
        state.disabled = !m_tabs->isEnabled() || !m_tabs->isTabEnabled(m_index);
        state.invisible = !m_tabs->isVisible() || !m_tabs->isTabVisible(m_index) || rect().isEmpty();
        return state;
    }
    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this) : nullptr;
    }
    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString &action) override
    {
        if (action == pressAction() && isValid())
            m_tabs->setCurrentIndex(m_index);
    }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    QTabBar *m_tabs;
    int m_index;
};

// The tab list: its children are the tabs, named and with the shown one
// selected. The bar's scroll arrows are left out: they take no focus.
class TabBarAccessible final : public QAccessibleWidget
{
public:
    explicit TabBarAccessible(QTabBar *tabs)
        : QAccessibleWidget(tabs, QAccessible::PageTabList)
    {
    }
    ~TabBarAccessible() override
    {
        for (const QAccessible::Id id : std::as_const(m_tabs))
            QAccessible::deleteAccessibleInterface(id);
    }

    QTabBar *tabs() const { return static_cast<QTabBar *>(object()); }

    int childCount() const override { return tabs()->count(); }
    QAccessibleInterface *child(int index) const override
    {
        if (index < 0 || index >= tabs()->count())
            return nullptr;
        if (const auto found = m_tabs.constFind(index); found != m_tabs.constEnd())
            return QAccessible::accessibleInterface(*found);
        auto *made = new TabAccessible(tabs(), index);
        m_tabs.insert(index, QAccessible::registerAccessibleInterface(made));
        return made;
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        for (auto it = m_tabs.constBegin(); it != m_tabs.constEnd(); ++it) {
            if (QAccessible::accessibleInterface(it.value()) == child)
                return it.key();
        }
        return -1;
    }
    QAccessibleInterface *focusChild() const override
    {
        return tabs()->hasFocus() ? child(tabs()->currentIndex()) : nullptr;
    }
    QAccessibleInterface *childAt(int x, int y) const override
    {
        return child(tabs()->tabAt(tabs()->mapFromGlobal(QPoint(x, y))));
    }
    QString text(QAccessible::Text kind) const override
    {
        // The list is known by the page it shows, as a combo box by its value.
        if (kind == QAccessible::Name && tabs()->accessibleName().isEmpty())
            return withoutMnemonics(tabs()->tabText(tabs()->currentIndex()));
        return QAccessibleWidget::text(kind);
    }

private:
    mutable QHash<int, QAccessible::Id> m_tabs;
};

// A page: a panel named by its tab.
class PageAccessible final : public QAccessibleWidget
{
public:
    explicit PageAccessible(QWidget *page)
        : QAccessibleWidget(page, QAccessible::Pane)
    {
    }
    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Name)
            return widget()->property(kPageProperty).toString();
        return QAccessibleWidget::text(kind);
    }
};

QAccessibleInterface *pageFactory(const QString &, QObject *object)
{
    if (!object || !object->isWidgetType())
        return nullptr;
    if (auto *tabs = qobject_cast<PageTabBar *>(object))
        return new TabBarAccessible(tabs);
    if (object->property(kPageProperty).isValid())
        return new PageAccessible(static_cast<QWidget *>(object));
    return nullptr;
}

void installPageAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(pageFactory);
        return true;
    }();
    Q_UNUSED(installed);
}

} // namespace

PageTabBar::PageTabBar(QWidget *parent)
    : QTabBar(parent)
{
    installPageAccessibility();
    // A tab bar changes its selection without telling assistive technology
    // in words it understands; say it of every tab (a window has a handful),
    // so that the one left is heard unselected even after a quiet change.
    connect(this, &QTabBar::currentChanged, this, [this](int) {
        if (!QAccessible::isActive())
            return;
        QAccessible::State selected;
        selected.selected = true;
        for (int tab = 0; tab < count(); ++tab) {
            QAccessibleStateChangeEvent event(this, selected);
            event.setChild(tab);
            QAccessible::updateAccessibility(&event);
        }
    });
}

QString withoutMnemonics(QString text)
{
    // "&&" is a literal ampersand; a single "&" only marks the next letter.
    text.replace(QLatin1String("&&"), QString(QChar(0xE000)));
    text.remove(u'&');
    text.replace(QChar(0xE000), u'&');
    return text;
}

void describeAsPage(QWidget *page, const QString &title)
{
    installPageAccessibility();
    page->setProperty(kPageProperty, withoutMnemonics(title));
}

void giveLabelHintsToBuddies(QWidget *window)
{
    // A screen reader speaks the focused control, never the label beside it.
    const QList<QLabel *> labels = window->findChildren<QLabel *>();
    for (QLabel *label : labels) {
        QWidget *buddy = label->buddy();
        if (buddy && !label->toolTip().isEmpty() && buddy->accessibleDescription().isEmpty())
            buddy->setAccessibleDescription(label->toolTip());
    }
}

} // namespace vyr
