#include "ftpropsdlg/knownrowtypes.h"

#include <utility>

namespace vyr {

KnownRowTypes::Loaded::~Loaded() = default;

std::size_t KnownRowTypes::rowCount(const OfFormat &format)
{
    return format.told.size() + (format.loaded ? format.loaded->count() : 0);
}

QString KnownRowTypes::nameOf(const OfFormat &format, std::size_t row)
{
    return row < format.told.size() ? format.told[row].first : format.loaded->name(row - format.told.size());
}

QString KnownRowTypes::keyOf(const OfFormat &format, std::size_t row)
{
    return row < format.told.size() ? format.told[row].second.key : loadedGivenOf(format, row - format.told.size()).key;
}

KnownRowTypes::Given KnownRowTypes::loadedGivenOf(const OfFormat &format, std::size_t index)
{
    const auto read = format.loadedGiven.find(index);
    return read != format.loadedGiven.end() ? read->second : format.loaded->given(index);
}

const KnownRowTypes::Given &KnownRowTypes::givenOf(OfFormat &format, std::size_t row)
{
    if (row < format.told.size())
        return format.told[row].second;
    const std::size_t index = row - format.told.size();
    const auto [given, added] = format.loadedGiven.try_emplace(index);
    if (added)
        given->second = format.loaded->given(index);
    return given->second;
}

void KnownRowTypes::note(OfFormat &format, bool byName, std::size_t row)
{
    if (byName && format.byName) {
        format.byName->insert(nameOf(format, row), row);
    } else if (!byName && format.byKey) {
        if (const QString key = keyOf(format, row); !format.byKey->contains(key))
            format.byKey->insert(key, row);
    }
}

const QHash<QString, std::size_t> &KnownRowTypes::rowsBy(OfFormat &format, bool byName)
{
    std::optional<QHash<QString, std::size_t>> &rows = byName ? format.byName : format.byKey;
    if (!rows) {
        rows.emplace();
        rows->reserve(qsizetype(rowCount(format)));
        for (std::size_t row = 0; row < rowCount(format); ++row)
            note(format, byName, row);
    }
    return *rows;
}

void KnownRowTypes::tellLoaded(OfFormat &format)
{
    if (!format.loaded)
        return;
    // The rows keep their numbers, so what was gathered by name and key
    // still holds.
    const std::size_t first = format.told.size();
    const std::size_t count = format.loaded->count();
    format.told.reserve(first + count);
    for (std::size_t index = 0; index < count; ++index)
        format.told.emplace_back(format.loaded->name(index), loadedGivenOf(format, index));
    format.loaded = nullptr;
    format.loadedGiven.clear();
}

void KnownRowTypes::remember(const std::string &formatId, const QString &name, const Given &given)
{
    OfFormat &format = m_formats[formatId];
    // What came later is told after what was loaded.
    tellLoaded(format);
    format.told.emplace_back(name, given);
    note(format, true, format.told.size() - 1);
    note(format, false, format.told.size() - 1);
}

void KnownRowTypes::rememberLoaded(const std::string &formatId, const Loaded &loaded)
{
    OfFormat &format = m_formats[formatId];
    tellLoaded(format);
    format.loaded = &loaded;
    // Gathered again when next asked, with the new rows.
    format.byName.reset();
    format.byKey.reset();
}

const KnownRowTypes::Given *KnownRowTypes::find(const std::string &formatId, bool byName,
                                                const QString &nameOrKey) const
{
    const auto found = m_formats.find(formatId);
    if (found == m_formats.end())
        return nullptr;
    OfFormat &format = found->second;
    const QHash<QString, std::size_t> &rows = rowsBy(format, byName);
    const auto row = rows.constFind(nameOrKey);
    return row == rows.constEnd() ? nullptr : &givenOf(format, *row);
}

const KnownRowTypes::Given *KnownRowTypes::ofName(const std::string &formatId, const QString &name,
                                                  const QString &key) const
{
    const Given *given = find(formatId, true, name);
    return given && given->key == key ? given : nullptr;
}

const KnownRowTypes::Given *KnownRowTypes::ofKey(const std::string &formatId, const QString &key) const
{
    return find(formatId, false, key);
}

} // namespace vyr
