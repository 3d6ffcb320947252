#include "ftpropsdlg/knownrowtypes.h"

namespace vyr {

void KnownRowTypes::remember(const std::string &formatId, const QString &name, const Given &given)
{
    OfFormat &format = m_formats[formatId];
    format.byName.insert(name, given);
    if (!format.byKey.contains(given.key))
        format.byKey.insert(given.key, given);
}

const KnownRowTypes::Given *KnownRowTypes::ofName(const std::string &formatId, const QString &name,
                                                  const QString &key) const
{
    const auto format = m_formats.find(formatId);
    if (format == m_formats.end())
        return nullptr;
    const auto given = format->second.byName.constFind(name);
    return given != format->second.byName.constEnd() && given->key == key ? &*given : nullptr;
}

const KnownRowTypes::Given *KnownRowTypes::ofKey(const std::string &formatId, const QString &key) const
{
    const auto format = m_formats.find(formatId);
    if (format == m_formats.end())
        return nullptr;
    const auto given = format->second.byKey.constFind(key);
    return given != format->second.byKey.constEnd() ? &*given : nullptr;
}

} // namespace vyr
