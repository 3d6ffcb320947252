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

    void remember(const std::string &formatId, const QString &name, const Given &given);
    // What the attribute `name` was given in the format, when its columns
    // still show `key`.
    const Given *ofName(const std::string &formatId, const QString &name, const QString &key) const;
    // What the first row that showed `key` in the format was given.
    const Given *ofKey(const std::string &formatId, const QString &key) const;

private:
    struct OfFormat
    {
        QHash<QString, Given> byName;
        QHash<QString, Given> byKey;
    };
    std::unordered_map<std::string, OfFormat> m_formats;
};

} // namespace vyr

#endif // VYR_FTPROPSDLG_KNOWNROWTYPES_H
