#include "ftprops/geometrytranslation.h"

#include "ftprops/geometrytypemappings.h"

namespace vyr {

std::string TranslateGeometry(std::string_view geometry, const FTPropsFormatInfo &from, const FTPropsFormatInfo &to)
{
    const std::string generic = from.getGeometryTypeMappings()->toGeneric(geometry, from.supportsMultiGeom());
    return to.getGeometryTypeMappings()->toNative(generic, to.supportsMultiGeom());
}

bool HasGeometryMappings(const FTPropsFormatInfo &format)
{
    return !format.getGeometryTypeMappings()->pairs().empty();
}

} // namespace vyr
