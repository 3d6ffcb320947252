// The General page of a feature type that is read: besides the shared
// properties, whether it is merged with the other feature types that match a
// filter, and how that filter is read.
#ifndef VYR_FTPROPSDLG_CFEATTYPEPROPSGENERALSOURCE_H
#define VYR_FTPROPSDLG_CFEATTYPEPROPSGENERALSOURCE_H

#include "ftpropsdlg/cfeattypepropsgeneral.h"
#include "ftpropsdlg/reviewtexts.h"
#include "util/resourceids.h"

#include <QCheckBox>

namespace vyr {

class CFeatTypePropsGeneralSource final : public CFeatTypePropsGeneral
{
    Q_OBJECT

public:
    static constexpr unsigned kTemplateId = 338;
    static constexpr unsigned kIdMerge = 1290;
    static constexpr unsigned kIdMergeFilter = 1271;
    static constexpr unsigned kIdMergeKind = 1296;
    static constexpr unsigned kIdMergeOption = 1145;

    CFeatTypePropsGeneralSource(FTPropsSchemaInfo *schema, const FTPropsFormatInfo *format,
                                CFeatTypePropsDlg *dialog);

    bool ValidatePage() override;
    void WriteToSchema(FTPropsSchemaInfo &target, unsigned mask) override;
    bool isSource() const override { return true; }

    // The filter, kind and option are usable only while merging.
    void UpdateMergeControls();

protected:
    bool OnInitDialog() override;

private:
    DialogControl<QCheckBox> m_merge;
    DialogControl<QLineEdit> m_mergeFilter;
    DialogControl<QComboBox> m_mergeKind;
    DialogControl<QCheckBox> m_mergeOption;
};

} // namespace vyr

#endif // VYR_FTPROPSDLG_CFEATTYPEPROPSGENERALSOURCE_H
