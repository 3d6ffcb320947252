#include "ftpropsdlg/cfeattypepropsattrs.h"

#include "attrtypes/datatypemappings.h"
#include "attrtypes/typestring.h"
#include "ftprops/namerules.h"
#include "ftpropsdlg/cattrgrid.h"
#include "ftpropsdlg/cfeattypepropsdlg.h"
#include "uikit/dialogutils.h"
#include "uikit/gridrowbuttons.h"
#include "uikit/narrowtext.h"
#include "uikit/resourcelibrary.h"
#include "util/resourceids.h"

#include <algorithm>

namespace vyr {

namespace {

// A user attribute as the schema holds it.
struct LoadedAttribute
{
    std::string name;
    std::string type;
    std::string generic;
};

} // namespace

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
    LoadRows();
    return true;
}

void CFeatTypePropsAttrs::LoadRows()
{
    const int listMode = m_format->getTypeListMode();
    std::vector<LoadedAttribute> loaded;
    // A type's suffix is its domain: the domains the schema uses are the
    // ones the domain column offers, so that each is shown and kept.
    StringList domains;
    for (std::string &name : m_schema->getAttributeNames(true, false)) {
        std::string type = m_schema->getAttributeType(name);
        std::string generic = m_schema->getGenericAttributeType(name);
        if (const std::string suffix = parseType(type, listMode).suffix;
            !suffix.empty() && std::find(domains.begin(), domains.end(), suffix) == domains.end())
            domains.push_back(suffix);
        loaded.push_back({std::move(name), std::move(type), std::move(generic)});
    }
    auto *grid = new CAttrGrid(m_schema, m_format, registryOf(*m_format), std::move(domains));
    if (!grid->AttachToDialogItem(this, kIdGrid)) {
        delete grid;
        return;
    }
    m_grid = grid;
    QHash<QString, AttributeTypeTexts> &known = m_knownTypes[m_format->getId()];
    const DataTypeMappings &registry = registryOf(*m_format);
    for (const LoadedAttribute &attribute : loaded) {
        const std::unique_ptr<AttrType> type = registry.createType(attribute.type, listMode);
        const long row = grid->AppendLoadedRow(fromNarrow(attribute.name), type.get(), fromNarrow(attribute.type));
        if (row < 0)
            break;
        // Of two attributes shown alike, the first one's texts are written
        // for both: the record keeps the second's own, which answer the
        // same type.
        const QString key = grid->TypeKey(row);
        if (!known.contains(key))
            known.insert(key, {attribute.type, attribute.generic});
    }
    grid->SetTypeNote([this](long row) { return TypeNote(row); });
    grid->EnableGrid(editable());
    ConnectGridRowButtons(*this, *grid, editable());
    connect(grid, &CAttrGrid::nameReplaced, this, [this](const QString &before, const QString &after) {
        m_dialog->AttributeRenamed(toNarrow(before), toNarrow(after));
    });
    for (const LoadedAttribute &attribute : loaded)
        m_dialog->AttributeRenamed({}, attribute.name);
}

StringList CFeatTypePropsAttrs::GetAttributeNames() const
{
    return m_grid ? m_grid->GetAttributeNames() : StringList();
}

std::optional<AttributeTypeTexts> CFeatTypePropsAttrs::KnownTypeTexts(long row)
{
    const auto known = m_knownTypes.find(m_format->getId());
    if (known == m_knownTypes.end())
        return std::nullopt;
    const auto found = known->second.constFind(m_grid->TypeKey(row));
    return found != known->second.constEnd() ? std::optional(*found) : std::nullopt;
}

std::optional<AttributeTypeTexts> CFeatTypePropsAttrs::RowTypeTexts(long row)
{
    if (auto known = KnownTypeTexts(row))
        return known;
    const std::unique_ptr<AttrType> type = m_grid->GetRowType(row);
    if (!type)
        return std::nullopt;
    const std::unique_ptr<AttrType> generic = registryOf(*m_format).toGeneric(*type);
    return AttributeTypeTexts{formatType(*type, m_format->getTypeListMode()),
                              generic ? formatType(*generic, kDialogListMode) : std::string()};
}

QString CFeatTypePropsAttrs::TypeNote(long row)
{
    const auto texts = RowTypeTexts(row);
    if (!texts || texts->type != texts->generic || m_grid->TemplateOf(fromNarrow(texts->type)))
        return {};
    return formatResourceString(res::TypeKeptAsGeneric,
                                {fromNarrow(m_format->getFormatName()), fromNarrow(texts->generic)});
}

void CFeatTypePropsAttrs::ShowCell(long row, int column)
{
    m_dialog->ShowPage(this);
    m_grid->FocusCell(column, row);
}

bool CFeatTypePropsAttrs::Refuse(long row, int column, const QString &message)
{
    ShowCell(row, column);
    ShowMessageBox(this, message, QString(), MbOk);
    return false;
}

bool CFeatTypePropsAttrs::ValidatePage()
{
    // Nothing of a page that cannot be changed is written.
    if (!m_grid || !editable())
        return true;
    if (m_grid->IsGridEnabled())
        m_grid->CommitEdit();
    const int typeColumn = m_grid->typeColumn();
    for (long row = 0; row < m_grid->attributeRowCount(); ++row) {
        const QString name = m_grid->GetCellString(row, CAttrGrid::kNameColumn);
        if (name.isEmpty())
            return Refuse(row, CAttrGrid::kNameColumn, loadResourceString(res::AttributeNameRequired));
        // A type as the schema held it, or as a move carried it, is written
        // as it was, whatever the format reads of it.
        if (KnownTypeTexts(row))
            continue;
        const QString typeName = m_grid->GetCellString(row, typeColumn);
        if (typeName.isEmpty())
            return Refuse(row, typeColumn, formatResourceString(res::AttributeTypeRequired, {name}));
        const AttrTypeTemplate *typeTemplate = m_grid->TemplateOf(typeName);
        if (!typeTemplate) {
            return Refuse(row, typeColumn,
                          formatResourceString(res::UnknownAttributeType,
                                               {name, fromNarrow(m_format->getFormatName()), typeName}));
        }
        for (std::size_t index = 0; index < typeTemplate->argCount() && index < 2; ++index) {
            const int column = m_grid->argumentColumn(int(index));
            const QString value = m_grid->GetCellString(row, column);
            // The kind's own check first: a domain says what it needs itself.
            const std::unique_ptr<AttrTypeArg> argument = m_grid->ArgumentOf(row, index);
            if (value.isEmpty())
                ShowCell(row, column);
            if (argument && !argument->validate(toNarrow(value), toNarrow(name)))
                return false;
            if (value.isEmpty())
                return Refuse(row, column,
                              formatResourceString(res::AttributeArgumentRequired,
                                                   {name, m_grid->GetCellText(column, -1), typeName}));
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
    StringSet taken;
    if (formatChanged) {
        for (const std::string &name : target.getAttributeNames(true, true))
            taken.insert(name);
    }

    // Each row as (its name on the page, what is written).
    std::vector<std::pair<std::string, UserAttributeTypes>> rows;
    for (long row = 0; row < m_grid->attributeRowCount(); ++row) {
        const std::string pageName = toNarrow(m_grid->GetCellString(row, CAttrGrid::kNameColumn));
        std::optional<AttributeTypeTexts> texts = RowTypeTexts(row);
        // Validation refused both before OK got here.
        if (pageName.empty() || !texts)
            continue;
        std::string name = pageName;
        if (formatChanged) {
            name = LegaliseAttributeName(*targetFormat, name, taken);
            if (auto moved = MoveAttributeType(registryOf(*m_format), registryOf(*targetFormat), texts->type,
                                               texts->generic, targetFormat->getTypeListMode()))
                texts = std::move(moved);
        }
        rows.emplace_back(pageName, UserAttributeTypes{name, texts->type, texts->generic});
    }

    if (!apply && !remove) {
        std::vector<UserAttributeTypes> attributes;
        attributes.reserve(rows.size());
        for (auto &row : rows)
            attributes.push_back(std::move(row.second));
        target.setUserAttributes(attributes);
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
            const auto row = std::find_if(rows.begin(), rows.end(), [&](const auto &r) { return r.first == name; });
            if (row != rows.end())
                target.storeUserAttribute(row->second);
        }
    }
}

QStringList CFeatTypePropsAttrs::MovedRow(long row, const QStringList &texts, const FTPropsFormatInfo &format)
{
    const QString name = texts.value(CAttrGrid::kNameColumn);
    if (!name.isEmpty()) {
        const StringSet formatNames = CAttrGrid::FormatAttrNames(format);
        const QString legal = fromNarrow(
            LegaliseAttributeNameSteps(format, toNarrow(name), m_grid->TakenBy(row, formatNames)).unique);
        m_grid->SetRowTexts(row, texts);
        if (legal != name)
            m_grid->SetCellText(CAttrGrid::kNameColumn, row, legal);
    }
    return m_grid->RowTexts(row);
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
    // What every row is in the old format, before the grid forgets it.
    const long rows = m_grid->attributeRowCount();
    std::vector<QStringList> oldTexts;
    std::vector<std::optional<AttributeTypeTexts>> oldTypes;
    for (long row = 0; row < rows; ++row) {
        oldTexts.push_back(m_grid->RowTexts(row));
        oldTypes.push_back(RowTypeTexts(row));
    }
    const DataTypeMappings &source = registryOf(*old);
    const DataTypeMappings &destination = registryOf(*format);
    m_format = format;
    m_grid->SetFormat(format);
    m_grid->SetRegistry(destination);
    QHash<QString, AttributeTypeTexts> &known = m_knownTypes[format->getId()];
    const int listMode = format->getTypeListMode();

    for (long row = 0; row < rows; ++row) {
        const QStringList &before = oldTexts[std::size_t(row)];
        const std::optional<AttributeTypeTexts> &type = oldTypes[std::size_t(row)];
        const QStringList form
            = m_rowForms.move(old->getId(), format->getId(), before, [&](const QStringList &texts) {
                  QStringList moved = texts;
                  const auto carried
                      = type ? MoveAttributeType(source, destination, type->type, type->generic, listMode)
                             : std::nullopt;
                  if (carried) {
                      // Its cells as the new format shows the type.
                      m_grid->SetRowTexts(row, texts);
                      if (const auto read = carried->type != carried->generic
                                                ? destination.createType(carried->type, listMode)
                                                : nullptr)
                          m_grid->SetRowType(row, *read);
                      else
                          m_grid->SetTypeText(row, fromNarrow(carried->type));
                      known.insert(m_grid->TypeKey(row), *carried);
                      moved = m_grid->RowTexts(row);
                  } else if (type) {
                      // Nothing known of it anywhere: it keeps its form.
                      m_grid->SetRowTexts(row, texts);
                      known.insert(m_grid->TypeKey(row), *type);
                  }
                  return MovedRow(row, moved, *format);
              });
        m_grid->SetRowTexts(row, form);
        const QString name = before.value(CAttrGrid::kNameColumn);
        const QString shown = m_grid->GetCellString(row, CAttrGrid::kNameColumn);
        if (!name.isEmpty() && !shown.isEmpty() && name != shown)
            m_dialog->AttributeRenamed(toNarrow(name), toNarrow(shown));
    }
    m_grid->EnableGrid(editable());
    EnableGridRowButtons(*this, editable());
    m_grid->RepaintAll();
}

} // namespace vyr
