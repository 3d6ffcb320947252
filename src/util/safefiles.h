// Files that come from strangers - workspaces, feature files, capability
// files - read with bounds and replaced whole.
//
// Reading takes only a regular file of sane size: a directory, a pipe that
// nobody writes to or a device such as /dev/zero is refused at once with a
// reason, never read until the process hangs or runs out of memory.
//
// Replacing writes the new content into a fresh file created exclusively,
// under an unpredictable name, in the folder of the file it replaces, then
// renames it over that file. A link planted under any name in the folder is
// never written through; a failure at any point leaves the old file as it
// was and says why. A symbolic link being saved stays a link: its target
// gets the new content. The file keeps its permissions (and its owner where
// the process may set it); a file nobody may write is refused, even to the
// superuser, as a read-only file is meant to be kept.
#ifndef VYR_UTIL_SAFEFILES_H
#define VYR_UTIL_SAFEFILES_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vyr {

// Larger files are refused by readUntrustedFile unless a caller asks for more.
inline constexpr std::size_t kLargestUntrustedFile = 256u << 20;

// The whole content of the regular file at `path`, or nothing with the
// reason in `error` ("PATH: is a directory", "PATH: No such file or
// directory", ...).
std::optional<std::string> readUntrustedFile(const std::string &path, std::string &error,
                                             std::size_t limit = kLargestUntrustedFile);

// What a symbolic link under the name being saved means: a file the user
// edits is saved into the link's target; a new output such as a picture,
// named in a folder that may be a stranger's, is never written through one.
enum class LinkRule { SaveIntoTarget, Refuse };

// Replaces the content of the file at `path` (created when it does not
// exist) by `content`, as the header says. False with the reason in
// `error`, naming the file; the old file is then untouched.
bool replaceFileContent(const std::string &path, std::string_view content, std::string &error,
                        LinkRule links = LinkRule::SaveIntoTarget);

} // namespace vyr

#endif // VYR_UTIL_SAFEFILES_H
