#include "vyr/vyr_string.h"

#include <new>
#include <string>

struct VYRStringObject
{
    std::string text;
};

extern "C" {

VYRStringHandle VYR_StringCreate(void)
{
    return new (std::nothrow) VYRStringObject;
}

void VYR_StringDestroy(VYRStringHandle handle)
{
    delete handle;
}

const char *VYR_StringGet(VYRStringHandle handle)
{
    return handle ? handle->text.c_str() : "";
}

size_t VYR_StringLength(VYRStringHandle handle)
{
    return handle ? handle->text.size() : 0;
}

void VYR_StringSet(VYRStringHandle handle, const char *text)
{
    if (!handle)
        return;
    try {
        handle->text.assign(text ? text : "");
    } catch (const std::bad_alloc &) {
        // Out of memory: the handle keeps its previous text.
    }
}

void VYR_StringSetWithLength(VYRStringHandle handle, const char *bytes, size_t length)
{
    if (!handle)
        return;
    try {
        if (bytes)
            handle->text.assign(bytes, length);
        else
            handle->text.clear();
    } catch (const std::bad_alloc &) {
        // Out of memory: the handle keeps its previous text.
    }
}

} // extern "C"
