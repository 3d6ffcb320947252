// The words of the review of a feature type's changes in the user's
// language, from the resource library: one set for the review window, the
// Apply to Others preview and the command line's schema diff.
#ifndef VYR_FTPROPSDLG_REVIEWTEXTS_H
#define VYR_FTPROPSDLG_REVIEWTEXTS_H

#include "ftprops/schemareview.h"
#include "util/resourceids.h"

namespace vyr {

// The labels of the merge kinds, by the number the schema keeps: the
// General page shows them, the review names a merge kind by them.
inline constexpr unsigned kMergeKindLabels[]
    = {res::MergeKindWildcard, res::MergeKindRegularExpression, res::MergeKindExact};

// The built-in (English) words when no resource library loads.
ReviewTexts ReviewTextsFromResources();

} // namespace vyr

#endif // VYR_FTPROPSDLG_REVIEWTEXTS_H
