#include "attrtypesdlg/crangedomaindlg.h"

#include "uikit/narrowtext.h"
#include "util/numbertext.h"
#include "util/resourceids.h"

namespace vyr {

CRangeDomainDlg::CRangeDomainDlg(StringList domain, const DataTypeMappings *registry, bool editable, QWidget *parent)
    : CDomainDlg(kTemplateId, DomainKind::Range, std::move(domain), registry, editable, kTypeMode, parent)
{
    RegisterControl(&m_minimum, kIdMinimum);
    RegisterControl(&m_maximum, kIdMaximum);
}

void CRangeDomainDlg::AttachDefinitionControls() {}

void CRangeDomainDlg::ShowDefinition(const DomainList &domain)
{
    if (m_minimum)
        m_minimum->setText(fromNarrow(domain.minimum));
    if (m_maximum)
        m_maximum->setText(fromNarrow(domain.maximum));
}

void CRangeDomainDlg::EnableDefinition(bool enable)
{
    if (m_minimum)
        m_minimum->setEnabled(enable);
    if (m_maximum)
        m_maximum->setEnabled(enable);
}

bool CRangeDomainDlg::CheckDefinition()
{
    for (const DialogControl<QLineEdit> *bound : {&m_minimum, &m_maximum}) {
        const std::string text = *bound ? toNarrow((*bound)->text()) : std::string();
        float value = 0;
        if (text.empty() || !parseFloat(text, value)) {
            if (*bound)
                (*bound)->setFocus();
            return Refuse(res::DomainRangeInvalid);
        }
    }
    return true;
}

void CRangeDomainDlg::TakeDefinition(DomainList &domain)
{
    domain.minimum = m_minimum ? toNarrow(m_minimum->text()) : std::string();
    domain.maximum = m_maximum ? toNarrow(m_maximum->text()) : std::string();
}

} // namespace vyr
