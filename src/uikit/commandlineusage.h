// Reading a program's command line. QCommandLineParser::process ends a run
// with status 1 on bad usage, which these programs give to a cancelled
// dialog; here bad usage ends with 2, so that a script can tell the two.
// Header only, like headless.h: the programs use it without linking the
// dialog framework.
#ifndef VYR_UIKIT_COMMANDLINEUSAGE_H
#define VYR_UIKIT_COMMANDLINEUSAGE_H

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>

namespace vyr {

inline constexpr int kExitUsage = 2;

// Parses `arguments` (the program's name first). Bad usage prints the
// parser's reason and a pointer to --help on standard error and ends the
// process with kExitUsage; --help prints the help and --version the
// version (where the parser has that option), and end it with 0.
inline void processCommandLine(QCommandLineParser &parser, const QStringList &arguments)
{
    const QString program = QCoreApplication::applicationName();
    if (!parser.parse(arguments)) {
        std::fprintf(stderr, "%s: %s\nTry '%s --help'.\n", qPrintable(program), qPrintable(parser.errorText()),
                     qPrintable(program));
        std::exit(kExitUsage);
    }
    // The names addHelpOption and addVersionOption give, as they were typed;
    // help wins when both are asked for.
    const QStringList names = parser.optionNames();
    const auto asked = [&names](std::initializer_list<const char *> options) {
        return std::any_of(names.begin(), names.end(), [&options](const QString &name) {
            return std::any_of(options.begin(), options.end(),
                               [&name](const char *option) { return name == QLatin1String(option); });
        });
    };
    if (asked({"h", "help", "?", "help-all"}))
        parser.showHelp(0);
    if (asked({"v", "version"}))
        parser.showVersion();
}

} // namespace vyr

#endif // VYR_UIKIT_COMMANDLINEUSAGE_H
