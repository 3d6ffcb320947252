#include "ftpropsdlg/knownrowtypes.h"

#include <gtest/gtest.h>

#include <string>

namespace vyr {
namespace {

// Three rows a page loaded, each with its own key and texts.
class ThreeLoadedRows final : public KnownRowTypes::Loaded
{
public:
    std::size_t count() const override { return 3; }
    QString name(std::size_t index) const override { return QStringLiteral("a%1").arg(index); }
    KnownRowTypes::Given given(std::size_t index) const override
    {
        const std::string n = std::to_string(index);
        return {QStringLiteral("key%1").arg(index), {"type" + n, "generic" + n}, true};
    }
};

// A row told after the loaded ones (a row moved back from another format)
// must leave every loaded row known by its own texts, whatever was asked
// before it came.
TEST(KnownRowTypesTest, LoadedRowsKeepTheirOwnTextsWhenARowIsToldAfterThem)
{
    for (const bool askedBefore : {false, true}) {
        SCOPED_TRACE(askedBefore ? "asked before" : "not asked before");
        const ThreeLoadedRows loaded;
        KnownRowTypes known;
        known.rememberLoaded("A", loaded);
        if (askedBefore) {
            ASSERT_NE(known.ofKey("A", QStringLiteral("key2")), nullptr);
        }
        known.remember("A", QStringLiteral("b"), {QStringLiteral("keyB"), {"typeB", "genericB"}, false});
        for (std::size_t index = 0; index < loaded.count(); ++index) {
            const std::string n = std::to_string(index);
            const KnownRowTypes::Given expected = loaded.given(index);
            const KnownRowTypes::Given *byKey = known.ofKey("A", expected.key);
            const KnownRowTypes::Given *byName = known.ofName("A", loaded.name(index), expected.key);
            ASSERT_NE(byKey, nullptr) << n;
            ASSERT_NE(byName, nullptr) << n;
            EXPECT_EQ(byKey->texts.type, "type" + n);
            EXPECT_EQ(byName->texts.generic, "generic" + n);
        }
        const KnownRowTypes::Given *told = known.ofKey("A", QStringLiteral("keyB"));
        ASSERT_NE(told, nullptr);
        EXPECT_EQ(told->texts.type, "typeB");
        EXPECT_FALSE(told->asItIs);
    }
}

} // namespace
} // namespace vyr
