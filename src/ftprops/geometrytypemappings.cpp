#include "ftprops/geometrytypemappings.h"

#include <algorithm>
#include <functional>

namespace vyr {

std::size_t GeometryTypeMappings::PairHash::operator()(const Pair &pair) const
{
    const std::hash<std::string> hash;
    return hash(pair.first) * 31 + hash(pair.second);
}

void GeometryTypeMappings::add(std::string_view native, std::string_view generic)
{
    Pair pair{std::string(native), std::string(generic)};
    if (!m_known.insert(pair).second)
        return;
    m_pairs.push_back(std::move(pair));
    const Pair &added = m_pairs.back();
    m_byNative.try_emplace(added.first, m_pairs.size() - 1);
    m_byGeneric.try_emplace(added.second, m_pairs.size() - 1);
}

std::string GeometryTypeMappings::map(const NameMap &names,
                                      const std::vector<std::pair<std::string, std::string>> &pairs, bool toGenericSide,
                                      std::string_view text, bool several)
{
    const auto one = [&](std::string_view name) {
        const auto found = names.find(std::string(name));
        if (found == names.end())
            return std::string();
        const auto &pair = pairs[found->second];
        return toGenericSide ? pair.second : pair.first;
    };
    const std::size_t blank = text.find(' ');
    if (blank == std::string_view::npos)
        return one(text);
    if (!several)
        return one(text.substr(0, blank));
    std::string mapped;
    constexpr std::string_view kSeparators = " \t\n";
    std::size_t start = text.find_first_not_of(kSeparators);
    while (start != std::string_view::npos) {
        const std::size_t end = std::min(text.find_first_of(kSeparators, start), text.size());
        mapped += one(text.substr(start, end - start)) + " ";
        start = text.find_first_not_of(kSeparators, end);
    }
    return mapped;
}

std::string GeometryTypeMappings::toNative(std::string_view text, bool several) const
{
    return map(m_byGeneric, m_pairs, false, text, several);
}

std::string GeometryTypeMappings::toGeneric(std::string_view text, bool several) const
{
    return map(m_byNative, m_pairs, true, text, several);
}

} // namespace vyr
