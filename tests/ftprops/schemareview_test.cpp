#include "ftprops/schemareview.h"
#include "ftprops/vyrobjftpropsformatinfo.h"
#include "ftprops/vyrobjworkspaceschemainfo.h"
#include "stringobjects/vyrrwstringimp.h"

#include "vyr/vyr_session.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace vyr {
namespace {

std::string formatCapabilities()
{
    return csvJoin(
        {"FORMAT", "SQLDB", "SOURCE", "no", "DATA_TYPE_MAPPINGS",
         csvJoin({"char(width)", "vyr_char", "number(width,decimal)", "vyr_decimal", "logical", "vyr_boolean"}, ','),
         "GEOM_TYPE_MAPPINGS", "line,vyr_line,arc,vyr_line", "FORMAT_ATTRS",
         csvJoin({"shape_type", "char(20)", "part{}.x", "number(10,2)", "record_id", "number(10,0)"}, ','),
         "DEFLINE_PARMS", csvJoin({"GUI CHOICE MODE fast%slow Mode", "fast"}, ',')},
        ',');
}

// The feature type every case starts from, before and after.
void writeBase(FTPropsSchemaInfo &schema)
{
    schema.setName("roads");
    schema.setGeometry("line");
    schema.setAttributes({"A", "char(10)", "B", "number(5,0)", "C", "logical"});
    schema.storeAttribute("shape_type", "char(20)", true);
    schema.expandListAttribute("part{}.x", 1);
    schema.setParameter("MODE", "fast");
}

struct ReviewCase
{
    const char *name;
    std::function<void(FTPropsSchemaInfo &)> edit;
    std::optional<AttributeRowIdentities> rows;
    std::vector<NameLegalisation> legalised;
    const char *expected;
};

const ReviewCase kCases[] = {
    {"nothing changed", [](FTPropsSchemaInfo &) {}, {}, {}, "No changes.\n"},
    {"general settings",
     [](FTPropsSchemaInfo &schema) {
         schema.setName("streets");
         schema.setGeometry("arc");
         schema.setFanout(true);
         schema.setFanoutAttribute("A");
     },
     {},
     {},
     "General\n  Name: roads -> streets\n  Geometry: line -> arc\n  Fan-out: No -> Yes\n"
     "  Fan-out attribute: (empty) -> A\n"},
    {"the merge kind and dynamic settings in words",
     [](FTPropsSchemaInfo &schema) {
         schema.setMergeSettings("", 1, false);
         DynamicSchemaInfo settings;
         VYRRWStringImp text("ROADS");
         settings.setOption1(1);
         settings.setText1(text);
         settings.setOption3(7);
         settings.setText3(text);
         schema.setDynamicSchemaInfo(settings);
     },
     {},
     {},
     "General\n  Merge kind: Wildcard -> Regular expression\n"
     "  Dynamic schema settings: Default: schema taken as the sources define it -> one feature type named ROADS; "
     "geometry as each schema source gives it; option 7 \"ROADS\"\n"},
    {"a name in one schema only is added or removed, never renamed",
     [](FTPropsSchemaInfo &schema) {
         schema.setAttributes({"A", "char(10)", "D", "number(5,0)", "C", "logical"});
     },
     {},
     {},
     "User Attributes\n  Added D: number(5,0) (vyr_decimal(5,0))\n  Removed B: number(5,0) (vyr_decimal(5,0))\n"},
    {"a row renamed is tracked through its identity",
     [](FTPropsSchemaInfo &schema) {
         schema.setAttributes({"A", "char(10)", "D", "number(5,0)", "C", "logical"});
     },
     AttributeRowIdentities{{"B", "D"}},
     {},
     "User Attributes\n  Renamed B -> D\n"},
    {"a row deleted and another of its name added",
     [](FTPropsSchemaInfo &schema) { schema.setAttributeType("C", "char(1)"); },
     AttributeRowIdentities{{"C", std::nullopt}},
     {},
     "User Attributes\n  Added C: char(1) (vyr_char(1))\n  Removed C: logical (vyr_boolean)\n"},
    {"retyped",
     [](FTPropsSchemaInfo &schema) { schema.setAttributeType("A", "number(5,0)"); },
     {},
     {},
     "User Attributes\n  Retyped A: char(10) (vyr_char(10)) -> number(5,0) (vyr_decimal(5,0))\n"},
    {"moved: each position among the kept that changed",
     [](FTPropsSchemaInfo &schema) {
         schema.setAttributes({"C", "logical", "A", "char(10)", "E", "logical", "B", "number(5,0)"});
     },
     {},
     {},
     "User Attributes\n  Added E: logical (vyr_boolean)\n  Moved C: position 3 -> 1\n  Moved A: position 1 -> 2\n"
     "  Moved B: position 2 -> 3\n"},
    {"a rename the format's rules changed",
     [](FTPropsSchemaInfo &schema) {
         schema.setAttributes({"A", "char(10)", "B_X", "number(5,0)", "C", "logical"});
     },
     AttributeRowIdentities{{"B", "b x"}},
     {{"b x", "B_X", "invalid characters replaced"}},
     "User Attributes\n  Renamed B -> B_X\n  Name b x made B_X: invalid characters replaced\n"},
    {"format attributes and list counts",
     [](FTPropsSchemaInfo &schema) {
         schema.removeAttribute("shape_type");
         schema.storeAttribute("record_id", "number(10,0)", true);
         schema.expandListAttribute("part{}.x", 3);
     },
     {},
     {},
     "Format Attributes\n  No longer exposed shape_type\n  List part{}.x: 1 -> 3 elements\n"
     "  Exposed record_id: number(10,0)\n"},
    {"control characters of a stranger's file are shown, not sent",
     [](FTPropsSchemaInfo &schema) { schema.setName("roads\n  Removed A\x1b[2J"); },
     {},
     {},
     "General\n  Name: roads -> roads\\x0a  Removed A\\x1b[2J\n"},
    {"parameters by their prompt",
     [](FTPropsSchemaInfo &schema) { schema.setParameter("MODE", "slow"); },
     {},
     {},
     "Parameters\n  <Mode>: fast -> slow\n"},
};

class SchemaReviewTest : public ::testing::Test
{
protected:
    SchemaReviewTest()
        : m_session(VYR_SessionCreate())
        , m_format(std::make_unique<VYRObjFTPropsFormatInfo>(formatCapabilities(), m_session))
    {}
    ~SchemaReviewTest() override
    {
        m_format.reset();
        VYR_SessionDestroy(m_session);
    }

    // The review of the base schema against the base edited as `test` says.
    std::vector<ReviewChange> review(const ReviewCase &test)
    {
        IVYRFeature *features[] = {m_session->createFeature(), m_session->createFeature()};
        const auto noLookup = [](const std::string &) -> const FTPropsFormatInfo * { return nullptr; };
        std::vector<ReviewChange> changes;
        {
            VYRObjWorkspaceSchemaInfo before(*m_session, *features[0], *m_format, noLookup);
            VYRObjWorkspaceSchemaInfo after(*m_session, *features[1], *m_format, noLookup);
            writeBase(before);
            writeBase(after);
            test.edit(after);
            SchemaReviewInput input{before, after, *m_format};
            input.rows = test.rows;
            input.legalised = test.legalised;
            input.localisePrompt = [](const std::string &prompt) { return "<" + prompt + ">"; };
            changes = ReviewSchemaChanges(input);
        }
        for (IVYRFeature *feature : features)
            m_session->destroyFeature(feature);
        return changes;
    }

    IVYRSession *m_session;
    std::unique_ptr<VYRObjFTPropsFormatInfo> m_format;
};

TEST_F(SchemaReviewTest, listsEachChangeUnderItsPage)
{
    for (const ReviewCase &test : kCases)
        EXPECT_EQ(ReviewAsText(review(test)), test.expected) << test.name;
}

} // namespace
} // namespace vyr
