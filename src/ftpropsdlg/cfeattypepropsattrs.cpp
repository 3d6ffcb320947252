#include "ftpropsdlg/cfeattypepropsattrs.h"

#include "attrtypes/datatypemappings.h"
#include "attrtypes/typestring.h"
#include "ftprops/namerules.h"
#include "ftpropsdlg/cattrgrid.h"
#include "ftpropsdlg/cfeattypepropsdlg.h"
#include "uikit/dialogutils.h"
#include "uikit/gridrowbuttons.h"
#include "uikit/narrowtext.h"
#include "util/resourceids.h"
#include "uikit/resourcelibrary.h"

#include <algorithm>

namespace vyr {

CFeatTypePropsAttrs::CFeatTypePropsAttrs(FTPropsSchemaInfo *schema, const FTPropsFormatInfo *format,
                                         CFeatTypePropsDlg *dialog)
    : CVyrDialog(kTemplateId, 0, false, std::string(), dialog, DialogMode::ModeModal)
    , m_schema(schema)
    , m_format(format)
    , m_dialog(dialog)
{
    // A page lives inside the frame, not in a window of its own.
    setWindowFlags(Qt::Widget);
}

CFeatTypePropsAttrs::~CFeatTypePropsAttrs() = default;

const DataTypeMappings &CFeatTypePropsAttrs::registryOf(const FTPropsFormatInfo &format)
{
    if (const DataTypeMappings *registry = format.getDataTypeMappings())
        return *registry;
    if (!m_emptyRegistry)
        m_emptyRegistry = std::make_unique<DataTypeMappings>(format.getFormatName(), format.isSource());
    return *m_emptyRegistry;
}

bool CFeatTypePropsAttrs::editable() const
{
    return !m_format->isSource() || IsSourceFeatureTypeEditingAllowed();
}

bool CFeatTypePropsAttrs::OnInitDialog()
{
    CVyrDialog::OnInitDialog();
    auto *grid = new CAttrGrid(m_schema, m_format, registryOf(*m_format));
    if (!grid->AttachToDialogItem(this, kIdGrid)) {
        delete grid;
        return true;
    }
    m_grid = grid;
    grid->LoadAttributes();
    grid->EnableGrid(editable());
    ConnectGridRowButtons(*this, *grid, editable());
    return true;
}

StringList CFeatTypePropsAttrs::GetAttributeNames() const
{
    return m_grid ? m_grid->GetAttributeNames() : StringList();
}

bool CFeatTypePropsAttrs::ValidatePage()
{
    if (!m_grid)
        return true;
    if (m_grid->IsGridEnabled())
        m_grid->CommitEdit();
    for (long row = 0; row < m_grid->attributeRowCount(); ++row) {
        const QString name = m_grid->GetCellString(row, CAttrGrid::kNameColumn);
        if (name.isEmpty()) {
            m_grid->GotoCell(CAttrGrid::kNameColumn, row);
            ShowMessageBox(this, loadResourceString(res::AttributeNameRequired), QString(), MbOk);
            return false;
        }
        const QString typeName = m_grid->GetCellString(row, m_grid->typeColumn());
        if (typeName.isEmpty())
            continue;
        const AttrTypeTemplate *typeTemplate = m_grid->TemplateOf(typeName);
        if (!typeTemplate) {
            // A type kept from the format before a change of dataset, or one
            // the schema held that no format reads, is written as it was.
            if (rowType(row) || m_grid->IsKeptTypeText(typeName))
                continue;
            // Nothing to say that the cell does not show: the format offers
            // no such type. The cell is where the user chooses one.
            m_grid->GotoCell(m_grid->typeColumn(), row);
            return false;
        }
        for (std::size_t argument = 0; argument < typeTemplate->argCount() && argument < 2; ++argument) {
            const int column = m_grid->argumentColumn(int(argument));
            if (!typeTemplate->arg(argument)->validate(toNarrow(m_grid->GetCellString(row, column)), toNarrow(name))) {
                m_grid->GotoCell(column, row);
                return false;
            }
        }
    }
    return true;
}

void CFeatTypePropsAttrs::WriteToSchema(FTPropsSchemaInfo &target, const StringList *apply, const StringList *remove)
{
    if (!m_grid || !editable())
        return;
    const FTPropsFormatInfo *targetFormat = m_dialog->formats().find(target.getFormatId());
    if (!targetFormat)
        targetFormat = m_format;
    const bool formatChanged = targetFormat->getFormatName() != m_format->getFormatName();
    const DataTypeMappings &source = registryOf(*m_format);
    const DataTypeMappings &destination = registryOf(*targetFormat);
    StringSet taken;
    if (formatChanged) {
        for (const std::string &name : target.getAttributeNames(true, true))
            taken.insert(name);
    }

    // Each row as (its name on the page, the name and type string written).
    struct Written
    {
        std::string pageName, name, type;
    };
    std::vector<Written> rows;
    for (long row = 0; row < m_grid->attributeRowCount(); ++row) {
        const std::string pageName = toNarrow(m_grid->GetCellString(row, CAttrGrid::kNameColumn));
        const QString typeText = m_grid->GetCellString(row, m_grid->typeColumn());
        std::unique_ptr<AttrType> type = rowType(row);
        if (pageName.empty() || (!type && !m_grid->IsKeptTypeText(typeText)))
            continue;
        std::string name = pageName;
        if (formatChanged) {
            name = LegaliseAttributeName(*targetFormat, name, taken);
            const DataTypeMappings &from = type && type->registry() ? *type->registry() : source;
            if (auto converted = type ? DataTypeMappings::convertType(from, type.get(), destination) : nullptr)
                type = std::move(converted);
        }
        rows.push_back({pageName, name, type ? formatType(*type, targetFormat->getTypeListMode()) : toNarrow(typeText)});
    }

    if (!apply && !remove) {
        StringList namesAndTypes;
        for (const Written &row : rows) {
            namesAndTypes.push_back(row.name);
            namesAndTypes.push_back(row.type);
        }
        target.setAttributes(namesAndTypes);
        return;
    }
    if (remove) {
        for (const std::string &name : *remove)
            target.removeAttribute(name);
    }
    if (apply) {
        // The chosen names are the page's; in another format they are
        // stored under the names that format gives them.
        for (const std::string &name : *apply) {
            const auto row = std::find_if(rows.begin(), rows.end(), [&](const Written &w) { return w.pageName == name; });
            if (row != rows.end())
                target.storeAttribute(row->name, row->type, false);
        }
    }
}

std::unique_ptr<AttrType> CFeatTypePropsAttrs::rowType(long row)
{
    std::unique_ptr<AttrType> type = m_grid->GetRowType(row);
    for (auto earlier = m_earlierFormats.begin(); !type && earlier != m_earlierFormats.end(); ++earlier)
        type = m_grid->RowTypeIn(row, registryOf(**earlier));
    return type;
}

void CFeatTypePropsAttrs::ChangeFormat(const FTPropsFormatInfo *format)
{
    if (!format)
        return;
    const FTPropsFormatInfo *old = m_format;
    if (!m_grid) {
        m_format = format;
        return;
    }
    const DataTypeMappings &destination = registryOf(*format);
    // The types as the old format reads them, before the grid forgets it.
    std::vector<std::unique_ptr<AttrType>> types;
    for (long row = 0; row < m_grid->attributeRowCount(); ++row)
        types.push_back(rowType(row));
    std::erase(m_earlierFormats, format);
    m_earlierFormats.insert(m_earlierFormats.begin(), old);
    m_format = format;
    m_grid->SetFormat(format);
    m_grid->SetRegistry(destination);
    const StringSet formatNames = CAttrGrid::FormatAttrNames(*format);
    for (long row = 0; row < m_grid->attributeRowCount(); ++row) {
        // A type the new format has no counterpart for keeps its old form
        // (and is written so) until the user picks one of the new types.
        if (const AttrType *type = types[std::size_t(row)].get()) {
            const DataTypeMappings &from = type->registry() ? *type->registry() : registryOf(*old);
            if (auto converted = DataTypeMappings::convertType(from, type, destination))
                m_grid->SetRowType(row, *converted);
        }
        const QString name = m_grid->GetCellString(row, CAttrGrid::kNameColumn);
        if (name.isEmpty())
            continue;
        const QString legal = fromNarrow(
            LegaliseAttributeNameSteps(*format, toNarrow(name), m_grid->TakenBy(row, formatNames)).unique);
        if (legal != name)
            m_grid->SetCellText(CAttrGrid::kNameColumn, row, legal);
    }
    m_grid->EnableGrid(editable());
    EnableGridRowButtons(*this, editable());
    m_grid->RepaintAll();
}

} // namespace vyr
