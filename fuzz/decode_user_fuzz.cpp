// The user-string decoder on any bytes: it never fails, and encoding what it
// decoded decodes to the same text again.
#include "util/codepage.h"
#include "util/usercodec.h"

#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    if (size == 0)
        return 0;
    vyr::setNarrowCodePage(data[0] % 2 ? "UTF-8" : "CP1252");
    const std::string_view input(reinterpret_cast<const char *>(data + 1), size - 1);
    const std::string decoded = vyr::decodeUserString(input);
    if (vyr::decodeUserString(vyr::encodeUserString(decoded)) != decoded)
        std::abort();
    return 0;
}
