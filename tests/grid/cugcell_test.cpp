#include "grid/cugcell.h"

#include <QLocale>

#include <gtest/gtest.h>

namespace vyr {
namespace {

TEST(CUGCellTest, AClearedPropertyBitHidesTheStoredValue)
{
    CUGCell cell;
    cell.setBackColor(Qt::yellow);
    cell.setPropertyFlag(CUGCell::BackColor, false);
    EXPECT_FALSE(cell.backColor().isValid());
}

TEST(CUGCellTest, AddTakesOnlyWhatTheSourceSetsAndCopyTakesItsMask)
{
    CUGCell target;
    target.setBackColor(Qt::yellow);
    target.setText("old");
    CUGCell source;
    source.setText("new");
    source.setReadOnly(true);

    CUGCell added;
    added.copyInfoFrom(target);
    added.addInfoFrom(source);
    EXPECT_EQ(added.text(), "new");
    EXPECT_EQ(added.backColor(), QColor(Qt::yellow));
    EXPECT_TRUE(added.isReadOnly());

    CUGCell copied;
    copied.copyInfoFrom(target);
    copied.copyInfoFrom(source);
    EXPECT_EQ(copied.propertyMask(), source.propertyMask());
    EXPECT_FALSE(copied.backColor().isValid());

    copied.setUserValue(42);
    copied.setCellType(2);
    copied.clearAll();
    EXPECT_EQ(copied.propertyMask(), 0u);
    copied.setPropertyFlag(CUGCell::UserValue | CUGCell::CellType, true);
    EXPECT_EQ(copied.userValue(), -1) << "clearing resets the stored values too";
    EXPECT_EQ(copied.cellType(), -1);
}

TEST(CUGCellTest, NumbersAreWrittenInTheUsersLocale)
{
    struct Case
    {
        QLocale locale;
        double value;
        int decimals; // -1: as the value needs
        const char *text;
    };
    const Case cases[] = {
        {QLocale::c(), 2.5, -1, "2.5"},
        {QLocale(QLocale::German, QLocale::Germany), 2.5, -1, "2,5"},
        {QLocale(QLocale::German, QLocale::Germany), 1234.25, -1, "1.234,25"},
        {QLocale(QLocale::English, QLocale::UnitedStates), -1234.5, 2, "-1,234.50"},
        {QLocale::c(), 3, -1, "3"},
    };
    for (const Case &c : cases) {
        QLocale::setDefault(c.locale);
        CUGCell cell;
        if (c.decimals >= 0)
            cell.setDecimals(c.decimals);
        cell.setNumber(c.value);
        EXPECT_EQ(cell.text().toStdString(), c.text);
        EXPECT_EQ(cell.dataType(), CUGCell::NumberData);
        EXPECT_DOUBLE_EQ(cell.number(), c.value) << c.text;
    }
    QLocale::setDefault(QLocale::c());
    CUGCell empty;
    EXPECT_EQ(empty.number(), 0);
}

} // namespace
} // namespace vyr
