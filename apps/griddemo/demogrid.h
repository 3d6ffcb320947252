// DemoGrid: a grid of 100,000 rows that shows what the grid control does -
// every standard cell type, a masked column, numbers in the user's locale,
// multi-select, editing by typing, F2 or a double click, find and replace.
#ifndef VYR_GRIDDEMO_DEMOGRID_H
#define VYR_GRIDDEMO_DEMOGRID_H

#include "grid/cugctrl.h"

class DemoGrid final : public vyr::CUGCtrl
{
    Q_OBJECT

public:
    enum Column { NameColumn, ColourColumn, ActiveColumn, PhoneColumn, AmountColumn, MarkerColumn, ColumnCount };

    explicit DemoGrid(long rows, QWidget *parent = nullptr);

protected:
    void OnCellRead(int column, long row, vyr::CUGCell &cell) override;
    void OnCellChar(QChar &character, bool handled) override;
    void OnCellDoubleClick(int column, long row, const QRect &rect, const QPoint &point, bool handled) override;
    long OnCellTypeEvent(int typeId, int column, long row, int message, std::intptr_t parameter) override;

signals:
    void status(const QString &message);
};

#endif // VYR_GRIDDEMO_DEMOGRID_H
