// Internal view of the narrow code page for the converters' caches.
#ifndef VYR_UTIL_CODEPAGE_P_H
#define VYR_UTIL_CODEPAGE_P_H

#include <string>

namespace vyr {

// The narrow code page's name without a copy; valid until it next changes.
const std::string &narrowCodePageRef();

// Changes whenever the narrow code page is set or reset, so caches keyed by
// code page 0 know when to look again.
unsigned narrowCodePageGeneration();

} // namespace vyr

#endif // VYR_UTIL_CODEPAGE_P_H
