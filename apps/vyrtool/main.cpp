#include "commands.h"
#include "vyrversion.h"

#include "util/codepage.h"

#include <cstdio>
#include <vector>

namespace {

constexpr const char *kUsage = "Usage: vyrtool <command> [arguments]\n"
                               "  or:  vyrtool --help | --version\n"
                               "\n"
                               "Commands:\n"
                               "  codec encode-user|decode-user|encode-wwjd|decode-wwjd [--codepage NAME]\n"
                               "      Encode or decode standard input and write the result to standard\n"
                               "      output. NAME is the narrow code page (an iconv name such as CP1252,\n"
                               "      or a Windows code page number such as 1252); the default is\n"
                               "      VYR_CODEPAGE, else the locale's character set. A code page that\n"
                               "      does not keep ASCII as itself (UTF-7, UTF-16, EBCDIC) is refused.\n"
                               "  about [--screenshot FILE] [--accept]\n"
                               "      Show what is installed where and which resource library and\n"
                               "      language are in use. F1 or Help opens its help page.\n"
                               "  template ID [--screenshot FILE] [--accept]\n"
                               "      Show the dialog template ID of the resource library, for checking\n"
                               "      a layout or a translation (LANG=de_DE.UTF-8 for German).\n"
                               "  domain range|coded VALUE --format CAPFILE [--screenshot FILE] [--accept]\n"
                               "      Edit a range or coded value domain, given as the colon-packed\n"
                               "      value of a domain argument, with the format's field types; the\n"
                               "      new value is printed after OK.\n"
                               "  list stringset|stringlist|stringmap VALUE [--source] [--screenshot FILE]\n"
                               "       [--accept]\n"
                               "      Edit a colon-packed set, list or map of strings (read-only with\n"
                               "      --source, as for a reader's format); the new value after OK.\n"
                               "  geodb [PATH] [--must-exist] [--screenshot FILE] [--accept]\n"
                               "      Pick a file geodatabase (a folder named *.gdb) starting at PATH, and\n"
                               "      print its path; without --must-exist a new one may be named.\n"
                               "  With --screenshot the dialog is drawn into the PNG FILE; with --accept\n"
                               "  it is closed with OK at once, so both also work without a display. A\n"
                               "  dialog that refuses OK prints why on standard error and exits with 3.\n"
                               "\n"
                               "  format show CAPFILE\n"
                               "      Every answer the dialog gets from a format capability file, as JSON.\n"
                               "  type parse TEXT [--list-mode 0|1]\n"
                               "  type generic|native TEXT --format CAPFILE\n"
                               "  type convert TEXT --from CAPFILE --to CAPFILE\n"
                               "      Read a type string, or turn it into the generic vocabulary, into the\n"
                               "      format's own, or into another format's.\n"
                               "  name resolve|attr NAME --format CAPFILE [--taken NAME]...\n"
                               "      The feature type (resolve) or attribute (attr) name the format makes\n"
                               "      of NAME when the --taken names exist already.\n"
                               "  schema show FEATURE.json --format CAPFILE\n"
                               "      What the dialog reads from a schema feature file under the format.\n"
                               "  schema diff OLD.json NEW.json --format CAPFILE [--json]\n"
                               "      What saving NEW.json over OLD.json would change, grouped as the\n"
                               "      dialog's pages are, as text or JSON. Exits with 0 when they hold the\n"
                               "      same schema, 1 when they differ and 2 on a file it cannot read.\n"
                               "  register|unregister [--user]\n"
                               "      Register the library as a component server (its type library and\n"
                               "      proxy/stub) in vyr/Classes.conf of the machine's configuration folder,\n"
                               "      or the user's with --user, or remove that again; prints every value\n"
                               "      written or removed.\n";

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
    if (command == "--version") {
        std::printf("vyrtool %s\n", kVyrVersion);
        return 0;
    }
    // Every command reads or writes narrow text: none runs in a code page
    // other than the one asked for.
    if (const auto refusal = vyr::refusedVyrCodePage()) {
        std::fprintf(stderr, "vyrtool: %s\n", refusal->c_str());
        return 2;
    }
    if (command == "codec")
        return runCodecCommand(std::span(arguments).subspan(1));
    if (command == "format" || command == "type" || command == "name" || command == "schema")
        return runFormatCommand(command, std::span(arguments).subspan(1));
    if (command == "about" || command == "template")
        return runDialogCommand(command, std::span(arguments).subspan(1));
    if (command == "register" || command == "unregister")
        return runRegisterCommand(command, std::span(arguments).subspan(1));
    if (command == "geodb")
        return runGeodatabaseCommand(std::span(arguments).subspan(1));
    if (command == "domain" || command == "list")
        return runEditorCommand(command, std::span(arguments).subspan(1));
    std::fprintf(stderr, "vyrtool: unknown command \"%.*s\"\n\n%s", static_cast<int>(command.size()), command.data(),
                 kUsage);
    return 2;
}
