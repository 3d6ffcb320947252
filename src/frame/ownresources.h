// The library's own resources, built into it: its type library, the two
// project strings of the registration and one dialog template that nothing
// uses. Everything a user sees comes from the resource library instead.
#ifndef VYR_FRAME_OWNRESOURCES_H
#define VYR_FRAME_OWNRESOURCES_H

#include <QByteArray>
#include <QString>

namespace vyr {

namespace own {
inline constexpr unsigned ProjectName = 100;     // "vyrguimfc", the name the registration uses
inline constexpr unsigned ApplicationName = 104; // "Loomhouse"
inline constexpr unsigned EmptyDialog = 109;
inline constexpr unsigned TypeLibrary = 1;
} // namespace own

// String `id` of the library's own string table; empty when there is none.
QString ownString(unsigned id);

// The type library resource `id` ("TYPELIB"); empty when there is none.
QByteArray ownTypeLibrary(unsigned id);

// The dialog template `id`; empty when there is none.
QByteArray ownDialogTemplate(unsigned id);

} // namespace vyr

#endif // VYR_FRAME_OWNRESOURCES_H
