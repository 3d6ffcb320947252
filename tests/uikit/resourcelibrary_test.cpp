#include "util/installdir.h"
#include "uikit/resourcelibrary.h"
#include "uikit/resourcelibrary_p.h"

#include "support/scopedenvironment.h"
#include "support/scratchdirectory.h"

#include "vyr/vyr_string.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace vyr {
namespace {

using test::ScopedEnvironment;
using test::ScratchDirectory;

const std::string kStage = VYR_TEST_STAGE_DIR;

// A resource library of its own for each test, chosen by language the way a
// fresh process would choose it.
class ResourceLibraryTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        detail::forgetResourceLibrary();
        m_env.set("LC_ALL", std::nullopt);
        m_env.set("LC_MESSAGES", std::nullopt);
        m_env.set("LANG", "C.UTF-8");
    }
    void TearDown() override { detail::forgetResourceLibrary(); }

    // Copies a built library into the scratch installation under `name`.
    void install(const std::string &built, const std::string &name)
    {
        std::filesystem::create_directories(m_home.path() + "/res");
        std::filesystem::copy_file(kStage + "/res/" + built, m_home.path() + "/res/" + name);
    }

    ScopedEnvironment m_env;
    ScratchDirectory m_home;
};

TEST_F(ResourceLibraryTest, BuildSpecificLanguageLibraryWins)
{
    install("vyr_res_de.rcc", "vyr_res_6233_de.rcc");
    install("vyr_res.rcc", "vyr_res_de.rcc");
    install("vyr_res.rcc", "vyr_res.rcc");
    m_env.set("LANG", "de_DE.UTF-8");
    const ResourceLibrary *library = loadResourceLibrary(m_home.path());
    ASSERT_TRUE(library);
    EXPECT_EQ(library->path(), m_home.path() + "/res/vyr_res_6233_de.rcc");
    EXPECT_EQ(loadResourceString(res::AboutLanguage), QStringLiteral("Sprache: Deutsch"));
}

TEST_F(ResourceLibraryTest, PlainLibraryWhenTheLanguageHasNone)
{
    install("vyr_res.rcc", "vyr_res.rcc");
    m_env.set("LANG", "fr_FR.UTF-8");
    const ResourceLibrary *library = loadResourceLibrary(m_home.path() + "//");
    ASSERT_TRUE(library);
    EXPECT_EQ(library->path(), m_home.path() + "/res/vyr_res.rcc");
    // Once loaded, the library is kept whatever is asked for later.
    EXPECT_EQ(loadResourceLibrary("/nowhere"), library);
}

TEST_F(ResourceLibraryTest, NothingLoadedIsRetriedButEmptyTextsStayCached)
{
    EXPECT_EQ(loadResourceLibrary(m_home.path()), nullptr);
    m_env.set("VYR_HOME", m_home.path() + "/");
    EXPECT_TRUE(loadResourceString(res::AboutLanguage).isEmpty());
    EXPECT_TRUE(loadDialogTemplate(res::AboutDialog).isNull());

    install("vyr_res.rcc", "vyr_res.rcc");
    ASSERT_TRUE(loadResourceLibrary(m_home.path()));
    EXPECT_TRUE(loadResourceString(res::AboutLanguage).isEmpty()) << "the empty answer was cached";
    EXPECT_EQ(loadResourceString(res::AboutBuild), QStringLiteral("Build %1"));
    EXPECT_FALSE(loadDialogTemplate(res::AboutDialog).isEmpty());
    EXPECT_TRUE(loadDialogTemplate(9999).isNull());
    EXPECT_TRUE(resourceImagePath(ResourceKind::Bitmap, 9999).isEmpty());
}

TEST(ResourceTextTest, InsertsReplacePlaceholdersInOrder)
{
    struct Case
    {
        const char *text;
        QStringList inserts;
        const char *expected;
    };
    const Case cases[] = {
        {"%1 of %2", {"3", "7"}, "3 of 7"},
        {"%2, then %1", {"a", "b"}, "b, then a"},
        {"100%% sure", {}, "100% sure"},
        {"missing %3", {"a"}, "missing %3"},
        {"%1%1", {"x"}, "xx"},
        {"trailing %", {"x"}, "trailing %"},
        {"%10", {"a"}, "a0"},
    };
    for (const Case &c : cases)
        EXPECT_EQ(formatInserts(QString::fromUtf8(c.text), c.inserts), QString::fromUtf8(c.expected)) << c.text;
}

// Every resource the code names exists in every language.
TEST(ResourceTableTest, EveryEntryExistsInEveryBuiltLibrary)
{
    for (const char *file : {"vyr_res.rcc", "vyr_res_de.rcc"}) {
        const auto library = ResourceLibrary::open(kStage + "/res/" + file);
        ASSERT_TRUE(library) << file;
        for (const ResourceEntry &entry : kResourceTable)
            EXPECT_TRUE(library->contains(entry.kind, entry.id)) << file << ": " << entry.name << " " << entry.id;
    }
    EXPECT_FALSE(ResourceLibrary::open(kStage + "/libvyr.so")) << "not a resource file";
}

TEST(InstallDirectoryTest, TheLoadedEngineMarksTheInstallation)
{
    ScopedEnvironment env;
    env.set("VYR_HOME_OVERRIDE", std::nullopt);
    env.set("VYR_HOME", std::nullopt);
    // Touch the engine so that it is loaded whatever the linker decided.
    VYR_StringDestroy(VYR_StringCreate());
    EXPECT_EQ(resolveInstallDirectory(), std::filesystem::canonical(kStage).string() + "/");
}

} // namespace
} // namespace vyr
