// CUGDataSource: where a grid's cells live. The grid asks its data store
// for cells, hands it new ones, and lets it veto moves and edits. This base
// stores nothing and allows everything; CUGMem keeps cells in memory.
//
// Results follow the grid's codes: 0 done, 1 nothing there (or out of
// range), 2 refused. The permission questions answer 1 to allow.
#ifndef VYR_GRID_CUGDATASOURCE_H
#define VYR_GRID_CUGDATASOURCE_H

#include <QString>

#include <vector>

class QWidget;

namespace vyr {

class CUGCell;

class CUGDataSource
{
public:
    // Find flags.
    enum FindFlags : int { FindPartial = 1, FindIgnoreCase = 2, FindUp = 4, FindReplace = 8 };

    CUGDataSource() = default;
    virtual ~CUGDataSource();
    CUGDataSource(const CUGDataSource &) = delete;
    CUGDataSource &operator=(const CUGDataSource &) = delete;

    // Opens a blank row before `row`; the rows from there on move down one.
    virtual int InsertRow(long row);
    // Removes the row; the rows after it move up one.
    virtual int DeleteRow(long row);
    // Many rows at once; the rows opened or removed, from the first on.
    virtual long InsertRows(long row, long count);
    virtual long DeleteRows(long row, long count);
    // Adds the stored properties of the cell to `cell`; 1 when nothing is
    // stored there, leaving `cell` as it was.
    virtual int GetCell(int column, long row, CUGCell &cell);
    // Stores the cell in place of what is stored there.
    virtual int SetCell(int column, long row, const CUGCell &cell);
    // Forgets a cell.
    virtual int DeleteCell(int column, long row);
    // Reorders the texts of the columns' rows from `firstRow` on: the row
    // firstRow + i takes the texts row firstRow + order[i] had. Only texts
    // move; the cells' other properties stay where they are.
    virtual int PermuteTexts(const std::vector<int> &columns, long firstRow, const std::vector<long> &order);
    // The next cell of `column` after `row` (before it with FindUp) whose
    // text holds `text` (whole, unless FindPartial; any case with
    // FindIgnoreCase); 0 with `row` moved there, 1 when there is none.
    virtual int FindNext(const QString &text, int &column, long &row, int flags);
    // How many body rows of `column` hold exactly `text` (not empty), or -1
    // when the store keeps no count and the caller must look row by row.
    virtual long CountText(int column, const QString &text);

    // May the current cell move? 1 allows.
    virtual int OnCanMove(int oldColumn, long oldRow, int newColumn, long newRow);
    // May editing start in the cell? 1 allows.
    virtual int OnEditStart(int column, long row, QWidget *&editor);
    // May the typed character go into the editor? 1 allows.
    virtual int OnEditVerify(int column, long row, QWidget *editor, QChar &character);
    // An edit has finished; 1 accepts its text.
    virtual int OnEditFinish(int column, long row, QWidget *editor, const QString &text, bool cancelled);
    // May editing go on from one cell to the next? 1 allows.
    virtual int OnEditContinue(int oldColumn, long oldRow, int &newColumn, long &newRow);
    // The current cell's column or row changed.
    virtual void OnColumnChange(int oldColumn, int newColumn);
    virtual void OnRowChange(long oldRow, long newRow);
};

} // namespace vyr

#endif // VYR_GRID_CUGDATASOURCE_H
