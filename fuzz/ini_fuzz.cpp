// The settings-file reader on any bytes: no crash, and a value it finds
// never holds a line break (values end at the line).
#include "util/inifile.h"

#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    for (const auto &[group, key] : {std::pair{"General", "VYR_HOME"}, std::pair{"BUILD/6233", "VYR_HOME"},
                                     std::pair{"Settings", "Allow Source Feature Type Editing"}}) {
        const auto value = vyr::findIniValue(text, group, key);
        if (value && value->find('\n') != std::string::npos)
            std::abort();
    }
    return 0;
}
