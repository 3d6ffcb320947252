/*
 * The exported functions of libvyrguimfc.so, the dialog library of the vyr
 * translation system.
 *
 * Every function runs on the caller's thread and returns when its work is
 * done. No other symbol of the library is visible.
 *
 * Threads: the codecs and the component server entry points may be called
 * from any thread. The functions that show a window (the dialogs, the
 * pickers, VYRNativeParentWindow) run only on the thread of the process's Qt
 * application or, when there is none yet, on the main thread (where the
 * library makes one). Called from any other thread they show nothing and
 * answer false (null) at once, with the reason on standard error.
 *
 * Parent windows: `parentWindow` is null, a QWidget of the process's Qt
 * application, or what VYRNativeParentWindow answered. Any other value, such
 * as a window id, is refused (false, with the reason on standard error); it
 * is never dereferenced.
 */
#ifndef VYRGUIMFC_H
#define VYRGUIMFC_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#include "vyr/vyr_string.h"

#if defined(VYRGUIMFC_BUILDING)
#define VYRGUIMFC_API __attribute__((visibility("default")))
#else
#define VYRGUIMFC_API
#endif

#ifdef __cplusplus
class IVYRFeature;
class IVYRSession;
extern "C" {
#else
typedef struct IVYRFeature IVYRFeature; /* engine objects: C++ classes */
typedef struct IVYRSession IVYRSession;
#endif

/*
 * Text codecs. Each reads the handle's whole text (embedded NUL bytes
 * included), converts it and writes the result back into the handle. They
 * cannot fail: every text has an encoding and a decoding.
 *
 * The user-string encoding reads C-style backslash escapes ("\t", "\n",
 * "\\") and turns the text into one free of blanks, quotes, apostrophes,
 * parentheses, brackets, braces, less-than and greater-than signs, commas,
 * semicolons, dollar and at signs, ampersands, slashes, backslashes, the
 * control characters 7 to 13 and bytes above 127; its decoding gives such
 * escapes back. The other control characters (0 to 6, 14 to 31 and 127,
 * NUL included) pass through both directions unchanged, so a host that
 * needs them gone must remove them itself. The WWJD encoding is the same
 * token scheme without backslash escapes, in the narrow code page.
 */
VYRGUIMFC_API bool VYREncodeUserString(VYRStringHandle text); /* always true */
VYRGUIMFC_API void VYRDecodeUserString(VYRStringHandle text);
VYRGUIMFC_API void VYRWWJDEncode(VYRStringHandle text);
VYRGUIMFC_API void VYRWWJDDecode(VYRStringHandle text);

/*
 * The feature type properties dialog.
 *
 * Lets the user edit the schema of one feature type: `schemaFeature` is an
 * engine feature whose feature type is the feature type's name and whose
 * attributes hold its schema; `formatCapabilities` describes what its
 * format allows (comma-separated KEY,VALUE pairs, double quotes around a
 * value holding a comma; empty: every key takes its default). `parentWindow`
 * is the owner (see Parent windows above), or null.
 *
 * Runs the dialog modally. On OK the edited schema is written into
 * `schemaFeature` and the result is true (also when nothing was changed).
 * On Cancel, on closing the window, and when the dialog cannot be shown, the
 * feature is left exactly as it was and the result is false. The session and
 * the feature stay the caller's; nothing of them is kept after the call.
 */
VYRGUIMFC_API bool VYRFeatTypeProperties(IVYRSession *session, IVYRFeature *schemaFeature,
                                         const char *formatCapabilities, void *parentWindow);

/* One other feature type of the workspace: its schema feature (read, and
 * written when the user applies properties to it) and its format. */
typedef struct VYRWorkspaceFeatureType {
    IVYRFeature *schemaFeature;
    const char *formatCapabilities;
} VYRWorkspaceFeatureType;

/*
 * VYRFeatTypeProperties within a workspace: as above, and the dialog also
 * knows the workspace's other feature types and its schema sources.
 *
 * - `others` (`otherCount` entries, may be null when 0): the other feature
 *   types, in the order the user should see them. Their names are the names
 *   the edited feature type must not take in the same format, and "Apply to
 *   Others" writes the chosen properties into the ones the user picks. Pass
 *   feature types of the edited one's role (all readers or all writers).
 * - The datasets a writer's feature type can be moved to are its own format
 *   and the formats of the others (one per format name).
 * - `schemaSourceFormats` (`schemaSourceCount` capability strings, may be
 *   null when 0): the readers that can serve as schema sources for dynamic
 *   schema.
 *
 * Unlike VYRFeatTypeProperties, the features keep every General-page
 * setting: merge, fan-out, dynamic schema with its schema sources and
 * settings, each under a "vyr_" attribute name that is never a user
 * attribute. When the user moves a writer's feature type to another
 * dataset, its feature's "vyr_format" attribute names the new format (its
 * FORMAT value); a host that keeps formats elsewhere reads it from there.
 *
 * The result is that of VYRFeatTypeProperties; on Cancel no feature is
 * changed.
 */
VYRGUIMFC_API bool VYRFeatTypePropertiesInWorkspace(IVYRSession *session, IVYRFeature *schemaFeature,
                                                    const char *formatCapabilities,
                                                    const VYRWorkspaceFeatureType *others, size_t otherCount,
                                                    const char *const *schemaSourceFormats, size_t schemaSourceCount,
                                                    void *parentWindow);

/*
 * Data source pickers.
 *
 * VYREsriGeoDBDlg lets the user pick a file geodatabase (a folder whose name
 * ends in ".gdb") with the folder picker of libvyr_dirDialog.so in the
 * installation directory. `location` holds the path the picker starts at
 * (only its first 259 bytes are used) and, on success, the chosen path.
 * With `mustExist` false the user may also name a new geodatabase, which is
 * not created. `parentWindow` is the owner (see Parent windows), or null. The
 * first and fourth arguments are not used. The result is true when the user
 * chose a geodatabase; false when the picker was cancelled or the library or
 * its function is missing, and `location` then keeps its text.
 *
 * VYREsriLayerDlg would browse for a layer through a component library that
 * this platform does not have: it always answers false and leaves
 * `location` as it was. Its `mode` is "multi" (in any letter case) for the
 * browser that shows several kinds of items, anything else for layers
 * only; `title` and `buttonCaption` name the browser window and its accept
 * button.
 */
VYRGUIMFC_API bool VYREsriGeoDBDlg(int unused1, VYRStringHandle location, bool mustExist, int unused2,
                                   void *parentWindow);
VYRGUIMFC_API bool VYREsriLayerDlg(IVYRSession *session, VYRStringHandle location, const char *title,
                                   const char *buttonCaption, const char *mode, void *parentWindow);

/*
 * The owner for a host whose window is not a QWidget of this process (a
 * window of another toolkit, or of another process): `windowId` is its
 * native id on the display (an X11 window id). The answer is passed as any
 * export's `parentWindow`; the dialog is then shown transient for that
 * window (above it, and modal for it, where the window manager honours
 * that). Asking again for the same id gives the same answer, valid
 * while the process runs. Null when the Qt platform cannot place windows
 * over a native one (such as offscreen), for id 0, and off the
 * application's thread.
 */
VYRGUIMFC_API void *VYRNativeParentWindow(uintptr_t windowId);

/*
 * Component server entry points, as an in-process component server of the
 * original design has them. Results are status codes: 0 (S_OK) done, 1
 * (S_FALSE) done with a "no", negative values failures with their usual
 * values (0x80040111 class not available, 0x8002801C the type library's
 * registry keys could not be written, 0x80070005 the proxy/stub's could
 * not). DllGetClassObject answers 0x80040111 for any class or interface it
 * does not serve; the class object it hands out answers 0x80004002 (no such
 * interface) to a QueryInterface for one it is not.
 *
 * The registry is kept in one settings file (INI): the keys of the classes
 * root ("SOFTWARE\vyr\Classes\...") in vyr/Classes.conf of the first folder
 * of $XDG_CONFIG_DIRS (default /etc/xdg), or of $XDG_CONFIG_HOME (default
 * ~/.config) when VYR_REGISTER_PER_USER=1 was in the environment when the
 * process first called any of these four entry points. A key's default
 * value is "@". No settings file or folder below the configuration folder
 * is written, created or removed through a symbolic link: a link there is a
 * failure. Why a step failed (permission, a link, a file where a folder
 * belongs) is logged under the Qt category "vyr.frame.registration".
 *
 * DllRegisterServer writes the type library vyrguimfcLib 1.0 (TypeLib\{LIBID})
 * and then the proxy/stub of its interface VVyrOlePropertyPage (Interface\{IID}
 * and the proxy/stub's class under CLSID), naming this library's file. The
 * calling thread runs in the C locale meanwhile and gets its own back. The
 * first failing step's code is returned; what earlier steps wrote stays.
 * DllUnregisterServer writes nothing: it removes exactly the values
 * registration writes (0x8002801C or 0x80070005 when one cannot be
 * removed), and settings files and folders left empty; with nothing
 * registered it changes nothing and succeeds. It also clears what earlier
 * versions left in Classes/TypeLib.conf, Classes/Interface.conf and
 * Classes/CLSID.conf, as far as it can (a link there is left alone and
 * logged). DllGetClassObject serves only the proxy/stub's class object
 * (interfaces IUnknown and IPSFactoryBuffer; it makes no proxies on this
 * platform); any other class is not available. DllCanUnloadNow answers 1
 * while that class object is held, a dialog of the library exists, the
 * library's help routine is installed on the application, or the server is
 * locked, and whenever it is called off the Qt application's thread (where
 * the library's widgets cannot be counted safely); else 0.
 */
typedef struct VYRGuid {
    uint32_t data1;
    uint16_t data2;
    uint16_t data3;
    uint8_t data4[8];
} VYRGuid;

VYRGUIMFC_API int32_t DllGetClassObject(const VYRGuid *classId, const VYRGuid *interfaceId, void **object);
VYRGUIMFC_API int32_t DllCanUnloadNow(void);
VYRGUIMFC_API int32_t DllRegisterServer(void);
VYRGUIMFC_API int32_t DllUnregisterServer(void);

#ifdef __cplusplus
}
#endif

#endif /* VYRGUIMFC_H */
