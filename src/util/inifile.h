// Reading and editing INI texts: the settings files that stand in for the
// system registry.
//
// The layout is the one Qt's settings and most desktop tools write:
// "[Group]" lines open a group ("[BUILD/6233]" nests with slashes), "key=value"
// lines give values, lines starting with ";" or "#" are comments. Blanks
// around keys and values are ignored, a value in double quotes keeps its
// blanks, and keys before any group belong to the group "General". Group and
// key names compare without regard to ASCII case, as registry names do.
#ifndef VYR_UTIL_INIFILE_H
#define VYR_UTIL_INIFILE_H

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vyr {

// The value of `key` in `group`, or nothing. The last of repeated keys wins.
std::optional<std::string> findIniValue(std::string_view text, std::string_view group, std::string_view key);

// As findIniValue over the file at `path`; nothing when it cannot be read.
std::optional<std::string> readIniFileValue(const std::string &path, std::string_view group, std::string_view key);

// Whether `group`, `key` and `value` can be written as one line each: no
// line breaks, no "]" in a group, no "=" in a key, a key that does not start
// a comment or a group and is not blank.
bool isWritableIniEntry(std::string_view group, std::string_view key, std::string_view value);

// `text` with `key` of `group` set to `value`. An existing line of the key
// (the last, as the reader takes it) is replaced where it stands; otherwise
// the line goes after the group's last value, or a new group is added at the
// end. Every other line is kept byte for byte. A value with blanks at either
// end, or in double quotes, is written in double quotes so that it reads
// back as given. The entry must be writable (isWritableIniEntry).
std::string setIniValue(std::string_view text, std::string_view group, std::string_view key, std::string_view value);

// `text` without the lines of `key` in `group` (every one, where the key
// repeats). A group left with nothing but blank lines goes with its header;
// one that keeps a comment stays. All else is kept byte for byte, and the
// text comes back as it was when the key is not there.
std::string removeIniValue(std::string_view text, std::string_view group, std::string_view key);

// Calls `visit` (group, key, value) for every value line of `text`, in
// order, with the value as findIniValue reads it.
void forEachIniValue(std::string_view text,
                     const std::function<void(std::string_view, std::string_view, const std::string &)> &visit);


} // namespace vyr

#endif // VYR_UTIL_INIFILE_H
