#include "util/capabilityfile.h"

#include "util/asciitext.h"
#include "util/safefiles.h"

namespace vyr {

std::string capabilityStringOf(std::string_view fileText)
{
    std::string joined;
    while (!fileText.empty()) {
        const std::size_t end = fileText.find('\n');
        const std::string_view line = trimWhitespace(fileText.substr(0, end));
        fileText = end == std::string_view::npos ? std::string_view() : fileText.substr(end + 1);
        if (line.empty() || line.front() == '#')
            continue;
        if (!joined.empty())
            joined += ',';
        joined += line;
    }
    return joined;
}

std::optional<std::string> readCapabilityFile(const std::string &path, std::string *error)
{
    std::string reason;
    const std::optional<std::string> text = readUntrustedFile(path, reason);
    if (!text) {
        if (error)
            *error = reason;
        return std::nullopt;
    }
    return capabilityStringOf(*text);
}

} // namespace vyr
