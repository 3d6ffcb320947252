// GeometryTypeMappings: a format's geometry names and their generic
// equivalents ("vyr_point", "vyr_line" ...), in the order the format gives
// them. When a name occurs in several pairs, the first pair that named it
// answers for it; an identical pair given twice is kept once.
#ifndef VYR_FTPROPS_GEOMETRYTYPEMAPPINGS_H
#define VYR_FTPROPS_GEOMETRYTYPEMAPPINGS_H

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace vyr {

class GeometryTypeMappings
{
public:
    void add(std::string_view native, std::string_view generic);

    // A generic name as the format's own, a name without a mapping becoming
    // empty. A text holding a blank is mapped in its first word only, unless
    // `several`: then each word separated by blanks, tabs or line feeds is
    // mapped and followed by one blank.
    std::string toNative(std::string_view text, bool several) const;
    // The same for a native name as a generic one.
    std::string toGeneric(std::string_view text, bool several) const;

    const std::vector<std::pair<std::string, std::string>> &pairs() const { return m_pairs; }

private:
    using NameMap = std::unordered_map<std::string, std::size_t>;
    using Pair = std::pair<std::string, std::string>;
    struct PairHash
    {
        std::size_t operator()(const Pair &pair) const;
    };

    static std::string map(const NameMap &names, const std::vector<std::pair<std::string, std::string>> &pairs,
                           bool toGenericSide, std::string_view text, bool several);

    std::vector<std::pair<std::string, std::string>> m_pairs;
    NameMap m_byNative;
    NameMap m_byGeneric;
    // Every pair kept, so that a pair given again is known at once.
    std::unordered_set<Pair, PairHash> m_known;
};

} // namespace vyr

#endif // VYR_FTPROPS_GEOMETRYTYPEMAPPINGS_H
