// Process-wide state of the resource library, reachable for tests only.
#ifndef VYR_UIKIT_RESOURCELIBRARY_P_H
#define VYR_UIKIT_RESOURCELIBRARY_P_H

namespace vyr::detail {

// Unloads the kept library and empties the string cache, so one test process
// can load libraries the way separate processes would.
void forgetResourceLibrary();

} // namespace vyr::detail

#endif // VYR_UIKIT_RESOURCELIBRARY_P_H
