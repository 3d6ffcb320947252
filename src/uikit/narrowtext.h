// Text between the model, which speaks the process's narrow code page, and
// Qt's widgets, which speak UTF-16.
#ifndef VYR_UIKIT_NARROWTEXT_H
#define VYR_UIKIT_NARROWTEXT_H

#include "util/stringconverter.h"

#include <QString>
#include <QStringList>

#include <string>
#include <string_view>
#include <vector>

namespace vyr {

// Whatever the bytes, toNarrow(fromNarrow(x)) == x: bytes the code page
// cannot read travel as lone surrogates (util/stringconverter.h). The copies
// are verbatim; Qt's own UTF-8 and UTF-16 readers would drop a byte-order
// mark and replace lone surrogates.
inline QString fromNarrow(std::string_view text)
{
    const std::u16string wide = ansiToWide(text);
    return QString(reinterpret_cast<const QChar *>(wide.data()), static_cast<qsizetype>(wide.size()));
}

inline std::string toNarrow(const QString &text)
{
    return wideToAnsi(std::u16string_view(reinterpret_cast<const char16_t *>(text.utf16()),
                                          static_cast<std::size_t>(text.size())));
}

inline QStringList fromNarrowList(const std::vector<std::string> &texts)
{
    QStringList list;
    list.reserve(static_cast<qsizetype>(texts.size()));
    for (const std::string &text : texts)
        list.append(fromNarrow(text));
    return list;
}

} // namespace vyr

#endif // VYR_UIKIT_NARROWTEXT_H
