#include "ftprops/formatcapabilities.h"

#include "util/capabilityvalues.h"

namespace vyr {

FormatCapabilities::FormatCapabilities(std::string_view capabilities)
{
    StringList elements = csvSplit(capabilities, ',');
    // An unpaired last element is a key without a value.
    for (std::size_t i = 0; i + 1 < elements.size(); i += 2)
        m_values[std::move(elements[i])] = std::move(elements[i + 1]);
}

std::string FormatCapabilities::text(const std::string &key) const
{
    const auto found = m_values.find(key);
    return found == m_values.end() ? std::string() : found->second;
}

bool FormatCapabilities::flag(const std::string &key, bool fallback) const
{
    return capabilityFlag(text(key)).value_or(fallback);
}

int FormatCapabilities::integer(const std::string &key) const
{
    return leadingInteger(text(key));
}

StringList FormatCapabilities::list(const std::string &key) const
{
    return csvSplit(text(key), ',');
}

} // namespace vyr
