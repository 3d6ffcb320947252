// Carrying a feature type's geometry from one format's vocabulary to
// another's, through the generic names both formats map to.
#ifndef VYR_FTPROPS_GEOMETRYTRANSLATION_H
#define VYR_FTPROPS_GEOMETRYTRANSLATION_H

#include "ftprops/ftpropsformatinfo.h"

#include <string>
#include <string_view>

namespace vyr {

// `geometry` (one name, or several separated by blanks) read with `from`'s
// mappings as generic names, then written with `to`'s. A format that does
// not support multiple geometries reads or writes the first name only; a
// name either format does not know becomes empty.
std::string TranslateGeometry(std::string_view geometry, const FTPropsFormatInfo &from, const FTPropsFormatInfo &to);

// Whether the format maps any geometry names at all.
bool HasGeometryMappings(const FTPropsFormatInfo &format);

} // namespace vyr

#endif // VYR_FTPROPS_GEOMETRYTRANSLATION_H
