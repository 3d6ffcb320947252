// KnownRowTypes: the types the User Attributes page's rows were given
// without a person choosing them - as the schema held them, or as a move to
// another format carried them - so that such a row is written back in
// exactly those texts, whatever the format reads of them.
//
// A row is known by what its type columns show (its key), per format:
// first as the attribute of its name had it, else as any row that showed
// the same (a new row takes the type of the row above).
#ifndef VYR_FTPROPSDLG_KNOWNROWTYPES_H
#define VYR_FTPROPSDLG_KNOWNROWTYPES_H

#include "ftprops/schemamove.h"

#include <QHash>
#include <QString>

#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vyr {

class KnownRowTypes
{
public:
    // What a row was given, and whether it is written as it is, unchecked
    // (as the schema held it, or a type the format has no word for), or
    // checked as if chosen (a move gave it a type of the format's, which may
    // want what the old one did not have, a domain say).
    struct Given
    {
        QString key;
        AttributeTypeTexts texts;
        bool asItIs = true;
    };

    // The rows a page loaded in a format, in row order, as remember would
    // have been told of each in turn; each is read only when a question
    // needs it.
    class Loaded
    {
    public:
        virtual ~Loaded();
        virtual std::size_t count() const = 0;
        virtual QString name(std::size_t index) const = 0;
        virtual Given given(std::size_t index) const = 0;
    };

    void remember(const std::string &formatId, const QString &name, const Given &given);
    // Before any remember of the format; `loaded` must outlive this.
    void rememberLoaded(const std::string &formatId, const Loaded &loaded);
    // What the attribute `name` was given in the format, when its columns
    // still show `key`.
    const Given *ofName(const std::string &formatId, const QString &name, const QString &key) const;
    // What the first row that showed `key` in the format was given.
    const Given *ofKey(const std::string &formatId, const QString &key) const;

private:
    // A format's rows in the order they were told: those told one by one,
    // then those loaded and not yet told (each read only when a question
    // needs it). A row is found by its number among them.
    struct OfFormat
    {
        std::vector<std::pair<QString, Given>> told;
        const Loaded *loaded = nullptr;
        // The loaded rows' Givens read so far, by their number among them.
        std::unordered_map<std::size_t, Given> loadedGiven;
        // The rows by name and by key, gathered when first asked.
        std::optional<QHash<QString, std::size_t>> byName;
        std::optional<QHash<QString, std::size_t>> byKey;
    };
    static std::size_t rowCount(const OfFormat &format);
    static QString nameOf(const OfFormat &format, std::size_t row);
    static QString keyOf(const OfFormat &format, std::size_t row);
    static const Given &givenOf(OfFormat &format, std::size_t row);
    // A loaded row's Given by its number among the loaded rows: as read
    // before, or read now without being kept.
    static Given loadedGivenOf(const OfFormat &format, std::size_t index);
    // The rule: a name is known by its last row, a key by its first.
    static void note(OfFormat &format, bool byName, std::size_t row);
    static const QHash<QString, std::size_t> &rowsBy(OfFormat &format, bool byName);
    // The row `key` or `name` finds in the format, if any.
    const Given *find(const std::string &formatId, bool byName, const QString &nameOrKey) const;
    // Tells the loaded rows one by one, as remember.
    static void tellLoaded(OfFormat &format);
    mutable std::unordered_map<std::string, OfFormat> m_formats;
};

} // namespace vyr

#endif // VYR_FTPROPSDLG_KNOWNROWTYPES_H
