/* The help library: shows pages of the system's help books.
 *
 * A help book is a folder of HTML pages under the installation directory's
 * help/ folder. Callers name a book by its path, with or without the ".chm"
 * of the original compiled books: ".../help/VYRLoomhouse.chm" opens the
 * folder ".../help/VYRLoomhouse/". Pages are shown in one help viewer window
 * that is reused for every request, with back/forward and a contents list. */
#ifndef VYR_ROBOHELP_H
#define VYR_ROBOHELP_H

#if defined(VYR_ROBOHELP_BUILDING)
#define VYR_ROBOHELP_API __attribute__((visibility("default")))
#else
#define VYR_ROBOHELP_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Shows `topic` (a page of the book, "a/b.htm" or "a\b.htm", optionally with
 * "#anchor") of the book `helpFile`. An empty topic with a `helpFile` of the
 * form "book.chm#topic" shows that topic; no topic at all shows the book's
 * first page. `owner` and `reserved` are not used. Returns 1 when the viewer
 * is shown, 0 when no window can be shown in this process. */
VYR_ROBOHELP_API int VYR_CHM_ShowHelpByString(void *owner, const char *helpFile, const char *topic,
                                              const char *reserved);

/* Shows the page of the data format `formatName` in the book `helpFile`: the
 * page <format in lower case>.htm, at the section of `topicNumber`: 0 the
 * whole page, 1 the feature type's attributes, 3 the reader's parameters,
 * 5 the writer's parameters. Returns as VYR_CHM_ShowHelpByString. */
VYR_ROBOHELP_API int VYR_CHM_ShowFormatHelp(void *owner, const char *helpFile, const char *formatName, int topicNumber);

#ifdef __cplusplus
}
#endif

#endif /* VYR_ROBOHELP_H */
