// The text-codec exports: each turns an engine string handle's whole text
// into its encoding or decoding.
#include "vyrguimfc/vyrguimfc.h"

#include "util/tokencodec.h"
#include "util/usercodec.h"

#include <string>
#include <string_view>

namespace {

// Runs `codec` over the handle's bytes and writes the result back. Nothing
// may escape into the caller: on failure the handle keeps its text.
template <typename Codec>
void recodeHandle(VYRStringHandle handle, Codec codec)
{
    try {
        // The handle's bytes are read where they are: they stay put until
        // the handle is set, and a copy would add the input's size again.
        const std::string_view text(VYR_StringGet(handle), VYR_StringLength(handle));
        const std::string result = codec(text);
        VYR_StringSetWithLength(handle, result.data(), result.size());
    } catch (...) {}
}

} // namespace

extern "C" {

bool VYREncodeUserString(VYRStringHandle text)
{
    recodeHandle(text, [](std::string_view in) { return vyr::encodeUserString(in); });
    return true;
}

void VYRDecodeUserString(VYRStringHandle text)
{
    recodeHandle(text, [](std::string_view in) { return vyr::decodeUserString(in); });
}

void VYRWWJDEncode(VYRStringHandle text)
{
    recodeHandle(text, [](std::string_view in) { return vyr::encodeWWJD(in); });
}

void VYRWWJDDecode(VYRStringHandle text)
{
    recodeHandle(text, [](std::string_view in) { return vyr::decodeWWJD(in); });
}

} // extern "C"
