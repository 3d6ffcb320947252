// Running without a display. A window nobody can reach never closes, so a
// program shows windows only where there is a display or a Qt platform the
// caller chose, and runs that end by themselves (--accept, --screenshot,
// --help) are drawn on the offscreen platform when there is no display.
// Header only: the programs decide this before any application exists.
#ifndef VYR_UIKIT_HEADLESS_H
#define VYR_UIKIT_HEADLESS_H

#include <cstdlib>
#include <string_view>

namespace vyr {

// Whether a window can reach anybody here: there is a display, or the
// caller chose a Qt platform itself (such as "offscreen").
inline bool windowsHaveAPlace()
{
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        const char *value = std::getenv(name);
        if (value && *value)
            return true;
    }
    return false;
}

// Without a display, windows are drawn on the offscreen platform. Takes
// effect only before the application object exists.
inline void drawOffscreenWithoutDisplay()
{
    if (!windowsHaveAPlace())
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
}

// Whether the command line asks for a run that ends by itself: --accept,
// --help, --version, or --screenshot with a file to write.
inline bool endsByItself(int argc, char *argv[])
{
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        for (const std::string_view flag : {"--accept", "--help", "-h", "--version"}) {
            if (argument == flag)
                return true;
        }
        constexpr std::string_view kScreenshot = "--screenshot";
        if (argument == kScreenshot && i + 1 < argc && *argv[i + 1])
            return true;
        if (argument.starts_with(kScreenshot) && argument.substr(kScreenshot.size()).starts_with('=')
            && argument.size() > kScreenshot.size() + 1)
            return true;
    }
    return false;
}

// Before the application exists: false when there is no display and the
// run would need a person; otherwise true, with the offscreen platform
// chosen where there is no display.
inline bool prepareHeadlessRun(int argc, char *argv[])
{
    if (!windowsHaveAPlace() && !endsByItself(argc, argv))
        return false;
    drawOffscreenWithoutDisplay();
    return true;
}

} // namespace vyr

#endif // VYR_UIKIT_HEADLESS_H
