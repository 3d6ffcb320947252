#include "util/registry.h"

#include "util/asciitext.h"
#include "util/environment.h"
#include "util/inifile.h"
#include "util/listpacking.h"

#include <optional>

namespace vyr {

namespace {

struct SettingsLocation
{
    std::string file; // relative to a configuration directory
    std::string group;
};

// Empty file when the path does not name a vendor and an application.
SettingsLocation locate(std::string_view key)
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
    SettingsLocation location{segments[0] + "/" + segments[1] + ".conf", {}};
    for (std::size_t i = 2; i < segments.size(); ++i)
        location.group += (i > 2 ? "/" : "") + segments[i];
    return location;
}

std::optional<std::string> readFrom(const StringList &directories, std::string_view key, std::string_view valueName)
{
    const SettingsLocation location = locate(key);
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

} // namespace

std::string readRegistryString(std::string_view key, std::string_view valueName, const std::string &fallback)
{
    std::string dirs = getEnvironment("XDG_CONFIG_DIRS");
    if (dirs.empty())
        dirs = "/etc/xdg";
    return readFrom(splitList(dirs, ':'), key, valueName).value_or(fallback);
}

std::string readUserRegistryString(std::string_view key, std::string_view valueName, const std::string &fallback)
{
    std::string home = getEnvironment("XDG_CONFIG_HOME");
    if (home.empty()) {
        const std::string userHome = getEnvironment("HOME");
        if (userHome.empty())
            return fallback;
        home = userHome + "/.config";
    }
    return readFrom({home}, key, valueName).value_or(fallback);
}

} // namespace vyr
