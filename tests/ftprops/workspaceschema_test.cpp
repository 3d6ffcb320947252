#include "ftprops/geometrytranslation.h"
#include "ftprops/schemareview.h"
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

const char kLines[] = "FORMAT,LINES,SUPPORTS_MULTI_GEOM,no,"
                      "GEOM_TYPE_MAPPINGS,\"arc,vyr_line,dot,vyr_point,patch,vyr_area\"";
const char kShapes[] = "FORMAT,SHAPES,SUPPORTS_MULTI_GEOM,yes,"
                       "GEOM_TYPE_MAPPINGS,\"linestring,vyr_line,point,vyr_point\"";
const char kBare[] = "FORMAT,BARE";

TEST(GeometryTranslationTest, goesThroughTheGenericNames)
{
    const VYRObjFTPropsFormatInfo lines(kLines, nullptr, "LINES");
    const VYRObjFTPropsFormatInfo shapes(kShapes, nullptr, "SHAPES");
    const VYRObjFTPropsFormatInfo bare(kBare, nullptr, "BARE");
    struct Case
    {
        const char *geometry;
        const FTPropsFormatInfo &from;
        const FTPropsFormatInfo &to;
        const char *expected;
    };
    const Case cases[] = {
        {"arc", lines, shapes, "linestring"},
        // One name only out of a format without multiple geometries.
        {"arc dot", lines, shapes, "linestring"},
        {"linestring point", shapes, lines, "arc"},
        {"point linestring", shapes, shapes, "point linestring "},
        // What the other format cannot name is lost, not guessed.
        {"patch", lines, shapes, ""},
        {"arc", lines, bare, ""},
    };
    for (const Case &c : cases)
        EXPECT_EQ(TranslateGeometry(c.geometry, c.from, c.to), c.expected) << c.geometry;
    EXPECT_TRUE(HasGeometryMappings(lines));
    EXPECT_FALSE(HasGeometryMappings(bare));
}

class WorkspaceSchemaTest : public ::testing::Test
{
protected:
    WorkspaceSchemaTest()
        : m_session(VYR_SessionCreate())
        , m_feature(m_session->createFeature())
        , m_lines(kLines, m_session, "LINES")
        , m_shapes(kShapes, m_session, "SHAPES")
    {
        m_feature->setFeatureType("roads");
        m_schema = std::make_unique<VYRObjWorkspaceSchemaInfo>(
            *m_session, *m_feature, m_lines, [this](const std::string &id) -> const FTPropsFormatInfo * {
                if (id == "LINES")
                    return &m_lines;
                return id == "SHAPES" ? &m_shapes : nullptr;
            });
    }
    ~WorkspaceSchemaTest() override
    {
        m_schema.reset();
        m_session->destroyFeature(m_feature);
        VYR_SessionDestroy(m_session);
    }

    int attributeCount() const
    {
        VYRRWStringArrayImp names;
        m_feature->getAllAttributeNames(names);
        return static_cast<int>(names.entries());
    }

    IVYRSession *m_session;
    IVYRFeature *m_feature;
    VYRObjFTPropsFormatInfo m_lines;
    VYRObjFTPropsFormatInfo m_shapes;
    std::unique_ptr<VYRObjWorkspaceSchemaInfo> m_schema;
};

TEST_F(WorkspaceSchemaTest, keepsEveryRoleSettingInTheFeature)
{
    m_schema->setMerged(true);
    m_schema->setMergeSettings("road*", 2, true);
    m_schema->setFanout(true);
    m_schema->setFanoutAttribute("KIND");
    m_schema->setDynamic(true);
    m_schema->setSchemaSources({"CSV", "GPX"});
    m_schema->setAdditionalNames({"extra"});
    DynamicSchemaInfo settings;
    settings.setOption2(-3);
    settings.setText3(VYRRWStringImp("A B"));
    m_schema->setDynamicSchemaInfo(settings);

    // A second record over the same feature reads it all back.
    const VYRObjWorkspaceSchemaInfo reread(*m_session, *m_feature, m_lines, {});
    EXPECT_TRUE(reread.isMerged());
    EXPECT_EQ(reread.getMergeFilter(), "road*");
    EXPECT_EQ(reread.getMergeKind(), 2);
    EXPECT_TRUE(reread.getMergeOption());
    EXPECT_TRUE(reread.isFanout());
    EXPECT_EQ(reread.getFanoutAttribute(), "KIND");
    EXPECT_TRUE(reread.isDynamic());
    EXPECT_EQ(reread.getSchemaSources(), (StringList{"CSV", "GPX"}));
    EXPECT_EQ(reread.getAdditionalNames(), StringList{"extra"});
    EXPECT_TRUE(reread.getDynamicSchemaInfo() == settings);
    // None of it is a user attribute.
    EXPECT_TRUE(reread.getAttributeNames(true, false).empty());
}

TEST_F(WorkspaceSchemaTest, writesNothingWhenTheDefaultsComeBack)
{
    // Lists set and taken back leave no empty list behind.
    m_schema->setSchemaSources({"CSV"});
    m_schema->setAdditionalNames({"roads_2"});
    m_schema->setMerged(false);
    m_schema->setMergeSettings("", 0, false);
    m_schema->setFanout(false);
    m_schema->setDynamic(false);
    m_schema->setSchemaSources({});
    m_schema->setDynamicSchemaInfo(DynamicSchemaInfo());
    m_schema->setAdditionalNames({});
    EXPECT_EQ(attributeCount(), 0);
    VYRRWStringImp text;
    ASSERT_TRUE(VYR_FeatureWriteJson(m_feature, &text));
    EXPECT_EQ(std::string(text.c_str()).find("vyr_"), std::string::npos) << text.c_str();
}

TEST_F(WorkspaceSchemaTest, movesToAnotherFormatAndItsVocabulary)
{
    EXPECT_EQ(m_schema->getFormatId(), "LINES");
    m_schema->setFormatId("NOWHERE");
    EXPECT_EQ(m_schema->getFormatId(), "LINES");

    m_schema->setFormatId("SHAPES");
    EXPECT_EQ(m_schema->getFormatId(), "SHAPES");
    VYRRWStringImp moved;
    ASSERT_TRUE(m_feature->getAttribute("vyr_format", moved));
    EXPECT_EQ(std::string(moved.c_str()), "SHAPES");
    m_schema->setGeometry("linestring");
    VYRRWStringImp generic;
    ASSERT_TRUE(m_feature->getAttribute("vyr_geometry{0}", generic));
    EXPECT_EQ(std::string(generic.c_str()), "vyr_line");
}

// A scratch copy answers as the record does, lists and attribute order
// included, and what is written into it stays there.
TEST_F(WorkspaceSchemaTest, aScratchCopyHoldsTheSameAndLeavesTheFeatureAlone)
{
    m_schema->setUserAttributes({{"b", "char(4)", ""}, {"a", "logical", ""}});
    m_schema->setGeometry("arc");
    m_schema->setParameter("MODE", "slow");
    m_schema->setSchemaSources({"SHAPES"});
    m_schema->setAdditionalNames({"streets"});
    m_schema->setMerged(true);
    const auto json = [this] {
        VYRRWStringImp text;
        VYR_FeatureWriteJson(m_feature, &text);
        return std::string(text.view());
    };
    const std::string before = json();

    ScratchSchema copy = m_schema->makeScratchCopy();
    ASSERT_TRUE(copy);
    EXPECT_EQ(ReviewSchemaChanges(SchemaReviewInput(*m_schema, *copy, m_lines)), std::vector<ReviewChange>());
    EXPECT_EQ(copy->getAttributeNames(true, true), (StringList{"b", "a"}));
    EXPECT_EQ(copy->getParameter("MODE"), "slow");
    copy->setName("highways");
    copy->removeAttribute("b");
    copy->setParameter("MODE", "fast");
    copy->setSchemaSources({});
    copy->setAdditionalNames({"lanes"});
    copy->setFormatId("SHAPES");
    EXPECT_EQ(copy->getSchemaSources(), StringList());
    EXPECT_EQ(json(), before);
    copy.reset();
    EXPECT_EQ(json(), before);
}

} // namespace
} // namespace vyr
