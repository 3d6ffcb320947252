#include "grid/cugdatasource.h"

#include "grid/cugcell.h"

namespace vyr {

CUGDataSource::~CUGDataSource() = default;

int CUGDataSource::InsertRow(long)
{
    return 0;
}

int CUGDataSource::DeleteRow(long)
{
    return 0;
}

int CUGDataSource::GetCell(int, long, CUGCell &)
{
    return 1;
}

int CUGDataSource::SetCell(int, long, const CUGCell &)
{
    return 0;
}

int CUGDataSource::DeleteCell(int, long)
{
    return 0;
}

int CUGDataSource::FindNext(const QString &, int &, long &, int)
{
    return 1;
}

int CUGDataSource::OnCanMove(int, long, int, long)
{
    return 1;
}

int CUGDataSource::OnEditStart(int, long, QWidget *&)
{
    return 1;
}

int CUGDataSource::OnEditVerify(int, long, QWidget *, QChar &)
{
    return 1;
}

int CUGDataSource::OnEditFinish(int, long, QWidget *, const QString &, bool)
{
    return 1;
}

int CUGDataSource::OnEditContinue(int, long, int &, long &)
{
    return 1;
}

void CUGDataSource::OnColumnChange(int, int) {}

void CUGDataSource::OnRowChange(long, long) {}

long CUGDataSource::InsertRows(long row, long count)
{
    long done = 0;
    while (done < count && InsertRow(row) == 0)
        ++done;
    return done;
}

long CUGDataSource::DeleteRows(long row, long count)
{
    long done = 0;
    while (done < count && DeleteRow(row) == 0)
        ++done;
    return done;
}

int CUGDataSource::PermuteTexts(const std::vector<int> &columns, long firstRow, const std::vector<long> &order)
{
    std::vector<QString> texts(order.size());
    for (const int column : columns) {
        for (std::size_t i = 0; i < order.size(); ++i) {
            CUGCell cell;
            GetCell(column, firstRow + long(i), cell);
            texts[i] = cell.takeText();
        }
        for (std::size_t i = 0; i < order.size(); ++i) {
            if (order[i] == long(i))
                continue;
            CUGCell cell;
            GetCell(column, firstRow + long(i), cell);
            cell.setText(texts[std::size_t(order[i])]);
            SetCell(column, firstRow + long(i), cell);
        }
    }
    return 0;
}

long CUGDataSource::CountText(int, const QString &)
{
    return -1;
}

} // namespace vyr
