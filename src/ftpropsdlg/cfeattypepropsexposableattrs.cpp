#include "ftpropsdlg/cfeattypepropsexposableattrs.h"

#include "ftpropsdlg/cfeattypepropsdlg.h"
#include "ftpropsdlg/cformatattrgrid.h"

#include <QAbstractButton>

#include <algorithm>

namespace vyr {

namespace {

bool contains(const StringList &names, const std::string &name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

} // namespace

CFeatTypePropsExposableAttrs::CFeatTypePropsExposableAttrs(FTPropsSchemaInfo *schema, const FTPropsFormatInfo *format,
                                                           CFeatTypePropsDlg *dialog)
    : CVyrDialog(kTemplateId, 0, false, std::string(), dialog, DialogMode::ModeModal)
    , m_schema(schema)
    , m_format(format)
    , m_dialog(dialog)
{
    // A page lives inside the frame, not in a window of its own.
    setWindowFlags(Qt::Widget);
}

CFeatTypePropsExposableAttrs::~CFeatTypePropsExposableAttrs() = default;

bool CFeatTypePropsExposableAttrs::OnInitDialog()
{
    CVyrDialog::OnInitDialog();
    auto *grid = new CFormatAttrGrid(m_schema, m_format);
    if (!grid->AttachToDialogItem(this, kIdGrid)) {
        delete grid;
        return true;
    }
    m_grid = grid;
    grid->Fill();
    m_exposedAtOpening = grid->GetExposedNames();
    for (const auto &[id, checked] : {std::pair{kIdCheckAll, true}, std::pair{kIdClearAll, false}}) {
        if (auto *button = qobject_cast<QAbstractButton *>(GetDlgItem(id))) {
            connect(button, &QAbstractButton::clicked, grid, [grid, checked = checked] {
                grid->CommitEdit();
                grid->CheckAll(checked);
            });
        }
    }
    return true;
}

bool CFeatTypePropsExposableAttrs::ValidatePage()
{
    if (m_grid)
        m_grid->CommitEdit();
    return true;
}

StringList CFeatTypePropsExposableAttrs::GetExposedNames() const
{
    return m_grid ? m_grid->GetExposedNames() : StringList();
}

void CFeatTypePropsExposableAttrs::WriteToSchema(FTPropsSchemaInfo &target, const StringList *apply,
                                                 const StringList *remove)
{
    if (!m_grid)
        return;
    const FTPropsFormatInfo *targetFormat = m_dialog->formats().find(target.getFormatId());
    if (!targetFormat)
        targetFormat = m_format;
    const StringList formatNames = targetFormat->getFormatAttrNames();
    const StringList exposed = target.getAttributeNames(false, true);
    for (long row = 0; row < m_grid->GetRowCount(); ++row) {
        const auto read = m_grid->ReadRow(row);
        // Applied to another feature type, only the chosen names change.
        if (!read || !read->checked || (apply && !contains(*apply, read->name)))
            continue;
        if (!contains(exposed, read->name) && contains(formatNames, read->name))
            target.storeAttribute(read->name, targetFormat->getFormatAttrType(read->name), true);
        if (!read->name.empty())
            target.expandListAttribute(read->name, read->count);
    }
    const StringList checked = GetExposedNames();
    for (const std::string &name : m_exposedAtOpening) {
        if (!contains(checked, name) && contains(formatNames, name) && (!remove || contains(*remove, name)))
            target.removeAttribute(name);
    }
}

void CFeatTypePropsExposableAttrs::ChangeFormat(const FTPropsFormatInfo *format)
{
    if (!format)
        return;
    m_format = format;
    if (m_grid) {
        m_grid->SetFormat(format);
        m_grid->Fill();
    }
}

} // namespace vyr
