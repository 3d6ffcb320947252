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

TEST(IniEditTest, RemovesAValueAndOnlyAGroupItLeavesEmpty)
{
    struct Case
    {
        const char *name;
        const char *text;
        const char *group;
        const char *key;
        const char *expected;
    };
    const Case cases[] = {
        {"other values stay", "[A]\na=1\nb=2\n", "a", "A", "[A]\nb=2\n"},
        {"empty group goes, not the groups below", "top=1\n[A]\na=1\n\n[A/B]\na=2\n", "A", "a", "top=1\n[A/B]\na=2\n"},
        {"a comment keeps the group", "[A]\n; mine\na=1\n", "A", "a", "[A]\n; mine\n"},
        {"every repeat", "[A]\na=1\nx=0\n[a]\n A = 2\n", "A", "a", "[A]\nx=0\n"},
        {"nameless top", "a=1\n[H]\na=2\n", "", "a", "[H]\na=2\n"},
        {"not there", "[A]\n\n[B]\na=1\n", "A", "a", "[A]\n\n[B]\na=1\n"},
    };
    for (const Case &c : cases)
        EXPECT_EQ(removeIniValue(c.text, c.group, c.key), c.expected) << c.name;
}

TEST(IniEditTest, SettingThenRemovingNewValuesGivesTheTextBack)
{
    for (const char *text : {"", "[X]\na=1\n", "[X]\na=1", "a=1\n\n; end\n", "[X]\n\n"}) {
        const std::string added = setIniValue(setIniValue(text, "N/1", "k", "v"), "N/1/sub", "@", "w");
        const std::string expected = std::string(text) + (*text && std::string(text).back() != '\n' ? "\n" : "");
        EXPECT_EQ(removeIniValue(removeIniValue(added, "n/1", "K"), "N\\1\\sub", "@"), expected) << text;
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

    for (const char *key : {"SOFTWARE\\Classes\\TypeLib\\{1}\\1.0", "SOFTWARE\\Classes\\TypeLib\\{1}\\1.0\\0\\linux",
                            "SOFTWARE\\Classes\\TypeLib\\{1}\\1.0"})
        ASSERT_TRUE(removeRegistryValue(RegistryHive::Machine, key, "@", error)) << error;
    EXPECT_FALSE(std::filesystem::exists(machine.path() + "/Classes"));
    EXPECT_EQ(machine.read("Quenbry Inc./Vyrcore.conf"), "[BUILD/6233]\nVYR_HOME=/opt/vyr/\n");
    EXPECT_TRUE(std::filesystem::is_empty(user.path()));

    // A file of comments only keeps them once the keys written there go.
    machine.write("Classes/TypeLib.conf", "# kept by hand\n");
    ASSERT_TRUE(writeRegistryString(RegistryHive::Machine, "SOFTWARE\\Classes\\TypeLib\\{1}", "@", "Lib", error));
    ASSERT_TRUE(removeRegistryValue(RegistryHive::Machine, "SOFTWARE\\Classes\\TypeLib\\{1}", "@", error)) << error;
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
    EXPECT_NE(error.find(user.path() + "/Classes: is not a folder"), std::string::npos) << error;
    EXPECT_EQ(user.read("Classes"), "not a folder");
}

TEST(RegistryWriteTest, LinksOnTheWayAreRefusedByNameNeitherFollowedNorRemoved)
{
    test::ScratchDirectory user;
    test::ScratchDirectory elsewhere;
    test::ScopedEnvironment env;
    env.set("XDG_CONFIG_HOME", user.path());
    const std::string kept = "[TypeLib/{1}]\n@=Lib\n";
    const std::string victim = elsewhere.write("Classes.conf", kept);
    const std::string key = "SOFTWARE\\vyr\\Classes\\TypeLib\\{1}";
    struct Case
    {
        const char *name;
        const char *link;
        std::string target;
    };
    const Case cases[] = {
        {"settings file", "vyr/Classes.conf", victim},
        {"vendor folder", "vyr", elsewhere.path()},
        {"dangling settings file", "vyr/Classes.conf", elsewhere.path() + "/none.conf"},
    };
    for (const Case &c : cases) {
        const std::filesystem::path link = std::filesystem::path(user.path()) / c.link;
        std::filesystem::create_directories(link.parent_path());
        std::filesystem::create_symlink(c.target, link);
        std::string error;
        EXPECT_FALSE(writeRegistryString(RegistryHive::User, key, "@", "Other", error)) << c.name;
        EXPECT_NE(error.find(link.string() + ": is a symbolic link"), std::string::npos) << c.name << ": " << error;
        error.clear();
        EXPECT_FALSE(removeRegistryValue(RegistryHive::User, key, "@", error)) << c.name;
        EXPECT_NE(error.find(link.string() + ": is a symbolic link"), std::string::npos) << c.name << ": " << error;
        EXPECT_EQ(std::filesystem::read_symlink(link).string(), c.target) << c.name;
        EXPECT_EQ(elsewhere.read("Classes.conf"), kept) << c.name;
        EXPECT_FALSE(std::filesystem::exists(elsewhere.path() + "/none.conf")) << c.name;
        std::filesystem::remove_all(user.path() + "/vyr");
    }
}

} // namespace
} // namespace vyr
