#include "grid/cugaccessible.h"

#include "grid/accessibleleaf.h"
#include "grid/cugctrl.h"
#include "grid/ugtexts.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHash>

#include <algorithm>

namespace vyr {

class CUGAccessibleGrid;

namespace {

QString columnHeadingOf(CUGCtrl *grid, int column)
{
    return grid->GetTopHeadingRows() > 0 ? grid->GetCellText(column, -1) : QString();
}

// Where a cell is, as a listener hears it: "Type, storeys".
QString placeOf(CUGCtrl *grid, int column, long row)
{
    const QString heading = columnHeadingOf(grid, column);
    const QString rowName = grid->OnRowName(row);
    return heading.isEmpty() ? rowName : QStringLiteral("%1, %2").arg(heading, rowName);
}

// One cell, heading cells included (negative positions). Every cell has a
// name, says its column and row, and reads as text even when empty, so that
// a listener moving through a grid always hears where they are.
class CUGAccessibleCell final : public AccessibleLeaf,
                                public QAccessibleTableCellInterface,
                                public QAccessibleActionInterface,
                                public QAccessibleTextInterface
{
public:
    CUGAccessibleCell(CUGCtrl *grid, int column, long row)
        : AccessibleLeaf(grid)
        , m_grid(grid)
        , m_column(column)
        , m_row(row)
    {
    }

    bool isValid() const override
    {
        return m_grid && m_column >= -m_grid->GetSideHeadingColumns() && m_column < m_grid->GetColumnCount()
            && m_row >= -m_grid->GetTopHeadingRows() && m_row < m_grid->GetRowCount();
    }

    QString text(QAccessible::Text kind) const override
    {
        if (!isValid())
            return QString();
        switch (kind) {
        case QAccessible::Name:
            return name();
        case QAccessible::Description:
            return description();
        case QAccessible::Value:
            return value();
        default:
            return QString();
        }
    }
    // Assistive technology writes as a person does, with the same checks.
    void setText(QAccessible::Text, const QString &text) override
    {
        if (isValid() && m_row >= 0 && m_column >= 0)
            m_grid->WriteUserText(m_column, m_row, text, ug::TextAssisted);
    }
    QRect rect() const override
    {
        QRect cell;
        if (!isValid() || m_grid->GetCellRect(m_column, m_row, cell) != ug::Success)
            return QRect();
        const QWidget *shownIn = m_grid->widgetShowing(m_row, m_column);
        return QRect(shownIn->mapToGlobal(cell.topLeft()), cell.size());
    }
    QAccessible::Role role() const override
    {
        if (m_row < 0)
            return QAccessible::ColumnHeader;
        if (m_column < 0)
            return QAccessible::RowHeader;
        CUGCell cell;
        m_grid->GetCellResolved(m_column, m_row, cell);
        return m_grid->GetCellType(cell)->AccessibleRole(cell);
    }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        if (m_row >= 0 && m_column >= 0) {
            state.selectable = true;
            state.focusable = true;
            state.selected = m_grid->IsSelected(m_column, m_row);
            state.focused = m_grid->GetCurrentCol() == m_column && m_grid->GetCurrentRow() == m_row
                && m_grid->hasFocus();
            CUGCell cell;
            m_grid->GetCellResolved(m_column, m_row, cell);
            state.readOnly = cell.isReadOnly();
            state.disabled = !m_grid->isEnabled() || !m_grid->IsGridEnabled()
                || !m_grid->IsCellEnabled(m_column, m_row);
            m_grid->GetCellType(cell)->AccessibleState(cell, state);
        }
        // A grid on a page not shown has cells with places but nothing seen.
        QRect cell;
        state.invisible = !m_grid->isVisible() || m_grid->GetCellRect(m_column, m_row, cell) != ug::Success
            || cell.isEmpty();
        return state;
    }
    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TableCellInterface)
            return static_cast<QAccessibleTableCellInterface *>(this);
        if (type == QAccessible::ActionInterface)
            return static_cast<QAccessibleActionInterface *>(this);
        if (type == QAccessible::TextInterface)
            return static_cast<QAccessibleTextInterface *>(this);
        return nullptr;
    }

    QStringList actionNames() const override
    {
        if (!isValid() || m_row < 0 || m_column < 0)
            return {};
        CUGCell cell;
        m_grid->GetCellResolved(m_column, m_row, cell);
        return m_grid->GetCellType(cell)->AccessibleActions(cell);
    }
    void doAction(const QString &action) override
    {
        if (!actionNames().contains(action))
            return;
        CUGCell cell;
        m_grid->GetCellResolved(m_column, m_row, cell);
        m_grid->GetCellType(cell)->DoAccessibleAction(m_column, m_row, action);
    }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

    bool isSelected() const override { return m_grid->IsSelected(m_column, m_row); }
    QList<QAccessibleInterface *> columnHeaderCells() const override;
    QList<QAccessibleInterface *> rowHeaderCells() const override;
    int columnIndex() const override { return m_column; }
    int rowIndex() const override { return int(m_row); }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface *table() const override { return QAccessible::queryAccessibleInterface(m_grid); }

    // The text interface reads the cell's value; a cell is edited through
    // the grid, never through a caret of its own.
    void selection(int, int *startOffset, int *endOffset) const override { *startOffset = *endOffset = 0; }
    int selectionCount() const override { return 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override {}
    QString text(int startOffset, int endOffset) const override
    {
        const QString all = isValid() ? value() : QString();
        if (endOffset < 0 || endOffset > all.size())
            endOffset = int(all.size());
        startOffset = std::clamp(startOffset, 0, endOffset);
        return all.mid(startOffset, endOffset - startOffset);
    }
    int characterCount() const override { return isValid() ? int(value().size()) : 0; }
    QRect characterRect(int) const override { return QRect(); }
    int offsetAtPoint(const QPoint &) const override { return -1; }
    void scrollToSubstring(int, int) override {}
    QString attributes(int, int *startOffset, int *endOffset) const override
    {
        *startOffset = *endOffset = -1;
        return QString();
    }

private:
    QString columnHeading() const { return columnHeadingOf(m_grid, m_column); }
    QString name() const
    {
        if (m_row < 0) {
            const QString heading = m_grid->GetCellText(m_column, m_row);
            return heading.isEmpty() && m_column >= 0 ? ug::gridText("Column %1").arg(m_column + 1) : heading;
        }
        if (m_column < 0)
            return m_grid->OnRowName(m_row);
        CUGCell cell;
        m_grid->GetCellResolved(m_column, m_row, cell);
        const CUGCellType *type = m_grid->GetCellType(cell);
        QString name = type->AccessibleName(cell);
        // A tick box is named by its row, as a check box by its label; an
        // empty cell by its column, so that it is never silent.
        if (name.isEmpty() && type->AccessibleRole(cell) == QAccessible::CheckBox)
            name = m_grid->OnRowName(m_row);
        if (name.isEmpty())
            name = columnHeading();
        return name.isEmpty() ? m_grid->OnRowName(m_row) : name;
    }
    QString description() const
    {
        if (m_row < 0 || m_column < 0)
            return QString();
        const QString where = placeOf(m_grid, m_column, m_row);
        const QString more = m_grid->OnCellDescription(m_column, m_row);
        return more.isEmpty() ? where : where + QLatin1String(". ") + more;
    }
    QString value() const
    {
        CUGCell cell;
        m_grid->GetCellResolved(m_column, m_row, cell);
        return m_grid->GetCellType(cell)->AccessibleValue(cell);
    }

    CUGCtrl *m_grid;
    int m_column;
    long m_row;
};

} // namespace

// The grid: children are the cells row by row.
class CUGAccessibleGrid final : public QAccessibleWidget, public QAccessibleTableInterface
{
public:
    explicit CUGAccessibleGrid(CUGCtrl *grid)
        : QAccessibleWidget(grid, QAccessible::Table)
    {
    }
    ~CUGAccessibleGrid() override { forgetCells(); }

    CUGCtrl *grid() const { return static_cast<CUGCtrl *>(object()); }
    // The grid once its rows are made: a listener reading the table reads
    // what the grid shows when it is shown.
    CUGCtrl *rows() const
    {
        grid()->WantRows();
        return grid();
    }

    // Cells are made once per position and kept until the shape changes.
    QAccessibleInterface *cell(int column, long row) const
    {
        if (column < -grid()->GetSideHeadingColumns() || column >= grid()->GetColumnCount()
            || row < -grid()->GetTopHeadingRows() || row >= rows()->GetRowCount())
            return nullptr;
        const qint64 key = (qint64(row) << 20) ^ qint64(column + 64);
        if (const auto found = m_cells.constFind(key); found != m_cells.constEnd())
            return QAccessible::accessibleInterface(*found);
        auto *made = new CUGAccessibleCell(grid(), column, row);
        m_cells.insert(key, QAccessible::registerAccessibleInterface(made));
        return made;
    }

    void forgetCells()
    {
        for (const QAccessible::Id id : std::as_const(m_cells))
            QAccessible::deleteAccessibleInterface(id);
        m_cells.clear();
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface *>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    // Children: the cells, row by row.
    int childCount() const override
    {
        const qint64 count = qint64(grid()->GetColumnCount()) * rows()->GetRowCount();
        return int(std::min<qint64>(count, INT32_MAX));
    }
    QAccessibleInterface *child(int index) const override
    {
        const int columns = grid()->GetColumnCount();
        if (index < 0 || columns == 0)
            return nullptr;
        return cell(index % columns, index / columns);
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        if (!child || child->parent() != this)
            return -1;
        auto *asCell = const_cast<QAccessibleInterface *>(child)->tableCellInterface();
        if (!asCell || asCell->rowIndex() < 0 || asCell->columnIndex() < 0)
            return -1;
        return asCell->rowIndex() * rows()->GetColumnCount() + asCell->columnIndex();
    }
    QAccessibleInterface *focusChild() const override
    {
        if (rows()->GetCurrentCol() < 0 || grid()->GetCurrentRow() < 0)
            return nullptr;
        return cell(grid()->GetCurrentCol(), grid()->GetCurrentRow());
    }
    QAccessibleInterface *childAt(int x, int y) const override
    {
        const QPoint local = grid()->GetGridWidget()->mapFromGlobal(QPoint(x, y));
        int column = -1;
        long row = -1;
        if (grid()->GetCellFromPoint(local, column, row) != ug::Success)
            return nullptr;
        return cell(column, row);
    }

    QAccessibleInterface *caption() const override { return nullptr; }
    QAccessibleInterface *summary() const override { return nullptr; }
    QAccessibleInterface *cellAt(int row, int column) const override { return cell(column, row); }
    int columnCount() const override { return grid()->GetColumnCount(); }
    int rowCount() const override { return int(std::min<long>(rows()->GetRowCount(), INT32_MAX)); }
    QString columnDescription(int column) const override { return grid()->GetCellText(column, -1); }
    QString rowDescription(int row) const override { return rows()->GetCellText(-1, row); }

    int selectedCellCount() const override { return int(selectedCells().size()); }
    QList<QAccessibleInterface *> selectedCells() const override
    {
        QList<QAccessibleInterface *> cells;
        int column = -1;
        long row = -1;
        for (int found = rows()->FirstSelected(column, row); found == ug::Success && cells.size() < 10000;
             found = grid()->NextSelected(column, row))
            cells.append(cell(column, row));
        return cells;
    }
    // Whole rows and columns are not a selection unit of the grid.
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return 0; }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override { return {}; }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int) const override { return false; }
    bool selectRow(int row) override { return rows()->MoveToCell(std::max(0, grid()->GetCurrentCol()), row) == 0; }
    bool selectColumn(int column) override
    {
        return rows()->MoveToCell(column, std::max(0L, grid()->GetCurrentRow())) == 0;
    }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent *) override { forgetCells(); }

private:
    mutable QHash<qint64, QAccessible::Id> m_cells;
};

namespace {

QList<QAccessibleInterface *> headings(const CUGAccessibleGrid *table, int count, bool columnHeadings, int index)
{
    QList<QAccessibleInterface *> cells;
    if (!table)
        return cells;
    for (int heading = -count; heading < 0; ++heading) {
        if (QAccessibleInterface *found
            = columnHeadings ? table->cell(index, heading) : table->cell(heading, index))
            cells.append(found);
    }
    return cells;
}

const CUGAccessibleGrid *tableOf(CUGCtrl *grid)
{
    return dynamic_cast<const CUGAccessibleGrid *>(QAccessible::queryAccessibleInterface(grid));
}

QList<QAccessibleInterface *> CUGAccessibleCell::columnHeaderCells() const
{
    if (m_row < 0)
        return {};
    return headings(tableOf(m_grid), m_grid->GetTopHeadingRows(), true, m_column);
}

QList<QAccessibleInterface *> CUGAccessibleCell::rowHeaderCells() const
{
    if (m_column < 0)
        return {};
    return headings(tableOf(m_grid), m_grid->GetSideHeadingColumns(), false, int(m_row));
}

QAccessibleInterface *gridFactory(const QString &, QObject *object)
{
    if (auto *grid = qobject_cast<CUGCtrl *>(object))
        return new CUGAccessibleGrid(grid);
    return nullptr;
}

} // namespace

void installGridAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(gridFactory);
        return true;
    }();
    Q_UNUSED(installed);
}

void notifyGridFocus(CUGCtrl *grid, int column, long row)
{
    if (!QAccessible::isActive() || column < 0 || row < 0)
        return;
    QAccessibleEvent event(grid, QAccessible::Focus);
    event.setChild(int(row) * grid->GetColumnCount() + column);
    QAccessible::updateAccessibility(&event);
}

void describeEditor(CUGCtrl *grid, QWidget *editor, int column, long row)
{
    const QString heading = columnHeadingOf(grid, column);
    editor->setAccessibleName(heading.isEmpty() ? grid->OnRowName(row) : heading);
    editor->setAccessibleDescription(placeOf(grid, column, row));
}

void notifyGridCellChanged(CUGCtrl *grid, int column, long row)
{
    if (!QAccessible::isActive() || column < 0 || row < 0 || !grid->isVisible())
        return;
    CUGCell cell;
    grid->GetCellResolved(column, row, cell);
    const int child = int(row) * grid->GetColumnCount() + column;
    QAccessible::State typeStates;
    grid->GetCellType(cell)->AccessibleState(cell, typeStates);
    // A cell is enabled or greyed (and ticked) anew with each write.
    QAccessible::State which;
    which.disabled = true;
    which.checked = typeStates.checkable;
    QAccessibleStateChangeEvent event(grid, which);
    event.setChild(child);
    QAccessible::updateAccessibility(&event);
    QAccessibleEvent named(grid, QAccessible::NameChanged);
    named.setChild(child);
    QAccessible::updateAccessibility(&named);
}

void notifyGridReset(CUGCtrl *grid)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleTableModelChangeEvent event(grid, QAccessibleTableModelChangeEvent::ModelReset);
    QAccessible::updateAccessibility(&event);
}

} // namespace vyr
