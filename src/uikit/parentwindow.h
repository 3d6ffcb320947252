// The window a host names as the owner of a library window.
//
// Hosts hand in `void *parentWindow`: null, a QWidget of the process's Qt
// application, or the stand-in that nativeParentWindow made for a window of
// another toolkit or process (a native window id of the display). A host
// that passes anything else, such as a raw window id, gets a refusal rather
// than a crash.
#ifndef VYR_UIKIT_PARENTWINDOW_H
#define VYR_UIKIT_PARENTWINDOW_H

#include <cstdint>

class QWidget;

namespace vyr {

// The stand-in for the native window `windowId`: a widget that is never
// shown. Every top-level window made with it as parent (the library's
// dialogs, the pickers of the services) is shown transient for the native
// window, so the window manager keeps it above that window and modal for
// it. (Where it goes is the window manager's and Qt's choice: a foreign
// window tells Qt 6.4 nothing of its size.) One stand-in per id, living as long as the
// application. Null, with the reason on standard error, when the platform
// cannot take foreign windows or the id is 0. Call on the application's
// thread, after ensureApplication.
QWidget *nativeParentWindow(std::uintptr_t windowId);

// The owner for a host's `parentWindow`: null for null, else a live widget
// of the application or a stand-in. False, with the reason on standard
// error, for any other pointer; it is never dereferenced.
bool ownerFromHost(void *parentWindow, QWidget **owner);

} // namespace vyr

#endif // VYR_UIKIT_PARENTWINDOW_H
