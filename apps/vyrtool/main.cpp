#include "commands.h"

#include <cstdio>
#include <vector>

namespace {

constexpr const char *kUsage = "usage: vyrtool <command> [arguments]\n"
                               "\n"
                               "commands:\n"
                               "  codec encode-user|decode-user|encode-wwjd|decode-wwjd [--codepage NAME]\n"
                               "      Encode or decode standard input and write the result to standard\n"
                               "      output. NAME is the narrow code page (an iconv name such as CP1252,\n"
                               "      or a Windows code page number such as 1252); the default is\n"
                               "      VYR_CODEPAGE, else the locale's character set.\n";

} // namespace

int main(int argc, char **argv)
{
    std::vector<std::string_view> arguments(argv + 1, argv + argc);
    if (arguments.empty()) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    const std::string_view command = arguments.front();
    if (command == "--help" || command == "-h" || command == "help") {
        std::fputs(kUsage, stdout);
        return 0;
    }
    if (command == "codec")
        return runCodecCommand(std::span(arguments).subspan(1));
    std::fprintf(stderr, "vyrtool: unknown command \"%.*s\"\n\n%s", static_cast<int>(command.size()), command.data(),
                 kUsage);
    return 2;
}
