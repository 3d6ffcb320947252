// The data source picker exports: the geodatabase picker of the directory
// dialog library, and the layer browser, which has no component library to
// run on this platform.
#include "frame/esripickers.h"

#include "vyrguimfc/vyrguimfc.h"

#include "uikit/application.h"
#include "uikit/narrowtext.h"
#include "uikit/parentwindow.h"
#include "uikit/resourcelibrary.h"
#include "util/asciitext.h"
#include "util/installdir.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstring>

namespace vyr {

bool selectGeodatabaseWith(const std::string &libraryPath, const std::function<GeodatabasePickerTexts()> &texts,
                           VYRStringHandle location, bool allowNew, void *parentWindow)
{
    if (!location)
        return false;
    void *library = ::dlopen(libraryPath.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library)
        return false;
    auto *select = reinterpret_cast<SelectGeodatabaseFunction *>(::dlsym(library, kSelectGeodatabaseSymbol));
    if (!select) {
        ::dlclose(library);
        return false;
    }
    char buffer[kGeodatabasePathBuffer];
    const std::size_t length = std::min(VYR_StringLength(location), kGeodatabasePathBuffer - 1);
    std::memcpy(buffer, VYR_StringGet(location), length);
    buffer[length] = '\0';
    const GeodatabasePickerTexts shown = texts();
    if (select(shown.title.c_str(), shown.prompt.c_str(), buffer, parentWindow, allowNew ? 1 : 0) != 0)
        return false;
    // A picker that filled the whole buffer must not make us read past it.
    buffer[kGeodatabasePathBuffer - 1] = '\0';
    VYR_StringSet(location, buffer);
    return true;
}

LayerBrowserSetup layerBrowserSetup(const char *mode)
{
    return mode && equalIgnoringAsciiCase(mode, "multi") ? LayerBrowserSetup::TwoFilters
                                                         : LayerBrowserSetup::SingleFilter;
}

} // namespace vyr

extern "C" {

bool VYREsriGeoDBDlg(int /*unused*/, VYRStringHandle location, bool mustExist, int /*unused*/, void *parentWindow)
{
    QWidget *owner = nullptr;
    if (!location || !vyr::ensureApplication() || !vyr::ownerFromHost(parentWindow, &owner))
        return false;
    try {
        const std::string library = vyr::getInstallDirectory() + vyr::kDirDialogLibrary;
        const auto texts = [] {
            vyr::GeodatabasePickerTexts loaded;
            loaded.prompt = vyr::loadNarrowResourceString(vyr::res::GeodatabasePickerPrompt);
            loaded.title = vyr::loadNarrowResourceString(vyr::res::GeodatabasePickerTitle);
            return loaded;
        };
        return vyr::selectGeodatabaseWith(library, texts, location, !mustExist, owner);
    } catch (...) {
        return false;
    }
}

bool VYREsriLayerDlg(IVYRSession * /*session*/, VYRStringHandle /*location*/, const char * /*title*/,
                     const char * /*buttonCaption*/, const char *mode, void * /*parentWindow*/)
{
    // Whichever set-up the mode asks for, the browser's component library
    // is not on this platform: the picker ends as it does where that library
    // is not installed, with false and the caller's text untouched.
    [[maybe_unused]] const vyr::LayerBrowserSetup setup = vyr::layerBrowserSetup(mode);
    return false;
}

} // extern "C"
