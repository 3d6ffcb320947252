// csvSplit on any bytes: it never fails, and packing its fields again
// gives text that unpacks to the same fields.
#include "util/listpacking.h"

#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    if (size == 0)
        return 0;
    const char separator = data[0] % 2 ? ',' : ':';
    const std::string_view input(reinterpret_cast<const char *>(data + 1), size - 1);
    const vyr::StringList fields = vyr::csvSplit(input, separator);
    if (fields == vyr::StringList{""})
        return 0; // packs to the empty text, which unpacks to no field
    if (vyr::csvSplit(vyr::csvJoin(fields, separator), separator) != fields)
        std::abort();
    return 0;
}
