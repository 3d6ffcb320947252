#include "util/inifile.h"

#include "util/asciitext.h"
#include "util/safefiles.h"

namespace vyr {

namespace {

// "BUILD\6233" and "BUILD/6233" name the same group.
bool sameGroup(std::string_view a, std::string_view b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const char x = a[i] == '\\' ? '/' : a[i];
        const char y = b[i] == '\\' ? '/' : b[i];
        if (lowerAscii(x) != lowerAscii(y))
            return false;
    }
    return true;
}

std::string unquoted(std::string_view value)
{
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
        value = value.substr(1, value.size() - 2);
    return std::string(value);
}

} // namespace

std::optional<std::string> findIniValue(std::string_view text, std::string_view group, std::string_view key)
{
    const std::string_view wantedGroup = group.empty() ? std::string_view("General") : group;
    std::string_view currentGroup = "General";
    std::optional<std::string> found;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = trimWhitespace(text.substr(0, end));
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        if (line.empty() || line.front() == ';' || line.front() == '#')
            continue;
        if (line.front() == '[') {
            const std::size_t close = line.find(']');
            currentGroup
                = trimWhitespace(line.substr(1, close == std::string_view::npos ? line.size() - 1 : close - 1));
            continue;
        }
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos || !sameGroup(currentGroup, wantedGroup))
            continue;
        if (equalIgnoringAsciiCase(trimWhitespace(line.substr(0, equals)), key))
            found = unquoted(trimWhitespace(line.substr(equals + 1)));
    }
    return found;
}

std::optional<std::string> readIniFileValue(const std::string &path, std::string_view group, std::string_view key)
{
    std::string reason;
    const std::optional<std::string> text = readUntrustedFile(path, reason);
    if (!text)
        return std::nullopt;
    return findIniValue(*text, group, key);
}

} // namespace vyr
