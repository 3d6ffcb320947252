// Validation scripts: Tcl files a format names, which run only from the
// installation's metafile/ folder.
//
// A format's capability file travels with workspaces and is not trusted, so
// the script it names must be a plain file name there: no folder separator,
// not "." or "..", and no character that Tcl would read as more than part of
// a name (braces, brackets, backslash, "$", quotes, blanks at the ends,
// control characters). The file must be a regular file whose real path,
// links resolved, stays inside the folder, and the folder's own path must
// hold no brace or backslash.
#ifndef VYR_UTIL_INSTALLEDSCRIPTS_H
#define VYR_UTIL_INSTALLEDSCRIPTS_H

#include <optional>
#include <string>
#include <string_view>

namespace vyr {

// The installation's script folder: getInstallDirectory() + "metafile/".
std::string installedScriptFolder();

// Nothing when `name` may run as a validation script; otherwise why not.
std::optional<std::string> refuseScriptName(std::string_view name);

// Whether `path`, links resolved, is a regular file inside the script
// folder.
bool isInstalledScript(const std::string &path);

// How long scripts may run, in seconds: $VYR_TCL_SECONDS when it is a
// positive number (at most 3600), else 10. The engine stops one evaluation at this limit;
// a name resolution, however many passes it takes, stops there too.
long scriptSecondsLimit();

} // namespace vyr

#endif // VYR_UTIL_INSTALLEDSCRIPTS_H
