// The system registry of the original design, kept in settings files.
//
// A key path names a vendor, an application and groups below it:
// "SOFTWARE\Quenbry Inc.\Vyrcore\BUILD\6233" is the group "BUILD/6233" of the
// file "Quenbry Inc./Vyrcore.conf". A leading "SOFTWARE" is dropped; "\" and
// "/" both separate. A path without groups reads the group "General".
//
// Machine-wide keys are read from each directory of $XDG_CONFIG_DIRS in turn
// (default /etc/xdg), the first file that holds the value winning; the user's
// keys from $XDG_CONFIG_HOME (default ~/.config). Values are only ever read.
#ifndef VYR_UTIL_REGISTRY_H
#define VYR_UTIL_REGISTRY_H

#include <string>
#include <string_view>

namespace vyr {

// A machine-wide value; `fallback` when the key or the value cannot be read.
std::string readRegistryString(std::string_view key, std::string_view valueName, const std::string &fallback);

// The user's own value; `fallback` when the key or the value cannot be read.
std::string readUserRegistryString(std::string_view key, std::string_view valueName, const std::string &fallback);

} // namespace vyr

#endif // VYR_UTIL_REGISTRY_H
