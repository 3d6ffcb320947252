#include "uikit/gridrowbuttons.h"

#include "uikit/cvvyrgrid.h"
#include "uikit/cvyrdialog.h"

#include <QAbstractButton>
#include <QApplication>

namespace vyr {

namespace {

void sortByFirstColumn(CVVyrGrid &grid)
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    grid.SortByColumn(0);
    QApplication::restoreOverrideCursor();
}

} // namespace

void EnableGridRowButtons(CVyrDialog &dialog, bool enabled)
{
    for (const unsigned id : {kIdMoveRowsUp, kIdMoveRowsDown, kIdSortRows, kIdDeleteRows}) {
        if (QWidget *button = dialog.GetDlgItem(id))
            button->setEnabled(enabled);
    }
}

void ConnectGridRowButtons(CVyrDialog &dialog, CVVyrGrid &grid, bool enabled)
{
    const struct
    {
        unsigned id;
        void (*action)(CVVyrGrid &);
    } buttons[] = {
        {kIdMoveRowsUp, [](CVVyrGrid &rows) { rows.MoveSelectedRowsUp(); }},
        {kIdMoveRowsDown, [](CVVyrGrid &rows) { rows.MoveSelectedRowsDown(); }},
        {kIdSortRows, sortByFirstColumn},
        {kIdDeleteRows, [](CVVyrGrid &rows) { rows.DeleteSelectedRows(); }},
    };
    for (const auto &button : buttons) {
        auto *widget = qobject_cast<QAbstractButton *>(dialog.GetDlgItem(button.id));
        if (!widget)
            continue;
        QObject::connect(widget, &QAbstractButton::clicked, &grid, [&grid, action = button.action] {
            grid.CommitEdit();
            action(grid);
        });
    }
    EnableGridRowButtons(dialog, enabled);
}

} // namespace vyr
