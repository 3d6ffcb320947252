// Every resource the code asks the resource library for.
//
// One row per resource: kind, ID, name. A dialog that needs a new template,
// text or image adds a row here and the files under resources/<language>/;
// the resource tests check every row in every language's library, so a
// resource cannot be missing from one of them unnoticed.
//
// Files in a language's folder: strings.json (ID to text), templates/<ID>.ui,
// bitmaps/<ID>.png, icons/<ID>.png and accelerators/<ID>.json.
#ifndef VYR_UTIL_RESOURCEIDS_H
#define VYR_UTIL_RESOURCEIDS_H

namespace vyr {

enum class ResourceKind { String, Template, Bitmap, Icon, Accelerators };

#define VYR_RESOURCE_TABLE(X)                                                                                          \
    X(Icon, 128, ApplicationIcon)                                                                                      \
    X(Template, 130, AboutDialog)                                                                                      \
    X(String, 131, AboutBuild)                                                                                         \
    X(String, 132, AboutInstallDirectory)                                                                              \
    X(String, 133, AboutResourceLibrary)                                                                               \
    X(String, 134, AboutLanguage)                                                                                      \
    X(String, 135, AboutNoResourceLibrary)                                                                             \
    X(Accelerators, 136, AboutAccelerators)                                                                            \
    X(String, 59534, DomainRequired)

namespace res {
#define VYR_RESOURCE_ID(kind, id, name) inline constexpr unsigned name = id;
VYR_RESOURCE_TABLE(VYR_RESOURCE_ID)
#undef VYR_RESOURCE_ID
} // namespace res

struct ResourceEntry
{
    ResourceKind kind;
    unsigned id;
    const char *name;
};

inline constexpr ResourceEntry kResourceTable[] = {
#define VYR_RESOURCE_ENTRY(kind, id, name) {ResourceKind::kind, id, #name},
    VYR_RESOURCE_TABLE(VYR_RESOURCE_ENTRY)
#undef VYR_RESOURCE_ENTRY
};

} // namespace vyr

#endif // VYR_UTIL_RESOURCEIDS_H
