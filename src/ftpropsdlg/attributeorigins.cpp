#include "ftpropsdlg/attributeorigins.h"

namespace vyr {

std::string AttributeOrigins::takeOrigin(const std::string &name,
                                         const std::function<bool(const std::string &)> &wasLoaded)
{
    // Of two rows of one name, the one that took it last is taken to be the
    // one that changes: a name typed twice by mistake is mended on the row
    // it was typed on.
    if (const auto held = m_newHolders.find(name); held != m_newHolders.end()) {
        if (--held->second == 0)
            m_newHolders.erase(held);
        return {};
    }
    if (const auto found = m_originOf.find(name); found != m_originOf.end()) {
        std::string origin = std::move(found->second);
        m_originOf.erase(found);
        return origin;
    }
    if (!name.empty() && !m_movedAway.contains(name) && wasLoaded(name))
        return name;
    return {};
}

void AttributeOrigins::renamed(const std::string &before, const std::string &after,
                               const std::function<bool(const std::string &)> &wasLoaded)
{
    const std::string origin = takeOrigin(before, wasLoaded);
    if (origin.empty()) {
        // A new attribute. A reader's names are not made distinct as they
        // are typed: when another row stands for an attribute under this
        // name too, both keep what they stand for.
        const bool held = m_originOf.contains(after) || (!m_movedAway.contains(after) && wasLoaded(after));
        if (!after.empty() && held)
            ++m_newHolders[after];
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

void AttributeOrigins::deleted(const std::string &name, bool loaded,
                               const std::function<bool(const std::string &)> &wasLoaded)
{
    if (name.empty())
        return;
    // An untouched row is its loaded attribute, whatever other rows are
    // called.
    std::string origin = loaded ? name : takeOrigin(name, wasLoaded);
    // Gone with its row: no other row stands for it by name.
    if (!origin.empty())
        m_movedAway.insert(origin);
    m_deleted[name].push_back(std::move(origin));
}

void AttributeOrigins::restored(const std::string &name)
{
    const auto found = m_deleted.find(name);
    if (found == m_deleted.end() || found->second.empty())
        return;
    const std::string origin = std::move(found->second.back());
    found->second.pop_back();
    if (found->second.empty())
        m_deleted.erase(found);
    if (origin.empty() || origin == name) {
        m_originOf.erase(name);
        if (!origin.empty())
            m_movedAway.erase(origin);
        return;
    }
    m_originOf[name] = origin;
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
