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

#include <cstdio>
#include <cstdlib>

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
    // The names addHelpOption gives, as they were typed.
    for (const QString &name : parser.optionNames()) {
        if (name == QLatin1String("h") || name == QLatin1String("help") || name == QLatin1String("?")
            || name == QLatin1String("help-all"))
            parser.showHelp(0);
    }
    // The names addVersionOption gives.
    for (const QString &name : parser.optionNames()) {
        if (name == QLatin1String("v") || name == QLatin1String("version"))
            parser.showVersion();
    }
}

} // namespace vyr

#endif // VYR_UIKIT_COMMANDLINEUSAGE_H
