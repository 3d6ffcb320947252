#include "ftprops/vyrobjftpropsformatinfo.h"

#include "support/countingsession.h"

#include "vyr/IVYRSession.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace vyr {
namespace {

// A session that knows the format types of a few formats.
class FormatTypeSession final : public test::CountingSession
{
public:
    std::map<std::string, std::string> formatTypes;

    bool getProperties(const char *category, IVYRStringArray &query) override
    {
        const std::string format = query.entries() == 1 ? query.elementAt(0) : "";
        query.clear();
        const auto found = formatTypes.find(format);
        if (std::string_view(category) != kVyrSessionPropFormatInfo || found == formatTypes.end())
            return false;
        for (const char *text : {"FORMAT_NAME", format.c_str(), "FORMAT_TYPE", found->second.c_str()})
            query.append(text);
        return true;
    }
};

TEST(FormatInfoTest, LaterValuesWinAndTrailingKeysAreIgnored)
{
    const VYRObjFTPropsFormatInfo info("FORMAT,X1,SOURCE,no,SOURCE,yes,ROLE,schema_reader,ATTR_CASE", nullptr);
    EXPECT_EQ(info.getFormatName(), "X1");
    EXPECT_EQ(info.getFormatLongName(), "X1");
    EXPECT_TRUE(info.isSource());
    EXPECT_FALSE(info.isSchemaReader());
    EXPECT_EQ(info.getAttrCase(), "");
    EXPECT_TRUE(VYRObjFTPropsFormatInfo("ROLE,SCHEMA_READER", nullptr).isSchemaReader());
}

TEST(FormatInfoTest, BooleanAndIntegerValues)
{
    struct Case
    {
        const char *value;
        bool multiGeom; // default false
        bool source; // default true
    };
    const Case cases[] = {
        {"Yes", true, true},  {"1", true, true},    {"0", false, false},   {"0.0", false, false},
        {"No", false, false}, {"2D0", true, true},  {"1.5-3", true, true}, {"maybe", false, true},
        {"", false, true},    {"true", true, true}, {"F", false, false},
        // Only decimal numbers, repaired in turn: "15-3" is 0.015, "0,0D0"
        // zero; infinity, hexadecimal and numbers out of range read as
        // nothing, and "-1.#IND" is not-a-number, which is not zero.
        {"inf", false, true}, {"15-3", true, true}, {"0,0D0", false, false}, {"0x10", false, true},
        {"1e999", false, true}, {"-1.#IND", true, true}, {"nan", false, false}, {" 0 ", false, false},
        {"+2,5", true, true}, {"2,5-1", true, true}, {".", false, true}, {"1e", false, true},
    };
    for (const Case &c : cases) {
        const std::string value = c.value;
        // Quoted, so that a decimal comma stays in the value.
        const std::string quoted = "\"" + value + "\"";
        EXPECT_EQ(VYRObjFTPropsFormatInfo("SUPPORTS_MULTI_GEOM," + quoted, nullptr).supportsMultiGeom(), c.multiGeom)
            << c.value;
        EXPECT_EQ(VYRObjFTPropsFormatInfo("SOURCE," + quoted, nullptr).isSource(), c.source) << c.value;
    }
    const std::pair<const char *, int> integers[]
        = {{"31abc", 31}, {"abc", 0}, {" +12", 12}, {"-4", -4}, {"99999999999", 2147483647}, {"", 0}, {"\t5", 0}};
    for (const auto &[value, expected] : integers)
        EXPECT_EQ(VYRObjFTPropsFormatInfo(std::string("MAX_ATTR_LENGTH,\"") + value + "\"", nullptr).getMaxAttrLength(),
                  expected)
            << value;
}

TEST(FormatInfoTest, ListsAndPairs)
{
    const VYRObjFTPropsFormatInfo info("FORMAT_ATTRS,\"a,char,b,number,odd\","
                                       "FEATURE_TYPE_RESERVED_WORDS,\"select,table,select\","
                                       "DEST_ILLEGAL_ATTR_LIST,\"x\"\"y,z\","
                                       "ALLOWED_FEAT_TYPES,\"waypoints,routes,tracks\"",
                                       nullptr);
    EXPECT_EQ(info.getFormatAttrNames(), (StringList{"a", "b"}));
    EXPECT_EQ(info.getFormatAttrType("b"), "number");
    EXPECT_EQ(info.getFormatAttrType("c"), "");
    EXPECT_EQ(info.getFormatAttrType("odd"), "");
    EXPECT_EQ(info.getFeatureTypeReservedWords(), (StringList{"select", "table", "select"}));
    EXPECT_EQ(info.getFeatureTypeReservedWordSet(), (StringSet{"select", "table"}));
    EXPECT_EQ(info.getDestIllegalAttrList(), (StringList{"x\"y", "z"}));
    EXPECT_EQ(info.getAllowedFeatTypes().size(), 3u);
}

TEST(FormatInfoTest, ParametersTypesAndGeometries)
{
    const VYRObjFTPropsFormatInfo info(
        "FORMAT,SQLDB,SOURCE,no,"
        "DEFLINE_PARMS,\"GUI OPTIONAL CHOICE MODE fast%slow Mode,fast,GUI INTEGER SIZE Size,10,"
        "GUI TEXT MODE Mode again,slow\","
        "DEFLINE_PARM_HELP,\"SIZE,How big,MODE,first,MODE,How fast,dangling\","
        "DATA_TYPE_MAPPINGS,\"varchar(width),vyr_varchar,int,vyr_int32,int,vyr_int32,dangling\","
        "GEOM_TYPE_MAPPINGS,\"point,vyr_point,line,vyr_line,polyline,vyr_line\"",
        nullptr);
    EXPECT_EQ(info.getDeflineParmNames(), (StringList{"MODE", "SIZE"}));
    EXPECT_EQ(info.getDeflineParm("MODE"), "GUI TEXT MODE Mode again");
    EXPECT_EQ(info.getDeflineParmDefault("MODE"), "slow");
    EXPECT_EQ(info.getDeflineParmDefault("SIZE"), "10");
    EXPECT_EQ(info.getDeflineParm("NONE"), "");
    EXPECT_EQ(info.getDeflineParmHelp("MODE"), "How fast") << "the later pair of a name answers";
    EXPECT_EQ(info.getDeflineParmHelp("SIZE"), "How big");
    EXPECT_EQ(info.getDeflineParmHelp("dangling"), "") << "an unpaired name has no help";

    const DataTypeMappings *types = info.getDataTypeMappings();
    EXPECT_EQ(types->formatName(), "SQLDB");
    EXPECT_FALSE(types->isSource());
    EXPECT_EQ(types->pairCount(), 2u);

    const GeometryTypeMappings *geometries = info.getGeometryTypeMappings();
    EXPECT_EQ(geometries->toGeneric("polyline", false), "vyr_line");
    EXPECT_EQ(geometries->toNative("vyr_line", false), "line") << "the first pair naming it answers";
    EXPECT_EQ(geometries->toGeneric("point area", true), "vyr_point  ");
    EXPECT_EQ(geometries->toGeneric("point\tline\nline area", true), "vyr_point vyr_line vyr_line  ");
    EXPECT_EQ(geometries->toGeneric("point\tline", true), "") << "without a blank the text is one name";
    EXPECT_EQ(geometries->toGeneric("point area", false), "vyr_point");
    EXPECT_EQ(geometries->toNative("vyr_area", false), "");
}

// Thousands of pairs, whole pairs given again and names given again with
// another partner: the pairs kept and the answers are those of a plain
// search from the front.
TEST(FormatInfoTest, ManyGeometryPairsKeepTheFirstOfEach)
{
    using Pair = std::pair<std::string, std::string>;
    StringList elements;
    std::vector<Pair> firsts;
    for (int i = 0; i < 2400; ++i) {
        const int name = i % 1000;
        const Pair pair{"native" + std::to_string(name), "vyr_" + std::to_string(name % 7 + (i >= 2000 ? 1 : 0))};
        elements.push_back(pair.first);
        elements.push_back(pair.second);
        if (std::find(firsts.begin(), firsts.end(), pair) == firsts.end())
            firsts.push_back(pair);
    }
    const VYRObjFTPropsFormatInfo info(csvJoin({"GEOM_TYPE_MAPPINGS", csvJoin(elements, ',')}, ','), nullptr);
    const GeometryTypeMappings *geometries = info.getGeometryTypeMappings();
    ASSERT_EQ(geometries->pairs(), firsts);
    for (const Pair &pair : firsts) {
        const std::string &native = pair.first;
        const std::string &generic = pair.second;
        const auto byNative =
            std::find_if(firsts.begin(), firsts.end(), [&](const Pair &p) { return p.first == native; });
        const auto byGeneric =
            std::find_if(firsts.begin(), firsts.end(), [&](const Pair &p) { return p.second == generic; });
        EXPECT_EQ(geometries->toGeneric(native, false), byNative->second) << native;
        EXPECT_EQ(geometries->toNative(generic, false), byGeneric->first) << generic;
    }
}

TEST(FormatInfoTest, DatabaseFormatsAreKnownByTheSession)
{
    FormatTypeSession session;
    session.formatTypes = {{"SQLDB", "DATABASE"}, {"SHAPEFILE", "FILE"}};
    EXPECT_TRUE(VYRObjFTPropsFormatInfo("FORMAT,SQLDB", &session).isDatabase());
    EXPECT_FALSE(VYRObjFTPropsFormatInfo("FORMAT,SHAPEFILE", &session).isDatabase());
    EXPECT_FALSE(VYRObjFTPropsFormatInfo("FORMAT,UNKNOWN", &session).isDatabase());
    EXPECT_EQ(session.arraysOut, 0) << "every array made for the question is given back";
}

} // namespace
} // namespace vyr
