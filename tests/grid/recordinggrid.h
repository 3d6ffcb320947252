// A grid that writes down which hooks ran, with what, and can be told to
// refuse moves, scrolls and edits.
#ifndef VYR_TESTS_RECORDINGGRID_H
#define VYR_TESTS_RECORDINGGRID_H

#include "grid/cugctrl.h"

#include <QString>
#include <QStringList>
#include <QtTest>

#include <functional>

namespace vyr::test {

class RecordingGrid : public CUGCtrl
{
public:
    explicit RecordingGrid(int columns = 5, long rows = 50, QWidget *parent = nullptr)
        : CUGCtrl(parent)
    {
        SetColumnCount(columns);
        SetRowCount(rows);
        resize(420, 260);
        log.clear();
    }

    QStringList log;
    int writes = 0;
    bool refuseMoves = false;
    bool refuseScroll = false;
    bool refuseColumnResize = false;
    std::function<int(const QString &, bool)> endEdit;
    std::function<bool(QChar &)> verify;
    std::function<long(int, int, long, std::intptr_t)> typeEvent;
    std::function<void(int, long, CUGCell &)> read;
    std::function<bool(int, long)> enabled;
    int gridInits = 0;
    QRect focusFrame;

    QRect cellRect(int column, long row)
    {
        QRect rect;
        GetCellRect(column, row, rect);
        return rect;
    }

    void setColumnDefault(int column, const std::function<void(CUGCell &)> &set)
    {
        CUGCell cell;
        set(cell);
        SetColumnDefault(column, cell);
    }

    // The editor takes the focus only once its window is active.
    bool editAt(int column, long row, int firstKey = 0)
    {
        GotoCell(column, row);
        return BeginEdit(firstKey) == 0 && QTest::qWaitFor([this] { return GetEditor()->hasFocus(); });
    }

protected:
    void OnGridInit() override { ++gridInits; }
    int OnAllowCellMove(int, long, int newColumn, long newRow) override
    {
        log << QStringLiteral("allow %1,%2").arg(newColumn).arg(newRow);
        return refuseMoves ? 0 : 1;
    }
    int OnAllowScroll(int, long, int, long) override { return refuseScroll ? 0 : 1; }
    int OnAllowColumnResize(int) override { return refuseColumnResize ? 0 : 1; }
    void OnColumnChanged(int from, int to) override { log << QStringLiteral("column %1>%2").arg(from).arg(to); }
    void OnRowChanged(long from, long to) override { log << QStringLiteral("row %1>%2").arg(from).arg(to); }
    void OnCellChanged(int, int, long, long) override { log << QStringLiteral("cell"); }
    void OnLeftColumnChanged(int, int newColumn) override { log << QStringLiteral("left %1").arg(newColumn); }
    void OnTopRowChanged(long, long newRow) override { log << QStringLiteral("top %1").arg(newRow); }
    void OnCellRead(int column, long row, CUGCell &cell) override { if (read) read(column, row, cell); }
    bool IsCellEnabled(int column, long row) override { return !enabled || enabled(column, row); }
    void OnCellWrite(int, long, const CUGCell &) override { ++writes; }
    long OnCellTypeEvent(int, int column, long row, int message, std::intptr_t parameter) override
    {
        log << QStringLiteral("event %1").arg(message);
        return typeEvent ? typeEvent(column, row, message, parameter) : 1;
    }
    int OnEditVerify(int, long, QWidget *, QChar &character) override { return verify ? verify(character) : 1; }
    int OnEndEdit(int, long, QWidget *, const QString &text, bool cancelled) override
    {
        log << QStringLiteral("end %1%2").arg(text, cancelled ? QStringLiteral(" cancelled") : QString());
        return endEdit ? endEdit(text, cancelled) : 1;
    }
    void OnPaintFocusFrame(QPainter &painter, const QRect &rect) override
    {
        focusFrame = rect;
        CUGCtrl::OnPaintFocusFrame(painter, rect);
    }
};

} // namespace vyr::test

#endif // VYR_TESTS_RECORDINGGRID_H
