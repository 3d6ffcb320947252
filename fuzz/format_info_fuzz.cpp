// A format capability string on any bytes: the record is built and every
// question it answers is asked; parameter lines are read on their own too.
// No crash, and the record's answers agree with each other.
#include "attrtypes/datatypemappings.h"
#include "ftprops/guiparameterline.h"
#include "ftprops/vyrobjftpropsformatinfo.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

using namespace vyr;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    const GuiParameterLine line = ParseParameterLine(text);
    if (line.type.empty() && (!line.name.empty() || !line.prompt.empty()))
        std::abort();

    const VYRObjFTPropsFormatInfo info(text, nullptr);
    for (const std::string &name : info.getDeflineParmNames()) {
        if (ParseParameterLine(info.getDeflineParm(name)).name != name)
            std::abort();
        info.getDeflineParmDefault(name);
    }
    for (const std::string &name : info.getFormatAttrNames())
        info.getFormatAttrType(name);
    info.getFormatName();
    info.isSource();
    info.isSchemaReader();
    info.hasDeflineAttrs();
    info.isDatabase();
    info.supportsFeatTypeFanout();
    info.supportsMultiGeom();
    info.getAttrCase();
    info.getMaxAttrLength();
    info.getAttrNameInvalidChars();
    if (info.getDestIllegalAttrSet().size() > info.getDestIllegalAttrList().size())
        std::abort();
    info.getFeatureTypeCase();
    info.getFeatureTypeLength();
    info.featureTypeLengthIncludesPrefix();
    info.getFeatureTypeInvalidChars();
    if (info.getFeatureTypeReservedWordSet().size() > info.getFeatureTypeReservedWords().size())
        std::abort();
    info.getAllowedFeatTypes();
    info.getFeatTypeValidationScript();
    const DataTypeMappings &types = *info.getDataTypeMappings();
    if (const auto fallback = types.defaultType())
        types.toGeneric(*fallback);
    // A name without blanks maps to the generic name of the first pair naming it.
    const auto &pairs = info.getGeometryTypeMappings()->pairs();
    for (const auto &pair : pairs) {
        if (pair.first.find(' ') != std::string::npos)
            continue;
        const auto first
            = std::find_if(pairs.begin(), pairs.end(), [&](const auto &p) { return p.first == pair.first; });
        if (info.getGeometryTypeMappings()->toGeneric(pair.first, false) != first->second)
            std::abort();
    }
    return 0;
}
