// The grid side of the attribute argument kinds: the cell each kind asks
// for, and the handler that opens a list-valued kind's editor when its
// cell's button is used.
//
//   integer              digits only (mask "99999999")
//   integer width        drop list of 1 to 16, "11" to start with
//   binary width         drop list of 2 and 4
//   string set, list, map, range domain, coded domain
//                        a button labelled "Edit..." ("View..." for a reader
//                        format, whose editors are read-only) opening the
//                        argument's editor (argumenteditor.h)
//   template argument    the cell of its keyword's kind
//
// The model's argument kinds know nothing of grids. The kind is told apart
// through AttrTypeArgVisitor rather than by type tests, so that a kind added
// to the model fails to compile here until it has a cell, instead of getting
// a wrong one.
#ifndef VYR_ATTRTYPESDLG_ARGUMENTCELLS_H
#define VYR_ATTRTYPESDLG_ARGUMENTCELLS_H

#include "attrtypes/attrtypearg.h"
#include "attrtypesdlg/argumenteditor.h"

#include <map>
#include <memory>
#include <optional>
#include <utility>

namespace vyr {

class CellActionHandler;
class CUGCell;
class CVVyrGrid;
class DataTypeMappings;

// The editor a list-valued argument opens; nothing for the other kinds.
std::optional<ArgumentEditor::Kind> editorKindOf(const AttrTypeArg &argument);

class ArgumentCells
{
public:
    // Prepares cells of `grid`, which outlives this object.
    explicit ArgumentCells(CVVyrGrid &grid);
    ~ArgumentCells();
    ArgumentCells(const ArgumentCells &) = delete;
    ArgumentCells &operator=(const ArgumentCells &) = delete;

    // Prepares `cell` to edit `argument`. The cell's text is left alone,
    // except that an integer width starts at "11".
    void configureCell(const AttrTypeArg &argument, CUGCell &cell);

private:
    class Configurator;
    class EditorLauncher;
    CellActionHandler *launcher(ArgumentEditor::Kind kind, const DataTypeMappings *registry);

    CVVyrGrid &m_grid;
    // One launcher per editor kind and format, kept as long as the cells
    // that name them.
    std::map<std::pair<ArgumentEditor::Kind, const DataTypeMappings *>, std::unique_ptr<CellActionHandler>> m_launchers;
};

} // namespace vyr

#endif // VYR_ATTRTYPESDLG_ARGUMENTCELLS_H
