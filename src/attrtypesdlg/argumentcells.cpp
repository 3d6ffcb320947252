#include "attrtypesdlg/argumentcells.h"

#include "attrtypes/attrtype.h"
#include "attrtypes/attrtypeargbrowselist.h"
#include "attrtypes/attrtypeargint.h"
#include "attrtypes/attrtypeargtemplate.h"
#include "attrtypes/datatypemappings.h"
#include "grid/cugcell.h"
#include "uikit/cvvyrgrid.h"
#include "uikit/narrowtext.h"
#include "util/resourceids.h"
#include "uikit/resourcelibrary.h"

namespace vyr {

namespace {

// The cell type parameter of the width drop lists.
constexpr int kWidthListParameter = 512;

const DataTypeMappings *registryOf(const AttrTypeArg &argument)
{
    return argument.type() ? argument.type()->registry() : nullptr;
}

// Which editor a list-valued kind opens.
class EditorKindReader final : public AttrTypeArgVisitor
{
public:
    std::optional<ArgumentEditor::Kind> kind;

    void visit(const AttrTypeArgInt &) override {}
    void visit(const AttrTypeArgIntWidth &) override {}
    void visit(const AttrTypeArgBinIntWidth &) override {}
    void visit(const AttrTypeArgStringSet &) override { kind = ArgumentEditor::Kind::StringSet; }
    void visit(const AttrTypeArgStringList &) override { kind = ArgumentEditor::Kind::StringList; }
    void visit(const AttrTypeArgStringMap &) override { kind = ArgumentEditor::Kind::StringMap; }
    void visit(const AttrTypeArgRangeDomain &) override { kind = ArgumentEditor::Kind::RangeDomain; }
    void visit(const AttrTypeArgCodedDomain &) override { kind = ArgumentEditor::Kind::CodedDomain; }
    void visit(const AttrTypeArgTemplate &arg) override { arg.prototype().accept(*this); }
};

} // namespace

std::optional<ArgumentEditor::Kind> editorKindOf(const AttrTypeArg &argument)
{
    EditorKindReader reader;
    argument.accept(reader);
    return reader.kind;
}

// Opens the editor of one kind of argument for the cell whose button was
// used, and takes its packed value back into the cell on OK. Whether the
// format is a reader's is read at that moment.
class ArgumentCells::EditorLauncher final : public CellActionHandler
{
public:
    EditorLauncher(ArgumentEditor::Kind kind, const DataTypeMappings *registry)
        : m_kind(kind)
        , m_registry(registry)
    {
    }

    void OnBrowse(CVVyrGrid &grid, int, long, CUGCell &cell) override
    {
        // A reader's format, or a read-only grid: the editor only shows.
        const bool editable = !(m_registry && m_registry->isSource()) && !cell.isReadOnly();
        ArgumentEditor editor(m_kind, toNarrow(cell.text()), m_registry, editable, grid.window());
        const std::optional<std::string> packed = editor.run();
        if (packed && editable)
            cell.setText(fromNarrow(*packed));
    }

private:
    ArgumentEditor::Kind m_kind;
    const DataTypeMappings *m_registry;
};

// Prepares one cell for the kind it visits.
class ArgumentCells::Configurator final : public AttrTypeArgVisitor
{
public:
    Configurator(ArgumentCells &cells, CUGCell &cell)
        : m_cells(cells)
        , m_cell(cell)
    {
    }

    void visit(const AttrTypeArgInt &) override { m_cell.setMask(QStringLiteral("99999999")); }
    void visit(const AttrTypeArgIntWidth &) override
    {
        QString label;
        for (int width = 1; width <= 16; ++width)
            label += QString::number(width) + u'\n';
        widthList(label);
        m_cell.setText(QStringLiteral("11"));
    }
    void visit(const AttrTypeArgBinIntWidth &) override { widthList(QStringLiteral("2\n4\n")); }
    void visit(const AttrTypeArgStringSet &arg) override { browse(arg); }
    void visit(const AttrTypeArgStringList &arg) override { browse(arg); }
    void visit(const AttrTypeArgStringMap &arg) override { browse(arg); }
    void visit(const AttrTypeArgRangeDomain &arg) override { browse(arg); }
    void visit(const AttrTypeArgCodedDomain &arg) override { browse(arg); }
    void visit(const AttrTypeArgTemplate &arg) override { arg.prototype().accept(*this); }

private:
    void widthList(const QString &label)
    {
        m_cell.setCellType(m_cells.m_grid.DropListTypeId());
        m_cell.setCellTypeParam(kWidthListParameter);
        m_cell.setLabel(label);
    }

    // A list-valued kind: a button that opens the kind's editor.
    void browse(const AttrTypeArg &arg)
    {
        const ArgumentEditor::Kind kind = *editorKindOf(arg);
        const DataTypeMappings *registry = registryOf(arg);
        m_cell.setCellType(m_cells.m_grid.BrowseTypeId());
        m_cell.setReadOnly(false);
        m_cell.setLabel(loadResourceString(registry && registry->isSource() ? res::BrowseViewLabel
                                                                              : res::BrowseEditLabel));
        m_cells.m_grid.SetCellActionHandler(m_cell, m_cells.launcher(kind, registry));
        m_cell.setTextColor(m_cells.m_grid.paletteColour(QPalette::Text));
    }

    ArgumentCells &m_cells;
    CUGCell &m_cell;
};

ArgumentCells::ArgumentCells(CVVyrGrid &grid)
    : m_grid(grid)
{
}

ArgumentCells::~ArgumentCells() = default;

CellActionHandler *ArgumentCells::launcher(ArgumentEditor::Kind kind, const DataTypeMappings *registry)
{
    std::unique_ptr<CellActionHandler> &launcher = m_launchers[{kind, registry}];
    if (!launcher)
        launcher = std::make_unique<EditorLauncher>(kind, registry);
    return launcher.get();
}

void ArgumentCells::configureCell(const AttrTypeArg &argument, CUGCell &cell)
{
    // What another kind prepared goes first.
    for (const std::uint32_t property : {CUGCell::CellType, CUGCell::CellTypeParam, CUGCell::Label, CUGCell::Mask,
                                         CUGCell::UserValue})
        cell.setPropertyFlag(property, false);
    Configurator configurator(*this, cell);
    argument.accept(configurator);
}

} // namespace vyr
