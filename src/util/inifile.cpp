#include "util/inifile.h"

#include "util/asciitext.h"
#include "util/safefiles.h"

#include <vector>

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

namespace {

struct IniLine
{
    std::string_view raw; // with its line break
    std::string_view text; // trimmed, without the break
};

std::vector<IniLine> splitIniLines(std::string_view text)
{
    std::vector<IniLine> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::size_t length = end == std::string_view::npos ? text.size() : end + 1;
        const std::string_view raw = text.substr(0, length);
        lines.push_back({raw, trimWhitespace(raw.substr(0, end == std::string_view::npos ? raw.size() : end))});
        text.remove_prefix(length);
    }
    return lines;
}

bool isComment(std::string_view line)
{
    return !line.empty() && (line.front() == ';' || line.front() == '#');
}

// The group a header line opens, or nothing for any other line.
std::optional<std::string_view> headerGroup(std::string_view line)
{
    if (line.empty() || line.front() != '[')
        return std::nullopt;
    const std::size_t close = line.find(']');
    return trimWhitespace(line.substr(1, close == std::string_view::npos ? line.size() - 1 : close - 1));
}

bool isKeyLine(std::string_view line, std::string_view key)
{
    const std::size_t equals = line.find('=');
    return !isComment(line) && equals != std::string_view::npos
        && equalIgnoringAsciiCase(trimWhitespace(line.substr(0, equals)), key);
}

std::string valueLine(std::string_view key, std::string_view value)
{
    const bool quote = !value.empty()
        && (trimWhitespace(value).size() != value.size()
            || (value.size() >= 2 && value.front() == '"' && value.back() == '"'));
    std::string line(key);
    line += '=';
    if (quote)
        line += '"';
    line += value;
    if (quote)
        line += '"';
    line += '\n';
    return line;
}

} // namespace

bool isWritableIniEntry(std::string_view group, std::string_view key, std::string_view value)
{
    const auto hasBreak = [](std::string_view text) { return text.find_first_of("\r\n") != std::string_view::npos; };
    const std::string_view trimmedKey = trimWhitespace(key);
    return !hasBreak(group) && !hasBreak(key) && !hasBreak(value) && group.find(']') == std::string_view::npos
        && !trimmedKey.empty() && trimmedKey.size() == key.size() && key.find('=') == std::string_view::npos
        && !isComment(trimmedKey) && trimmedKey.front() != '[' && trimWhitespace(group).size() == group.size();
}

std::string setIniValue(std::string_view text, std::string_view group, std::string_view key, std::string_view value)
{
    const std::string_view wanted = group.empty() ? std::string_view("General") : group;
    const std::vector<IniLine> lines = splitIniLines(text);
    std::string_view current = "General";
    std::optional<std::size_t> keyLine;
    std::optional<std::size_t> afterGroupValue; // where a new line of the group goes
    bool groupSeen = sameGroup(current, wanted);
    if (groupSeen)
        afterGroupValue = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (const auto opened = headerGroup(lines[i].text)) {
            current = *opened;
            if (sameGroup(current, wanted)) {
                groupSeen = true;
                afterGroupValue = i + 1;
            }
            continue;
        }
        if (!sameGroup(current, wanted))
            continue;
        if (isKeyLine(lines[i].text, key))
            keyLine = i;
        if (!lines[i].text.empty() && !isComment(lines[i].text))
            afterGroupValue = i + 1;
    }
    std::string result;
    result.reserve(text.size() + key.size() + value.size() + wanted.size() + 8);
    const std::string line = valueLine(key, value);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (keyLine && i == *keyLine) {
            result += line;
            continue;
        }
        if (!keyLine && afterGroupValue && i == *afterGroupValue) {
            if (!result.empty() && result.back() != '\n')
                result += '\n';
            result += line;
        }
        result += lines[i].raw;
    }
    if (keyLine)
        return result;
    if (afterGroupValue && *afterGroupValue < lines.size())
        return result;
    if (!result.empty() && result.back() != '\n')
        result += '\n';
    if (!groupSeen) {
        // No blank line before the new group: removing the group must give
        // back the text as it was.
        result += '[';
        result += wanted;
        result += "]\n";
    }
    result += line;
    return result;
}

std::string removeIniValue(std::string_view text, std::string_view group, std::string_view key)
{
    const std::string_view wanted = group.empty() ? std::string_view("General") : group;
    std::string result;
    result.reserve(text.size());
    // A section of the group is held back until it shows whether anything
    // but its header and blank lines is left of it.
    std::string section;
    bool inWanted = sameGroup("General", wanted);
    bool headed = false;
    bool keeps = false;
    bool removed = false;
    const auto endSection = [&] {
        if (keeps || !headed)
            result += section;
        section.clear();
    };
    for (const IniLine &line : splitIniLines(text)) {
        if (const auto opened = headerGroup(line.text)) {
            endSection();
            inWanted = sameGroup(*opened, wanted);
            headed = true;
            keeps = false;
        } else if (inWanted && isKeyLine(line.text, key)) {
            removed = true;
            continue;
        } else {
            keeps = keeps || !line.text.empty();
        }
        (inWanted ? section : result) += line.raw;
    }
    endSection();
    return removed ? result : std::string(text);
}

void forEachIniValue(std::string_view text,
                     const std::function<void(std::string_view, std::string_view, const std::string &)> &visit)
{
    std::string_view current = "General";
    for (const IniLine &line : splitIniLines(text)) {
        if (const auto opened = headerGroup(line.text)) {
            current = *opened;
            continue;
        }
        const std::size_t equals = line.text.find('=');
        if (isComment(line.text) || equals == std::string_view::npos)
            continue;
        visit(current, trimWhitespace(line.text.substr(0, equals)),
              unquoted(trimWhitespace(line.text.substr(equals + 1))));
    }
}

} // namespace vyr
