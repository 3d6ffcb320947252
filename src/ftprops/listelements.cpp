#include "ftprops/listelements.h"

#include "util/numbertext.h"

#include <algorithm>

namespace vyr {

namespace {

std::string_view before(std::string_view name)
{
    return name.substr(0, name.find("{}"));
}

std::string_view after(std::string_view name)
{
    const std::size_t placeholder = name.find("{}");
    return placeholder == std::string_view::npos ? std::string_view() : name.substr(placeholder + 2);
}

// The end of "{digits}" at `at` (one or more digits), or npos.
std::size_t indexEnd(std::string_view name, std::size_t at)
{
    if (at >= name.size() || name[at] != '{')
        return std::string_view::npos;
    std::size_t end = at + 1;
    while (end < name.size() && name[end] >= '0' && name[end] <= '9')
        ++end;
    return end > at + 1 && end < name.size() && name[end] == '}' ? end + 1 : std::string_view::npos;
}

} // namespace

ListElements::ListElements(std::string_view listName)
    : m_prefix(before(listName))
    , m_suffix(after(listName))
{}

bool ListElements::isElement(std::string_view name) const
{
    // Anywhere in the name: the prefix, an index in braces, the suffix. A
    // search by hand, since the pages ask this of every name of schemas of
    // thousands for each of dozens of lists.
    for (std::size_t start = name.find(m_prefix); start != std::string_view::npos;
         start = name.find(m_prefix, start + 1)) {
        const std::size_t end = indexEnd(name, start + m_prefix.size());
        if (end != std::string_view::npos && name.substr(end).starts_with(m_suffix))
            return true;
    }
    return false;
}

std::optional<std::uint32_t> ListElements::indexOf(std::string_view name) const
{
    if (!isElement(name))
        return std::nullopt;
    // The first index in braces of the name, wherever the element was found.
    for (std::size_t at = name.find('{'); at != std::string_view::npos; at = name.find('{', at + 1)) {
        if (const std::size_t end = indexEnd(name, at); end != std::string_view::npos) {
            std::uint32_t index = 0;
            if (!parseUnsigned(name.substr(at + 1, end - at - 2), index))
                return std::nullopt;
            return index;
        }
    }
    return std::nullopt;
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

bool IsFormatAttribute(const StringList &formatAttributes, std::string_view name)
{
    return std::any_of(formatAttributes.begin(), formatAttributes.end(), [name](const std::string &candidate) {
        return candidate == name || (ListElements::isList(candidate) && ListElements(candidate).isElement(name));
    });
}

} // namespace vyr
