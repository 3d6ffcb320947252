#include "demogrid.h"

#include <QStringList>

using vyr::CUGCell;

DemoGrid::DemoGrid(long rows, QWidget *parent)
    : CUGCtrl(parent)
{
    SetColumnCount(ColumnCount);
    SetMultiSelect(true);
    SetCurrentCellStyle(3);
    SetSideHeadingWidth(60);

    const QStringList headings{tr("Name"), tr("Colour"), tr("Active"), tr("Phone"), tr("Amount"), tr("Marker")};
    for (int column = 0; column < ColumnCount; ++column)
        SetCellText(column, -1, headings[column]);

    CUGCell defaults;
    defaults.setCellType(1);
    defaults.setLabel(QStringLiteral("Red\nGreen\nBlue\nYellow\n"));
    SetColumnDefault(ColourColumn, defaults);
    defaults.clearAll();
    defaults.setCellType(2);
    defaults.setCellTypeParam(vyr::ug::ParamCheckTriState);
    defaults.setLabel(tr("on"));
    SetColumnDefault(ActiveColumn, defaults);
    defaults.clearAll();
    defaults.setMask(QStringLiteral("(000) 000-0000"));
    SetColumnDefault(PhoneColumn, defaults);
    defaults.clearAll();
    defaults.setAlignment(CUGCell::AlignRight);
    SetColumnDefault(AmountColumn, defaults);
    defaults.clearAll();
    defaults.setCellType(3);
    SetColumnDefault(MarkerColumn, defaults);

    SetColumnWidth(NameColumn, 120);
    SetColumnWidth(ColourColumn, 100);
    SetColumnWidth(PhoneColumn, 120);
    SetColumnWidth(AmountColumn, 100);
    SetColumnWidth(MarkerColumn, 70);

    static const char *const colours[] = {"Red", "Green", "Blue", "Yellow"};
    SetRowCount(rows, false);
    CUGCell cell;
    for (long row = 0; row < rows; ++row) {
        SetCellText(NameColumn, row, QStringLiteral("Item %1").arg(row + 1));
        SetCellText(ColourColumn, row, QString::fromLatin1(colours[row % 4]));
        GetCellResolved(ActiveColumn, row, cell);
        cell.setNumber(double(row % 3));
        SetCell(ActiveColumn, row, cell);
        SetCellText(PhoneColumn, row, QStringLiteral("(555) %1-%2").arg(row % 1000, 3, 10, QLatin1Char('0')).arg(row % 10000, 4, 10, QLatin1Char('0')));
        GetCellResolved(AmountColumn, row, cell);
        cell.setNumber(double(row) * 12.5 + 0.25);
        SetCell(AmountColumn, row, cell);
    }
    RepaintAll();
}

void DemoGrid::OnCellRead(int column, long row, CUGCell &cell)
{
    // Row numbers are made as they are drawn, not stored.
    if (column == -1 && row >= 0)
        cell.setText(QString::number(row + 1));
}

void DemoGrid::OnCellChar(QChar &character, bool handled)
{
    if (!handled && character != u' ')
        BeginEdit(character.unicode());
}

void DemoGrid::OnCellDoubleClick(int, long, const QRect &, const QPoint &, bool handled)
{
    if (!handled)
        BeginEdit(0);
}

long DemoGrid::OnCellTypeEvent(int, int column, long row, int message, std::intptr_t parameter)
{
    if (message == vyr::ug::CheckChanged)
        emit status(tr("Row %1: check box now %2").arg(row + 1).arg(parameter));
    else if (message == vyr::ug::DropListPostSelect)
        emit status(tr("Row %1: %2 chosen").arg(row + 1).arg(*reinterpret_cast<const QString *>(parameter)));
    Q_UNUSED(column);
    return 1;
}
