// The name rules on any name under the example formats' kinds of rules:
// no crash, and a resolved name keeps the format's length limit, holds none
// of its invalid characters and is not taken.
#include "ftprops/namerules.h"
#include "ftprops/vyrobjftpropsformatinfo.h"

#include <cstdlib>
#include <string>

using namespace vyr;

namespace {

bool holdsAnyOf(const std::string &name, std::string_view characters)
{
    // Only ASCII characters are looked for: the others belong to longer units.
    for (const char c : name) {
        if (static_cast<unsigned char>(c) < 0x80 && characters.find(c) != std::string_view::npos)
            return true;
    }
    return false;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static const VYRObjFTPropsFormatInfo formats[] = {
        VYRObjFTPropsFormatInfo("FEATURE_TYPE_CASE,UPPER,FEATURE_TYPE_LENGTH,10,FEATURE_TYPE_INVALID_CHARS,\" -.\","
                                "FEATURE_TYPE_RESERVED_WORDS,\"TABLE,SELECT\",ATTR_CASE,UPPER,MAX_ATTR_LENGTH,10,"
                                "ATTR_NAME_INVALID_CHARS,\" -.\",DEST_ILLEGAL_ATTR_LIST,\"FID,SHAPE\"",
                                nullptr),
        VYRObjFTPropsFormatInfo("FEATURE_TYPE_CASE,UPPER_FIRST_ALPHA,FEATURE_TYPE_LENGTH,4,"
                                "FEATURE_TYPE_LENGTH_INCLUDES_PREFIX,yes,ATTR_CASE,ANYFIRSTNONNUMERIC",
                                nullptr),
        VYRObjFTPropsFormatInfo("ALLOWED_FEAT_TYPES,\"a,b\"", nullptr),
    };
    if (size == 0)
        return 0;
    const std::string name(reinterpret_cast<const char *>(data + 1), size - 1);
    const StringSet taken{name, name + "00", "A", "TABLE00"};
    const VYRObjFTPropsFormatInfo &format = formats[data[0] % std::size(formats)];

    const std::string resolved = ResolveFeatureTypeName(format, name, taken, nullptr);
    if (!resolved.empty() && taken.contains(resolved))
        std::abort();
    if (format.getFeatureTypeLength() > 0 && format.featureTypeLengthIncludesPrefix() && resolved.size() > 4 * 4)
        std::abort();
    if (holdsAnyOf(resolved, format.getFeatureTypeInvalidChars()))
        std::abort();

    const std::string attribute = LegaliseAttributeName(format, name, taken);
    if (format.getMaxAttrLength() > 0 && attribute.size() > static_cast<std::size_t>(format.getMaxAttrLength()))
        std::abort();
    if (!attribute.empty() && taken.contains(attribute))
        std::abort();
    return 0;
}
