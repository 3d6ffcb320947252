/* The directory dialog library: a folder picker for file geodatabases.
 *
 * A file geodatabase is a folder whose name ends in ".gdb" (in any letter
 * case). The picker shows the folder tree and a field to type a path in, and
 * takes OK only for a geodatabase. */
#ifndef VYR_DIRDIALOG_H
#define VYR_DIRDIALOG_H

#if defined(VYR_DIRDIALOG_BUILDING)
#define VYR_DIRDIALOG_API __attribute__((visibility("default")))
#else
#define VYR_DIRDIALOG_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* The size of the path buffer, terminator included. */
#define VYR_GEODATABASE_PATH_BUFFER 260

/* Lets the user pick a geodatabase, starting at the NUL-terminated path in
 * `path` (a buffer of VYR_GEODATABASE_PATH_BUFFER bytes; an empty path
 * starts in the home folder). `title` names the window (empty or null: a
 * title of its own), `prompt` is shown above the folders (may be empty).
 * All three are narrow text (the process's code page, VYR_CODEPAGE); a path
 * is the file system's bytes, kept as they are even where they are no text
 * in that code page. A start path that fills the buffer may be a longer one
 * cut short: the picker does not answer with it unchanged.
 * With `option` 1 the user may also name a new geodatabase in an existing
 * folder; it is not created. `parent` is a QWidget pointer or null; the
 * process must run a QApplication.
 *
 * Returns 0 when the user pressed OK, with the chosen path (absolute,
 * NUL-terminated) in `path`; 1 when the user cancelled, -1 when no dialog
 * can be shown. On any result but 0 `path` is unchanged. */
VYR_DIRDIALOG_API int VYR_SelectGeodatabase(const char *title, const char *prompt, char *path, void *parent,
                                            int option);

#ifdef __cplusplus
}
#endif

#endif /* VYR_DIRDIALOG_H */
