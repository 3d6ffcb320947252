#include "util/numbertext.h"
#include "util/tempfiles.h"

#include "support/scopedenvironment.h"
#include "support/scratchdirectory.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <regex>

namespace vyr {
namespace {

using test::ScopedEnvironment;
using test::ScratchDirectory;

std::string fileContent(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

TEST(TempFilesTest, NameIsTemplateStemTimeAndProcess)
{
    ScratchDirectory dir;
    const std::string name = makeTempName(dir.path(), "lh-dlg-XXXXXX", "");
    const std::regex shape(dir.path() + "/lh-dlg-[0-9]+_" + std::to_string(::getpid()));
    EXPECT_TRUE(std::regex_match(name, shape)) << name;
    EXPECT_FALSE(std::filesystem::exists(name));

    const std::string withSuffix = makeTempName(dir.path() + "/", "", ".txt");
    EXPECT_TRUE(std::regex_match(withSuffix, std::regex(dir.path() + "/VYR_[0-9]+_[0-9]+\\.txt"))) << withSuffix;
}

TEST(TempFilesTest, TempDirectorySkipsVariablesThatAreNotDirectories)
{
    ScratchDirectory dir;
    const std::string file = dir.write("plain-file", "x");
    ScopedEnvironment env;
    env.set("VYR_TEMP", file);
    env.set("TEMP", dir.path());
    EXPECT_EQ(resolveTempDirectory(), dir.path());
    env.set("TEMP", std::nullopt);
    env.set("TMPDIR", "/nonexistent/vyr");
    EXPECT_EQ(resolveTempDirectory(), "/tmp");
}

// Someone who can predict the names plants a symbolic link under every name
// of the next seconds, pointing at a file of the user's.
TEST(TempFilesTest, PlantedLinksAreNeverFollowed)
{
    ScratchDirectory dir;
    const std::string victim = dir.write("victim", "precious");
    const std::string stem = dir.path() + "/lh-dlg-";
    const std::string pid = "_" + numberText(static_cast<std::uint32_t>(::getpid()));
    const auto now
        = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::system_clock::now().time_since_epoch())
              .count();
    for (long long ms = now; ms < now + 3000; ++ms) {
        const std::string name = stem + std::to_string(ms / 1000) + std::to_string(ms % 1000) + pid;
        ASSERT_EQ(::symlink(victim.c_str(), name.c_str()), 0) << name;
    }

    const std::string created = createTempFile(dir.path(), "lh-dlg-XXXXXX", "");
    ASSERT_FALSE(created.empty());
    struct stat info
    {
    };
    ASSERT_EQ(::lstat(created.c_str(), &info), 0);
    EXPECT_TRUE(S_ISREG(info.st_mode));
    EXPECT_EQ(info.st_mode & 0777, 0600u);
    EXPECT_EQ(info.st_size, 0);
    EXPECT_EQ(fileContent(victim), "precious");

    const std::string another = createTempFile(dir.path(), "lh-dlg-XXXXXX", "", "written through its descriptor");
    EXPECT_NE(another, created);
    EXPECT_EQ(fileContent(another), "written through its descriptor");
    EXPECT_EQ(createTempFile("/nonexistent/vyr", "", ""), "") << "fails cleanly in a missing directory";
}

// Only "exists" makes another name worth trying: a file where the folder
// should be fails every name alike, and used to count up for ever.
TEST(TempFilesTest, NamesInAFolderThatCannotHoldFilesEndAtOnce)
{
    ScratchDirectory dir;
    const std::string file = dir.write("not-a-folder", "x");
    EXPECT_EQ(makeTempName(file, "", ""), "");
    EXPECT_EQ(createTempFile(file, "", ".txt"), "");
}

} // namespace
} // namespace vyr
