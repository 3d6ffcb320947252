// The system registry of the original design, kept in settings files.
//
// A key path names a vendor, an application and groups below it:
// "SOFTWARE\Quenbry Inc.\Vyrcore\BUILD\6233" is the group "BUILD/6233" of the
// file "Quenbry Inc./Vyrcore.conf". A leading "SOFTWARE" is dropped; "\" and
// "/" both separate. A path without groups reads the group "General".
//
// Machine-wide keys are read from each directory of $XDG_CONFIG_DIRS in turn
// (default /etc/xdg), the first file that holds the value winning, and
// written into the first of them; the user's keys live in $XDG_CONFIG_HOME
// (default ~/.config). A key's unnamed default value has the name "@".
//
// Writes go through util/safefiles.h: a settings file is replaced whole or
// not at all. No symbolic link is written, removed or followed below the
// configuration folder, where these functions never make one: a link there
// (on the vendor folder, on the file) is refused with a reason naming it.
// On the way to the folder itself only the links of the user and of the
// system are followed, never one another user made. A settings file left
// without keys is removed, and so is its vendor folder when that is then
// empty, so that writing keys and removing them again leaves the
// configuration folder as it was.
#ifndef VYR_UTIL_REGISTRY_H
#define VYR_UTIL_REGISTRY_H

#include <optional>
#include <string>
#include <string_view>

namespace vyr {

// A machine-wide value; `fallback` when the key or the value cannot be read.
std::string readRegistryString(std::string_view key, std::string_view valueName, const std::string &fallback);

// The user's own value; `fallback` when the key or the value cannot be read.
std::string readUserRegistryString(std::string_view key, std::string_view valueName, const std::string &fallback);

// The name of a key's default value.
inline constexpr char kRegistryDefaultValue[] = "@";

enum class RegistryHive { Machine, User };

// The configuration folder that keys of `hive` are written into; empty when
// there is none (no $HOME for the user's).
std::string registryWriteDirectory(RegistryHive hive);

// The settings file, relative to a configuration folder, and the group that
// hold `key`; both empty when the path does not name a vendor and an
// application.
struct RegistryLocation
{
    std::string file;
    std::string group;
};
RegistryLocation locateRegistryKey(std::string_view key);

// Sets the string value, creating the key and its file. False with the
// reason in `error` when the key names no file, the entry cannot be stored
// in a settings file, or the file cannot be written; nothing then changes.
bool writeRegistryString(RegistryHive hive, std::string_view key, std::string_view valueName, std::string_view value,
                         std::string &error);

// Removes the value, and the key when nothing else is left in it; keys
// below it and other values stay. A value that is not there is no failure,
// and nothing is then written or made. False with the reason in `error`
// when the file cannot be read or written.
bool removeRegistryValue(RegistryHive hive, std::string_view key, std::string_view valueName, std::string &error);

// Reads a value from the hive's write folder only, as written there.
std::optional<std::string> readWrittenRegistryString(RegistryHive hive, std::string_view key,
                                                     std::string_view valueName);

} // namespace vyr

#endif // VYR_UTIL_REGISTRY_H
