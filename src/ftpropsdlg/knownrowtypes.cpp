#include "ftpropsdlg/knownrowtypes.h"

namespace vyr {

void KnownRowTypes::remember(const std::string &formatId, const QString &name, const QString &key,
                             const AttributeTypeTexts &texts)
{
    OfFormat &format = m_formats[formatId];
    format.byName.insert(name, {key, texts});
    if (!format.byKey.contains(key))
        format.byKey.insert(key, texts);
}

const AttributeTypeTexts *KnownRowTypes::ofName(const std::string &formatId, const QString &name,
                                                const QString &key) const
{
    const auto format = m_formats.find(formatId);
    if (format == m_formats.end())
        return nullptr;
    const auto given = format->second.byName.constFind(name);
    return given != format->second.byName.constEnd() && given->key == key ? &given->texts : nullptr;
}

const AttributeTypeTexts *KnownRowTypes::ofKey(const std::string &formatId, const QString &key) const
{
    const auto format = m_formats.find(formatId);
    if (format == m_formats.end())
        return nullptr;
    const auto texts = format->second.byKey.constFind(key);
    return texts != format->second.byKey.constEnd() ? &*texts : nullptr;
}

} // namespace vyr
