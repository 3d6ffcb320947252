// The formats the engine knows: every capability file "*.fmt" in the
// installation directory's formats/ folder, read once.
//
// What the session answers about a format (kVyrSessionPropFormatInfo):
// FORMAT_NAME, FORMAT_TYPE (the file's FORMAT_TYPE key; "FILE" when it has
// none), FORMAT_ROLE ("READER" or "WRITER" by its SOURCE key) and
// CAPABILITY_FILE (the file's path).
#ifndef VYR_ENGINE_FORMATREGISTRY_H
#define VYR_ENGINE_FORMATREGISTRY_H

#include <map>
#include <string>
#include <vector>

namespace vyr::engine {

struct FormatEntry
{
    std::string name;
    std::string type;
    bool isSource = true;
    std::string capabilityFile;
};

class FormatRegistry
{
public:
    // Reads every capability file of `folder`; files without FORMAT are
    // skipped, and of two files naming one format the first by file name wins.
    explicit FormatRegistry(const std::string &folder);

    const FormatEntry *find(const std::string &name) const;
    // The answer pairs for a format: name, value, name, value ...
    std::vector<std::string> properties(const FormatEntry &entry) const;

private:
    std::map<std::string, FormatEntry> m_formats;
};

} // namespace vyr::engine

#endif // VYR_ENGINE_FORMATREGISTRY_H
