#include "attrtypes/attrtype.h"
#include "attrtypes/attrtypeargbrowselist.h"
#include "attrtypes/attrtypeargint.h"
#include "attrtypes/attrtypeargtemplate.h"
#include "util/resourceids.h"
#include "util/usernotice.h"

#include <gtest/gtest.h>

#include <typeinfo>

namespace vyr {
namespace {

TEST(AttrTypeArgTest, KeywordsChooseTheKind)
{
    const AttrType intType("int", {}, {});
    const AttrType charType("vyr_char", {}, {});
    struct Case
    {
        const char *keyword;
        const AttrType *type;
        const std::type_info &kind;
    };
    const Case cases[] = {
        {"stringset", nullptr, typeid(AttrTypeArgStringSet)},
        {"stringlist", nullptr, typeid(AttrTypeArgStringList)},
        {"stringmap", nullptr, typeid(AttrTypeArgStringMap)},
        {"binint-width", nullptr, typeid(AttrTypeArgBinIntWidth)},
        {"byte-size", nullptr, typeid(AttrTypeArgBinIntWidth)},
        {"range_domain", nullptr, typeid(AttrTypeArgRangeDomain)},
        {"coded_domain", nullptr, typeid(AttrTypeArgCodedDomain)},
        {"width", &intType, typeid(AttrTypeArgIntWidth)},
        {"width", &charType, typeid(AttrTypeArgInt)},
        {"width", nullptr, typeid(AttrTypeArgInt)},
        {"Width", &intType, typeid(AttrTypeArgInt)},
        {"StringSet", nullptr, typeid(AttrTypeArgInt)},
        {"decimal", nullptr, typeid(AttrTypeArgInt)},
    };
    for (const Case &c : cases) {
        const auto arg = createArg(c.keyword, 3, c.type);
        const AttrTypeArg &made = *arg;
        EXPECT_STREQ(typeid(made).name(), c.kind.name()) << c.keyword;
    }
}

TEST(AttrTypeArgTest, EachKindKeepsOrReplacesValues)
{
    const AttrType intType("int", {}, {});
    struct Case
    {
        const char *keyword;
        const AttrType *type;
        std::uint32_t index;
        const char *input;
        const char *stored;
    };
    const Case cases[] = {
        {"width", nullptr, 0, "abc", "20"},
        {"decimal", nullptr, 1, "abc", "10"},
        {"width", nullptr, 0, "0x10", "0x10"},
        {"width", nullptr, 0, "7.0", "7.0"},
        {"width", nullptr, 0, "-5", "-5"},
        {"width", nullptr, 0, "", "20"},
        {"1", nullptr, 0, "x", "1"},
        {"1", nullptr, 0, "42", "42"},
        {"width", &intType, 0, "16", "16"},
        {"width", &intType, 0, "17", "11"},
        {"width", &intType, 0, "0", "11"},
        {"width", &intType, 0, "-3", "11"},
        {"binint-width", nullptr, 0, "2", "2"},
        {"binint-width", nullptr, 0, "4", "4"},
        {"binint-width", nullptr, 0, "8", "4"},
        {"binint-width", nullptr, 0, "04", "4"},
        {"stringset", nullptr, 0, "a b%c", "a b%c"},
        {"coded_domain", nullptr, 0, "Surface", "Surface"},
    };
    for (const Case &c : cases) {
        const auto arg = createArg(c.keyword, c.index, c.type);
        arg->setValue(c.input);
        EXPECT_EQ(arg->value(), c.stored) << c.keyword << " <- " << c.input;
    }
}

TEST(AttrTypeArgTest, DefaultsOfEachKind)
{
    const AttrType intType("int", {}, {});
    const std::pair<const char *, const char *> defaults[] = {
        {"width", "20"},
        {"binint-width", "4"},
        {"stringmap", ""},
        {"range_domain", ""},
    };
    for (const auto &[keyword, expected] : defaults) {
        const auto arg = createArg(keyword, 0, nullptr);
        arg->setValue("kept?");
        arg->setDefault({});
        EXPECT_EQ(arg->value(), expected) << keyword;
    }
    const auto width = createArg("width", 0, &intType);
    width->setDefault({});
    EXPECT_EQ(width->value(), "11");
}

class RecordingNotices : public UserNoticeSink
{
public:
    RecordingNotices() { m_previous = setUserNoticeSink(this); }
    ~RecordingNotices() override { setUserNoticeSink(m_previous); }
    void showNotice(unsigned id, const StringList &inserts) override { shown.emplace_back(id, inserts); }

    std::vector<std::pair<unsigned, StringList>> shown;

private:
    UserNoticeSink *m_previous;
};

TEST(AttrTypeArgTest, DomainsRefuseAnEmptyValueAndSayForWhichAttribute)
{
    RecordingNotices notices;
    for (const char *keyword : {"range_domain", "coded_domain"}) {
        const auto domain = createArg(keyword, 0, nullptr);
        EXPECT_TRUE(domain->validate("Surface", "ROAD_TYPE"));
        EXPECT_FALSE(domain->validate("", "ROAD_TYPE"));
    }
    ASSERT_EQ(notices.shown.size(), 2u);
    EXPECT_EQ(notices.shown[0].first, res::DomainRequired);
    EXPECT_EQ(notices.shown[0].second, StringList{"ROAD_TYPE"});
    EXPECT_TRUE(createArg("stringset", 0, nullptr)->validate("", "x"));
    EXPECT_EQ(notices.shown.size(), 2u);
}

TEST(AttrTypeTest, SelectableTypes)
{
    struct Case
    {
        const char *templateText;
        int mode;
        bool selectable;
    };
    const Case cases[] = {
        {"char(width)", 0, true}, {"char(width)", 1, false},   {"boolean", 1, false},    {"boolean", 0, true},
        {"char(1)", 0, false},    {"varchar(width)", 1, true}, {"Char(width)", 1, true},
    };
    for (const Case &c : cases) {
        const AttrTypeTemplate typeTemplate(c.templateText, nullptr, 1);
        const AttrType type(typeTemplate, StringList{}, {}, nullptr);
        EXPECT_EQ(type.isSelectable(c.mode), c.selectable) << c.templateText << " mode " << c.mode;
        EXPECT_EQ(typeTemplate.isSelectable(c.mode), c.selectable) << c.templateText << " (template)";
    }
}

} // namespace
} // namespace vyr
