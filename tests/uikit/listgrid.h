// A list grid for tests: it writes down its hooks, can refuse new rows and
// choices, upper-cases what a person types into column 0 (as a subclass
// that makes names legal would), and sits in a window between two fields so
// that the focus has somewhere to go.
#ifndef VYR_TESTS_LISTGRID_H
#define VYR_TESTS_LISTGRID_H

#include "uikit/cvvyrgrid.h"

#include <QLineEdit>
#include <QStringList>
#include <QVBoxLayout>
#include <QWidget>
#include <QtTest>

#include <functional>
#include <memory>

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

// A field, the grid, another field, in that tab order, in a shown window.
struct GridWindow
{
    QWidget window;
    QLineEdit *before = nullptr;
    ListGrid *grid = nullptr;
    QLineEdit *after = nullptr;

    GridWindow(int columns, bool keepNewRow)
    {
        auto *layout = new QVBoxLayout(&window);
        before = new QLineEdit(&window);
        before->setObjectName(QStringLiteral("before"));
        grid = new ListGrid(columns, keepNewRow, &window);
        after = new QLineEdit(&window);
        after->setObjectName(QStringLiteral("after"));
        layout->addWidget(before);
        layout->addWidget(grid);
        layout->addWidget(after);
        window.resize(480, 320);
        grid->InitializeGrid();
        grid->log.clear();
    }

    bool show()
    {
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window))
            return false;
        grid->setFocus();
        return QTest::qWaitFor([this] { return grid->hasFocus(); });
    }
};

} // namespace vyr::test

#endif // VYR_TESTS_LISTGRID_H
