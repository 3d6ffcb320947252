#include "util/installedscripts.h"

#include "util/environment.h"
#include "util/installdir.h"

#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <memory>

namespace vyr {

namespace {

std::optional<std::string> realPath(const std::string &path)
{
    std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(path.c_str(), nullptr), &std::free);
    if (!resolved)
        return std::nullopt;
    return std::string(resolved.get());
}

} // namespace

std::string installedScriptFolder()
{
    return getInstallDirectory() + "metafile/";
}

std::optional<std::string> refuseScriptName(std::string_view name)
{
    constexpr std::string_view kSpecial = "/{}[]\\$\";";
    // The script's path goes to Tcl as one braced word, which takes these
    // literally only while they are absent.
    if (installedScriptFolder().find_first_of("{}\\") != std::string::npos)
        return "the installation folder's path holds a brace or backslash";
    if (name.empty() || name == "." || name == "..")
        return "it is not a file name";
    if (name.find_first_of(kSpecial) != std::string_view::npos)
        return "a script name holds none of / { } [ ] \\ $ \" ;";
    for (const char c : name) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F)
            return "a script name holds no control characters";
    }
    if (name.front() == ' ' || name.back() == ' ')
        return "a script name neither starts nor ends with a blank";
    if (!isInstalledScript(installedScriptFolder() + std::string(name)))
        return "there is no such file in " + installedScriptFolder();
    return std::nullopt;
}

bool isInstalledScript(const std::string &path)
{
    const std::optional<std::string> folder = realPath(installedScriptFolder());
    const std::optional<std::string> file = realPath(path);
    if (!folder || !file || !file->starts_with(*folder + "/"))
        return false;
    struct stat info
    {
    };
    return ::stat(file->c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

long scriptSecondsLimit()
{
    const std::string configured = getEnvironment("VYR_TCL_SECONDS");
    // An hour is more than any script needs, and keeps deadlines in range.
    constexpr long kLongest = 3600;
    const long seconds = std::strtol(configured.c_str(), nullptr, 10);
    return seconds > 0 ? std::min(seconds, kLongest) : 10;
}

} // namespace vyr
