#include "attrtypesdlg/ccodeddomaindlg.h"

#include "uikit/cvvyrgrid.h"
#include "uikit/narrowtext.h"
#include "util/resourceids.h"
#include "uikit/resourcelibrary.h"

namespace vyr {

CCodedDomainDlg::CCodedDomainDlg(StringList domain, const DataTypeMappings *registry, bool editable, QWidget *parent)
    : CDomainDlg(kTemplateId, DomainKind::Coded, std::move(domain), registry, editable, kTypeMode, parent)
{
}

void CCodedDomainDlg::AttachDefinitionControls()
{
    auto *codes = new CVVyrGrid(2, true);
    if (!codes->AttachToDialogItem(this, kIdCodeGrid)) {
        delete codes;
        return;
    }
    m_codes = codes;
    codes->SetTopHeadingHeight(20);
    codes->SetCellText(0, -1, loadResourceString(res::CodeHeading));
    codes->SetCellText(1, -1, loadResourceString(res::DescriptionHeading));
}

void CCodedDomainDlg::ShowDefinition(const DomainList &domain)
{
    if (!m_codes)
        return;
    for (const auto &[code, description] : domain.codes)
        m_codes->AppendRowTexts({fromNarrow(code), fromNarrow(description)});
}

void CCodedDomainDlg::EnableDefinition(bool enable)
{
    if (m_codes)
        m_codes->EnableControl(enable);
}

bool CCodedDomainDlg::CheckDefinition()
{
    if (!m_codes)
        return Refuse(res::DomainCodeRequired);
    m_codes->CommitEdit();
    // A code stands for one description: the second of two equal codes is
    // where the user decides which to change.
    if (m_codes->RefuseRepeatedText(0, res::DomainCodeRepeated))
        return false;
    for (long row = 0; row < m_codes->GetRowCount(); ++row) {
        if (!m_codes->GetCellString(row, 0).isEmpty())
            return true;
    }
    m_codes->setFocus();
    return Refuse(res::DomainCodeRequired);
}

void CCodedDomainDlg::TakeDefinition(DomainList &domain)
{
    if (!m_codes)
        return;
    for (long row = 0; row < m_codes->GetRowCount(); ++row) {
        const QString code = m_codes->GetCellString(row, 0);
        if (!code.isEmpty())
            domain.codes.emplace_back(toNarrow(code), toNarrow(m_codes->GetCellString(row, 1)));
    }
}

} // namespace vyr
