// A list grid for tests: it writes down its hooks, can refuse new rows and
// choices, and upper-cases what a person types into column 0 (as a subclass
// that makes names legal would). GridWindow<ListGrid> puts it in a window.
#ifndef VYR_TESTS_LISTGRID_H
#define VYR_TESTS_LISTGRID_H

#include "support/gridwindow.h"
#include "uikit/cvvyrgrid.h"

#include <QStringList>

#include <functional>

namespace vyr::test {

class ListGrid : public CVVyrGrid
{
public:
    ListGrid(int columns, bool keepNewRow, QWidget *parent = nullptr)
        : CVVyrGrid(columns, keepNewRow, parent)
    {
    }

    QStringList log;
    bool refuseRows = false;
    bool upperCaseColumn0 = false;
    std::function<void(int, long, QStringList &)> choices;

    using CVVyrGrid::OnCellTypeEvent;

protected:
    bool OnRowAdded(long row) override
    {
        log << QStringLiteral("added %1").arg(row);
        return !refuseRows;
    }
    void OnCellChange(int column, long row, ug::TextSource source) override
    {
        log << QStringLiteral("change %1,%2 %3").arg(column).arg(row).arg(int(source));
        if (upperCaseColumn0 && column == 0 && source != ug::TextRestored) {
            const QString text = GetCellString(row, 0);
            if (text != text.toUpper())
                SetCellText(0, row, text.toUpper());
        }
    }
    bool OnChoiceSelected(int column, long row, const QString &text) override
    {
        log << QStringLiteral("chose %1 at %2,%3").arg(text).arg(column).arg(row);
        return text != QStringLiteral("refused");
    }
    void OnGetChoices(int column, long row, QStringList &list) override
    {
        if (choices)
            choices(column, row, list);
    }
    int OnBrowse(int column, long row) override
    {
        log << QStringLiteral("browse %1,%2").arg(column).arg(row);
        return 1;
    }
};

using ListGridWindow = GridWindow<ListGrid>;

} // namespace vyr::test

#endif // VYR_TESTS_LISTGRID_H
