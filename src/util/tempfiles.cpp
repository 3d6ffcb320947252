#include "util/tempfiles.h"

#include "util/environment.h"
#include "util/numbertext.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdint>

namespace vyr {

namespace {

// Paths beyond this are refused rather than cut, so a name never silently
// lands somewhere else.
constexpr std::size_t kLongestTempDirectory = 2047;

// Grows by one for every taken name, for the rest of the process.
std::uint32_t collisionCounter = 0;

bool isDirectory(const std::string &path)
{
    struct stat info
    {
    };
    return !path.empty() && path.size() <= kLongestTempDirectory && ::stat(path.c_str(), &info) == 0
        && S_ISDIR(info.st_mode);
}

enum class NameState { Free, Taken, Unusable };

// Only "exists" means another name may do: any other error (a folder that
// cannot be searched, a file where the folder should be) is the same for
// every name, and trying more would never end.
NameState nameState(const std::string &path)
{
    struct stat info
    {
    };
    if (::lstat(path.c_str(), &info) == 0)
        return NameState::Taken;
    return errno == ENOENT ? NameState::Free : NameState::Unusable;
}

} // namespace

std::string resolveTempDirectory()
{
    for (const char *variable : {"VYR_TEMP", "TEMP", "TMPDIR"}) {
        std::string directory = getEnvironment(variable);
        if (isDirectory(directory))
            return directory;
    }
    return "/tmp";
}

const std::string &getTempDirectory()
{
    static const std::string directory = resolveTempDirectory();
    return directory;
}

std::string makeTempName(const std::string &directory, const std::string &nameTemplate, const std::string &suffix)
{
    std::string name = directory.empty() ? getTempDirectory() : directory;
    if (name.empty() || name.back() != '/')
        name += '/';
    name += nameTemplate.empty() ? std::string("VYR_XXXXXX") : nameTemplate;
    name.erase(name.find_last_not_of('X') + 1);

    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
    name += std::to_string(milliseconds / 1000) + std::to_string(milliseconds % 1000) + "_"
        + numberText(static_cast<std::uint32_t>(::getpid()));

    NameState state = nameState(name + suffix);
    if (state == NameState::Free)
        return name + suffix;
    name += '_';
    for (;;) {
        state = nameState(name + numberText(collisionCounter) + suffix);
        if (state == NameState::Free)
            return name + numberText(collisionCounter) + suffix;
        if (state == NameState::Unusable)
            return {};
        ++collisionCounter;
    }
}

std::string createTempFile(const std::string &directory, const std::string &nameTemplate, const std::string &suffix,
                           std::string_view content)
{
    // The name can be taken between making it and creating the file; a few
    // rounds settle any race with an honest program.
    constexpr int kAttempts = 100;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const std::string name = makeTempName(directory, nameTemplate, suffix);
        if (name.empty())
            return {};
        const int fd = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
        if (fd >= 0) {
            // Written through the descriptor made here: reopened by name, the
            // file could meanwhile be a link planted by someone else.
            bool written = true;
            for (std::string_view rest = content; written && !rest.empty();) {
                const ssize_t count = ::write(fd, rest.data(), rest.size());
                written = count >= 0 || errno == EINTR;
                rest.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
            }
            written = ::close(fd) == 0 && written;
            if (written)
                return name;
            ::unlink(name.c_str());
            return {};
        }
        if (errno != EEXIST)
            return {};
        ++collisionCounter;
    }
    return {};
}

} // namespace vyr
