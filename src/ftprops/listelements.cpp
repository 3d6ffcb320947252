#include "ftprops/listelements.h"

#include "util/numbertext.h"

#include <algorithm>

namespace vyr {

namespace {

// The pattern text that finds `text` as it is written.
std::string literalPattern(std::string_view text)
{
    std::string pattern;
    for (const char c : text) {
        if (std::string_view(".*+?[]^$\\(){}|").find(c) != std::string_view::npos)
            pattern += '\\';
        pattern += c;
    }
    return pattern;
}

std::string_view before(std::string_view name)
{
    return name.substr(0, name.find("{}"));
}

std::string_view after(std::string_view name)
{
    const std::size_t placeholder = name.find("{}");
    return placeholder == std::string_view::npos ? std::string_view() : name.substr(placeholder + 2);
}

} // namespace

ListElements::ListElements(std::string_view listName)
    : m_prefix(before(listName))
    , m_suffix(after(listName))
    , m_element(literalPattern(m_prefix) + "{[0-9]+}" + literalPattern(m_suffix))
{}

bool ListElements::isElement(std::string_view name) const
{
    // Most names of a large schema share nothing with the list's: a plain
    // search turns them away before the pattern runs.
    const std::size_t start = name.find(m_prefix);
    if (start == std::string_view::npos || name.find('{', start + m_prefix.size()) == std::string_view::npos)
        return false;
    return m_element.foundIn(name);
}

std::optional<std::uint32_t> ListElements::indexOf(std::string_view name) const
{
    static const Pattern number("{[0-9]+}");
    if (!isElement(name))
        return std::nullopt;
    const auto braces = number.find(name);
    std::uint32_t index = 0;
    if (!braces || !parseUnsigned(name.substr(braces->begin + 1, braces->end - braces->begin - 2), index))
        return std::nullopt;
    return index;
}

std::string ListElements::elementName(std::uint32_t index) const
{
    return m_prefix + "{" + numberText(index) + "}" + m_suffix;
}

int ListElements::countIn(const StringList &names) const
{
    long long count = 0;
    for (const std::string &name : names) {
        if (const auto index = indexOf(name))
            count = std::max(count, static_cast<long long>(*index) + 1);
    }
    // A count the page's two digits cannot show is still a count.
    return static_cast<int>(std::min<long long>(count, 1LL << 30));
}

} // namespace vyr
