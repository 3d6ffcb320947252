// vyrtool register / unregister: the library's component server entry
// points, run as a host's installer runs them, with what they changed.
//
//   vyrtool register|unregister [--user]
//
// The changes are read from the settings files of the configuration folder
// before and after the call, so what is printed is what the files hold, not
// what the library meant to write. Why a call failed the library says in
// its registration log, which the command prints in its own name.
#include "commands.h"
#include "toolarguments.h"

#include "util/inifile.h"
#include "util/registry.h"
#include "util/safefiles.h"
#include "vyrguimfc/vyrguimfc.h"

#include <QString>
#include <QtGlobal>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>
#include <string>
#include <tuple>

namespace {

// One value of a settings file: file (relative, without ".conf"), group and
// value name, to the value.
using Values = std::map<std::tuple<std::string, std::string, std::string>, std::string>;

// The values of the "<vendor>/<application>.conf" files of `folder`.
Values readValues(const std::string &folder)
{
    Values values;
    std::error_code status;
    for (std::filesystem::recursive_directory_iterator it(folder, status), end; !status && it != end;
         it.increment(status)) {
        // A link is not followed: one planted here leads to files that are
        // none of this command's business.
        if (it.depth() > 1 || it->path().extension() != ".conf"
            || it->symlink_status(status).type() != std::filesystem::file_type::regular)
            continue;
        std::string reason;
        const std::optional<std::string> text = vyr::readUntrustedFile(it->path().string(), reason);
        if (!text)
            continue;
        std::string file = std::filesystem::relative(it->path(), folder, status).replace_extension().string();
        vyr::forEachIniValue(*text, [&](std::string_view group, std::string_view key, const std::string &value) {
            values[{file, std::string(group), std::string(key)}] = value;
        });
    }
    return values;
}

std::string keyPath(const std::string &file, const std::string &group)
{
    std::string path = file + (group.empty() || group == "General" ? "" : "/" + group);
    for (char &c : path) {
        if (c == '/')
            c = '\\';
    }
    return path;
}

void printChanges(const Values &before, const Values &after)
{
    for (const auto &[where, value] : after) {
        const auto old = before.find(where);
        if (old == before.end() || old->second != value)
            std::printf("written: %s  %s = %s\n", keyPath(std::get<0>(where), std::get<1>(where)).c_str(),
                        std::get<2>(where).c_str(), value.c_str());
    }
    for (const auto &[where, value] : before) {
        if (!after.contains(where))
            std::printf("removed: %s  %s = %s\n", keyPath(std::get<0>(where), std::get<1>(where)).c_str(),
                        std::get<2>(where).c_str(), value.c_str());
    }
}

// The command's name, for the library's reasons while it runs.
std::string g_commandName;
QtMessageHandler g_otherMessages = nullptr;

void sayRegistrationReason(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    // The category the library logs its registration failures under.
    if (context.category && std::strcmp(context.category, "vyr.frame.registration") == 0)
        std::fprintf(stderr, "vyrtool %s: %s\n", g_commandName.c_str(), qPrintable(message));
    else
        g_otherMessages(type, context, message);
}

} // namespace

int runRegisterCommand(std::string_view command, std::span<const std::string_view> arguments)
{
    const std::string name(command);
    const std::optional<ToolArguments> read = readToolArguments(arguments, {}, name.c_str(), {"user"});
    if (!read)
        return 2;
    if (!read->words.empty()) {
        std::fprintf(stderr, "vyrtool %s: unexpected \"%s\"\nusage: vyrtool %s [--user]\n", name.c_str(),
                     read->words.front().c_str(), name.c_str());
        return 2;
    }
    const bool perUser = read->hasFlag("user");
    // The library reads this when its server module is first used.
    setenv("VYR_REGISTER_PER_USER", perUser ? "1" : "0", 1);
    const std::string folder
        = vyr::registryWriteDirectory(perUser ? vyr::RegistryHive::User : vyr::RegistryHive::Machine);
    if (folder.empty()) {
        std::fprintf(stderr, "vyrtool %s: there is no configuration folder to %s\n", name.c_str(),
                     perUser ? "register the user in (no HOME)" : "register the machine in");
        return 1;
    }
    const Values before = readValues(folder);
    g_commandName = name;
    g_otherMessages = qInstallMessageHandler(sayRegistrationReason);
    const int32_t status = command == "register" ? DllRegisterServer() : DllUnregisterServer();
    qInstallMessageHandler(g_otherMessages);
    printChanges(before, readValues(folder));
    if (status != 0) {
        std::fprintf(stderr, "vyrtool %s: failed with status 0x%08X in %s\n", name.c_str(),
                     static_cast<unsigned>(status), folder.c_str());
        return 1;
    }
    std::printf("%s in %s\n", command == "register" ? "registered" : "unregistered", folder.c_str());
    return 0;
}
