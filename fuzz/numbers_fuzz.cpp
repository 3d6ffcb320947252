// The number readers on any bytes: they never fail, and a refused text
// leaves the output alone.
#include "util/numbertext.h"

#include <cmath>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    std::int32_t integer = 77;
    if (!vyr::parseInteger(text, integer) && integer != 77)
        std::abort();
    std::uint32_t natural = 77;
    if (!vyr::parseUnsigned(text, natural) && natural != 77)
        std::abort();
    double real = 77;
    const bool isReal = vyr::parseDouble(text, real);
    if (!isReal && real != 77)
        std::abort();
    float single = 77;
    if (vyr::parseFloat(text, single) && (!isReal || std::isnan(single)))
        std::abort();
    bool truth = true;
    vyr::parseBool(text, truth);
    return 0;
}
