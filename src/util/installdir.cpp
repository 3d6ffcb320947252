#include "util/installdir.h"

#include "util/environment.h"
#include "util/numbertext.h"
#include "util/registry.h"

#include <link.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace vyr {

namespace {

constexpr std::string_view kEngineFileName = "libvyr.so";
// A system installation keeps the engine among the shared libraries and
// everything else of the product in this folder beside it (VYR_INSTALL_DIR
// of the build).
constexpr std::string_view kPrivateFolderName = "vyr/";

std::string directoryOf(const std::string &path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

std::string absolutePath(const char *path)
{
    char resolved[PATH_MAX];
    return ::realpath(path, resolved) ? std::string(resolved) : std::string(path);
}

// Walks the loaded objects rather than asking the loader for the engine by
// name, so nothing is ever searched for or loaded here.
std::string loadedEnginePath()
{
    std::string found;
    dl_iterate_phdr(
        [](dl_phdr_info *info, std::size_t, void *data) {
            const std::string_view name = info->dlpi_name ? info->dlpi_name : "";
            const std::size_t slash = name.rfind('/');
            const std::string_view base = slash == std::string_view::npos ? name : name.substr(slash + 1);
            // The loader names the engine by its SONAME, libvyr.so.<version>.
            if (base != kEngineFileName && !base.starts_with(std::string(kEngineFileName) + '.'))
                return 0;
            *static_cast<std::string *>(data) = std::string(name);
            return 1;
        },
        &found);
    return found.empty() ? found : absolutePath(found.c_str());
}

std::string programPath()
{
    char path[PATH_MAX];
    const ssize_t length = ::readlink("/proc/self/exe", path, sizeof path - 1);
    return length > 0 ? std::string(path, static_cast<std::size_t>(length)) : std::string();
}

bool exists(const std::string &path)
{
    struct stat info
    {
    };
    return ::stat(path.c_str(), &info) == 0;
}

bool isInstallation(const std::string &directory)
{
    return exists(directory + std::string(kEngineFileName)) || exists(directory + "messages");
}

// The installation a module directory belongs to: its private folder when
// it has one (the engine among the system's libraries, where the link for
// developers is no sign of an installation), else the directory itself as
// the build tree lays it out; empty when neither is one.
std::string installationOf(const std::string &module)
{
    if (const std::string folder = module + std::string(kPrivateFolderName); exists(folder + "messages"))
        return folder;
    return isInstallation(module) ? module : std::string();
}

std::string fromMachineSettings()
{
    const std::string key = "SOFTWARE\\Quenbry Inc.\\Vyrcore";
    std::string home = readRegistryString(key + "\\BUILD\\" + numberText(kBuildNumber), "VYR_HOME", {});
    if (home.empty())
        home = readRegistryString(key, "VYR_HOME", {});
    return home;
}

} // namespace

std::string moduleDirectory()
{
    std::string path = loadedEnginePath();
    if (path.empty())
        path = programPath();
    return directoryOf(path);
}

std::string resolveInstallDirectory()
{
    // Libraries are loaded from the installation directory: a relative one
    // would load them from wherever the user happens to stand.
    const auto absoluteSetting = [](const char *variable) {
        std::string value = getEnvironment(variable);
        if (!value.empty() && value.front() != '/') {
            std::fprintf(stderr, "vyr: %s=%s is not an absolute path and is ignored\n", variable, value.c_str());
            value.clear();
        }
        return value;
    };
    const bool overridden = !getEnvironment("VYR_HOME_OVERRIDE").empty();
    std::string directory = absoluteSetting("VYR_HOME_OVERRIDE");
    if (overridden)
        setEnvironment("VYR_HOME_OVERRIDE", {}, true);
    if (directory.empty())
        directory = absoluteSetting("VYR_HOME");
    if (directory.empty()) {
        const std::string module = moduleDirectory();
        directory = module.empty() ? std::string() : installationOf(module);
        if (directory.empty()) {
            directory = fromMachineSettings();
            if (directory.empty() || directory.front() != '/')
                directory = module;
        }
    }
    if (directory.empty() || directory.back() != '/')
        directory += '/';
    setEnvironment("VYR_HOME", directory, true);
    return directory;
}

const std::string &getInstallDirectory()
{
    static std::string directory;
    if (directory.empty())
        directory = resolveInstallDirectory();
    return directory;
}

} // namespace vyr
