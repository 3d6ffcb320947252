// The subcommands of vyrtool. Each takes the arguments after its own name
// and returns the process exit status: 0 done, 1 failed, 2 bad usage.
#ifndef VYRTOOL_COMMANDS_H
#define VYRTOOL_COMMANDS_H

#include <span>
#include <string_view>

int runCodecCommand(std::span<const std::string_view> arguments);
// "format", "type", "name" or "schema".
int runFormatCommand(std::string_view command, std::span<const std::string_view> arguments);
// "about" or "template".
int runDialogCommand(std::string_view command, std::span<const std::string_view> arguments);

#endif // VYRTOOL_COMMANDS_H
