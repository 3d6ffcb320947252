// Type strings on any bytes, read in both list modes against a fixed mapping
// table: parseType, createType, the conversions and formatType never crash,
// and a created type, formatted and created again, formats the same.
#include "attrtypes/datatypemappings.h"
#include "attrtypes/typestring.h"

#include <cstdlib>
#include <memory>
#include <string_view>

using namespace vyr;

namespace {

const DataTypeMappings &table()
{
    static const auto mappings = [] {
        auto made = std::make_unique<DataTypeMappings>("FUZZ", false);
        const char *const pairs[] = {"char(width)",
                                     "vyr_char",
                                     "number(width,decimal)",
                                     "vyr_decimal",
                                     "int(width)",
                                     "vyr_int32",
                                     "binint(binint-width)",
                                     "vyr_int16",
                                     "logical",
                                     "vyr_boolean",
                                     "enum(stringset)",
                                     "vyr_char(200)",
                                     "map(stringmap,stringlist)",
                                     "vyr_buffer",
                                     "fixed(1)",
                                     "vyr_char",
                                     "domain(range_domain,coded_domain)",
                                     "vyr_int32(width)"};
        for (std::size_t i = 0; i + 1 < std::size(pairs); i += 2)
            made->addMapping(pairs[i], pairs[i + 1], kStoredListMode);
        return made;
    }();
    return *mappings;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    for (const int listMode : {kStoredListMode, kDialogListMode}) {
        parseType(text, listMode);
        const auto type = table().createType(text, listMode);
        if (!type)
            continue;
        const std::string formatted = formatType(*type, kDialogListMode);
        const auto again = table().createType(formatted, kDialogListMode);
        if (!again || formatType(*again, kDialogListMode) != formatted)
            std::abort();
        if (const auto generic = table().toGeneric(*type))
            table().toNative(*generic);
        DataTypeMappings::convertType(table(), type.get(), table());
        formatType(*type, kStoredListMode);
    }
    return 0;
}
