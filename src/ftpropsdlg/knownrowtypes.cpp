#include "ftpropsdlg/knownrowtypes.h"

#include <utility>

namespace vyr {

KnownRowTypes::Loaded::~Loaded() = default;

void KnownRowTypes::add(OfFormat &format, const QString &name, const Given &given)
{
    format.byName.insert(name, given);
    if (!format.byKey.contains(given.key))
        format.byKey.insert(given.key, given);
}

void KnownRowTypes::rememberEach(OfFormat &format)
{
    const Loaded *loaded = std::exchange(format.loaded, nullptr);
    if (!loaded)
        return;
    for (std::size_t index = 0; index < loaded->count(); ++index)
        add(format, loaded->name(index), loaded->given(index));
    format.loadedByName.reset();
    format.loadedByKey.reset();
    format.loadedGiven.clear();
}

void KnownRowTypes::remember(const std::string &formatId, const QString &name, const Given &given)
{
    OfFormat &format = m_formats[formatId];
    // What came later is told after what was loaded.
    rememberEach(format);
    add(format, name, given);
}

void KnownRowTypes::rememberLoaded(const std::string &formatId, const Loaded &loaded)
{
    OfFormat &format = m_formats[formatId];
    rememberEach(format);
    format.loaded = &loaded;
}

const KnownRowTypes::Given &KnownRowTypes::loadedGiven(OfFormat &format, std::size_t index) const
{
    const auto [given, added] = format.loadedGiven.try_emplace(index);
    if (added)
        given->second = format.loaded->given(index);
    return given->second;
}

const KnownRowTypes::Given *KnownRowTypes::ofName(const std::string &formatId, const QString &name,
                                                  const QString &key) const
{
    const auto found = m_formats.find(formatId);
    if (found == m_formats.end())
        return nullptr;
    OfFormat &format = found->second;
    if (format.loaded) {
        if (!format.loadedByName) {
            format.loadedByName.emplace();
            format.loadedByName->reserve(qsizetype(format.loaded->count()));
            for (std::size_t index = 0; index < format.loaded->count(); ++index)
                format.loadedByName->insert(format.loaded->name(index), index);
        }
        const auto index = format.loadedByName->constFind(name);
        if (index == format.loadedByName->constEnd())
            return nullptr;
        const Given &given = loadedGiven(format, *index);
        return given.key == key ? &given : nullptr;
    }
    const auto given = format.byName.constFind(name);
    return given != format.byName.constEnd() && given->key == key ? &*given : nullptr;
}

const KnownRowTypes::Given *KnownRowTypes::ofKey(const std::string &formatId, const QString &key) const
{
    const auto found = m_formats.find(formatId);
    if (found == m_formats.end())
        return nullptr;
    OfFormat &format = found->second;
    if (format.loaded) {
        if (!format.loadedByKey) {
            format.loadedByKey.emplace();
            for (std::size_t index = 0; index < format.loaded->count(); ++index) {
                const QString rowKey = format.loaded->given(index).key;
                if (!format.loadedByKey->contains(rowKey))
                    format.loadedByKey->insert(rowKey, index);
            }
        }
        const auto index = format.loadedByKey->constFind(key);
        return index == format.loadedByKey->constEnd() ? nullptr : &loadedGiven(format, *index);
    }
    const auto given = format.byKey.constFind(key);
    return given != format.byKey.constEnd() ? &*given : nullptr;
}

} // namespace vyr
