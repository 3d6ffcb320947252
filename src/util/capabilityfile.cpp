#include "util/capabilityfile.h"

#include "util/asciitext.h"

#include <fstream>
#include <iterator>

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

std::optional<std::string> readCapabilityFile(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    return capabilityStringOf(text);
}

} // namespace vyr
