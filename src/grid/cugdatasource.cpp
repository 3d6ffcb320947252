#include "grid/cugdatasource.h"

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

} // namespace vyr
