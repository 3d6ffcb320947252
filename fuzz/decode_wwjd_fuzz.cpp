// The WWJD decoder on any bytes, in a code page chosen by the first byte:
// it never fails, the encoding of anything is free of special characters,
// and encoding what it decoded decodes to the same text again.
#include "support/encodedtext.h"
#include "util/codepage.h"
#include "util/tokencodec.h"

#include <cstdlib>
#include <string_view>

namespace {

bool isFreeOfSpecialCharacters(std::string_view encoded)
{
    return vyr::testing::firstForbiddenByte(encoded) == std::string_view::npos;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    if (size == 0)
        return 0;
    // CP932 maps some characters two ways, so only the trip through the
    // other two is exact.
    static const char *const kCodePages[] = {"CP1252", "UTF-8", "CP932"};
    const std::size_t choice = data[0] % 3;
    vyr::setNarrowCodePage(kCodePages[choice]);
    const std::string_view input(reinterpret_cast<const char *>(data + 1), size - 1);

    const std::string decoded = vyr::decodeWWJD(input);
    const std::string encoded = vyr::encodeWWJD(decoded);
    if (!isFreeOfSpecialCharacters(encoded))
        std::abort();
    if (choice < 2 && vyr::decodeWWJD(encoded) != decoded)
        std::abort();
    if (!isFreeOfSpecialCharacters(vyr::encodeWWJD(input)))
        std::abort();
    return 0;
}
