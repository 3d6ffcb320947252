// Colour texts of grid cells from anywhere (a schema, a pasted cell): any
// text either has no colour or a colour whose written form reads back to it.
#include "util/colourtext.h"

#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    const std::optional<vyr::Rgb> colour = vyr::parseColourText(text);
    if (colour && vyr::parseColourText(vyr::formatColourText(*colour)) != colour)
        std::abort();
    return 0;
}
