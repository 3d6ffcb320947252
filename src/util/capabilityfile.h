// Format capability files: a format's capability string written for people.
//
// One KEY,VALUE pair per line is the usual layout; the lines are joined with
// commas, so a file may also hold several pairs on a line or one long line.
// Lines starting with "#" (after blanks) are comments; blank lines and
// trailing carriage returns are ignored. Values holding commas are quoted
// with double quotes, quotes inside doubled, as in the capability string:
//
//   # A writer of fixed-width attribute tables.
//   FORMAT,DBASE
//   SOURCE,no
//   DATA_TYPE_MAPPINGS,"char(width),vyr_char,""number(width,decimal)"",vyr_decimal"
#ifndef VYR_UTIL_CAPABILITYFILE_H
#define VYR_UTIL_CAPABILITYFILE_H

#include <optional>
#include <string>
#include <string_view>

namespace vyr {

// The capability string of a capability file's text.
std::string capabilityStringOf(std::string_view fileText);

// The capability string of the file at `path`; nothing when it cannot be
// read, with the reason in `error` when given. Only a regular file of sane
// size is read.
std::optional<std::string> readCapabilityFile(const std::string &path, std::string *error = nullptr);

} // namespace vyr

#endif // VYR_UTIL_CAPABILITYFILE_H
