/*
 * String handles of the vyr engine (libvyr.so).
 *
 * A string handle owns one byte string with an explicit length; the bytes are
 * text in the system's narrow code page and may hold NUL bytes. Callers read a
 * handle with VYR_StringLength followed by VYR_StringGet and copy exactly that
 * many bytes at once: the pointer stays valid only until the handle is next
 * changed.
 *
 * Hosts make and free handles with VYR_StringCreate and VYR_StringDestroy.
 * Every function accepts a null handle: reads answer an empty text, writes are
 * ignored.
 */
#ifndef VYR_STRING_H
#define VYR_STRING_H

#include <stddef.h>

#include "vyr/vyr_export.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct VYRStringObject *VYRStringHandle;

/* A new handle holding the empty text; free it with VYR_StringDestroy. */
VYR_ENGINE_API VYRStringHandle VYR_StringCreate(void);

/* Frees a handle made by VYR_StringCreate; null is allowed. */
VYR_ENGINE_API void VYR_StringDestroy(VYRStringHandle handle);

/* The handle's bytes, always followed by a NUL byte that is not counted. */
VYR_ENGINE_API const char *VYR_StringGet(VYRStringHandle handle);

/* The number of bytes of the handle's text, embedded NUL bytes included. */
VYR_ENGINE_API size_t VYR_StringLength(VYRStringHandle handle);

/* The handle's text becomes a copy of the NUL-terminated text (null: empty). */
VYR_ENGINE_API void VYR_StringSet(VYRStringHandle handle, const char *text);

/* The handle's text becomes exactly `length` bytes from `bytes`. */
VYR_ENGINE_API void VYR_StringSetWithLength(VYRStringHandle handle, const char *bytes, size_t length);

#ifdef __cplusplus
}
#endif

#endif /* VYR_STRING_H */
