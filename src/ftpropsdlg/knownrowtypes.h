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

#include <string>
#include <unordered_map>

namespace vyr {

class KnownRowTypes
{
public:
    void remember(const std::string &formatId, const QString &name, const QString &key,
                  const AttributeTypeTexts &texts);
    // What the attribute `name` was given in the format, when its columns
    // still show `key`.
    const AttributeTypeTexts *ofName(const std::string &formatId, const QString &name, const QString &key) const;
    // What the first row that showed `key` in the format was given.
    const AttributeTypeTexts *ofKey(const std::string &formatId, const QString &key) const;

private:
    struct Given
    {
        QString key;
        AttributeTypeTexts texts;
    };
    struct OfFormat
    {
        QHash<QString, Given> byName;
        QHash<QString, AttributeTypeTexts> byKey;
    };
    std::unordered_map<std::string, OfFormat> m_formats;
};

} // namespace vyr

#endif // VYR_FTPROPSDLG_KNOWNROWTYPES_H
