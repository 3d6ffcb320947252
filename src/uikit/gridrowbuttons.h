// The buttons beside a list grid that work on its rows: move the selected
// rows up (1188) or down (1189), sort the records by the first column
// (1215, under a wait cursor) and delete the selected rows (1216). Each
// first ends an edit under way, so that what was typed is kept.
#ifndef VYR_UIKIT_GRIDROWBUTTONS_H
#define VYR_UIKIT_GRIDROWBUTTONS_H

namespace vyr {

class CVVyrGrid;
class CVyrDialog;

inline constexpr unsigned kIdMoveRowsUp = 1188;
inline constexpr unsigned kIdMoveRowsDown = 1189;
inline constexpr unsigned kIdSortRows = 1215;
inline constexpr unsigned kIdDeleteRows = 1216;

// Connects those of the four buttons `dialog` has to `grid`, enabled or
// not as `enabled` says.
void ConnectGridRowButtons(CVyrDialog &dialog, CVVyrGrid &grid, bool enabled);
// Enables or disables those of the four buttons `dialog` has, as its grid
// becomes editable or read-only.
void EnableGridRowButtons(CVyrDialog &dialog, bool enabled);

} // namespace vyr

#endif // VYR_UIKIT_GRIDROWBUTTONS_H
