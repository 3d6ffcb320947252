// Reading one value from an INI text: the settings files that stand in for
// the system registry.
//
// The layout is the one Qt's settings and most desktop tools write:
// "[Group]" lines open a group ("[BUILD/6233]" nests with slashes), "key=value"
// lines give values, lines starting with ";" or "#" are comments. Blanks
// around keys and values are ignored, a value in double quotes keeps its
// blanks, and keys before any group belong to the group "General". Group and
// key names compare without regard to ASCII case, as registry names do.
#ifndef VYR_UTIL_INIFILE_H
#define VYR_UTIL_INIFILE_H

#include <optional>
#include <string>
#include <string_view>

namespace vyr {

// The value of `key` in `group`, or nothing. The last of repeated keys wins.
std::optional<std::string> findIniValue(std::string_view text, std::string_view group, std::string_view key);

// As findIniValue over the file at `path`; nothing when it cannot be read.
std::optional<std::string> readIniFileValue(const std::string &path, std::string_view group, std::string_view key);

} // namespace vyr

#endif // VYR_UTIL_INIFILE_H
