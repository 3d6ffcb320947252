// Editing the settings files that stand in for the registry: what a write
// or a removal changes, and that it changes nothing else.
#include "util/inifile.h"
#include "util/registry.h"

#include "support/scopedenvironment.h"
#include "support/scratchdirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

namespace vyr {
namespace {

TEST(IniEditTest, SetsValuesInPlaceAfterTheGroupOrInANewGroup)
{
    struct Case
    {
        const char *name;
        const char *text;
        const char *group;
        const char *key;
        const char *value;
        const char *expected;
    };
    const Case cases[] = {
        {"empty text", "", "A/B", "k", "v", "[A/B]\nk=v\n"},
        {"new group after others", "[X]\na=1\n", "Y", "k", "v", "[X]\na=1\n[Y]\nk=v\n"},
        {"missing final break", "[X]\na=1", "Y", "k", "v", "[X]\na=1\n[Y]\nk=v\n"},
        {"replaced where it stands", "[G]\n; note\nK = old\nz=2\n", "G", "k", "new", "[G]\n; note\nk=new\nz=2\n"},
        {"after the group's last value", "[G]\na=1\n\n[H]\nb=2\n", "g", "c", "3", "[G]\na=1\nc=3\n\n[H]\nb=2\n"},
        {"into the nameless top", "a=1\n[H]\nb=2\n", "", "c", "3", "a=1\nc=3\n[H]\nb=2\n"},
        {"backslash group", "[A/B]\nx=1\n", "A\\B", "y", "2", "[A/B]\nx=1\ny=2\n"},
        {"blanks kept by quotes", "", "G", "k", " v ", "[G]\nk=\" v \"\n"},
        {"quotes kept by quotes", "", "G", "k", "\"q\"", "[G]\nk=\"\"q\"\"\n"},
        {"empty value", "", "G", "@", "", "[G]\n@=\n"},
    };
    for (const Case &c : cases) {
        const std::string edited = setIniValue(c.text, c.group, c.key, c.value);
        EXPECT_EQ(edited, c.expected) << c.name;
        EXPECT_EQ(findIniValue(edited, c.group, c.key), std::optional<std::string>(c.value)) << c.name;
    }
}

TEST(IniEditTest, RemovesAGroupWithTheGroupsBelowItOnly)
{
    const std::string text = "top=1\n[A]\na=1\n[A/B]\nb=2\n; lost with A/B\n[AB]\nc=3\n[A\\C/D]\nd=4\n[Z]\nz=9\n";
    EXPECT_EQ(removeIniGroupTree(text, "a"), "top=1\n[AB]\nc=3\n[Z]\nz=9\n");
    EXPECT_EQ(removeIniGroupTree(text, "A/B"), "top=1\n[A]\na=1\n[AB]\nc=3\n[A\\C/D]\nd=4\n[Z]\nz=9\n");
    EXPECT_EQ(removeIniGroupTree(text, "Q"), text);
    EXPECT_EQ(removeIniGroupTree("; c\n[A]\na=1\n", "A"), "; c\n");
}

TEST(IniEditTest, SettingThenRemovingANewGroupGivesTheTextBack)
{
    for (const char *text : {"", "[X]\na=1\n", "[X]\na=1", "a=1\n\n; end\n", "[X]\n\n"}) {
        const std::string added = setIniValue(setIniValue(text, "N/1", "k", "v"), "N/1/sub", "@", "w");
        const std::string expected = std::string(text) + (*text && std::string(text).back() != '\n' ? "\n" : "");
        EXPECT_EQ(removeIniGroupTree(added, "n"), expected) << text;
    }
}

TEST(IniEditTest, RefusesEntriesThatDoNotFitOnALine)
{
    EXPECT_TRUE(isWritableIniEntry("A/{0-1}", "@", "/opt/vyr/libvyrguimfc.so"));
    EXPECT_FALSE(isWritableIniEntry("A", "k", "two\nlines"));
    EXPECT_FALSE(isWritableIniEntry("A]", "k", "v"));
    EXPECT_FALSE(isWritableIniEntry("A", "k=", "v"));
    EXPECT_FALSE(isWritableIniEntry("A", ";k", "v"));
    EXPECT_FALSE(isWritableIniEntry("A", "", "v"));
    EXPECT_FALSE(isWritableIniEntry("A", " k", "v"));
}

TEST(RegistryWriteTest, WritesReadsAndRemovesLeavingTheFolderAsItWas)
{
    test::ScratchDirectory machine;
    test::ScratchDirectory user;
    test::ScopedEnvironment env;
    env.set("XDG_CONFIG_DIRS", machine.path() + ":/nonexistent");
    env.set("XDG_CONFIG_HOME", user.path());
    const std::string other = machine.write("Quenbry Inc./Vyrcore.conf", "[BUILD/6233]\nVYR_HOME=/opt/vyr/\n");

    std::string error;
    ASSERT_TRUE(writeRegistryString(RegistryHive::Machine, "SOFTWARE\\Classes\\TypeLib\\{1}\\1.0", "@", "Lib", error))
        << error;
    ASSERT_TRUE(writeRegistryString(RegistryHive::Machine, "SOFTWARE\\Classes\\TypeLib\\{1}\\1.0\\0\\linux", "@",
                                    "/opt/lib.so", error))
        << error;
    EXPECT_EQ(readRegistryString("SOFTWARE\\Classes\\TypeLib\\{1}\\1.0", "@", "-"), "Lib");
    EXPECT_EQ(readWrittenRegistryString(RegistryHive::Machine, "Classes/TypeLib/{1}/1.0/0/linux", "@"),
              std::optional<std::string>("/opt/lib.so"));
    EXPECT_EQ(readUserRegistryString("SOFTWARE\\Classes\\TypeLib\\{1}\\1.0", "@", "-"), "-");

    ASSERT_TRUE(removeRegistryKey(RegistryHive::Machine, "SOFTWARE\\Classes\\TypeLib\\{1}", error)) << error;
    ASSERT_TRUE(removeRegistryKey(RegistryHive::Machine, "SOFTWARE\\Classes\\TypeLib\\{1}", error)) << error;
    EXPECT_FALSE(std::filesystem::exists(machine.path() + "/Classes"));
    EXPECT_EQ(machine.read("Quenbry Inc./Vyrcore.conf"), "[BUILD/6233]\nVYR_HOME=/opt/vyr/\n");
    EXPECT_TRUE(std::filesystem::is_empty(user.path()));

    // A file of comments only keeps them once the keys written there go.
    machine.write("Classes/TypeLib.conf", "# kept by hand\n");
    ASSERT_TRUE(writeRegistryString(RegistryHive::Machine, "SOFTWARE\\Classes\\TypeLib\\{1}", "@", "Lib", error));
    ASSERT_TRUE(removeRegistryKey(RegistryHive::Machine, "SOFTWARE\\Classes\\TypeLib\\{1}", error)) << error;
    EXPECT_EQ(machine.read("Classes/TypeLib.conf"), "# kept by hand\n");
}

TEST(RegistryWriteTest, FailedWritesSayWhyAndChangeNothing)
{
    test::ScratchDirectory user;
    test::ScopedEnvironment env;
    env.set("XDG_CONFIG_HOME", user.path());
    std::string error;
    EXPECT_FALSE(writeRegistryString(RegistryHive::User, "Classes", "@", "v", error));
    EXPECT_NE(error.find("names no vendor"), std::string::npos) << error;
    EXPECT_FALSE(writeRegistryString(RegistryHive::User, "Classes\\CLSID\\{2}", "@", "a\nb", error));
    // A file where the vendor folder belongs.
    user.write("Classes", "not a folder");
    EXPECT_FALSE(writeRegistryString(RegistryHive::User, "Classes\\CLSID\\{2}", "@", "v", error));
    EXPECT_FALSE(error.empty());
    EXPECT_EQ(user.read("Classes"), "not a folder");
}

} // namespace
} // namespace vyr
