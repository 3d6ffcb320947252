#include "attrtypes/datatypemappings.h"
#include "attrtypes/typestring.h"

#include "mappingtables.h"

#include <gtest/gtest.h>

namespace vyr {
namespace {

using test::kDatabaseMappings;
using test::kDbaseMappings;
using test::makeMappings;

// The type string of a type, or "(null)".
std::string text(const std::unique_ptr<AttrType> &type)
{
    return type ? formatType(*type, kDialogListMode) : std::string("(null)");
}

class DataTypeMappingsTest : public ::testing::Test
{
protected:
    std::unique_ptr<DataTypeMappings> m_dbase = makeMappings(kDbaseMappings, "DBASE");
    std::unique_ptr<DataTypeMappings> m_database = makeMappings(kDatabaseMappings, "SQLDB", true);
};

TEST_F(DataTypeMappingsTest, BareGenericNamesGetTheirArgumentsAndPairsAreKeptOnce)
{
    ASSERT_EQ(m_dbase->pairCount(), 5u);
    EXPECT_EQ(formatType(m_dbase->genericTemplate(0), kDialogListMode), "vyr_char(width)");
    EXPECT_EQ(formatType(m_dbase->genericTemplate(1), kDialogListMode), "vyr_decimal(width,decimal)");
    m_dbase->addMapping("char(width)", "vyr_char", kStoredListMode);
    m_dbase->addMapping("char(width)", "vyr_char(width)", kStoredListMode);
    EXPECT_EQ(m_dbase->pairCount(), 5u);
    m_dbase->addMapping("char(width)", "vyr_varchar", kStoredListMode);
    EXPECT_EQ(m_dbase->pairCount(), 6u);
}

TEST_F(DataTypeMappingsTest, CreatesTypesInTwoPasses)
{
    struct Case
    {
        const char *text;
        const char *created;
    };
    const Case cases[] = {
        {"char(30)", "char(30)"},  {"char(abc)", "char(20)"},
        {"char()", "char(20)"},    {"number(10,2),local", "number(10,2),local"},
        {"number(10)", "(null)"},  {"vyr_decimal(12,3)", "vyr_decimal(12,3)"},
        {"logical(5)", "logical"}, {"logical,x", "logical,x"},
        {"unknown(1)", "(null)"},  {"", "(null)"},
    };
    for (const Case &c : cases)
        EXPECT_EQ(text(m_dbase->createType(c.text, kDialogListMode)), c.created) << c.text;

    const auto width = m_database->createType("int(40)", kDialogListMode);
    EXPECT_EQ(text(width), "int(11)") << "an integer's display width stops at 16";
    EXPECT_EQ(text(m_database->createType("binint(8)", kDialogListMode)), "binint(4)");
    EXPECT_TRUE(width->isSource());
    EXPECT_EQ(width->registry(), m_database.get());
}

TEST_F(DataTypeMappingsTest, NativeTypesSurviveTheTripThroughTheGenericSide)
{
    struct Case
    {
        const DataTypeMappings *mappings;
        const char *native;
        const char *generic;
        const char *back;
    };
    const Case cases[] = {
        {m_dbase.get(), "char(30)", "vyr_char(30)", "char(30)"},
        {m_dbase.get(), "number(10,2)", "vyr_decimal(10,2)", "number(10,2)"},
        {m_dbase.get(), "logical", "vyr_boolean", "logical"},
        {m_dbase.get(), "date,local", "vyr_date,local", "date"},
        {m_database.get(), "varchar(80)", "vyr_varchar(80)", "varchar(80)"},
        {m_database.get(), "timestamp", "vyr_datetime", "timestamp"},
        {m_database.get(), "int(8)", "vyr_int32", "int"},
        {m_database.get(), "binint(2)", "vyr_int16", "binint(4)"},
        {m_database.get(), "enum(\"a b%c\")", "vyr_char(200)", "char(200)"}, // the first pair wins
    };
    for (const Case &c : cases) {
        const auto native = c.mappings->createType(c.native, kDialogListMode);
        ASSERT_TRUE(native) << c.native;
        const auto generic = c.mappings->toGeneric(*native);
        EXPECT_EQ(text(generic), c.generic) << c.native;
        if (generic) {
            EXPECT_EQ(text(c.mappings->toNative(*generic)), c.back) << c.native;
        }
    }
    const auto generic = m_dbase->createType("vyr_int64", kDialogListMode);
    EXPECT_FALSE(generic) << "no template for it";
    const auto foreign = m_database->createType("int", kDialogListMode);
    EXPECT_FALSE(m_dbase->toGeneric(*foreign));
    EXPECT_FALSE(m_dbase->toNative(*foreign));
}

TEST_F(DataTypeMappingsTest, ConvertsBetweenFormatsDirectlyOrThroughTheGenericSide)
{
    struct Case
    {
        const DataTypeMappings *from;
        const DataTypeMappings *to;
        const char *type;
        const char *converted;
    };
    const Case cases[] = {
        {m_dbase.get(), m_database.get(), "char(30)", "char(30)"},
        {m_dbase.get(), m_database.get(), "number(10,2)", "numeric(10,2)"},
        {m_dbase.get(), m_database.get(), "logical", "boolean"},
        {m_dbase.get(), m_database.get(), "date,local", "date"},
        {m_dbase.get(), m_database.get(), "float(8,3)", "(null)"},
        {m_database.get(), m_dbase.get(), "numeric(12,4)", "number(12,4)"},
        {m_database.get(), m_dbase.get(), "varchar(50)", "(null)"},
        {m_database.get(), m_dbase.get(), "timestamp", "(null)"},
        {m_database.get(), m_dbase.get(), "enum(a)", "char(200)"},
    };
    for (const Case &c : cases) {
        const auto type = c.from->createType(c.type, kDialogListMode);
        ASSERT_TRUE(type) << c.type;
        const auto converted = DataTypeMappings::convertType(*c.from, type.get(), *c.to);
        EXPECT_EQ(text(converted), c.converted) << c.type << " to " << c.to->formatName();
        if (converted) {
            EXPECT_EQ(converted->registry(), c.to);
        }
    }
    EXPECT_FALSE(DataTypeMappings::convertType(*m_dbase, nullptr, *m_database));
}

TEST_F(DataTypeMappingsTest, DefaultTypePrefersOneWithoutArguments)
{
    EXPECT_EQ(text(m_dbase->defaultType()), "logical");
    EXPECT_EQ(text(m_database->defaultType()), "int");
    const char *const allWithArguments[][2] = {{"char(width)", "vyr_char"}, {"number(width,decimal)", "vyr_decimal"}};
    EXPECT_EQ(text(makeMappings(allWithArguments, "X")->defaultType()), "char(20)");
    EXPECT_FALSE(DataTypeMappings("EMPTY", false).defaultType());
}

} // namespace
} // namespace vyr
