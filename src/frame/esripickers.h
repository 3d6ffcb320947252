// The steps behind the data source picker exports, apart from the process
// state they run in, so that a test can hand them a directory dialog library
// of its own.
#ifndef VYR_FRAME_ESRIPICKERS_H
#define VYR_FRAME_ESRIPICKERS_H

#include "vyr/vyr_string.h"

#include <cstddef>
#include <functional>
#include <string>

namespace vyr {

// The directory dialog library, looked for in the installation directory.
inline constexpr char kDirDialogLibrary[] = "libvyr_dirDialog.so";
inline constexpr char kSelectGeodatabaseSymbol[] = "VYR_SelectGeodatabase";

// The text buffer handed to the picker, terminator included.
inline constexpr std::size_t kGeodatabasePathBuffer = 260;

// VYR_SelectGeodatabase(title, prompt, path buffer, parent window, option):
// 0 on success, with the chosen path in the buffer.
using SelectGeodatabaseFunction = int(const char *, const char *, char *, void *, int);

// The picker's texts, in the narrow code page.
struct GeodatabasePickerTexts
{
    std::string title; // string 33228
    std::string prompt; // string 33229
};

// Opens the library at `libraryPath` (absolute) and runs its picker over the
// handle's text, with the texts `texts` gives once the function is found.
// The library is closed again only when it lacks the function; once found
// it stays loaded. `allowNew` is the option the picker receives (1 when the
// caller's flag was false). True, with the chosen path in `location`, only
// when the picker answered 0; otherwise `location` keeps its text.
bool selectGeodatabaseWith(const std::string &libraryPath, const std::function<GeodatabasePickerTexts()> &texts,
                           VYRStringHandle location, bool allowNew, void *parentWindow);

// How the layer browser would be set up for a mode text: "multi" in any
// letter case gives the two filters, anything else (also none) one filter.
enum class LayerBrowserSetup { SingleFilter, TwoFilters };
LayerBrowserSetup layerBrowserSetup(const char *mode);

} // namespace vyr

#endif // VYR_FRAME_ESRIPICKERS_H
