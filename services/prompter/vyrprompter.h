/* The prompter library: a selection list and the form that runs GUI
 * definition files. */
#ifndef VYR_PROMPTER_H
#define VYR_PROMPTER_H

#include "vyr/IGuiPrompter.h"
#include "vyr/IVYRString.h"
#include "vyr/IVYRStringArray.h"

#if defined(VYR_PROMPTER_BUILDING)
#define VYR_PROMPTER_API __attribute__((visibility("default")))
#else
#define VYR_PROMPTER_API
#endif

extern "C" {

/* Shows the items of `all` as a list with check marks, the ones in
 * `preselected` checked; `icons` holds an icon file for each item at the
 * same index (absolute, or relative to the installation directory; missing
 * or empty entries show no icon). `title` is the window title; the two flags
 * are reserved and must be 0. `parent` is a QWidget pointer or null. When
 * the user presses OK the checked items are appended to `chosen`, in list
 * order, and the result is true; otherwise `chosen` is left alone. */
VYR_PROMPTER_API bool selectionDialog(IVYRStringArray &all, IVYRStringArray &preselected, IVYRStringArray &icons,
                                      IVYRString &title, int flagA, int flagB, IVYRStringArray &chosen, void *parent);

/* A new GUI definition prompter, to be given back to
 * vyrprompter_destroyGuiPrompter. */
VYR_PROMPTER_API IGuiPrompter *vyrprompter_createGuiPrompter(void);
VYR_PROMPTER_API void vyrprompter_destroyGuiPrompter(IGuiPrompter *prompter);
}

#endif /* VYR_PROMPTER_H */
