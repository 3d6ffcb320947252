// CFeatTypePropsAttrs: the user attributes page of the feature type
// properties dialog - the feature type's attributes with their data types,
// in a CAttrGrid, and buttons that move, sort and delete the selected rows.
//
// The page is shown for formats with user attributes. For a reader it is
// read-only unless the authoring application allows editing source feature
// types. OK writes the rows back in their order; applied to another feature
// type, only the chosen names are stored or removed there.
#ifndef VYR_FTPROPSDLG_CFEATTYPEPROPSATTRS_H
#define VYR_FTPROPSDLG_CFEATTYPEPROPSATTRS_H

#include "ftprops/ftpropsformatinfo.h"
#include "ftprops/ftpropsschemainfo.h"
#include "uikit/cvyrdialog.h"
#include "uikit/gridrowbuttons.h"

#include <memory>
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

    // True when every row has a name and a type the format knows with
    // acceptable arguments; otherwise the user has been told why (or, for
    // an unknown type, shown the cell).
    bool ValidatePage();
    // Writes the rows into `target`: all of them in order when both lists
    // are null, else the names of `apply` (stored or updated) and `remove`
    // (removed). In the target's format when it differs from the page's.
    void WriteToSchema(FTPropsSchemaInfo &target, const StringList *apply, const StringList *remove);
    // The dataset changed: the types follow the new format where it has a
    // type for them, and names it does not allow are made legal.
    virtual void ChangeFormat(const FTPropsFormatInfo *format);
    // The non-empty names of the rows, in row order.
    StringList GetAttributeNames() const;

    CAttrGrid *grid() const { return m_grid; }
    // Whether the rows may be changed (and are written).
    bool editable() const;

protected:
    bool OnInitDialog() override;

private:
    const DataTypeMappings &registryOf(const FTPropsFormatInfo &format);
    // The row's type by the current format, else in the form it kept from
    // a format the page showed before; null when neither knows it.
    std::unique_ptr<AttrType> rowType(long row);

    FTPropsSchemaInfo *m_schema;
    const FTPropsFormatInfo *m_format;
    CFeatTypePropsDlg *m_dialog;
    CAttrGrid *m_grid = nullptr;
    // The formats the page showed before, newest first: a type the current
    // format has no counterpart for keeps its form from one of them.
    std::vector<const FTPropsFormatInfo *> m_earlierFormats;
    // Stands in for the registry of a format that has no type mappings.
    std::unique_ptr<DataTypeMappings> m_emptyRegistry;
};

} // namespace vyr

#endif // VYR_FTPROPSDLG_CFEATTYPEPROPSATTRS_H
