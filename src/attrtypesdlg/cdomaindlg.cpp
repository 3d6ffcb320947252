#include "attrtypesdlg/cdomaindlg.h"

#include "attrtypes/datatypemappings.h"
#include "attrtypes/typestring.h"
#include "attrtypesdlg/cattrtypegrid.h"
#include "uikit/dialogutils.h"
#include "uikit/narrowtext.h"
#include "uikit/resourcelibrary.h"

namespace vyr {

CDomainDlg::CDomainDlg(unsigned templateId, DomainKind kind, StringList domain, const DataTypeMappings *registry,
                       bool editable, int typeGridMode, QWidget *parent)
    : CVyrDialog(templateId, 0, true, kHelpTopic, parent, DialogMode::ModeModal)
    , m_kind(kind)
    , m_domain(std::move(domain))
    , m_noTypes(registry ? nullptr : std::make_unique<DataTypeMappings>(std::string(), !editable))
    , m_registry(registry ? registry : m_noTypes.get())
    , m_editable(editable)
    , m_typeGridMode(typeGridMode)
{
    RegisterControl(&m_name, kIdName);
    RegisterControl(&m_nameOnly, kIdNameOnly);
}

CDomainDlg::~CDomainDlg() = default;

bool CDomainDlg::OnInitDialog()
{
    CVyrDialog::OnInitDialog();
    auto *grid = new CAttrTypeGrid(*m_registry, 0, m_typeGridMode, false);
    if (grid->AttachToDialogItem(this, kIdTypeGrid))
        m_typeGrid = grid;
    else
        delete grid;
    AttachDefinitionControls();

    const DomainList shown = readDomainList(m_domain, m_kind);
    if (m_name)
        m_name->setText(fromNarrow(shown.name));
    std::unique_ptr<AttrType> field;
    if (shown.byName) {
        if (m_nameOnly)
            m_nameOnly->setChecked(true);
    } else {
        field = m_registry->createType(shown.fieldType, kDialogListMode);
        ShowDefinition(shown);
    }
    if (m_typeGrid) {
        m_typeGrid->AppendBlankRow();
        if (field)
            m_typeGrid->SetRowType(0, *field);
    }
    if (m_name)
        m_name->setEnabled(m_editable);
    if (m_nameOnly) {
        m_nameOnly->setEnabled(m_editable);
        connect(m_nameOnly.orStandIn(), &QCheckBox::clicked, this, [this] { ApplyEnablingRule(); });
    }
    ApplyEnablingRule();
    return true;
}

bool CDomainDlg::isNameOnly() const
{
    return m_nameOnly && m_nameOnly->isChecked();
}

void CDomainDlg::ApplyEnablingRule()
{
    const bool enable = m_editable && !isNameOnly();
    if (m_typeGrid)
        m_typeGrid->EnableControl(enable);
    EnableDefinition(enable);
}

bool CDomainDlg::Refuse(unsigned messageId)
{
    return Refuse(loadResourceString(messageId));
}

bool CDomainDlg::Refuse(const QString &message)
{
    ShowExclamationBox(message, QString(), this, MbOk);
    return false;
}

void CDomainDlg::OnOK()
{
    // Read-only, the dialog only showed the domain: nothing to check or take.
    if (!m_editable) {
        CVyrDialog::OnOK();
        return;
    }
    if (m_typeGrid)
        m_typeGrid->CommitEdit();
    const std::string name = m_name ? toNarrow(m_name->text()) : std::string();
    if (name.empty()) {
        Refuse(res::DomainNameRequired);
        return;
    }
    if (!isNameOnly() && !CheckDefinition())
        return;
    CVyrDialog::OnOK();
    // A domain given by name, or one whose field type the grid does not
    // describe, is its name alone.
    DomainList taken;
    taken.name = name;
    if (!isNameOnly() && m_typeGrid) {
        if (const std::unique_ptr<AttrType> field = m_typeGrid->GetRowType(0)) {
            taken.byName = false;
            taken.fieldType = formatType(*field, kDialogListMode);
            TakeDefinition(taken);
        }
    }
    m_domain = writeDomainList(taken, m_kind);
}

qintptr CDomainDlg::OnHelpRequest(qintptr, qintptr)
{
    return ShowTopicHelp();
}

} // namespace vyr
