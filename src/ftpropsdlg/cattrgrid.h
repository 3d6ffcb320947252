// CAttrGrid: the user attributes of a feature type, one row per attribute -
// its name in column 0, its data type in the type columns of CAttrTypeGrid
// from column 1 on. The last row is always blank, for a new attribute.
//
// A new attribute starts with the format's "vyr_char(30)" in its own
// vocabulary (else "vyr_int32", else the format's default type); every
// later one copies the type of the row above. A typed name is made legal
// for the format at once (for a writer), against the other rows' names and
// the format's own attribute names; the cell's tip (and its description for
// a screen reader) then says which rules changed it.
#ifndef VYR_FTPROPSDLG_CATTRGRID_H
#define VYR_FTPROPSDLG_CATTRGRID_H

#include "attrtypesdlg/cattrtypegrid.h"
#include "ftprops/ftpropsformatinfo.h"
#include "ftprops/ftpropsschemainfo.h"
#include "ftprops/namerules.h"
#include "ftprops/schemareview.h"

#include <QHash>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace vyr {

class CAttrGrid : public CAttrTypeGrid
{
    Q_OBJECT

public:
    static constexpr int kNameColumn = 0;
    static constexpr int kTypeColumn = 1;

    // The format's registry must outlive the grid; `domainNames` are what
    // the domain column offers besides "none" (none: no domain column).
    CAttrGrid(FTPropsSchemaInfo *schema, const FTPropsFormatInfo *format, const DataTypeMappings &registry,
              StringList domainNames = {}, QWidget *parent = nullptr);

    // Appends a row as the schema holds it: `name` with `type`, or, when the
    // grid's registry cannot read the type, `typeText` as it stands. Its
    // index, or -1.
    long AppendLoadedRow(const QString &name, const AttrType *type, const QString &typeText);
    // Appends the schema's user attributes of `names` as rows that show them
    // as AppendLoadedRow would show each with its type as the schema holds
    // it, made when shown or touched: a type is read from the schema when
    // its row's texts are first asked for. The grid keeps them for as long
    // as it lives; their names in loadedAttributes(), their types through
    // LoadedType.
    void LoadAttributes(const StringList &names);
    const std::vector<UserAttributeTypes> &loadedAttributes() const { return m_loaded; }
    const std::string &LoadedType(std::size_t record);
    // Reads every loaded attribute's type now, as the schema holds it while
    // nothing has been written.
    void ReadLoadedTypes();
    // The domain column offers the suffixes of the loaded attributes' types,
    // read when first needed; before the grid is attached.
    void TakeDomainsFromLoadedTypes();
    // The attribute a row shows as it was loaded, while the row is untouched
    // (loaded, not made); null otherwise.
    const UserAttributeTypes *LoadedAttributeOf(long row) const;
    // What a loaded attribute's row shows in the name column, and what
    // TypeKey gives for it.
    QString LoadedName(std::size_t record);
    QString LoadedTypeKey(std::size_t record);
    // Shows a type text the format has no template of (a type kept from the
    // schema, or a generic type standing for one the format has no word
    // for): the argument cells take nothing.
    void SetTypeText(long row, const QString &text);
    // What the row's type columns show, as one text: rows that read alike
    // describe the same type.
    QString TypeKey(long row);
    // All of a row's texts, name first; SetRowTexts shows them again as
    // they were, the argument cells set up for the type.
    QStringList RowTexts(long row);
    void SetRowTexts(long row, const QStringList &texts);
    // Says what a type cell shows beyond its text, for its tip and a screen
    // reader; empty for nothing.
    void SetTypeNote(std::function<QString(long row)> note) { m_typeNote = std::move(note); }
    // The format the names follow; its registry's types stay until the grid
    // is made anew.
    void SetFormat(const FTPropsFormatInfo *format);
    const FTPropsFormatInfo *format() const { return m_format; }

    // Rows holding attributes: every row but the blank last one.
    long attributeRowCount() const { return recordCount(); }
    // The non-empty names of the attribute rows, in row order.
    StringList GetAttributeNames();
    // Whether a name in `row` may not take `name`: another row holds it, or
    // it is one of `formatNames` (the format's own attribute names, from
    // FormatAttrNames). Answered from the column's counts, without reading
    // the other rows; valid while the grid lives.
    NameTakenTest TakenBy(long row, const StringSet &formatNames);
    static StringSet FormatAttrNames(const FTPropsFormatInfo &format);

    // Why the format changed a typed name, for its cell's tip and for a
    // screen reader; empty when it did not.
    QString NameChangeReason(long row);
    // The row's name was `before` in the format the grid had until now, and
    // the current format's rules made it what the row shows: its tip and
    // NameLegalisations say which rules, as for a typed name.
    void NoteMovedName(long row, const QString &before);
    // Each attribute row's name the format made of a typed one, in row
    // order: what was typed, and the rules that changed it.
    std::vector<NameLegalisation> NameLegalisations();
    QString OnCellDescription(int column, long row) override;

signals:
    // An attribute's name changed from `before` (empty for a new one) to
    // `after` (typed, pasted, undone or redone): whatever names the
    // attribute goes with it.
    void nameReplaced(const QString &before, const QString &after);
    // The row of an attribute named `name` is leaving, and undo may put it
    // back; `loaded`: the row showed the attribute as loaded, untouched.
    void attributeDeleting(const QString &name, bool loaded);
    // Undo put back the row of an attribute named `name`.
    void attributeRestored(const QString &name);

protected:
    void OnGridInit() override;
    int OnCellTipText(int column, long row, int section, QString &text) override;
    bool OnRowAdded(long row) override;
    void OnCellChange(int column, long row, ug::TextSource source) override;
    QString OnCheckText(int column, long row, const QString &text) override;
    void OnCellTextReplaced(int column, long row, const QString &before) override;
    void OnRecordsDeleting(long row, long count) override;
    void OnRecordsRestored(long row, long count) override;
    void LayoutLeadingColumns(int width) override;
    QString LoadedText(std::size_t record, int column) override;
    bool IsLoadedCellEnabled(std::size_t record, int column) override;
    void MakeLoadedRow(long row, std::size_t record) override;

private:
    // Each rule that changed a typed name.
    QString NameChangeRules(const QString &typed, const AttributeNameSteps &steps) const;
    // The legal name of `steps` was made of `typed` by them.
    void NoteNameChange(const QString &typed, const AttributeNameSteps &steps);
    // The type a first attribute gets; null when the format has none.
    std::unique_ptr<AttrType> FirstRowType() const;
    int typeListMode() const;
    // Fills a blank row as the schema holds an attribute.
    void ShowLoadedRow(long row, const QString &name, const AttrType *type, const QString &typeText);
    // TypeKey of the texts and enabled cells `cellOf` answers.
    template <class Cells>
    QString typeKeyOf(const Cells &cellOf);
    // The type a loaded attribute's row shows; null for a type text the
    // format does not read.
    std::unique_ptr<AttrType> LoadedRowType(std::size_t record);
    // What a loaded attribute's type columns show once made, read from its
    // type once, when first asked for.
    const TypeCells &loadedCells(std::size_t record);

    FTPropsSchemaInfo *m_schema;
    const FTPropsFormatInfo *m_format;
    std::function<QString(long row)> m_typeNote;
    // The format's own attribute names, which a typed name may not take.
    StringSet m_formatAttrNames;
    // For a legal name the format made of a typed one: what was typed, and
    // why.
    struct NameChange
    {
        QString typed;
        QString rules;
    };
    QHash<QString, NameChange> m_nameChanges;
    // The attributes loaded, by record, with what their rows show, made
    // when first asked for.
    std::vector<UserAttributeTypes> m_loaded;
    struct LoadedShown
    {
        std::optional<QString> name;
        std::unique_ptr<TypeCells> cells;
        bool typeRead = false;
    };
    std::vector<LoadedShown> m_loadedShown;
    bool m_loading = false;
    bool m_legalising = false;
};

} // namespace vyr

#endif // VYR_FTPROPSDLG_CATTRGRID_H
