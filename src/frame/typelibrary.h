// The type library the component server carries: its name, version and
// identifier, the interfaces it declares with their operations, and the
// classes with their help strings.
#ifndef VYR_FRAME_TYPELIBRARY_H
#define VYR_FRAME_TYPELIBRARY_H

#include "frame/comtypes.h"

#include <QByteArray>

#include <optional>
#include <string>
#include <vector>

namespace vyr::com {

struct TypeLibraryInterface
{
    std::string name;
    Guid iid;
    std::string helpString;
    // The interface's own operations, after the three of IUnknown.
    std::vector<std::string> methods;
};

struct TypeLibraryClass
{
    std::string name;
    Guid clsid;
    std::string helpString;
};

struct TypeLibrary
{
    std::string name;
    Guid libid;
    unsigned majorVersion = 0;
    unsigned minorVersion = 0;
    unsigned lcid = 0;
    std::string helpString;
    std::string helpFile; // empty when it has none
    std::vector<TypeLibraryInterface> interfaces;
    std::vector<TypeLibraryClass> classes;

    // "1.0"
    std::string versionText() const;
};

// Reads a type library in its stored form; nothing when the text is not
// one (a missing name, identifier or version, an identifier that does not
// read).
std::optional<TypeLibrary> readTypeLibrary(const QByteArray &stored);

// The library's own type library (resource "TYPELIB" 1).
std::optional<TypeLibrary> embeddedTypeLibrary();

} // namespace vyr::com

#endif // VYR_FRAME_TYPELIBRARY_H
