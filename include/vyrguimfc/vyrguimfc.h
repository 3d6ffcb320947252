/*
 * The exported functions of libvyrguimfc.so, the dialog library of the vyr
 * translation system.
 *
 * Every function runs on the caller's thread and returns when its work is
 * done. No other symbol of the library is visible.
 */
#ifndef VYRGUIMFC_H
#define VYRGUIMFC_H

#include <stdbool.h>

#include "vyr/vyr_string.h"

#if defined(VYRGUIMFC_BUILDING)
#define VYRGUIMFC_API __attribute__((visibility("default")))
#else
#define VYRGUIMFC_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Text codecs. Each reads the handle's whole text (embedded NUL bytes
 * included), converts it and writes the result back into the handle. They
 * cannot fail: every text has an encoding and a decoding.
 *
 * The user-string encoding reads C-style backslash escapes ("\t", "\n",
 * "\\") and turns the text into one free of blanks, quotes, brackets,
 * punctuation that other syntaxes use, control characters and bytes above
 * 127; its decoding gives such escapes back. The WWJD encoding is the same
 * token scheme without backslash escapes, in the narrow code page.
 */
VYRGUIMFC_API bool VYREncodeUserString(VYRStringHandle text); /* always true */
VYRGUIMFC_API void VYRDecodeUserString(VYRStringHandle text);
VYRGUIMFC_API void VYRWWJDEncode(VYRStringHandle text);
VYRGUIMFC_API void VYRWWJDDecode(VYRStringHandle text);

#ifdef __cplusplus
}
#endif

#endif /* VYRGUIMFC_H */
