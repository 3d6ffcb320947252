// Temporary files: where they go and how they are named.
//
// Names are made from a template whose trailing "X"s are dropped, the time in
// seconds and milliseconds and the process ID, so that a name says who made
// it and when: "/tmp/lh-dlg-1763884800123_4711". A name that is taken gets
// "_" and a counter that grows for the rest of the process.
#ifndef VYR_UTIL_TEMPFILES_H
#define VYR_UTIL_TEMPFILES_H

#include <string>
#include <string_view>

namespace vyr {

// The first of $VYR_TEMP, $TEMP and $TMPDIR that names an existing
// directory, else "/tmp". Chosen on first use and then kept.
const std::string &getTempDirectory();

// The first of the same choices, looked at afresh; getTempDirectory keeps it.
std::string resolveTempDirectory();

// A path in `directory` (the temporary directory when empty) that names
// nothing yet, not even a dangling symbolic link. The template defaults to
// "VYR_XXXXXX"; `suffix` (say ".txt") ends the name. Empty when names
// cannot be looked at there (a folder that cannot be searched, or a file in
// its place).
std::string makeTempName(const std::string &directory, const std::string &nameTemplate, const std::string &suffix);

// Makes a name as makeTempName does and creates the file holding `content`,
// readable by its owner only. The file is created exclusively and written
// through the descriptor that created it: a file or symbolic link that
// appears under the name in the meantime is never opened, and the next name
// is tried instead. Empty when no file could be created or written.
std::string createTempFile(const std::string &directory, const std::string &nameTemplate, const std::string &suffix,
                           std::string_view content = {});

} // namespace vyr

#endif // VYR_UTIL_TEMPFILES_H
