// Where the product is installed.
//
// The installation directory holds the outside services, the resource
// library (res/), the help books (help/), the message catalogs (messages/)
// and the format definitions; in the build tree also the engine (libvyr.so).
// It is found once per process, in this order:
//   1. $VYR_HOME_OVERRIDE when not empty (the variable is then emptied, so a
//      child process does not inherit the override);
//   2. $VYR_HOME;
//   3. the folder vyr/ beside the loaded libvyr.so (a system installation:
//      the engine among the shared libraries) when it holds messages/, else
//      the engine's directory itself (of the running program when the
//      engine is not loaded) when it holds libvyr.so or a messages/ entry;
//   4. the value VYR_HOME of the machine setting
//      "SOFTWARE\Quenbry Inc.\Vyrcore\BUILD\<build>", then of
//      "SOFTWARE\Quenbry Inc.\Vyrcore";
//   5. that module directory after all.
// The result always ends in "/" and is published as $VYR_HOME, so that the
// engine and the outside services see the same directory.
#ifndef VYR_UTIL_INSTALLDIR_H
#define VYR_UTIL_INSTALLDIR_H

#include <string>

namespace vyr {

// The build number, which picks the build's own resource library and
// machine settings.
inline constexpr unsigned kBuildNumber = 6233;

// The installation directory, resolved on first use and then kept.
const std::string &getInstallDirectory();

// Runs the resolution afresh and publishes the result, without keeping it.
// getInstallDirectory is this plus the keeping; tests use it directly.
std::string resolveInstallDirectory();

// The directory of the loaded engine, else of the running program; ends
// in "/". Empty only when neither can be found.
std::string moduleDirectory();

} // namespace vyr

#endif // VYR_UTIL_INSTALLDIR_H
