#include "attrtypesdlg/crangedomaindlg.h"

#include "attrtypes/attrtype.h"
#include "uikit/narrowtext.h"
#include "util/numbertext.h"
#include "util/resourceids.h"

namespace vyr {

CRangeDomainDlg::CRangeDomainDlg(StringList domain, const DataTypeMappings *registry, bool editable, QWidget *parent)
    : CDomainDlg(kTemplateId, std::move(domain), registry, editable, kTypeMode, parent)
{
    RegisterControl(&m_minimum, kIdMinimum);
    RegisterControl(&m_maximum, kIdMaximum);
}

void CRangeDomainDlg::AttachDefinitionControls() {}

bool CRangeDomainDlg::ShowDefinition(std::unique_ptr<AttrType> &field)
{
    const StringList &domain = domainList();
    if (domain.size() != 4)
        return false;
    field = CreateFieldType(domain[1]);
    if (m_minimum)
        m_minimum->setText(fromNarrow(domain[2]));
    if (m_maximum)
        m_maximum->setText(fromNarrow(domain[3]));
    return true;
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

StringList CRangeDomainDlg::DefinitionTexts()
{
    return {m_minimum ? toNarrow(m_minimum->text()) : std::string(),
            m_maximum ? toNarrow(m_maximum->text()) : std::string()};
}

} // namespace vyr
