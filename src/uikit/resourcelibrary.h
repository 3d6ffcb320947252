// The resource library: templates, texts and images by ID, per language.
//
// The library is a Qt binary resource file under the installation directory,
// chosen by the user's language and the build number. The first one that
// loads is kept for the rest of the process; when none loads, every later
// call tries again. Without a library texts are empty, templates and images
// missing, and the dialogs built on them refuse to open.
#ifndef VYR_UIKIT_RESOURCELIBRARY_H
#define VYR_UIKIT_RESOURCELIBRARY_H

#include "util/resourceids.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>
#include <string>
#include <vector>

namespace vyr {

class ResourceLibrary;

// The files tried, in order, for `language` under `baseDirectory` (which gets
// exactly one trailing "/"): res/vyr_res_<build>_<language>.rcc,
// res/vyr_res_<language>.rcc, then res/vyr_res.rcc. Without a language only
// the last.
std::vector<std::string> resourceLibraryCandidates(const std::string &baseDirectory, const std::string &language);

// The loaded library, loading it on first use from `baseDirectory` (the
// installation directory when empty) for the user's language; null when no
// candidate loads. Once loaded, the argument no longer matters.
const ResourceLibrary *loadResourceLibrary(const std::string &baseDirectory = {});

// The text of string `id`, empty when there is none. Each answer, empty or
// not, is kept for the rest of the process.
QString loadResourceString(unsigned id);
// The same in the narrow code page, for the model's texts.
std::string loadNarrowResourceString(unsigned id);

// The text of string `id` with "%1" to "%9" replaced by the inserts in order
// ("%%" gives "%"); an insert that is not given is left as written.
QString formatResourceString(unsigned id, const QStringList &inserts);

// Replaces the inserts of `text` as formatResourceString does.
QString formatInserts(const QString &text, const QStringList &inserts);

// The Designer form of template `id`; null when there is none.
QByteArray loadDialogTemplate(unsigned id);

// The accelerator table `id` (JSON: key sequence to control ID); null when
// there is none.
QByteArray loadAcceleratorTable(unsigned id);

// The resource path (":/...") of bitmap or icon `id`, for QPixmap and QIcon;
// empty when there is none.
QString resourceImagePath(ResourceKind kind, unsigned id);

// One loaded resource file.
class ResourceLibrary
{
public:
    // Registers the file; null when it is not a resource file.
    static std::unique_ptr<ResourceLibrary> open(const std::string &path);
    ~ResourceLibrary();

    ResourceLibrary(const ResourceLibrary &) = delete;
    ResourceLibrary &operator=(const ResourceLibrary &) = delete;

    const std::string &path() const { return m_path; }
    // The string table entry, without any caching; empty when missing.
    QString string(unsigned id) const;
    // Whether the library holds the resource, of any kind.
    bool contains(ResourceKind kind, unsigned id) const;
    // ":/..." path of a resource file of the library.
    QString entryPath(ResourceKind kind, unsigned id) const;

private:
    ResourceLibrary(std::string path, QString root);

    std::string m_path;
    QString m_root;
    QHash<unsigned, QString> m_strings;
};

} // namespace vyr

#endif // VYR_UIKIT_RESOURCELIBRARY_H
