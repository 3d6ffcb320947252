#include "util/safefiles.h"

#include "support/scratchdirectory.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

namespace vyr {
namespace {

using test::ScratchDirectory;

mode_t modeOf(const std::string &path)
{
    struct stat info
    {
    };
    return ::stat(path.c_str(), &info) == 0 ? info.st_mode & 07777 : 0;
}

// Whatever a stranger passes for a file ends at once with a reason: the
// reader never blocks on a pipe or reads a device without end.
TEST(SafeFilesTest, OnlyRegularFilesOfSaneSizeAreRead)
{
    ScratchDirectory dir;
    const std::string fifo = dir.path() + "/fifo";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    const std::string big = dir.write("big", std::string(100, 'x'));
    struct Case
    {
        std::string path;
        std::size_t limit;
        const char *reason;
    };
    const Case cases[] = {
        {dir.path(), kLargestUntrustedFile, "is a directory"},
        {fifo, kLargestUntrustedFile, "is not a regular file"},
        {"/dev/zero", kLargestUntrustedFile, "is not a regular file"},
        {dir.path() + "/missing", kLargestUntrustedFile, "No such file"},
        {big, 99, "is too large (100 bytes"},
    };
    for (const Case &c : cases) {
        std::string error;
        EXPECT_FALSE(readUntrustedFile(c.path, error, c.limit)) << c.path;
        EXPECT_EQ(error.rfind(c.path + ": ", 0), 0u) << error;
        EXPECT_NE(error.find(c.reason), std::string::npos) << error;
    }
    std::string error;
    EXPECT_EQ(readUntrustedFile(big, error, 100).value_or(""), std::string(100, 'x'));
}

TEST(SafeFilesTest, ReplacingKeepsLinksModesAndNeverFollowsAPlantedLink)
{
    ScratchDirectory dir;
    const std::string victim = dir.write("elsewhere/victim", "precious");
    const std::string target = dir.write("data/real.json", "old");
    ASSERT_EQ(::chmod(target.c_str(), 0600), 0);
    const std::string link = dir.path() + "/data/link.json";
    ASSERT_EQ(::symlink("real.json", link.c_str()), 0);
    // The names a predictable saver would have used.
    for (const char *planted : {"/data/real.json.saving", "/data/link.json.saving", "/data/.real.json.tmp"})
        ASSERT_EQ(::symlink(victim.c_str(), (dir.path() + planted).c_str()), 0);

    std::string error;
    ASSERT_TRUE(replaceFileContent(link, "new", error)) << error;
    EXPECT_TRUE(std::filesystem::is_symlink(link)) << "the link stays a link";
    EXPECT_EQ(dir.read("data/real.json"), "new");
    EXPECT_EQ(modeOf(target), 0600u);
    EXPECT_EQ(dir.read("elsewhere/victim"), "precious");
    std::size_t entries = 0;
    for ([[maybe_unused]] const auto &entry : std::filesystem::directory_iterator(dir.path() + "/data"))
        ++entries;
    EXPECT_EQ(entries, 5u) << "no scratch file is left behind";

    ASSERT_TRUE(replaceFileContent(dir.path() + "/data/new.json", "made", error)) << error;
    EXPECT_EQ(dir.read("data/new.json"), "made");
}

// A failed save leaves the old file as it was and names the file; a file
// nobody may write is refused, to the superuser as well.
TEST(SafeFilesTest, RefusedSavesLeaveTheOldFile)
{
    ScratchDirectory dir;
    const std::string readOnly = dir.write("read-only.json", "kept");
    ASSERT_EQ(::chmod(readOnly.c_str(), 0444), 0);
    const std::string dangling = dir.path() + "/dangling.json";
    ASSERT_EQ(::symlink("nowhere/at/all.json", dangling.c_str()), 0);
    const std::string folder = dir.path() + "/folder.json";
    ASSERT_EQ(::mkdir(folder.c_str(), 0700), 0);
    struct Case
    {
        std::string path;
        const char *reason;
    };
    const Case cases[] = {
        {readOnly, "read-only"},
        {dangling, "symbolic link"},
        {folder, "not a regular file"},
        {dir.path() + "/missing/file.json", "no new file can be made"},
        {"/dev/full", "not a regular file"},
    };
    for (const Case &c : cases) {
        std::string error;
        EXPECT_FALSE(replaceFileContent(c.path, "new", error)) << c.path;
        EXPECT_EQ(error.rfind(c.path + ": ", 0), 0u) << error;
        EXPECT_NE(error.find(c.reason), std::string::npos) << error;
    }
    EXPECT_EQ(dir.read("read-only.json"), "kept");
    EXPECT_EQ(modeOf(readOnly), 0444u);
}

} // namespace
} // namespace vyr
