// The grid control's shared numbers: result codes, sections, limits, the
// child windows' IDs, cell type parameter bits and cell type events.
#ifndef VYR_GRID_UGDEFS_H
#define VYR_GRID_UGDEFS_H

namespace vyr::ug {

// Results of the control's operations.
enum Result : int {
    Success = 0,
    // A position or count out of range, or nothing found.
    OutOfRange = 1,
    // A permission hook or the data store said no.
    Refused = 2,
    // A range whose end comes before its start.
    Inverted = 3,
};

// The parts of the control, as hooks name them.
enum Section : int {
    CellArea = 1,
    TopHeading = 2,
    SideHeading = 3,
    CornerButton = 4,
    SheetTabs = 5,
    VerticalScroll = 6,
    HorizontalScroll = 7,
};

// Child window IDs, as dialog code knows them.
enum ChildId : int {
    GridId = 1,
    TopHeadingId = 2,
    SideHeadingId = 3,
    CornerButtonId = 4,
    TabId = 5,
    VScrollId = 6,
    HScrollId = 7,
    EditId = 123,
    MaskedEditId = 124,
};

inline constexpr int kMaxColumns = 32000;
inline constexpr int kMaxHeadings = 64;
inline constexpr int kMaxHeadingSize = 1024;
inline constexpr int kMaxScrollBarSize = 1024;

// Border style bits of a cell.
enum BorderBits : int {
    BorderLeft = 1,
    BorderTop = 2,
    BorderRight = 4,
    BorderBottom = 8,
    BorderThick = 16,
    // A sunken and a raised 3D frame, as buttons and headings draw.
    BorderSunken = 4096,
    BorderRaised = 8192,
};

// The standard cell types every grid registers first, by index.
enum StandardCellType : int { NormalCellType = 0, DropListCellType = 1, CheckBoxCellType = 2, ArrowCellType = 3 };

// Cell type parameter bits of the standard types.
enum CellTypeParamBits : int {
    // The in-place editor keeps Control+Enter for a new line.
    ParamMultiLine = 2,
    // An editable drop list: text can be typed beside the button.
    ParamEditable = 16,
    // The check box is placed by the cell's alignment.
    ParamCheckAligned = 0x800,
    // The check box has a third state.
    ParamCheckTriState = 0x2000,
};

// Events cell types raise through RaiseEvent into OnCellTypeEvent.
enum CellTypeEvent : int {
    // Check box: the value changed; the parameter is the new value.
    CheckChanged = 53,
    // Drop list, before opening; the parameter is the QStringList to fill.
    // A zero answer keeps the list closed.
    DropListStart = 100,
    // Drop list, an entry was chosen; the parameter is the QString. A zero
    // answer keeps the cell's text.
    DropListSelect = 101,
    // Drop list, an entry was chosen, raised first; the parameter is its index.
    DropListSelectIndex = 102,
    // Drop list, after the chosen text was stored; the parameter is the QString.
    DropListPostSelect = 103,
};

// Cell type parameter of the arrow type.
enum ArrowParam : int { ArrowRight = 0, ArrowLeft = 1, ArrowBoth = 2 };

// How a person gave a cell its text; derived grids see it with the text.
enum TextSource : int {
    // Typed in an in-place editor.
    TextEdited = 0,
    // Picked from a drop list.
    TextChosen = 1,
    // Set by an editor a cell's button opened.
    TextBrowsed = 2,
    // Written by a replace.
    TextReplaced = 3,
    // Written by assistive technology.
    TextAssisted = 4,
    // Pasted from the clipboard.
    TextPasted = 5,
    // Put back by undo or redo, or moved with its row.
    TextRestored = 6,
};

// Find flags of the data store, as the find/replace dialog sets them.
enum FindBits : int { FindPartial = 1, FindIgnoreCase = 2, FindUp = 4, FindReplace = 8 };

} // namespace vyr::ug

#endif // VYR_GRID_UGDEFS_H
