#include "util/registry.h"

#include "util/asciitext.h"
#include "util/environment.h"
#include "util/inifile.h"
#include "util/listpacking.h"
#include "util/safefiles.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstring>
#include <filesystem>
#include <optional>
#include <system_error>

namespace vyr {

namespace {

// Relative entries are ignored, as the base directory rules ask: they would
// make settings depend on wherever the program was started.
bool isAbsoluteDirectory(const std::string &directory)
{
    return !directory.empty() && directory.front() == '/';
}

std::string userConfigDirectory()
{
    const std::string home = getEnvironment("XDG_CONFIG_HOME");
    if (isAbsoluteDirectory(home))
        return home;
    const std::string userHome = getEnvironment("HOME");
    return isAbsoluteDirectory(userHome) ? userHome + "/.config" : std::string();
}

StringList machineConfigDirectories()
{
    StringList directories;
    for (std::string &directory : splitList(getEnvironment("XDG_CONFIG_DIRS"), ':')) {
        if (isAbsoluteDirectory(directory))
            directories.push_back(std::move(directory));
    }
    if (directories.empty())
        directories.push_back("/etc/xdg");
    return directories;
}

std::optional<std::string> readFrom(const StringList &directories, std::string_view key, std::string_view valueName)
{
    const RegistryLocation location = locateRegistryKey(key);
    if (location.file.empty())
        return std::nullopt;
    for (const std::string &directory : directories) {
        if (directory.empty())
            continue;
        if (auto value = readIniFileValue(directory + "/" + location.file, location.group, valueName))
            return value;
    }
    return std::nullopt;
}

struct SettingsFile
{
    std::string path;
    std::string group;
    std::string text; // empty when the file does not exist
};

// Why the settings file at `path`, in the configuration folder `root`, may
// not be reached, or "" when it may. A folder not there yet is no obstacle;
// when `creating`, a file where a folder belongs is one.
std::string obstacleOnTheWay(const std::string &root, const std::string &path, bool creating)
{
    std::size_t end = 0;
    bool last = false;
    while (!last) {
        end = path.find('/', end + 1);
        last = end == std::string::npos;
        const std::string step = last ? path : path.substr(0, end);
        struct stat info
        {
        };
        if (::lstat(step.c_str(), &info) != 0)
            return errno == ENOENT ? std::string() : step + ": " + std::strerror(errno);
        if (S_ISLNK(info.st_mode)) {
            char target[PATH_MAX] = {};
            const ssize_t length = ::readlink(step.c_str(), target, sizeof target - 1);
            const std::string link = step + ": is a symbolic link (to "
                + (length > 0 ? std::string(target, static_cast<std::size_t>(length)) : std::string("?")) + ")";
            // Nothing here makes a link below the folder: one there was
            // planted.
            if (step.size() > root.size())
                return link + ", and settings are never written or removed through one";
            if (info.st_uid != ::geteuid() && info.st_uid != 0)
                return link + " that another user made, and settings are never written or removed through one";
            if (::stat(step.c_str(), &info) != 0)
                return link + " that leads nowhere (" + std::strerror(errno) + ")";
        }
        // Nothing lies beyond a file where a folder belongs: nothing to
        // remove, but nowhere to write.
        if (!last && !S_ISDIR(info.st_mode))
            return creating ? step + ": is not a folder" : std::string();
    }
    return {};
}

// The settings file of `key` in the hive's write folder, read when it
// exists. False with the reason when it cannot be found or read, or when
// the way to it is barred (obstacleOnTheWay).
bool openSettingsFile(RegistryHive hive, std::string_view key, bool creating, SettingsFile &file, std::string &error)
{
    const std::string directory = registryWriteDirectory(hive);
    const RegistryLocation location = locateRegistryKey(key);
    if (directory.empty()) {
        error = "no configuration folder for " + std::string(hive == RegistryHive::User ? "the user" : "the machine");
        return false;
    }
    if (location.file.empty()) {
        error = "\"" + std::string(key) + "\" names no vendor and application";
        return false;
    }
    file.path = directory + "/" + location.file;
    file.group = location.group;
    error = obstacleOnTheWay(directory, file.path, creating);
    if (!error.empty())
        return false;
    std::error_code status;
    if (!std::filesystem::exists(std::filesystem::symlink_status(file.path, status))) {
        file.text.clear();
        return true;
    }
    const std::optional<std::string> text = readUntrustedFile(file.path, error);
    if (!text)
        return false;
    file.text = *text;
    return true;
}

} // namespace

RegistryLocation locateRegistryKey(std::string_view key)
{
    StringList segments;
    std::string segment;
    for (const char c : key) {
        if (c == '\\' || c == '/') {
            if (!segment.empty())
                segments.push_back(std::move(segment));
            segment.clear();
        } else {
            segment += c;
        }
    }
    if (!segment.empty())
        segments.push_back(std::move(segment));
    if (!segments.empty() && equalIgnoringAsciiCase(segments.front(), "SOFTWARE"))
        segments.erase(segments.begin());
    if (segments.size() < 2)
        return {};
    RegistryLocation location{segments[0] + "/" + segments[1] + ".conf", {}};
    for (std::size_t i = 2; i < segments.size(); ++i)
        location.group += (i > 2 ? "/" : "") + segments[i];
    return location;
}

std::string readRegistryString(std::string_view key, std::string_view valueName, const std::string &fallback)
{
    return readFrom(machineConfigDirectories(), key, valueName).value_or(fallback);
}

std::string readUserRegistryString(std::string_view key, std::string_view valueName, const std::string &fallback)
{
    const std::string home = userConfigDirectory();
    if (home.empty())
        return fallback;
    return readFrom({home}, key, valueName).value_or(fallback);
}

std::string registryWriteDirectory(RegistryHive hive)
{
    if (hive == RegistryHive::User)
        return userConfigDirectory();
    for (const std::string &directory : machineConfigDirectories()) {
        if (!directory.empty())
            return directory;
    }
    return {};
}

std::optional<std::string> readWrittenRegistryString(RegistryHive hive, std::string_view key,
                                                     std::string_view valueName)
{
    const std::string directory = registryWriteDirectory(hive);
    if (directory.empty())
        return std::nullopt;
    return readFrom({directory}, key, valueName);
}

bool writeRegistryString(RegistryHive hive, std::string_view key, std::string_view valueName, std::string_view value,
                         std::string &error)
{
    SettingsFile file;
    if (!openSettingsFile(hive, key, true, file, error))
        return false;
    if (!isWritableIniEntry(file.group, valueName, value)) {
        error = file.path + ": the value \"" + std::string(valueName) + "\" of \"" + std::string(key)
            + "\" cannot be kept in a settings file";
        return false;
    }
    std::error_code status;
    std::filesystem::create_directories(std::filesystem::path(file.path).parent_path(), status);
    if (status) {
        error = std::filesystem::path(file.path).parent_path().string() + ": " + status.message();
        return false;
    }
    return replaceFileContent(file.path, setIniValue(file.text, file.group, valueName, value), error, LinkRule::Refuse);
}

bool removeRegistryValue(RegistryHive hive, std::string_view key, std::string_view valueName, std::string &error)
{
    SettingsFile file;
    if (!openSettingsFile(hive, key, false, file, error))
        return false;
    if (file.text.empty())
        return true;
    const std::string rest = removeIniValue(file.text, file.group, valueName);
    if (rest == file.text)
        return true;
    // A file goes only when nothing is left in it: comments someone wrote
    // there before the keys came stay with the file.
    if (rest.find_first_not_of(" \t\r\n") != std::string::npos)
        return replaceFileContent(file.path, rest, error, LinkRule::Refuse);
    std::error_code status;
    if (!std::filesystem::remove(file.path, status) && status) {
        error = file.path + ": " + status.message();
        return false;
    }
    // The vendor folder goes with its last file; a folder that still holds
    // anything stays (remove refuses it).
    std::filesystem::remove(std::filesystem::path(file.path).parent_path(), status);
    return true;
}

} // namespace vyr
