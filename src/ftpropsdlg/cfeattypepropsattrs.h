// CFeatTypePropsAttrs: the user attributes page of the feature type
// properties dialog - the feature type's attributes with their data types,
// in a CAttrGrid, and buttons that move, sort and delete the selected rows.
//
// The page is shown for formats with user attributes. For a reader it is
// read-only unless the authoring application allows editing source feature
// types. OK writes the rows back in their order, each with its type in the
// format's words and its generic type; a row left as it was keeps what the
// schema held byte for byte, even a type the format cannot read. Applied to
// another feature type, only the chosen names are stored or removed there,
// in that feature type's format.
#ifndef VYR_FTPROPSDLG_CFEATTYPEPROPSATTRS_H
#define VYR_FTPROPSDLG_CFEATTYPEPROPSATTRS_H

#include "ftprops/ftpropsformatinfo.h"
#include "ftprops/ftpropsschemainfo.h"
#include "ftprops/schemamove.h"
#include "ftpropsdlg/formatforms.h"
#include "ftpropsdlg/knownrowtypes.h"
#include "uikit/cvyrdialog.h"
#include "uikit/gridrowbuttons.h"

#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace vyr {

class CAttrGrid;
class CFeatTypePropsDlg;
class AttrType;
class DataTypeMappings;

class CFeatTypePropsAttrs : public CVyrDialog
{
    Q_OBJECT

public:
    static constexpr unsigned kTemplateId = 339;
    static constexpr unsigned kIdGrid = 1184;
    static constexpr unsigned kIdMoveUp = kIdMoveRowsUp;
    static constexpr unsigned kIdMoveDown = kIdMoveRowsDown;
    static constexpr unsigned kIdSort = kIdSortRows;
    static constexpr unsigned kIdDelete = kIdDeleteRows;

    CFeatTypePropsAttrs(FTPropsSchemaInfo *schema, const FTPropsFormatInfo *format, CFeatTypePropsDlg *dialog);
    ~CFeatTypePropsAttrs() override;

    // True when every row has a name and a type the format knows (or one
    // the schema held) with every argument it takes; otherwise the user has
    // been told why, with the cell at fault current.
    bool ValidatePage();
    // Writes the rows into `target`: all of them in order when both lists
    // are null, else the names of `apply` (stored or updated) and `remove`
    // (removed). In the target's format when it differs from the page's.
    void WriteToSchema(FTPropsSchemaInfo &target, const StringList *apply, const StringList *remove);
    // The dataset changed: each type becomes the new format's counterpart,
    // or its generic type where the format has none, and names the format
    // does not allow are made legal. A row unchanged since it left a format
    // the page showed before is shown as it was there.
    virtual void ChangeFormat(const FTPropsFormatInfo *format);
    // The non-empty names of the rows, in row order.
    StringList GetAttributeNames() const;
    // Whether the schema had an attribute of this name when the page opened.
    bool WasLoaded(const std::string &name) const;
    // The types the schema held for a loaded attribute (the grid's record),
    // the generic one read when first asked for.
    AttributeTypeTexts LoadedTypeTexts(std::size_t record);

    // The page's grid, its rows made if they were not yet.
    CAttrGrid *grid() const;
    // Whether the rows may be changed (and are written).
    bool editable() const;

protected:
    bool OnInitDialog() override;

private:
    const DataTypeMappings &registryOf(const FTPropsFormatInfo &format);
    // The rows are made when the page is first shown or first asked about:
    // a dialog opened to rename a feature type of 100,000 attributes does
    // not read them. Every way in to the rows comes through here first.
    void EnsureRows() const;
    // Fills the grid with the schema's user attributes.
    void LoadRows();
    // The texts a row's type is written with: what the schema held when the
    // row reads as it was loaded (or as a move made it), else the type the
    // row's columns describe; nothing when they describe none.
    std::optional<AttributeTypeTexts> RowTypeTexts(long row);
    // What the schema held (or a move made) for a row that reads as it did
    // then; null for a type a person gave.
    const KnownRowTypes::Given *KnownType(long row);
    // Turns to the page with the keyboard on the cell.
    void ShowCell(long row, int column);
    // Tells the user `message`, with the cell at fault current.
    bool Refuse(long row, int column, const QString &message);
    // Shows a row as a move carried it into the page's format; with `known`
    // its type is known, as the move carried it, for writing back.
    void ShowMovedRow(long row, const UserAttributeTypes &moved, bool known);
    // The tip of a type cell that stands for a type the format has no word
    // for.
    QString TypeNote(long row);

    FTPropsSchemaInfo *m_schema;
    const FTPropsFormatInfo *m_format;
    CFeatTypePropsDlg *m_dialog;
    CAttrGrid *m_grid = nullptr;
    class LoadedTypes;
    std::unique_ptr<LoadedTypes> m_loadedTypes;
    KnownRowTypes m_knownTypes;
    // The generic types of the loaded attributes, by record, once read.
    std::vector<std::optional<std::string>> m_loadedGenerics;
    // The loaded attributes' names, gathered when first asked about.
    mutable std::optional<std::unordered_set<std::string>> m_loadedNames;
    FormatForms m_rowForms;
    // Stands in for the registry of a format that has no type mappings.
    std::unique_ptr<DataTypeMappings> m_emptyRegistry;
};

} // namespace vyr

#endif // VYR_FTPROPSDLG_CFEATTYPEPROPSATTRS_H
