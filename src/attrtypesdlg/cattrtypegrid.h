// CAttrTypeGrid: a list grid that edits attribute data types in a run of
// four columns starting at its type column:
//
//   type column      the type: the display name (the name) of one of the
//                    format's templates, chosen from a drop list
//   type column + 1  first argument, enabled when the template takes one
//   type column + 2  second argument, enabled when it takes two
//   type column + 3  domain: "none" or one of the format's domain names,
//                    shown only when the format has domains
//
// Each argument cell is the cell its kind asks for (a number, a drop list of
// widths, a button that opens a list or domain editor; see argumentcells.h).
// Choosing a type sets the argument cells up for its template and gives
// them their defaults. Disabled cells hide their texts. A type, argument or
// domain a person chooses in one of several selected rows is given to every
// selected row whose cell can take it, as one step of the history. Pasted
// rows may give a type in the generic vocabulary ("vyr_char"): it becomes
// the format's own, and what has no counterpart is said once.
//
// The drop list offers the names of the format's own templates that are
// selectable in the grid's mode (in mode 1 neither "char" nor "boolean"), in
// ascending order, each once. Columns before the type column belong to the
// subclass, which sizes them (LayoutLeadingColumns); the type columns share
// what is left.
#ifndef VYR_ATTRTYPESDLG_CATTRTYPEGRID_H
#define VYR_ATTRTYPESDLG_CATTRTYPEGRID_H

#include "attrtypes/datatypemappings.h"
#include "attrtypesdlg/argumentcells.h"
#include "uikit/cvvyrgrid.h"

#include <QHash>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace vyr {

class CAttrTypeGrid : public CVVyrGrid
{
    Q_OBJECT

public:
    // `registry` must outlive the grid; without `domainNames` the format has
    // no domains and the domain column stays hidden.
    CAttrTypeGrid(const DataTypeMappings &registry, int typeColumn, int mode, bool keepNewRow,
                  StringList domainNames = {}, QWidget *parent = nullptr);
    ~CAttrTypeGrid() override;

    const DataTypeMappings &registry() const { return *m_registry; }
    // Offers the templates of another format from now on (`registry` must
    // outlive the grid). The rows keep their texts.
    void SetRegistry(const DataTypeMappings &registry);
    int typeColumn() const { return m_typeColumn; }
    int argumentColumn(int argument) const { return m_typeColumn + 1 + argument; }
    int domainColumn() const { return m_typeColumn + 3; }
    // Whether the format has domains; a grid whose domains come from a
    // source asks it now, when it has not yet.
    bool hasDomains() { return !domainNames().empty(); }
    bool IsCellEnabled(int column, long row) override;
    int mode() const { return m_mode; }
    // The display names the type drop list offers, in its order.
    const QStringList &typeNames() const { return m_typeNames; }
    // The template a display name stands for, or null.
    const AttrTypeTemplate *TemplateOf(const QString &displayName) const;

    // What a person chose goes to every selected row that takes it, also
    // when the current row had it already.
    int StoreUserText(int column, long row, const QString &text, ug::TextSource source) override;

    // What SetRowType leaves in the type columns for `type`, and how many
    // argument cells it enables.
    struct TypeCells
    {
        QString type;
        QString arguments[2];
        QString domain;
        std::size_t taken = 0;
    };
    TypeCells TypeCellsOf(const AttrType &type);
    // Fills the row's type columns from `type`, keeping its argument values.
    void SetRowType(long row, const AttrType &type);
    // A record appended from texts gets its cells set up for its type.
    long AppendRowTexts(const QStringList &texts) override;

    // The argument the row's template takes at `index` (0 or 1), fresh, or
    // null when it takes none there.
    std::unique_ptr<AttrTypeArg> ArgumentOf(long row, std::size_t index);

    // The type the row's columns describe: its name with the values of the
    // enabled, non-empty argument cells up to the first empty one, and the
    // domain as its suffix, as the format's registry reads them; null when
    // they describe none.
    std::unique_ptr<AttrType> GetRowType(long row);
    // As GetRowType, read by another format's registry (a type a row kept
    // from a format the grid showed before).
    std::unique_ptr<AttrType> RowTypeIn(long row, const DataTypeMappings &registry);

protected:
    void OnGridInit() override;
    // A blank row's argument cells stay disabled until it has a type, and
    // its domain cell is enabled only when the format has domains.
    bool OnRowAdded(long row) override;
    void OnCellChange(int column, long row, ug::TextSource source) override;
    void OnLayoutComponents(Layout &layout) override;
    // The width an argument column needs for its heading and its button.
    int ArgumentColumnFloor();
    // Says once which pasted types the format has no counterpart for.
    void OnPasted(const PasteResult &result) override;
    // An argument cell holds only what its kind keeps as it is: a width is
    // a whole number, not a text the type would read as its default.
    QString OnCheckText(int column, long row, const QString &text) override;
    // Sizes the columns before the type column for a grid `width` wide; the
    // base has none.
    virtual void LayoutLeadingColumns(int width);
    // The format's own type for a row's pasted type text and arguments in
    // the generic vocabulary; null when it has none.
    std::unique_ptr<AttrType> NativePastedType(long row);

    // Sets the row's argument cells up for the arguments of `pattern` (a
    // template, or a type the list does not offer); with `fresh` they take
    // the pattern's defaults, else they keep their texts.
    void SetUpArgumentCells(long row, const AttrType *pattern, bool fresh);
    // The argument cells of a row showing `type` follow its template; a
    // type the list does not offer (a generic one, or one the grid's mode
    // leaves out) keeps its own arguments, so that it is read back whole.
    const AttrType &PatternOf(const AttrType &type) const;
    // The domain names come from `source`, asked when first needed - when a
    // domain cell or whether there are domains is first asked about, or the
    // grid is first shown - rather than when the grid is made; before
    // OnGridInit.
    void SetDomainSource(std::function<StringList()> source);
    // Whether the domain column is laid out: the domains when known, and
    // none while they are not and the grid cannot be seen.
    bool showsDomainColumn();
    void OnCellRead(int column, long row, CUGCell &cell) override;
    // Laid out out of sight, the columns made no room for domains unknown.
    bool OnLayoutStale() override { return hasDomains() != m_laidOutWithDomains; }

private:
    // Gives what a person chose in `row` to the other selected rows.
    void SpreadChoice(int column, long row, ug::TextSource source);
    // A pasted type no template names waits, with its argument cells
    // opened to any text, to be mapped once the paste is in; false for any
    // other text.
    bool TakePastedType(int column, long row, ug::TextSource source);
    // Whether `row`'s type takes, in argument `column`, a value of the kind
    // that `source`'s type takes there; true for the other columns.
    bool TakesArgumentOf(long row, int column, long source);
    // Argument cells disabled until the row has a type; the domain cell
    // enabled only when the format has domains.
    void prepareRow(long row);
    // The registry's templates selectable in the grid's mode, by name.
    void collectTemplates();
    // The type column offers the templates.
    void offerTypeNames();
    // The domain column offers "none" and the domains.
    void offerDomainNames();
    const StringList &domainNames();

    const DataTypeMappings *m_registry;
    int m_typeColumn;
    int m_mode;
    // Null until asked of m_domainSource.
    std::optional<StringList> m_domainNames;
    std::function<StringList()> m_domainSource;
    // The new row's domain cell waits for the domains to be known.
    bool m_newRowDomainPending = false;
    bool m_laidOutWithDomains = false;
    QStringList m_typeNames;
    QHash<QString, const AttrTypeTemplate *> m_templates;
    ArgumentCells m_argumentCells;
    bool m_spreading = false;
    // Rows given a pasted type text the format has no template of, until
    // the paste ends.
    std::vector<long> m_pastedTypeRows;
};

} // namespace vyr

#endif // VYR_ATTRTYPESDLG_CATTRTYPEGRID_H
