// The elements of a format list attribute. A format attribute whose name
// holds "{}" ("points{}.x") stands for a list: its elements are the names
// with an index in the braces ("points{0}.x", "points{1}.x" ...). The name
// is read as it is written; only its first "{}" stands for the index.
#ifndef VYR_FTPROPS_LISTELEMENTS_H
#define VYR_FTPROPS_LISTELEMENTS_H

#include "util/listpacking.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vyr {

class ListElements
{
public:
    // Whether `name` is a list attribute.
    static bool isList(std::string_view name) { return name.find("{}") != std::string_view::npos; }

    // `listName` must be a list attribute.
    explicit ListElements(std::string_view listName);

    // Whether `name` is an element of the list.
    bool isElement(std::string_view name) const;
    // The index of an element, read from the first braces with digits in
    // it; nothing for a name that is no element, or whose index is too
    // large to read.
    std::optional<std::uint32_t> indexOf(std::string_view name) const;
    // The element with `index`.
    std::string elementName(std::uint32_t index) const;
    // How many elements `names` show: the largest index + 1, or 0.
    int countIn(const StringList &names) const;

private:
    std::string m_prefix;
    std::string m_suffix;
};

// Whether `name` is one of `formatAttributes` (a format's own attribute
// names), or an element ("part{3}.x") of one of its list attributes
// ("part{}.x").
bool IsFormatAttribute(const StringList &formatAttributes, std::string_view name);

} // namespace vyr

#endif // VYR_FTPROPS_LISTELEMENTS_H
