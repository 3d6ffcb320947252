#include "frame/typelibrary.h"

#include "frame/ownresources.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace vyr::com {

namespace {

std::optional<Guid> guidOf(const QJsonObject &object)
{
    return Guid::fromString(object.value(QStringLiteral("uuid")).toString().toStdString());
}

std::string textOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString().toStdString();
}

} // namespace

std::string TypeLibrary::versionText() const
{
    return std::to_string(majorVersion) + "." + std::to_string(minorVersion);
}

std::optional<TypeLibrary> readTypeLibrary(const QByteArray &stored)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(stored, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    const QJsonObject root = document.object();
    const QJsonObject library = root.value(QStringLiteral("library")).toObject();
    TypeLibrary result;
    result.name = textOf(library, "name");
    const std::optional<Guid> libid = guidOf(library);
    const QStringList version = library.value(QStringLiteral("version")).toString().split(u'.');
    bool majorRead = false;
    bool minorRead = version.size() == 1;
    result.majorVersion = version.value(0).toUInt(&majorRead);
    if (version.size() == 2)
        result.minorVersion = version[1].toUInt(&minorRead);
    if (result.name.empty() || !libid || version.size() > 2 || !majorRead || !minorRead)
        return std::nullopt;
    result.libid = *libid;
    result.lcid = static_cast<unsigned>(library.value(QStringLiteral("lcid")).toInt());
    result.helpString = textOf(library, "helpString");
    result.helpFile = textOf(library, "helpFile");

    for (const QJsonValue &value : root.value(QStringLiteral("interfaces")).toArray()) {
        const QJsonObject entry = value.toObject();
        const std::optional<Guid> iid = guidOf(entry);
        if (!iid || textOf(entry, "name").empty())
            return std::nullopt;
        TypeLibraryInterface declared{textOf(entry, "name"), *iid, textOf(entry, "helpString"), {}};
        for (const QJsonValue &method : entry.value(QStringLiteral("methods")).toArray())
            declared.methods.push_back(method.toString().toStdString());
        result.interfaces.push_back(std::move(declared));
    }
    for (const QJsonValue &value : root.value(QStringLiteral("classes")).toArray()) {
        const QJsonObject entry = value.toObject();
        const std::optional<Guid> clsid = guidOf(entry);
        if (!clsid || textOf(entry, "name").empty())
            return std::nullopt;
        result.classes.push_back({textOf(entry, "name"), *clsid, textOf(entry, "helpString")});
    }
    return result;
}

std::optional<TypeLibrary> embeddedTypeLibrary()
{
    return readTypeLibrary(ownTypeLibrary(own::TypeLibrary));
}

} // namespace vyr::com
