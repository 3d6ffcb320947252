// The window exports: how a host that has no widget of its own names the
// window the library's dialogs belong to.
#include "vyrguimfc/vyrguimfc.h"

#include "uikit/application.h"
#include "uikit/parentwindow.h"

extern "C" {

void *VYRNativeParentWindow(uintptr_t windowId)
{
    if (!vyr::ensureApplication())
        return nullptr;
    try {
        return vyr::nativeParentWindow(windowId);
    } catch (...) {
        return nullptr;
    }
}

} // extern "C"
