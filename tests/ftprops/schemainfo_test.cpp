#include "ftprops/vyrobjftpropsformatinfo.h"
#include "ftprops/vyrobjftpropsschemainfo.h"

#include "stringobjects/vyrrwstringarrayimp.h"
#include "stringobjects/vyrrwstringimp.h"

#include "vyr/IVYRFeature.h"
#include "vyr/vyr_featurefile.h"
#include "vyr/vyr_session.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace vyr {
namespace {

// Built with csvJoin, so that list elements holding commas are quoted as a
// format's capability file quotes them.
std::string formatCapabilities()
{
    return csvJoin(
        {"FORMAT", "SQLDB", "SOURCE", "no", "SUPPORTS_MULTI_GEOM", "yes", "DATA_TYPE_MAPPINGS",
         csvJoin({"char(width)", "vyr_char", "number(width,decimal)", "vyr_decimal", "logical", "vyr_boolean"}, ','),
         "GEOM_TYPE_MAPPINGS", "line,vyr_line,arc,vyr_line,point,vyr_point", "FORMAT_ATTRS",
         csvJoin({"shape_type", "char(20)", "part{}.x", "number(10,2)", "record_id", "number(10,0)"}, ','),
         "DEFLINE_PARMS",
         csvJoin({"GUI CHOICE MODE fast%slow Mode", "fast", "GUI WHOLE_LINE TEXT LINE Line", "",
                  "GUI DISABLE ENABLE Enable", "Yes"},
                 ',')},
        ',');
}

// A real engine feature of a real session, under a record of kFormat.
class SchemaInfoTest : public ::testing::Test
{
protected:
    SchemaInfoTest()
        : m_session(VYR_SessionCreate())
        , m_feature(m_session->createFeature())
        , m_format(std::make_unique<VYRObjFTPropsFormatInfo>(formatCapabilities(), m_session))
        , m_schema(std::make_unique<VYRObjFTPropsSchemaInfo>(*m_session, *m_feature, *m_format))
    {}
    ~SchemaInfoTest() override
    {
        m_schema.reset();
        m_format.reset();
        m_session->destroyFeature(m_feature);
        VYR_SessionDestroy(m_session);
    }

    std::string attribute(const std::string &name) const
    {
        VYRRWStringImp value;
        return m_feature->getAttribute(name.c_str(), value) ? std::string(value.view()) : std::string("(absent)");
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
    void setList(const char *name, const StringList &texts)
    {
        VYRRWStringArrayImp elements;
        for (const std::string &text : texts)
            elements.append(text.c_str());
        m_feature->setListAttribute(name, elements);
    }

    IVYRSession *m_session;
    IVYRFeature *m_feature;
    std::unique_ptr<VYRObjFTPropsFormatInfo> m_format;
    std::unique_ptr<VYRObjFTPropsSchemaInfo> m_schema;
};

TEST_F(SchemaInfoTest, AttributeTypesAreStoredNativeAndGeneric)
{
    m_schema->setAttributeType("a", "char(20)");
    EXPECT_EQ(attribute("*a"), "char(20)");
    EXPECT_EQ(attribute("a"), "vyr_char(20)");
    EXPECT_EQ(m_schema->getAttributeType("a"), "char(20)");

    m_schema->setAttributeType("odd", "blob");
    EXPECT_EQ(attribute("*odd"), "blob");
    EXPECT_EQ(attribute("odd"), "(absent)") << "an unknown type has no generic form";

    m_feature->setAttribute("g", "vyr_decimal(12,3)");
    EXPECT_EQ(m_schema->getAttributeType("g"), "number(12,3)");
    m_feature->setAttribute("h", "vyr_unknown");
    EXPECT_EQ(m_schema->getAttributeType("h"), "vyr_unknown");
    EXPECT_EQ(m_schema->getAttributeType("record_id"), "number(10,0)") << "a format attribute's own type";
}

TEST_F(SchemaInfoTest, SetAttributesReplacesTheUserAttributesInOrder)
{
    m_feature->setAttribute("old", "vyr_boolean");
    m_feature->setAttribute("vyr_keep", "x");
    m_schema->setAttributes({"zeta", "logical", "alpha", "char(5)", "mystery", "blob", "dangling"});
    EXPECT_EQ(m_schema->getAttributeNames(true, false), (StringList{"zeta", "alpha", "mystery"}));
    EXPECT_EQ(attribute("old"), "(absent)");
    EXPECT_EQ(attribute("vyr_keep"), "x");
    EXPECT_EQ(attribute("alpha"), "vyr_char(5)");
    EXPECT_EQ(attribute("mystery"), "") << "written empty when no mapping knows the type";
    EXPECT_EQ(m_schema->getAttributeType("mystery"), "blob");
}

// Writing back what a record answers leaves the feature byte for byte, so
// that OK without an edit changes no file: no "*" companion is added to an
// attribute stored by its generic type alone, a generic type the format has
// no counterpart for is never erased, and the geometry keeps its places.
TEST_F(SchemaInfoTest, WritingBackWhatWasReadChangesNothing)
{
    m_feature->setAttribute("*vyr_geometry{0}", "line");
    m_feature->setAttribute("vyr_geometry{0}", "vyr_line");
    m_feature->setOrderedAttribute("flag", "vyr_boolean");
    m_feature->setOrderedAttribute("kind", "vyr_char(10)");
    m_feature->setAttribute("*kind", "enum(a,b)");
    m_feature->setOrderedAttribute("size", "vyr_decimal(8,2)");
    VYRRWStringImp before;
    ASSERT_TRUE(VYR_FeatureWriteJson(m_feature, &before));

    StringList namesAndTypes;
    for (const std::string &name : m_schema->getAttributeNames(true, false)) {
        namesAndTypes.push_back(name);
        namesAndTypes.push_back(m_schema->getAttributeType(name));
    }
    m_schema->setAttributes(namesAndTypes);
    m_schema->setGeometry(m_schema->getGeometry());
    VYRRWStringImp after;
    ASSERT_TRUE(VYR_FeatureWriteJson(m_feature, &after));
    EXPECT_EQ(after.view(), before.view());

    // A changed type is written in both forms; a type the page gives as its
    // own generic type is stored by the generic type alone.
    m_schema->setUserAttributes({{"flag", "char(1)", ""}, {"kind", "vyr_char(10)", "vyr_char(10)"},
                                 {"size", "number(9,2)", ""}});
    EXPECT_EQ(attribute("*flag"), "char(1)");
    EXPECT_EQ(attribute("flag"), "vyr_char(1)");
    EXPECT_EQ(attribute("*kind"), "(absent)");
    EXPECT_EQ(attribute("kind"), "vyr_char(10)");
    EXPECT_EQ(m_schema->getAttributeType("kind"), "char(10)");
    EXPECT_EQ(attribute("size"), "vyr_decimal(9,2)");
}

TEST_F(SchemaInfoTest, AStoredUserAttributeComesLastUnlessItWasThere)
{
    m_schema->setAttributes({"a", "logical", "b", "logical"});
    m_feature->setAttribute("loose", "vyr_boolean");
    m_schema->storeUserAttribute({"new", "char(4)", ""});
    m_schema->storeUserAttribute({"a", "char(2)", "vyr_char(2)"});
    m_schema->storeUserAttribute({"loose", "logical", ""});
    VYRRWStringArrayImp ordered;
    m_feature->getOrderedAttributeNames(ordered);
    EXPECT_EQ(ordered.entries(), 3u);
    EXPECT_EQ(std::string(ordered.elementAt(2)), "new") << "a new attribute takes its place in the order";
    EXPECT_EQ(m_schema->getAttributeNames(true, false), (StringList{"a", "b", "new", "loose"}));
    EXPECT_EQ(attribute("new"), "vyr_char(4)");
    EXPECT_EQ(attribute("*new"), "char(4)");
    EXPECT_EQ(attribute("*a"), "char(2)");
}

TEST_F(SchemaInfoTest, NamesListUserAttributesThenExposedFormatAttributes)
{
    m_schema->setAttributes({"b", "logical", "a", "logical"});
    m_feature->setAttribute("c", "vyr_boolean");
    m_schema->setGeometry("line");
    m_schema->storeAttribute("shape_type", "char(20)", true);
    m_schema->storeAttribute("b", "char(1)", true);
    EXPECT_EQ(m_schema->getAttributeNames(true, false), (StringList{"b", "a", "c"}));
    EXPECT_EQ(m_schema->getAttributeNames(false, true), (StringList{"shape_type", "b"}));
    EXPECT_EQ(m_schema->getAttributeNames(true, true), (StringList{"b", "a", "c", "shape_type"}));

    m_schema->removeAttribute("shape_type");
    EXPECT_EQ(list("*vyr_format_attr_name"), StringList{"b"});
    m_schema->removeAttribute("a");
    EXPECT_EQ(attribute("a"), "(absent)");
    EXPECT_EQ(attribute("*a"), "(absent)") << "the written type goes with it";
}

// Exposed format attributes whose types list is short are all shown; a
// write pairs each with its type again rather than with a neighbour's.
TEST_F(SchemaInfoTest, ExposedFormatAttributesOfTwoLengthsAreMadeWhole)
{
    const auto start = [this] {
        setList("*vyr_format_attr_name", {"shape_type", "record_id"});
        setList("*vyr_format_attr_type", {"char(20)"});
    };
    start();
    EXPECT_EQ(m_schema->getAttributeNames(false, true), (StringList{"shape_type", "record_id"}));
    m_schema->storeAttribute("part{0}.x", "number(10,2)", true);
    EXPECT_EQ(list("*vyr_format_attr_name"), (StringList{"shape_type", "record_id", "part{0}.x"}));
    EXPECT_EQ(list("*vyr_format_attr_type"), (StringList{"char(20)", "number(10,0)", "number(10,2)"}));
    start();
    m_schema->removeAttribute("record_id");
    EXPECT_EQ(list("*vyr_format_attr_name"), StringList{"shape_type"}) << "unticked, as the screen showed it";
    EXPECT_EQ(list("*vyr_format_attr_type"), StringList{"char(20)"});
}

TEST_F(SchemaInfoTest, ParametersKeepOnePairAtTheEnd)
{
    EXPECT_EQ(m_schema->getParameter("MODE"), "fast");
    m_schema->setParameter("MODE", "slow");
    m_schema->setParameter("OTHER", "1");
    m_schema->setParameter("MODE", "medium");
    EXPECT_EQ(list("*vyr_parameter_name"), (StringList{"OTHER", "MODE"}));
    EXPECT_EQ(list("*vyr_parameter_value"), (StringList{"1", "medium"}));
    EXPECT_EQ(m_schema->getParameter("MODE"), "medium");

    m_schema->setParameter("LINE", "x");
    m_schema->setParameter("ENABLE", "No");
    EXPECT_EQ(list("*vyr_parameter_name"), (StringList{"OTHER", "MODE"})) << "whole-line and DISABLE are not kept";

    setList("*vyr_parameter_name", {"P", "Q", "P"});
    setList("*vyr_parameter_value", {"first", "q", "second"});
    EXPECT_EQ(m_schema->getParameter("P"), "second");
    setList("*vyr_parameter_value", {"first"});
    EXPECT_EQ(m_schema->getParameter("P"), "") << "inconsistent lists give the default";
    m_schema->setParameter("Q", "new");
    // Appending to both would pair the new name with "first"'s neighbour.
    EXPECT_EQ(list("*vyr_parameter_name"), (StringList{"Q"})) << "lists that never paired up start afresh";
    EXPECT_EQ(list("*vyr_parameter_value"), (StringList{"new"}));
    EXPECT_EQ(m_schema->getParameter("Q"), "new");
}

// The bulk reads and writes the parameters page uses answer and write what
// the one-by-one calls do, from every kind of stored pair list.
TEST_F(SchemaInfoTest, ParametersInBulkMatchOneByOne)
{
    struct Start
    {
        const char *what;
        StringList names, values;
    };
    const Start starts[] = {
        {"no lists", {}, {}},
        {"a name twice", {"P", "Q", "P"}, {"first", "q", "second"}},
        {"inconsistent lists", {"P", "Q", "P"}, {"first"}},
        {"a DISABLE value stored", {"ENABLE", "MODE"}, {"Yes", "slow"}},
    };
    const std::vector<std::pair<std::string, std::string>> writes{{"MODE", "slow"},
                                                                  {"ENABLE", "No"},
                                                                  {"P", "p2"},
                                                                  {"LINE", "x"},
                                                                  {"MODE", "medium"}};
    const StringList asked{"MODE", "P", "Q", "ENABLE", "NONE"};
    for (const Start &start : starts) {
        SCOPED_TRACE(start.what);
        setList("*vyr_parameter_name", start.names);
        setList("*vyr_parameter_value", start.values);
        std::map<std::string, std::string> expected;
        for (const std::string &name : asked)
            expected[name] = m_schema->getParameter(name);
        EXPECT_EQ(m_schema->getParameters(asked), expected);

        for (const auto &[name, value] : writes)
            m_schema->setParameter(name, value);
        const StringList names = list("*vyr_parameter_name");
        const StringList values = list("*vyr_parameter_value");

        setList("*vyr_parameter_name", start.names);
        setList("*vyr_parameter_value", start.values);
        m_schema->setParameters(writes);
        EXPECT_EQ(list("*vyr_parameter_name"), names);
        EXPECT_EQ(list("*vyr_parameter_value"), values);
    }
}

TEST_F(SchemaInfoTest, GeometriesInBothVocabularies)
{
    m_schema->setGeometry("line  arc\tpoint");
    EXPECT_EQ(attribute("*vyr_geometry{0}"), "line");
    EXPECT_EQ(attribute("*vyr_geometry{2}"), "point");
    EXPECT_EQ(attribute("vyr_geometry{0}"), "vyr_line");
    EXPECT_EQ(attribute("vyr_geometry{1}"), "vyr_point");
    EXPECT_EQ(attribute("vyr_geometry{2}"), "(absent)");
    EXPECT_EQ(m_schema->getGeometry(), "line arc point");

    m_schema->setGeometry("");
    EXPECT_EQ(m_schema->getGeometry(), "");
    m_feature->setAttribute("vyr_geometry{0}", "vyr_point");
    EXPECT_EQ(m_schema->getGeometry(), "point");
    m_feature->setAttribute("*vyr_geometry{0}", "arc");
    m_feature->setAttribute("*vyr_geometry{2}", "line");
    EXPECT_EQ(m_schema->getGeometry(), "arc point") << "the native family stops at the first gap";

    VYRObjFTPropsFormatInfo single("GEOM_TYPE_MAPPINGS,\"point,vyr_point\"", m_session);
    VYRObjFTPropsSchemaInfo singleSchema(*m_session, *m_feature, single);
    EXPECT_EQ(singleSchema.getGeometry(), "arc");
}

TEST_F(SchemaInfoTest, ListAttributesExpandAndShrinkToTheCount)
{
    for (int i = 0; i < 5; ++i)
        m_schema->storeAttribute("part{" + std::to_string(i) + "}.x", "number(10,2)", true);
    m_schema->storeAttribute("partXy{1}.x", "number(10,2)", true);
    m_schema->expandListAttribute("part{}.x", 2);
    EXPECT_EQ(m_schema->getAttributeNames(false, true), (StringList{"part{0}.x", "part{1}.x", "partXy{1}.x"}));

    m_schema->expandListAttribute("part{}.x", 3);
    EXPECT_EQ(list("*vyr_format_attr_name").back(), "part{2}.x");
    EXPECT_EQ(list("*vyr_format_attr_type").back(), "number(10,2)");
    EXPECT_EQ(m_schema->getAttributeType("part{7}.x"), "number(10,2)") << "an element has its list's type";
    m_schema->expandListAttribute("shape_type", 4);
    EXPECT_EQ(list("*vyr_format_attr_name").size(), 4u);
}

} // namespace
} // namespace vyr
