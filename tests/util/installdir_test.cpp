#include "util/environment.h"
#include "util/inifile.h"
#include "util/installdir.h"
#include "util/registry.h"
#include "util/userlanguage.h"

#include "support/scopedenvironment.h"
#include "support/scratchdirectory.h"

#include <gtest/gtest.h>

#include <optional>

namespace vyr {
namespace {

using test::ScopedEnvironment;
using test::ScratchDirectory;

class InstallDirectoryTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_env.set("VYR_HOME_OVERRIDE", std::nullopt);
        m_env.set("VYR_HOME", std::nullopt);
        m_env.set("XDG_CONFIG_DIRS", m_config.path());
    }

    void writeMachineSettings(const std::string &content) { m_config.write("Quenbry Inc./Vyrcore.conf", content); }

    ScopedEnvironment m_env;
    ScratchDirectory m_config;
};

TEST_F(InstallDirectoryTest, OverrideThenHomeThenMachineSettingsThenModuleDirectory)
{
    const std::string module = moduleDirectory();
    ASSERT_FALSE(module.empty());
    EXPECT_EQ(module.back(), '/');
    struct Case
    {
        std::optional<std::string> override, home;
        const char *machineSettings;
        std::string expected;
    };
    // The test program's own directory holds neither the engine nor messages/,
    // so the machine settings are asked.
    const Case cases[] = {
        {"/opt/override", "/opt/home/", "VYR_HOME=/opt/general\n", "/opt/override/"},
        {std::nullopt, "/opt/home/", "VYR_HOME=/opt/general\n", "/opt/home/"},
        {std::nullopt, std::nullopt, "VYR_HOME=/opt/general\n[BUILD/6233]\nVYR_HOME = /opt/build6233\n",
         "/opt/build6233/"},
        {std::nullopt, std::nullopt, "[BUILD/6000]\nVYR_HOME=/opt/old\n[General]\nVYR_HOME=/opt/general\n",
         "/opt/general/"},
        {std::nullopt, std::nullopt, "", module},
        // A relative directory would load libraries from wherever the user
        // stands: it is passed over.
        {"override", "/opt/home/", "", "/opt/home/"},
        {std::nullopt, "./home", "VYR_HOME=/opt/general\n", "/opt/general/"},
        {"../x", "home", "VYR_HOME=general\n", module},
    };
    for (const Case &c : cases) {
        m_env.set("VYR_HOME_OVERRIDE", c.override);
        m_env.set("VYR_HOME", c.home);
        writeMachineSettings(c.machineSettings);
        EXPECT_EQ(resolveInstallDirectory(), c.expected) << c.expected;
        // The answer is passed on; an override is used once only.
        EXPECT_EQ(getEnvironment("VYR_HOME"), c.expected);
        EXPECT_EQ(getEnvironment("VYR_HOME_OVERRIDE"), "");
    }
}

TEST(IniFileTest, FindsValuesByGroupAndKey)
{
    const std::string text = "; comment\n"
                             "top = level\n"
                             "[Settings]\r\n"
                             "Allow Source Feature Type Editing = yes\r\n"
                             "quoted = \"  kept blanks  \"\n"
                             "# another comment\n"
                             "twice=first\n"
                             "twice=second\n"
                             "[BUILD/6233]\n"
                             "VYR_HOME=/opt/vyr\n"
                             "[broken\n"
                             "inside=broken\n"
                             "noequals\n";
    struct Case
    {
        const char *group;
        const char *key;
        std::optional<std::string> expected;
    };
    const Case cases[] = {
        {"", "top", "level"},
        {"General", "TOP", "level"},
        {"settings", "allow source feature type editing", "yes"},
        {"Settings", "quoted", "  kept blanks  "},
        {"Settings", "twice", "second"},
        {"BUILD\\6233", "VYR_HOME", "/opt/vyr"},
        {"broken", "inside", "broken"},
        {"Settings", "top", std::nullopt},
        {"Settings", "noequals", std::nullopt},
        {"Missing", "VYR_HOME", std::nullopt},
    };
    for (const Case &c : cases)
        EXPECT_EQ(findIniValue(text, c.group, c.key), c.expected) << c.group << " / " << c.key;
}

TEST(RegistryTest, UserSettingsThenTheFirstSystemDirectoryHoldingTheValue)
{
    ScratchDirectory home;
    ScratchDirectory first;
    ScratchDirectory second;
    ScopedEnvironment env;
    env.set("XDG_CONFIG_HOME", home.path());
    env.set("XDG_CONFIG_DIRS", first.path() + ":" + second.path());
    home.write("Quenbry Inc./VYR Loomhouse.conf", "[Settings]\nAllow Source Feature Type Editing=Yes\n");
    const std::string key = "Software\\Quenbry Inc.\\VYR Loomhouse\\Settings";
    EXPECT_EQ(readUserRegistryString(key, "Allow Source Feature Type Editing", "no"), "Yes");
    EXPECT_EQ(readUserRegistryString(key, "Missing", "no"), "no");
    EXPECT_EQ(readUserRegistryString("Software\\Quenbry Inc.\\Other", "x", "fallback"), "fallback");
    EXPECT_EQ(readUserRegistryString("Software", "x", "fallback"), "fallback");

    first.write("Quenbry Inc./Vyrcore.conf", "[Other]\nVYR_HOME=/wrong\n");
    second.write("Quenbry Inc./Vyrcore.conf", "VYR_HOME=/opt/second\n");
    EXPECT_EQ(readRegistryString("SOFTWARE\\Quenbry Inc.\\Vyrcore", "VYR_HOME", ""), "/opt/second");
}

// A relative configuration directory would read (and registration write)
// settings wherever the program happens to be started.
TEST(RegistryTest, RelativeConfigurationDirectoriesAreIgnored)
{
    ScratchDirectory home;
    ScratchDirectory system;
    ScopedEnvironment env;
    env.set("HOME", home.path());
    env.set("XDG_CONFIG_HOME", "config");
    env.set("XDG_CONFIG_DIRS", "xdg:" + system.path());
    home.write(".config/Quenbry Inc./VYR Loomhouse.conf", "[Settings]\nAllow Source Feature Type Editing=Yes\n");
    system.write("Quenbry Inc./Vyrcore.conf", "VYR_HOME=/opt/system\n");
    EXPECT_EQ(readUserRegistryString("Software\\Quenbry Inc.\\VYR Loomhouse\\Settings",
                                     "Allow Source Feature Type Editing", "no"),
              "Yes");
    EXPECT_EQ(readRegistryString("SOFTWARE\\Quenbry Inc.\\Vyrcore", "VYR_HOME", ""), "/opt/system");
}

TEST(UserLanguageTest, TakesTheLanguageOfTheFirstSetLocaleVariable)
{
    struct Case
    {
        std::optional<std::string> all, messages, lang;
        const char *expected;
    };
    const Case cases[] = {
        {std::nullopt, std::nullopt, "de_DE.UTF-8", "de"},
        {"fr_FR", std::nullopt, "de_DE.UTF-8", "fr"},
        {"", "pt_BR@euro", "de_DE", "pt"},
        {std::nullopt, std::nullopt, "C.UTF-8", ""},
        {std::nullopt, std::nullopt, "POSIX", ""},
        {std::nullopt, std::nullopt, std::nullopt, ""},
        {std::nullopt, std::nullopt, "EN", "en"},
        {std::nullopt, std::nullopt, "verylonglanguage_XX", ""},
        {std::nullopt, std::nullopt, "d3_DE", ""},
    };
    for (const Case &c : cases) {
        ScopedEnvironment env;
        env.set("LC_ALL", c.all);
        env.set("LC_MESSAGES", c.messages);
        env.set("LANG", c.lang);
        EXPECT_EQ(userLanguage(), c.expected) << c.lang.value_or("(unset)");
    }
}

} // namespace
} // namespace vyr
