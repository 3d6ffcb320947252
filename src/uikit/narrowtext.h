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

inline QString fromNarrow(std::string_view text)
{
    return QString::fromStdString(ansiToUtf8(text));
}

inline std::string toNarrow(const QString &text)
{
    return utf8ToAnsi(text.toStdString());
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
