#include "frame/ownresources.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

// Outside any namespace, as the resource initialiser is declared there.
static void registerOwnResources()
{
    // The resources are compiled into this static part of the library; the
    // initialiser is called here so that the linker keeps it.
    static const bool registered = [] {
        Q_INIT_RESOURCE(vyrguimfc_own);
        return true;
    }();
    static_cast<void>(registered);
}

namespace vyr {

namespace {

QByteArray readOwn(const QString &name)
{
    registerOwnResources();
    QFile file(QStringLiteral(":/vyrguimfc/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

QString ownString(unsigned id)
{
    static const QJsonObject table = QJsonDocument::fromJson(readOwn(QStringLiteral("strings.json"))).object();
    return table.value(QString::number(id)).toString();
}

QByteArray ownTypeLibrary(unsigned id)
{
    return readOwn(QStringLiteral("typelib/%1.json").arg(id));
}

QByteArray ownDialogTemplate(unsigned id)
{
    return readOwn(QStringLiteral("templates/%1.ui").arg(id));
}

} // namespace vyr
