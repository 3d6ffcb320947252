/* The localiser: translations of the system's user-visible texts.
 *
 * Translations live in GNU gettext catalogs, domain "vyr-gui", under the
 * installation directory: messages/<language>/LC_MESSAGES/vyr-gui.mo. The
 * language is gettext's usual choice ($LANGUAGE, $LC_ALL, $LC_MESSAGES,
 * $LANG) under the locale the host has set (a Qt application sets it from the
 * environment). Texts come and go in the process's narrow code page. */
#ifndef VYR_GUILOCALIZER_H
#define VYR_GUILOCALIZER_H

#if defined(VYR_GUILOCALIZER_BUILDING)
#define VYR_GUILOCALIZER_API __attribute__((visibility("default")))
#else
#define VYR_GUILOCALIZER_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Writes the translation of the NUL-terminated `text` into `buffer`, which
 * holds `bufferSize` bytes, and returns its length in bytes (no terminator
 * is promised). Returns 0 when there is no translation, or when it does not
 * fit, and the caller keeps its own text. */
VYR_GUILOCALIZER_API int GuiLoc_Localize(const char *text, char *buffer, int bufferSize);

#ifdef __cplusplus
}
#endif

#endif /* VYR_GUILOCALIZER_H */
