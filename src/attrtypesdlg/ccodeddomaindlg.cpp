#include "attrtypesdlg/ccodeddomaindlg.h"

#include "attrtypes/attrtype.h"
#include "uikit/cvvyrgrid.h"
#include "uikit/narrowtext.h"
#include "util/resourceids.h"
#include "util/resourcelibrary.h"

namespace vyr {

CCodedDomainDlg::CCodedDomainDlg(StringList domain, const DataTypeMappings *registry, bool editable, QWidget *parent)
    : CDomainDlg(kTemplateId, std::move(domain), registry, editable, kTypeMode, parent)
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

bool CCodedDomainDlg::ShowDefinition(std::unique_ptr<AttrType> &field)
{
    const StringList &domain = domainList();
    if (domain.size() < 4)
        return false;
    field = CreateFieldType(domain[1]);
    if (m_codes) {
        for (std::size_t at = 2; at + 1 < domain.size(); at += 2)
            m_codes->AppendRowTexts({fromNarrow(domain[at]), fromNarrow(domain[at + 1])});
    }
    return true;
}

void CCodedDomainDlg::EnableDefinition(bool enable)
{
    if (!m_codes)
        return;
    m_codes->CommitEdit();
    m_codes->setEnabled(enable);
    m_codes->EnableGrid(enable);
}

bool CCodedDomainDlg::CheckDefinition()
{
    if (m_codes) {
        m_codes->CommitEdit();
        for (long row = 0; row < m_codes->GetRowCount(); ++row) {
            if (!m_codes->GetCellString(row, 0).isEmpty())
                return true;
        }
        m_codes->setFocus();
    }
    return Refuse(res::DomainCodeRequired);
}

StringList CCodedDomainDlg::DefinitionTexts()
{
    StringList texts;
    if (!m_codes)
        return texts;
    for (long row = 0; row < m_codes->GetRowCount(); ++row) {
        const QString code = m_codes->GetCellString(row, 0);
        if (code.isEmpty())
            continue;
        texts.push_back(toNarrow(code));
        texts.push_back(toNarrow(m_codes->GetCellString(row, 1)));
    }
    return texts;
}

} // namespace vyr
