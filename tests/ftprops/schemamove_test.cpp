// A feature type moved to another format through its workspace record: what
// stays, what is carried into the new vocabulary, what goes.
#include "attrtypes/datatypemappings.h"
#include "ftprops/schemamove.h"
#include "ftprops/vyrobjftpropsformatinfo.h"
#include "ftprops/vyrobjworkspaceschemainfo.h"

#include "stringobjects/vyrrwstringarrayimp.h"
#include "stringobjects/vyrrwstringimp.h"

#include "vyr/IVYRFeature.h"
#include "vyr/vyr_featurefile.h"
#include "vyr/vyr_session.h"

#include <gtest/gtest.h>

#include <memory>

namespace vyr {
namespace {

// A file format of one geometry and short upper-case names, a database of
// several geometries and lower-case names, and one without user attributes.
const char kFile[] = "FORMAT,FILE,HAS_DEFLINE_ATTRS,yes,SUPPORTS_MULTI_GEOM,no,ATTR_CASE,UPPER,MAX_ATTR_LENGTH,10,"
                     "DATA_TYPE_MAPPINGS,\"char(width),vyr_char,\"\"number(width,decimal)\"\",vyr_decimal,"
                     "logical,vyr_boolean\","
                     "GEOM_TYPE_MAPPINGS,\"dot,vyr_point,arc,vyr_line,patch,vyr_area\","
                     "FORMAT_ATTRS,\"file_type,char(20),file_part{}.x,char(5)\","
                     "DEFLINE_PARMS,\"GUI TEXT ENCODING Encoding,UTF-8,GUI TEXT COORDS Coordinates,\"";
const char kBase[] = "FORMAT,BASE,HAS_DEFLINE_ATTRS,yes,SUPPORTS_MULTI_GEOM,yes,SUPPORTS_FEAT_TYPE_FANOUT,yes,"
                     "ATTR_CASE,LOWER,"
                     "DATA_TYPE_MAPPINGS,\"varchar(width),vyr_varchar,char(width),vyr_char,"
                     "\"\"numeric(width,decimal)\"\",vyr_decimal,bigint,vyr_int64,boolean,vyr_boolean\","
                     "GEOM_TYPE_MAPPINGS,\"point,vyr_point,linestring,vyr_line,polygon,vyr_area,"
                     "multipolygon,vyr_area\","
                     "FORMAT_ATTRS,\"srid,int\","
                     "DEFLINE_PARMS,\"GUI TEXT ENCODING Encoding,UTF-8,GUI TEXT HANDLING Handling,CREATE\"";
const char kFixed[] = "FORMAT,FIXED,HAS_DEFLINE_ATTRS,no,GEOM_TYPE_MAPPINGS,\"spot,vyr_point,trail,vyr_line\","
                      "FORMAT_ATTRS,\"fixed_name,string\"";

class SchemaMoveTest : public ::testing::Test
{
protected:
    SchemaMoveTest()
        : m_session(VYR_SessionCreate())
        , m_feature(m_session->createFeature())
        , m_file(kFile, m_session, "FILE")
        , m_base(kBase, m_session, "BASE")
        , m_fixed(kFixed, m_session, "FIXED")
    {}
    ~SchemaMoveTest() override
    {
        m_schema.reset();
        m_session->destroyFeature(m_feature);
        VYR_SessionDestroy(m_session);
    }

    // The feature read from `json`, under a record of `format`.
    void open(const char *json, const FTPropsFormatInfo &format)
    {
        VYRRWStringImp error;
        ASSERT_TRUE(VYR_FeatureReadJson(m_feature, json, std::string_view(json).size(), "test", &error))
            << error.c_str();
        m_schema = std::make_unique<VYRObjWorkspaceSchemaInfo>(
            *m_session, *m_feature, format, [this](const std::string &id) -> const FTPropsFormatInfo * {
                for (const FTPropsFormatInfo *candidate : {&m_file, &m_base, &m_fixed}) {
                    if (candidate->getId() == id)
                        return candidate;
                }
                return nullptr;
            });
    }
    std::string attribute(const char *name) const
    {
        VYRRWStringImp value;
        return m_feature->getAttribute(name, value) ? std::string(value.view()) : std::string("(absent)");
    }
    StringList list(const char *name) const
    {
        VYRRWStringArrayImp elements;
        m_feature->getListAttribute(name, elements);
        StringList texts;
        for (std::size_t i = 0; i < elements.entries(); ++i)
            texts.emplace_back(elements.elementAt(i));
        return texts;
    }

    IVYRSession *m_session;
    IVYRFeature *m_feature;
    VYRObjFTPropsFormatInfo m_file;
    VYRObjFTPropsFormatInfo m_base;
    VYRObjFTPropsFormatInfo m_fixed;
    std::unique_ptr<VYRObjWorkspaceSchemaInfo> m_schema;
};

const char kRoads[] = R"json({"feature_type": "ROADS",
  "attributes": {"*vyr_geometry{0}": "arc", "vyr_geometry{0}": "vyr_line",
                 "ROAD_NAME": "vyr_char(40)", "*ROAD_NAME": "char(40)",
                 "LANES": "vyr_decimal(2,0)", "*LANES": "number(2,0)",
                 "KIND": "vyr_char(10)", "*KIND": "enum(a,b)",
                 "vyr_fanout": "yes", "vyr_fanout_attribute": "ROAD_NAME"},
  "attribute_order": ["ROAD_NAME", "LANES", "KIND"],
  "lists": {"*vyr_format_attr_name": ["file_type", "file_part{0}.x"],
            "*vyr_format_attr_type": ["char(20)", "char(5)"],
            "*vyr_parameter_name": ["ENCODING", "COORDS"],
            "*vyr_parameter_value": ["windows-1252", "EPSG:25832"]}})json";

TEST_F(SchemaMoveTest, AFileFeatureTypeMovedIntoADatabaseKeepsOnlyWhatTheDatabaseUnderstands)
{
    open(kRoads, m_file);
    m_schema->setFormatId("BASE");
    EXPECT_EQ(m_schema->getGeometry(), "linestring") << "mapped through the generic name, not the first entry";
    EXPECT_EQ(attribute("*vyr_geometry{0}"), "linestring");
    EXPECT_EQ(m_schema->getAttributeNames(true, false), (StringList{"road_name", "lanes", "kind"}));
    EXPECT_EQ(attribute("*road_name"), "char(40)");
    EXPECT_EQ(attribute("lanes"), "vyr_decimal(2,0)");
    EXPECT_EQ(attribute("*lanes"), "numeric(2,0)");
    // enum has no counterpart: the generic type the feature held carries it.
    EXPECT_EQ(attribute("kind"), "vyr_char(10)");
    EXPECT_EQ(attribute("*kind"), "char(10)");
    for (const char *gone : {"ROAD_NAME", "*ROAD_NAME", "LANES", "*LANES", "KIND", "*KIND"})
        EXPECT_EQ(attribute(gone), "(absent)") << gone;
    EXPECT_EQ(m_schema->getFanoutAttribute(), "road_name") << "the fan-out follows its attribute";
    EXPECT_TRUE(list("*vyr_format_attr_name").empty());
    EXPECT_EQ(list("*vyr_parameter_name"), StringList{"ENCODING"}) << "a parameter both formats have stays";
    EXPECT_EQ(list("*vyr_parameter_value"), StringList{"windows-1252"});
}

TEST_F(SchemaMoveTest, ATypeWithoutCounterpartTravelsAsItsGenericType)
{
    open(R"json({"feature_type": "cadastre.parcels",
      "attributes": {"*vyr_geometry{0}": "polygon", "*vyr_geometry{1}": "multipolygon", "vyr_geometry{0}": "vyr_area",
                     "parcel_id": "vyr_int64", "*parcel_id": "bigint", "owner": "vyr_varchar(120)", "*owner": "varchar(120)"},
      "attribute_order": ["parcel_id", "owner"],
      "lists": {"*vyr_format_attr_name": ["srid"], "*vyr_format_attr_type": ["int"],
                "*vyr_parameter_name": ["HANDLING"], "*vyr_parameter_value": ["TRUNCATE"]}})json",
         m_base);
    m_schema->setFormatId("FILE");
    EXPECT_EQ(m_schema->getGeometry(), "patch") << "the first geometry, mapped";
    EXPECT_EQ(m_schema->getAttributeNames(true, false), (StringList{"PARCEL_ID", "OWNER"}));
    EXPECT_EQ(attribute("PARCEL_ID"), "vyr_int64") << "never an empty generic type";
    EXPECT_EQ(attribute("*PARCEL_ID"), "(absent)");
    EXPECT_EQ(m_schema->getAttributeType("PARCEL_ID"), "vyr_int64");
    EXPECT_EQ(attribute("OWNER"), "vyr_varchar(120)");
    EXPECT_EQ(attribute("*OWNER"), "(absent)") << "FILE has no varchar either";
    EXPECT_EQ(m_schema->getAttributeType("OWNER"), "vyr_varchar(120)");
    EXPECT_TRUE(list("*vyr_format_attr_name").empty());
    EXPECT_TRUE(list("*vyr_parameter_name").empty());
}

TEST_F(SchemaMoveTest, AFormatWithoutUserAttributesKeepsNone)
{
    open(kRoads, m_file);
    m_schema->setFormatId("FIXED");
    EXPECT_TRUE(m_schema->getAttributeNames(true, false).empty());
    for (const char *gone : {"*ROAD_NAME", "*LANES", "*KIND"})
        EXPECT_EQ(attribute(gone), "(absent)") << gone;
    EXPECT_EQ(m_schema->getGeometry(), "trail");
    EXPECT_TRUE(list("*vyr_parameter_name").empty());
    EXPECT_FALSE(m_schema->isFanout()) << "a format that fans nothing out";
    EXPECT_EQ(m_schema->getFanoutAttribute(), "");
}

TEST(MoveAttributeTypeTest, CounterpartOrGenericType)
{
    VYRObjFTPropsFormatInfo file(kFile, nullptr, "FILE");
    VYRObjFTPropsFormatInfo base(kBase, nullptr, "BASE");
    const DataTypeMappings &from = *base.getDataTypeMappings();
    const DataTypeMappings &to = *file.getDataTypeMappings();
    struct Case
    {
        const char *type, *knownGeneric, *movedType, *movedGeneric;
    };
    const Case cases[] = {
        {"numeric(12,2)", "", "number(12,2)", "vyr_decimal(12,2)"},
        {"bigint", "vyr_int64", "vyr_int64", "vyr_int64"},
        {"bigint", "", "vyr_int64", "vyr_int64"},
        // Unknown to the old format, but its stored generic type is known
        // to the new one.
        {"money", "vyr_boolean", "logical", "vyr_boolean"},
    };
    for (const Case &c : cases) {
        const auto moved = MoveAttributeType(from, to, c.type, c.knownGeneric, 0);
        ASSERT_TRUE(moved) << c.type;
        EXPECT_EQ(moved->type, c.movedType) << c.type;
        EXPECT_EQ(moved->generic, c.movedGeneric) << c.type;
    }
    EXPECT_FALSE(MoveAttributeType(from, to, "money", "", 0)) << "nothing known of it";
}

} // namespace
} // namespace vyr
