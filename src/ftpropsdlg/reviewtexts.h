// The words of the review of a feature type's changes in the user's
// language, from the resource library: one set for the review window, the
// Apply to Others preview and the command line's schema diff.
#ifndef VYR_FTPROPSDLG_REVIEWTEXTS_H
#define VYR_FTPROPSDLG_REVIEWTEXTS_H

#include "ftprops/schemareview.h"

namespace vyr {

// The built-in (English) words when no resource library loads.
ReviewTexts ReviewTextsFromResources();

} // namespace vyr

#endif // VYR_FTPROPSDLG_REVIEWTEXTS_H
