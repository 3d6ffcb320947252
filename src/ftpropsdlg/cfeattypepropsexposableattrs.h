// CFeatTypePropsExposableAttrs: the format attributes page of the feature
// type properties dialog - which of the format's own attributes the feature
// type exposes, in a CFormatAttrGrid, with buttons that check or clear them
// all. OK stores the newly checked ones with the format's types (list
// attributes expanded to their element count) and removes the ones cleared.
#ifndef VYR_FTPROPSDLG_CFEATTYPEPROPSEXPOSABLEATTRS_H
#define VYR_FTPROPSDLG_CFEATTYPEPROPSEXPOSABLEATTRS_H

#include "ftprops/ftpropsformatinfo.h"
#include "ftprops/ftpropsschemainfo.h"
#include "uikit/cvyrdialog.h"

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

    CFormatAttrGrid *grid() const { return m_grid; }

protected:
    bool OnInitDialog() override;

private:
    FTPropsSchemaInfo *m_schema;
    const FTPropsFormatInfo *m_format;
    CFeatTypePropsDlg *m_dialog;
    CFormatAttrGrid *m_grid = nullptr;
    StringList m_exposedAtOpening;
};

} // namespace vyr

#endif // VYR_FTPROPSDLG_CFEATTYPEPROPSEXPOSABLEATTRS_H
