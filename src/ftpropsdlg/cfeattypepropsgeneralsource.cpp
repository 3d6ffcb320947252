#include "ftpropsdlg/cfeattypepropsgeneralsource.h"

#include "ftpropsdlg/applyselection.h"
#include "uikit/narrowtext.h"
#include "uikit/resourcelibrary.h"

#include <iterator>

namespace vyr {

CFeatTypePropsGeneralSource::CFeatTypePropsGeneralSource(FTPropsSchemaInfo *schema, const FTPropsFormatInfo *format,
                                                         CFeatTypePropsDlg *dialog)
    : CFeatTypePropsGeneral(kTemplateId, schema, format, dialog)
{
    RegisterControl(&m_merge, kIdMerge);
    RegisterControl(&m_mergeFilter, kIdMergeFilter);
    RegisterControl(&m_mergeKind, kIdMergeKind);
    RegisterControl(&m_mergeOption, kIdMergeOption);
}

bool CFeatTypePropsGeneralSource::OnInitDialog()
{
    CFeatTypePropsGeneral::OnInitDialog();
    m_dataset->clear();
    m_dataset->addItem(fromNarrow(m_format->getFormatLongName()));
    m_merge->setChecked(m_schema->isMerged());
    for (const unsigned kind : kMergeKindLabels)
        m_mergeKind->addItem(loadResourceString(kind));
    m_mergeFilter->setText(fromNarrow(m_schema->getMergeFilter()));
    const int kind = m_schema->getMergeKind();
    m_mergeKind->setCurrentIndex(kind >= 0 && kind < int(std::size(kMergeKindLabels)) ? kind : -1);
    m_mergeOption->setChecked(m_schema->getMergeOption());
    UpdateMergeControls();
    connect(m_merge.orStandIn(), &QCheckBox::clicked, this, [this] { UpdateMergeControls(); });
    return true;
}

void CFeatTypePropsGeneralSource::UpdateMergeControls()
{
    const bool merging = m_merge->isChecked();
    m_mergeFilter->setEnabled(merging);
    m_mergeKind->setEnabled(merging);
    m_mergeOption->setEnabled(merging);
}

bool CFeatTypePropsGeneralSource::ValidatePage()
{
    if (!CFeatTypePropsGeneral::ValidatePage())
        return false;
    if (m_merge->isChecked() && m_mergeFilter->isEnabled() && m_mergeFilter->text().isEmpty())
        return Refuse(res::MergeFilterRequired, m_mergeFilter.orStandIn());
    if (m_merge->isChecked() && m_mergeKind->isEnabled() && m_mergeKind->currentIndex() < 0)
        return Refuse(res::MergeKindRequired, m_mergeKind.orStandIn());
    return true;
}

void CFeatTypePropsGeneralSource::WriteToSchema(FTPropsSchemaInfo &target, unsigned mask)
{
    CFeatTypePropsGeneral::WriteToSchema(target, mask);
    if (!(mask & general::Merge))
        return;
    target.setMerged(m_merge->isChecked());
    int kind = 0;
    for (int i = 0; i < int(std::size(kMergeKindLabels)); ++i) {
        if (m_mergeKind->currentText() == loadResourceString(kMergeKindLabels[i]))
            kind = i;
    }
    target.setMergeSettings(toNarrow(m_mergeFilter->text()), kind, m_mergeOption->isChecked());
}

} // namespace vyr
