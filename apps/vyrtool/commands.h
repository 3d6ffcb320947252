// The subcommands of vyrtool. Each takes the arguments after its own name
// and returns the process exit status: 0 done, 1 failed or cancelled, 2 bad
// usage, 3 a dialog refused OK under --accept.
#ifndef VYRTOOL_COMMANDS_H
#define VYRTOOL_COMMANDS_H

#include <optional>
#include <span>
#include <string>
#include <string_view>

int runCodecCommand(std::span<const std::string_view> arguments);
// "format", "type", "name" or "schema".
int runFormatCommand(std::string_view command, std::span<const std::string_view> arguments);
// "about" or "template".
int runDialogCommand(std::string_view command, std::span<const std::string_view> arguments);
// "register" or "unregister".
int runRegisterCommand(std::string_view command, std::span<const std::string_view> arguments);
int runGeodatabaseCommand(std::span<const std::string_view> arguments);
// "domain" or "list".
int runEditorCommand(std::string_view command, std::span<const std::string_view> arguments);

// The capability string of the file at `path`; nothing, after saying why on
// standard error, when it cannot be read.
std::optional<std::string> readCapabilities(const std::string &path, const char *command);

#endif // VYRTOOL_COMMANDS_H
