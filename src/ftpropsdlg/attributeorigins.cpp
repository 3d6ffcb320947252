#include "ftpropsdlg/attributeorigins.h"

namespace vyr {

void AttributeOrigins::renamed(const std::string &before, const std::string &after,
                               const std::function<bool(const std::string &)> &wasLoaded)
{
    std::string origin;
    if (const auto found = m_originOf.find(before); found != m_originOf.end()) {
        origin = found->second;
        m_originOf.erase(found);
    } else if (!before.empty() && !m_movedAway.contains(before) && wasLoaded(before)) {
        origin = before;
    }
    if (origin.empty()) {
        // A new attribute: whatever the name stood for before, it is this
        // row's now.
        m_originOf.erase(after);
        return;
    }
    if (origin == after) {
        m_movedAway.erase(origin);
        m_originOf.erase(after);
        return;
    }
    m_movedAway.insert(origin);
    m_originOf[after] = origin;
}

AttributeRowIdentities AttributeOrigins::identities(const std::vector<Row> &rows, const StringList &loadedNames) const
{
    AttributeRowIdentities identities;
    for (const std::string &name : loadedNames)
        identities.emplace(name, std::nullopt);
    for (const Row &row : rows) {
        if (row.name.empty())
            continue;
        std::string origin;
        if (row.loaded)
            origin = row.name;
        else if (const auto found = m_originOf.find(row.name); found != m_originOf.end())
            origin = found->second;
        else if (!m_movedAway.contains(row.name))
            origin = row.name;
        const auto identity = identities.find(origin);
        if (identity != identities.end() && !identity->second)
            identity->second = row.name;
    }
    return identities;
}

} // namespace vyr
