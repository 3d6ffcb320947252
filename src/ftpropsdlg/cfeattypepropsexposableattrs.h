// CFeatTypePropsExposableAttrs: the format attributes page of the feature
// type properties dialog - which of the format's own attributes the feature
// type exposes, in a CFormatAttrGrid, with buttons that check or clear them
// all. OK makes the feature type expose what the rows say and changes
// nothing else: a newly checked attribute is added (with the format's type)
// after the ones exposed already, a cleared one removed, and a list
// attribute exposes its elements 0 to count-1, never the "{}" name itself.
// A change of format shows the new format's attributes, as the page had
// them when it last showed that format.
#ifndef VYR_FTPROPSDLG_CFEATTYPEPROPSEXPOSABLEATTRS_H
#define VYR_FTPROPSDLG_CFEATTYPEPROPSEXPOSABLEATTRS_H

#include "ftprops/ftpropsformatinfo.h"
#include "ftprops/ftpropsschemainfo.h"
#include "uikit/cvyrdialog.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vyr {

class CFeatTypePropsDlg;
class CFormatAttrGrid;

class CFeatTypePropsExposableAttrs : public CVyrDialog
{
    Q_OBJECT

public:
    static constexpr unsigned kTemplateId = 340;
    static constexpr unsigned kIdGrid = 1144;
    static constexpr unsigned kIdCheckAll = 1166;
    static constexpr unsigned kIdClearAll = 1168;

    CFeatTypePropsExposableAttrs(FTPropsSchemaInfo *schema, const FTPropsFormatInfo *format,
                                 CFeatTypePropsDlg *dialog);
    ~CFeatTypePropsExposableAttrs() override;

    // Ends an edit under way; the page always may be written.
    bool ValidatePage();
    // Both lists null: every row. Otherwise only the names of `apply` are
    // exposed and those of `remove` no longer.
    void WriteToSchema(FTPropsSchemaInfo &target, const StringList *apply, const StringList *remove);
    virtual void ChangeFormat(const FTPropsFormatInfo *format);
    // The names of the checked rows, in row order.
    StringList GetExposedNames() const;

    // The page's grid, its rows made if they were not yet.
    CFormatAttrGrid *grid() const;

protected:
    bool OnInitDialog() override;

private:
    // The rows are made when the page is first shown or first asked about;
    // every way in to them comes through here first.
    void EnsureRows() const;
    void LoadRows();

    FTPropsSchemaInfo *m_schema;
    const FTPropsFormatInfo *m_format;
    CFeatTypePropsDlg *m_dialog;
    CFormatAttrGrid *m_grid = nullptr;
    // The rows the page showed for each format it left, by format id.
    std::map<std::string, std::vector<std::pair<bool, int>>> m_rowsByFormat;
};

} // namespace vyr

#endif // VYR_FTPROPSDLG_CFEATTYPEPROPSEXPOSABLEATTRS_H
