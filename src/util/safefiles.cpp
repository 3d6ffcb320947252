#include "util/safefiles.h"

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace vyr {

namespace {

std::string failure(const std::string &path, const std::string &reason)
{
    return path + ": " + reason;
}

std::string systemReason(int number)
{
    return std::strerror(number);
}

// Closes on every path out, so that no early return leaks a descriptor.
class Descriptor
{
public:
    explicit Descriptor(int fd)
        : m_fd(fd)
    {}
    ~Descriptor()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    int get() const { return m_fd; }
    bool valid() const { return m_fd >= 0; }
    // Closes now, as the last step of a write: close can report an error
    // that the writes did not.
    int close()
    {
        const int result = ::close(m_fd);
        m_fd = -1;
        return result;
    }

private:
    int m_fd;
};

bool writeAll(int fd, std::string_view content)
{
    while (!content.empty()) {
        const ssize_t written = ::write(fd, content.data(), content.size());
        if (written < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

std::string folderOf(const std::string &path)
{
    const std::size_t slash = path.find_last_of('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

// Where the content goes: the file itself, or the end of the chain of
// links it names.
std::optional<std::string> saveTarget(const std::string &path, LinkRule links, std::string &error)
{
    struct stat link
    {
    };
    if (::lstat(path.c_str(), &link) != 0 || !S_ISLNK(link.st_mode))
        return path;
    if (links == LinkRule::Refuse) {
        error = failure(path, "is a symbolic link, and this file is never written through one");
        return std::nullopt;
    }
    std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(path.c_str(), nullptr), &std::free);
    if (!resolved) {
        error = failure(path, "a symbolic link to nothing that can be written (" + systemReason(errno) + ")");
        return std::nullopt;
    }
    return std::string(resolved.get());
}

// A new file in `folder` under a name nobody can guess, created exclusively
// (never through a link planted under it). Made with mode 0666 so that the
// user's umask applies, as to any new file; `name` gets its path.
int createScratchFile(const std::string &folder, std::string &name)
{
    constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz0123456789";
    for (int attempt = 0; attempt < 100; ++attempt) {
        unsigned char random[12];
        if (::getrandom(random, sizeof random, 0) != static_cast<ssize_t>(sizeof random))
            return -1;
        name = folder + "/.vyr-save-";
        for (const unsigned char byte : random)
            name += kLetters[byte % kLetters.size()];
        const int fd = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
        if (fd >= 0 || errno != EEXIST)
            return fd;
    }
    return -1;
}

void syncFolder(const std::string &folder)
{
    // Some file systems cannot sync a folder; the rename then stands as the
    // file system keeps it.
    Descriptor directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.valid())
        ::fsync(directory.get());
}

} // namespace

std::optional<std::string> readUntrustedFile(const std::string &path, std::string &error, std::size_t limit)
{
    // Looked at before it is opened: opening a device can act (rewind a
    // tape, arm a watchdog), and opening a pipe can wait for a writer.
    struct stat info
    {
    };
    if (::stat(path.c_str(), &info) != 0) {
        error = failure(path, systemReason(errno));
        return std::nullopt;
    }
    if (S_ISDIR(info.st_mode)) {
        error = failure(path, "is a directory, not a file");
        return std::nullopt;
    }
    if (!S_ISREG(info.st_mode)) {
        error = failure(path, "is not a regular file (a device, pipe or socket)");
        return std::nullopt;
    }
    Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    struct stat opened
    {
    };
    if (!file.valid() || ::fstat(file.get(), &opened) != 0) {
        error = failure(path, systemReason(errno));
        return std::nullopt;
    }
    if (opened.st_dev != info.st_dev || opened.st_ino != info.st_ino) {
        error = failure(path, "was replaced while it was opened");
        return std::nullopt;
    }
    if (static_cast<std::size_t>(info.st_size) > limit) {
        error = failure(path, "is too large (" + std::to_string(info.st_size) + " bytes; at most "
                                  + std::to_string(limit) + " are read)");
        return std::nullopt;
    }
    std::string text;
    text.resize(static_cast<std::size_t>(info.st_size));
    std::size_t filled = 0;
    // A file that grows while it is read is cut at the size it had.
    while (filled < text.size()) {
        const ssize_t got = ::read(file.get(), text.data() + filled, text.size() - filled);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0) {
            error = failure(path, systemReason(errno));
            return std::nullopt;
        }
        if (got == 0)
            break;
        filled += static_cast<std::size_t>(got);
    }
    text.resize(filled);
    return text;
}

bool replaceFileContent(const std::string &path, std::string_view content, std::string &error, LinkRule links)
{
    if (path.empty()) {
        error = "no file name to save to";
        return false;
    }
    const std::optional<std::string> target = saveTarget(path, links, error);
    if (!target)
        return false;
    struct stat old
    {
    };
    const bool exists = ::stat(target->c_str(), &old) == 0;
    if (!exists && errno != ENOENT) {
        error = failure(path, "cannot be saved: " + systemReason(errno));
        return false;
    }
    if (exists && !S_ISREG(old.st_mode)) {
        error = failure(path, "cannot be saved: it is not a regular file");
        return false;
    }
    if (exists && ((old.st_mode & 0222) == 0 || ::faccessat(AT_FDCWD, target->c_str(), W_OK, AT_EACCESS) != 0)) {
        error = failure(path, "cannot be saved: the file is read-only");
        return false;
    }

    const std::string folder = folderOf(*target);
    std::string scratch;
    Descriptor file(createScratchFile(folder, scratch));
    if (!file.valid()) {
        error = failure(path, "cannot be saved: no new file can be made in " + folder + " (" + systemReason(errno)
                                  + ")");
        return false;
    }
    const auto abandon = [&](const std::string &reason) {
        const int number = errno;
        ::unlink(scratch.c_str());
        error = failure(path, "cannot be saved: " + reason + " (" + systemReason(number) + ")");
        return false;
    };
    if (!writeAll(file.get(), content))
        return abandon("writing failed");
    if (exists) {
        // Owner first: giving a file away clears its set-ID bits, which the
        // mode then puts back. Only the superuser may give a file away;
        // anyone else keeps at least its group where they belong to it.
        const bool ownerKept = ::fchown(file.get(), old.st_uid, old.st_gid) == 0
            || ::fchown(file.get(), static_cast<uid_t>(-1), old.st_gid) == 0;
        static_cast<void>(ownerKept); // the file is then the user's own, as an editor leaves it
        if (::fchmod(file.get(), old.st_mode & 07777) != 0)
            return abandon("its permissions cannot be kept");
    }
    if (::fsync(file.get()) != 0)
        return abandon("writing failed");
    if (file.close() != 0)
        return abandon("writing failed");
    syncFolder(folder);
    if (::rename(scratch.c_str(), target->c_str()) != 0)
        return abandon("the new file cannot take the old one's place");
    // The rename is only lasting once the folder is on disk too.
    syncFolder(folder);
    return true;
}

} // namespace vyr
