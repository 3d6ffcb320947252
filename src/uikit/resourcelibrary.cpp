#include "uikit/resourcelibrary.h"

#include "util/installdir.h"
#include "util/numbertext.h"
#include "uikit/narrowtext.h"
#include "uikit/resourcelibrary_p.h"
#include "util/userlanguage.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QResource>

#include <unordered_map>

namespace vyr {

namespace {

struct ResourceState
{
    std::unique_ptr<ResourceLibrary> library;
    std::unordered_map<unsigned, QString> strings;
};

ResourceState &state()
{
    // Never destroyed: dialogs may still ask for texts while the process ends.
    static ResourceState *resources = new ResourceState;
    return *resources;
}

QString folderOf(ResourceKind kind)
{
    switch (kind) {
    case ResourceKind::String: return QStringLiteral("strings.json");
    case ResourceKind::Template: return QStringLiteral("templates/%1.ui");
    case ResourceKind::Bitmap: return QStringLiteral("bitmaps/%1.png");
    case ResourceKind::Icon: return QStringLiteral("icons/%1.png");
    case ResourceKind::Accelerators: return QStringLiteral("accelerators/%1.json");
    }
    return {};
}

QByteArray readEntry(ResourceKind kind, unsigned id)
{
    const ResourceLibrary *library = loadResourceLibrary();
    if (!library || !library->contains(kind, id))
        return {};
    QFile file(library->entryPath(kind, id));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

std::vector<std::string> resourceLibraryCandidates(const std::string &baseDirectory, const std::string &language)
{
    std::string base = baseDirectory;
    while (!base.empty() && base.back() == '/')
        base.pop_back();
    if (!baseDirectory.empty())
        base += '/';
    std::vector<std::string> candidates;
    if (!language.empty()) {
        candidates.push_back(base + "res/vyr_res_" + numberText(kBuildNumber) + "_" + language + ".rcc");
        candidates.push_back(base + "res/vyr_res_" + language + ".rcc");
    }
    candidates.push_back(base + "res/vyr_res.rcc");
    return candidates;
}

const ResourceLibrary *loadResourceLibrary(const std::string &baseDirectory)
{
    ResourceState &resources = state();
    if (resources.library)
        return resources.library.get();
    const std::string base = baseDirectory.empty() ? getInstallDirectory() : baseDirectory;
    for (const std::string &candidate : resourceLibraryCandidates(base, userLanguage())) {
        if ((resources.library = ResourceLibrary::open(candidate)))
            break;
    }
    return resources.library.get();
}

QString loadResourceString(unsigned id)
{
    auto &strings = state().strings;
    if (const auto cached = strings.find(id); cached != strings.end())
        return cached->second;
    const ResourceLibrary *library = loadResourceLibrary();
    return strings.emplace(id, library ? library->string(id) : QString()).first->second;
}

std::string loadNarrowResourceString(unsigned id)
{
    return toNarrow(loadResourceString(id));
}

QString formatInserts(const QString &text, const QStringList &inserts)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar next = i + 1 < text.size() ? text[i + 1] : QChar();
        if (text[i] == u'%' && next == u'%') {
            result += u'%';
            ++i;
        } else if (text[i] == u'%' && next >= u'1' && next <= u'9' && next.unicode() - u'1' < inserts.size()) {
            result += inserts[next.unicode() - u'1'];
            ++i;
        } else {
            result += text[i];
        }
    }
    return result;
}

QString formatResourceString(unsigned id, const QStringList &inserts)
{
    return formatInserts(loadResourceString(id), inserts);
}

QByteArray loadDialogTemplate(unsigned id)
{
    return readEntry(ResourceKind::Template, id);
}

QByteArray loadAcceleratorTable(unsigned id)
{
    return readEntry(ResourceKind::Accelerators, id);
}

QString resourceImagePath(ResourceKind kind, unsigned id)
{
    const ResourceLibrary *library = loadResourceLibrary();
    return library && library->contains(kind, id) ? library->entryPath(kind, id) : QString();
}

std::unique_ptr<ResourceLibrary> ResourceLibrary::open(const std::string &path)
{
    // Each library gets its own root, so an unloaded one leaves no entries
    // behind that a later one could be mistaken for.
    static unsigned generation = 0;
    const QString root = QStringLiteral("/vyr_res/%1").arg(++generation);
    const QString file = QString::fromLocal8Bit(path.c_str());
    if (!QFile::exists(file) || !QResource::registerResource(file, root))
        return nullptr;
    return std::unique_ptr<ResourceLibrary>(new ResourceLibrary(path, root));
}

ResourceLibrary::ResourceLibrary(std::string path, QString root)
    : m_path(std::move(path))
    , m_root(std::move(root))
{
    QFile table(entryPath(ResourceKind::String, 0));
    if (!table.open(QIODevice::ReadOnly))
        return;
    const QJsonObject strings = QJsonDocument::fromJson(table.readAll()).object();
    for (auto it = strings.begin(); it != strings.end(); ++it) {
        bool isNumber = false;
        const unsigned id = it.key().toUInt(&isNumber);
        if (isNumber && it.value().isString())
            m_strings.insert(id, it.value().toString());
    }
}

ResourceLibrary::~ResourceLibrary()
{
    QResource::unregisterResource(QString::fromLocal8Bit(m_path.c_str()), m_root);
}

QString ResourceLibrary::string(unsigned id) const
{
    return m_strings.value(id);
}

bool ResourceLibrary::contains(ResourceKind kind, unsigned id) const
{
    return kind == ResourceKind::String ? m_strings.contains(id) : QFile::exists(entryPath(kind, id));
}

QString ResourceLibrary::entryPath(ResourceKind kind, unsigned id) const
{
    const QString entry = folderOf(kind);
    return QStringLiteral(":") + m_root + u'/' + (kind == ResourceKind::String ? entry : entry.arg(id));
}

namespace detail {

void forgetResourceLibrary()
{
    state().library.reset();
    state().strings.clear();
}

} // namespace detail

} // namespace vyr
