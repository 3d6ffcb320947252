#include "ftpropsdlg/cfeattypepropsexposableattrs.h"

#include "ftpropsdlg/cfeattypepropsdlg.h"
#include "ftpropsdlg/cformatattrgrid.h"
#include "ftprops/listelements.h"

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

CFeatTypePropsExposableAttrs::~CFeatTypePropsExposableAttrs()
{
    if (m_grid)
        m_grid->SupplyRowsWhenWanted(nullptr);
}

bool CFeatTypePropsExposableAttrs::OnInitDialog()
{
    CVyrDialog::OnInitDialog();
    // The grid takes its place (and its place in the tab order) now; its
    // rows come when they are first needed.
    auto *grid = new CFormatAttrGrid(m_schema, m_format);
    if (!grid->AttachToDialogItem(this, kIdGrid)) {
        delete grid;
        return true;
    }
    m_grid = grid;
    grid->SupplyRowsWhenWanted([this] { LoadRows(); });
    for (const auto &[id, checked] : {std::pair{kIdCheckAll, true}, std::pair{kIdClearAll, false}}) {
        if (auto *button = qobject_cast<QAbstractButton *>(GetDlgItem(id))) {
            connect(button, &QAbstractButton::clicked, grid, [this, grid, checked = checked] {
                EnsureRows();
                grid->CommitEdit();
                grid->CheckAll(checked);
            });
        }
    }
    return true;
}

void CFeatTypePropsExposableAttrs::EnsureRows() const
{
    if (m_grid)
        m_grid->WantRows();
}

CFormatAttrGrid *CFeatTypePropsExposableAttrs::grid() const
{
    EnsureRows();
    return m_grid;
}

void CFeatTypePropsExposableAttrs::LoadRows()
{
    if (m_grid)
        m_grid->Fill();
}

bool CFeatTypePropsExposableAttrs::ValidatePage()
{
    // The rows are made before any page writes: they count the list
    // elements the schema exposes as it was opened, not as OK leaves it.
    EnsureRows();
    if (m_grid)
        m_grid->CommitEdit();
    return true;
}

StringList CFeatTypePropsExposableAttrs::GetExposedNames() const
{
    EnsureRows();
    return m_grid ? m_grid->GetExposedNames() : StringList();
}

void CFeatTypePropsExposableAttrs::WriteToSchema(FTPropsSchemaInfo &target, const StringList *apply,
                                                 const StringList *remove)
{
    EnsureRows();
    if (!m_grid)
        return;
    const FTPropsFormatInfo *targetFormat = m_dialog->formats().find(target.getFormatId());
    if (!targetFormat)
        targetFormat = m_format;
    const StringList formatNames = targetFormat->getFormatAttrNames();
    const StringList exposed = target.getAttributeNames(false, true);
    // Applied to another feature type, only the chosen names change: those
    // to apply as the rows say, those to delete no longer exposed.
    const bool everything = !apply && !remove;
    for (long row = 0; row < m_grid->GetRowCount(); ++row) {
        const auto read = m_grid->ReadRow(row);
        if (!read || read->name.empty() || !contains(formatNames, read->name))
            continue;
        const bool toApply = everything || (apply && contains(*apply, read->name));
        const bool toRemove = everything || (remove && contains(*remove, read->name));
        if (ListElements::isList(read->name)) {
            if (read->checked && toApply) {
                // Elements exposed apart (0 and 3) stay so while the count
                // they show is kept.
                if (ListElements(read->name).countIn(exposed) != read->count)
                    target.expandListAttribute(read->name, read->count);
            } else if (!read->checked && toRemove) {
                const ListElements elements(read->name);
                if (std::any_of(exposed.begin(), exposed.end(),
                                [&](const std::string &name) { return elements.isElement(name); }))
                    target.expandListAttribute(read->name, 0);
                if (contains(exposed, read->name))
                    target.removeAttribute(read->name);
            }
            continue;
        }
        if (read->checked && toApply && !contains(exposed, read->name))
            target.storeAttribute(read->name, targetFormat->getFormatAttrType(read->name), true);
        else if (!read->checked && toRemove && contains(exposed, read->name))
            target.removeAttribute(read->name);
    }
}

void CFeatTypePropsExposableAttrs::ChangeFormat(const FTPropsFormatInfo *format)
{
    if (!format)
        return;
    // The rows move from the format they were made in.
    EnsureRows();
    if (!m_grid) {
        m_format = format;
        return;
    }
    // A name both formats have keeps its row; the others show what they
    // had when the page last showed the new format, else what the schema
    // exposes.
    std::map<std::string, std::pair<bool, int>> kept;
    std::vector<std::pair<bool, int>> leaving;
    for (long row = 0; row < m_grid->GetRowCount(); ++row) {
        if (const auto read = m_grid->ReadRow(row)) {
            kept[read->name] = {read->checked, read->count};
            leaving.emplace_back(read->checked, read->count);
        }
    }
    m_rowsByFormat[m_format->getId()] = std::move(leaving);
    m_format = format;
    m_grid->SetFormat(format);
    m_grid->Fill();
    const auto earlier = m_rowsByFormat.find(format->getId());
    for (long row = 0; row < m_grid->GetRowCount(); ++row) {
        const auto read = m_grid->ReadRow(row);
        if (!read)
            continue;
        if (earlier != m_rowsByFormat.end() && std::size_t(row) < earlier->second.size())
            m_grid->SetRow(row, earlier->second[std::size_t(row)].first, earlier->second[std::size_t(row)].second);
        else if (const auto same = kept.find(read->name); same != kept.end())
            m_grid->SetRow(row, same->second.first, same->second.second);
    }
    m_grid->RepaintAll();
}

} // namespace vyr
