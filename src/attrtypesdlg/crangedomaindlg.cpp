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
    DialogControl<QLineEdit> *const bounds[] = {&m_minimum, &m_maximum};
    const auto refuseAt = [this](DialogControl<QLineEdit> &bound, unsigned messageId) {
        if (bound) {
            bound->setFocus();
            bound->selectAll();
        }
        return Refuse(messageId);
    };
    double values[2] = {};
    for (std::size_t i = 0; i < 2; ++i) {
        const std::string text = *bounds[i] ? toNarrow((*bounds[i])->text()) : std::string();
        float single = 0;
        std::optional<std::string> plain;
        if (text.empty() || !parseFloat(text, single) || !(plain = plainNumberText(text)))
            return refuseAt(*bounds[i], res::DomainRangeInvalid);
        parseDouble(*plain, values[i]);
        m_checkedBounds[i] = std::move(*plain);
    }
    if (values[0] > values[1])
        return refuseAt(m_minimum, res::DomainRangeInverted);
    return true;
}

void CRangeDomainDlg::TakeDefinition(DomainList &domain)
{
    domain.minimum = m_checkedBounds[0];
    domain.maximum = m_checkedBounds[1];
}

} // namespace vyr
