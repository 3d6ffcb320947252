// Running without a display. A window nobody can reach never closes, so a
// program shows windows that wait for a person only where one can reach
// them, and runs that end by themselves (--accept, --screenshot, --help)
// are drawn on the offscreen platform when there is no display.
// Header only: the programs call it before any application exists.
#ifndef VYR_UIKIT_HEADLESS_H
#define VYR_UIKIT_HEADLESS_H

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>

namespace vyr {

// Whether the local X server that $DISPLAY names (":N", ":N.S") answers on
// its socket. A display left over from a closed session would otherwise
// end the process when the application is made. Remote and other displays
// are taken as they are given.
inline bool localXServerAnswers(std::string_view display)
{
    if (!display.starts_with(':'))
        return true;
    const std::string number(display.substr(1, display.find('.') == std::string_view::npos ? std::string_view::npos
                                                                                        : display.find('.') - 1));
    const std::string path = "/tmp/.X11-unix/X" + number;
    // X servers listen on the abstract name first, the file second.
    for (const bool abstract : {true, false}) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const std::size_t offset = abstract ? 1 : 0;
        if (path.size() + offset >= sizeof address.sun_path)
            return true;
        std::memcpy(address.sun_path + offset, path.data(), path.size());
        const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (fd < 0)
            return true;
        const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + offset + path.size());
        const bool connected = ::connect(fd, reinterpret_cast<const sockaddr *>(&address), length) == 0;
        ::close(fd);
        if (connected)
            return true;
    }
    return false;
}

// Whether a window can be made here: there is a display that answers, or
// the caller chose a Qt platform itself (such as "offscreen", for a host
// that drives its windows itself). Not that anybody sees it.
inline bool windowsHaveAPlace()
{
    const auto set = [](const char *name) {
        const char *value = std::getenv(name);
        return value && *value ? value : nullptr;
    };
    if (set("QT_QPA_PLATFORM") || set("WAYLAND_DISPLAY"))
        return true;
    const char *display = set("DISPLAY");
    return display && localXServerAnswers(display);
}

// The Qt platform the program's run will use when one was chosen: the
// -platform argument (Qt takes --platform too), else QT_QPA_PLATFORM; its
// first choice, without the options after ':'. Empty when none was chosen.
inline std::string chosenPlatform(int argc = 0, char *argv[] = nullptr)
{
    std::string_view chosen;
    if (const char *value = std::getenv("QT_QPA_PLATFORM"))
        chosen = value;
    for (int i = 1; i + 1 < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "-platform" || argument == "--platform")
            chosen = argv[i + 1];
    }
    chosen = chosen.substr(0, chosen.find(';'));
    return std::string(chosen.substr(0, chosen.find(':')));
}

// Whether a person can reach the windows of a program whose application is
// made with this command line: not on the platforms that draw for nobody
// (offscreen, minimal), and otherwise where a display answers or the caller
// chose another platform.
inline bool aPersonCanReachWindows(int argc = 0, char *argv[] = nullptr)
{
    const std::string platform = chosenPlatform(argc, argv);
    if (platform == "offscreen" || platform == "minimal")
        return false;
    return !platform.empty() || windowsHaveAPlace();
}

// What a program says when it refuses to wait for a person nobody can be.
inline constexpr char kNobodyCanReachWindows[] =
    "nobody could reach its window (no display, or the offscreen or minimal Qt platform)";

// Without a display, windows are drawn on the offscreen platform. Takes
// effect only before the application object exists.
inline void drawOffscreenWithoutDisplay()
{
    if (!windowsHaveAPlace()) {
        // A dead display must not be tried after all.
        unsetenv("DISPLAY");
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
}

// Qt wants a private runtime folder and complains on standard error when
// the session gave none (a service, a container, su): the process gets one
// of its own, private from the start, that goes when it ends. Takes effect
// only before the application object exists.
inline void ensureRuntimeFolder()
{
    const char *given = std::getenv("XDG_RUNTIME_DIR");
    if (given && *given)
        return;
    std::error_code failed;
    std::string path = (std::filesystem::temp_directory_path(failed) / "vyr-runtime-XXXXXX").string();
    if (failed || !::mkdtemp(path.data()))
        return;
    setenv("XDG_RUNTIME_DIR", path.c_str(), 1);
    static const std::string made = path;
    std::atexit([] {
        std::error_code ignored;
        std::filesystem::remove_all(made, ignored);
    });
}

// Before the application exists, with the command line the application is
// made with: whether a person can reach its windows. Where there is no
// display the offscreen platform is chosen anyway, so that the command line
// can be read (help, bad usage) and runs that end by themselves drawn; a
// program refuses to wait for a person once it knows that its run would.
inline bool prepareHeadlessRun(int argc, char *argv[])
{
    const bool personThere = aPersonCanReachWindows(argc, argv);
    drawOffscreenWithoutDisplay();
    ensureRuntimeFolder();
    return personThere;
}

} // namespace vyr

#endif // VYR_UIKIT_HEADLESS_H
