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

CFeatTypePropsAttrs::~CFeatTypePropsAttrs()
{
    if (m_grid)
        m_grid->SupplyRowsWhenWanted(nullptr);
}

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
    // The grid takes its place (and its place in the tab order) now; its
    // rows come when they are first needed.
    auto *grid = new CAttrGrid(m_schema, m_format, registryOf(*m_format));
    // A type's suffix is its domain: the domains the schema uses are the
    // ones the domain column offers, so that each is shown and kept.
    grid->TakeDomainsFromLoadedTypes();
    if (!grid->AttachToDialogItem(this, kIdGrid)) {
        delete grid;
        return true;
    }
    m_grid = grid;
    grid->SupplyRowsWhenWanted([this] { LoadRows(); });
    // Read-only shows from the start, rows or not.
    grid->SetTypeNote([this](long row) { return TypeNote(row); });
    grid->EnableGrid(editable());
    ConnectGridRowButtons(*this, *grid, editable());
    connect(grid, &CAttrGrid::nameReplaced, this, [this](const QString &before, const QString &after) {
        m_dialog->AttributeRenamed(toNarrow(before), toNarrow(after));
    });
    connect(grid, &CAttrGrid::attributeDeleting, this,
            [this](const QString &name, bool loaded) { m_dialog->AttributeDeleted(toNarrow(name), loaded); });
    connect(grid, &CAttrGrid::attributeRestored, this,
            [this](const QString &name) { m_dialog->AttributeRestored(toNarrow(name)); });
    return true;
}

void CFeatTypePropsAttrs::EnsureRows() const
{
    if (m_grid)
        m_grid->WantRows();
}

CAttrGrid *CFeatTypePropsAttrs::grid() const
{
    EnsureRows();
    return m_grid;
}

// The rows as loaded, known by their attributes' names and their type
// columns as KnownRowTypes asks for them.
class CFeatTypePropsAttrs::LoadedTypes final : public KnownRowTypes::Loaded
{
public:
    LoadedTypes(CFeatTypePropsAttrs &page, CAttrGrid &grid)
        : m_page(page)
        , m_grid(grid)
    {
    }
    std::size_t count() const override { return m_grid.loadedAttributes().size(); }
    QString name(std::size_t index) const override { return m_grid.LoadedName(index); }
    KnownRowTypes::Given given(std::size_t index) const override
    {
        return {m_grid.LoadedTypeKey(index), m_page.LoadedTypeTexts(index), true};
    }

private:
    CFeatTypePropsAttrs &m_page;
    CAttrGrid &m_grid;
};

void CFeatTypePropsAttrs::LoadRows()
{
    CAttrGrid *grid = m_grid;
    if (!grid)
        return;
    // The names now; each type when its row needs it, or the domains do.
    const StringList names = m_schema->getAttributeNames(true, false);
    m_loadedGenerics.assign(names.size(), std::nullopt);
    // Each row shows its attribute as the schema holds it, and is known
    // by those texts, read only when a row needs them.
    grid->LoadAttributes(names);
    m_loadedTypes = std::make_unique<LoadedTypes>(*this, *grid);
    m_knownTypes.rememberLoaded(m_format->getId(), *m_loadedTypes);
    // The loaded rows take the grid's look as they are made.
    grid->EnableGrid(editable());
}

AttributeTypeTexts CFeatTypePropsAttrs::LoadedTypeTexts(std::size_t record)
{
    EnsureRows();
    std::optional<std::string> &generic = m_loadedGenerics[record];
    if (!generic)
        generic = m_schema->getGenericAttributeType(m_grid->loadedAttributes()[record].name);
    return {m_grid->LoadedType(record), *generic};
}

bool CFeatTypePropsAttrs::WasLoaded(const std::string &name) const
{
    EnsureRows();
    if (!m_grid)
        return false;
    if (!m_loadedNames) {
        m_loadedNames.emplace();
        for (const UserAttributeTypes &attribute : m_grid->loadedAttributes())
            m_loadedNames->insert(attribute.name);
    }
    return m_loadedNames->contains(name);
}

StringList CFeatTypePropsAttrs::GetAttributeNames() const
{
    EnsureRows();
    return m_grid ? m_grid->GetAttributeNames() : StringList();
}

const KnownRowTypes::Given *CFeatTypePropsAttrs::KnownType(long row)
{
    const QString key = m_grid->TypeKey(row);
    const QString name = m_grid->GetCellString(row, CAttrGrid::kNameColumn);
    const KnownRowTypes::Given *known = m_knownTypes.ofName(m_format->getId(), name, key);
    return known ? known : m_knownTypes.ofKey(m_format->getId(), key);
}

std::optional<AttributeTypeTexts> CFeatTypePropsAttrs::RowTypeTexts(long row)
{
    // An untouched row is its attribute as the schema held it.
    if (const std::optional<std::size_t> record = m_grid->LoadedRecordOf(row))
        return LoadedTypeTexts(*record);
    // The attribute's own texts first; a type the format reads is written
    // in its own words rather than in another attribute's spelling of it.
    if (const KnownRowTypes::Given *own = m_knownTypes.ofName(
            m_format->getId(), m_grid->GetCellString(row, CAttrGrid::kNameColumn), m_grid->TypeKey(row)))
        return own->texts;
    if (const std::unique_ptr<AttrType> type = m_grid->GetRowType(row)) {
        const std::unique_ptr<AttrType> generic = registryOf(*m_format).toGeneric(*type);
        return AttributeTypeTexts{formatType(*type, m_format->getTypeListMode()),
                                  generic ? formatType(*generic, kDialogListMode) : std::string()};
    }
    const KnownRowTypes::Given *known = KnownType(row);
    return known ? std::optional(known->texts) : std::nullopt;
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
    if (!editable())
        return true;
    EnsureRows();
    if (!m_grid)
        return true;
    if (m_grid->IsGridEnabled())
        m_grid->CommitEdit();
    // What the rows were loaded with is read before anything is written.
    m_grid->ReadLoadedTypes();
    for (std::size_t record = 0; record < m_loadedGenerics.size(); ++record)
        LoadedTypeTexts(record);
    const int typeColumn = m_grid->typeColumn();
    for (long row = 0; row < m_grid->attributeRowCount(); ++row) {
        const QString name = m_grid->GetCellString(row, CAttrGrid::kNameColumn);
        if (name.isEmpty())
            return Refuse(row, CAttrGrid::kNameColumn, loadResourceString(res::AttributeNameRequired));
        // A type as the schema held it, or one the format has no word for,
        // is written as it was, whatever the format reads of it.
        if (m_grid->LoadedAttributeOf(row))
            continue;
        if (const KnownRowTypes::Given *known = KnownType(row); known && known->asItIs)
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
        // Whatever the checks above let through, a row whose type cannot be
        // written is refused here rather than left out by the write.
        if (!RowTypeTexts(row)) {
            return Refuse(row, typeColumn,
                          formatResourceString(res::UnknownAttributeType,
                                               {name, fromNarrow(m_format->getFormatName()), typeName}));
        }
    }
    // Names a writer's rules did not make distinct (a reader's, which are
    // taken as typed): two rows of one name would be written as one.
    if (m_grid->FindRepeatedText(CAttrGrid::kNameColumn) >= 0) {
        m_dialog->ShowPage(this);
        m_grid->RefuseRepeatedText(CAttrGrid::kNameColumn, res::AttributeNameRepeated);
        return false;
    }
    return true;
}

void CFeatTypePropsAttrs::WriteToSchema(FTPropsSchemaInfo &target, const StringList *apply, const StringList *remove)
{
    if (!editable())
        return;
    EnsureRows();
    if (!m_grid)
        return;
    const FTPropsFormatInfo *targetFormat = m_dialog->formats().find(target.getFormatId());
    if (!targetFormat)
        targetFormat = m_format;
    const bool formatChanged = targetFormat->getFormatName() != m_format->getFormatName();
    StringSet taken;
    StringList targetAttributes;
    if (formatChanged) {
        for (const std::string &name : target.getAttributeNames(true, true))
            taken.insert(name);
        targetAttributes = target.getAttributeNames(true, false);
    }

    // What each row writes; with `apply`, also its name on the page.
    std::vector<UserAttributeTypes> attributes;
    std::vector<std::string> pageNames;
    attributes.reserve(std::size_t(m_grid->attributeRowCount()));
    if (apply)
        pageNames.reserve(attributes.capacity());
    for (long row = 0; row < m_grid->attributeRowCount(); ++row) {
        const UserAttributeTypes *loaded = m_grid->LoadedAttributeOf(row);
        const std::string pageName
            = loaded ? loaded->name : toNarrow(m_grid->GetCellString(row, CAttrGrid::kNameColumn));
        const std::optional<AttributeTypeTexts> texts = RowTypeTexts(row);
        // Validation refused both before OK got here.
        if (pageName.empty() || !texts)
            continue;
        UserAttributeTypes attribute{pageName, texts->type, texts->generic};
        if (formatChanged) {
            // The attribute another feature type has under the name this one
            // takes in its format is this one again: updated, not numbered.
            const std::string own = LegaliseAttributeName(*targetFormat, pageName, {});
            const bool had = std::find(targetAttributes.begin(), targetAttributes.end(), own) != targetAttributes.end();
            attribute = MoveUserAttribute(*m_format, *targetFormat, attribute, [&](const std::string &name) {
                return taken.contains(name) && !(had && name == own);
            });
            taken.insert(attribute.name);
        }
        if (apply)
            pageNames.push_back(pageName);
        attributes.push_back(std::move(attribute));
    }

    if (!apply && !remove) {
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
            const auto row = std::find(pageNames.begin(), pageNames.end(), name);
            if (row != pageNames.end())
                target.storeUserAttribute(attributes[std::size_t(row - pageNames.begin())]);
        }
    }
}

void CFeatTypePropsAttrs::ShowMovedRow(long row, const UserAttributeTypes &moved, bool known)
{
    const int listMode = m_format->getTypeListMode();
    m_grid->SetCellText(CAttrGrid::kNameColumn, row, fromNarrow(moved.name));
    if (!known)
        return;
    // A generic type standing for one the format has no word for is shown
    // as it is written.
    const std::unique_ptr<AttrType> read
        = moved.type != moved.generic ? registryOf(*m_format).createType(moved.type, listMode) : nullptr;
    const bool ofTheFormat = read && m_grid->TemplateOf(fromNarrow(read->name()));
    if (ofTheFormat)
        m_grid->SetRowType(row, *read);
    else
        m_grid->SetTypeText(row, fromNarrow(moved.type));
    m_knownTypes.remember(m_format->getId(), fromNarrow(moved.name),
                          {m_grid->TypeKey(row), {moved.type, moved.generic}, !ofTheFormat});
}

void CFeatTypePropsAttrs::ChangeFormat(const FTPropsFormatInfo *format)
{
    if (!format)
        return;
    // The rows move from the format they were loaded in.
    EnsureRows();
    const FTPropsFormatInfo *old = m_format;
    if (!m_grid) {
        m_format = format;
        return;
    }
    // The grid's history starts afresh with the rows in the new format's
    // words: a step taken in the old one's would undo into types and names
    // the new format does not have. Moving back brings the rows back.
    // Every row is rewritten, from cells made in the old format's terms.
    m_grid->MakeLoadedRows();
    // What every row is in the old format, before the grid forgets it.
    const long rows = m_grid->attributeRowCount();
    std::vector<QStringList> oldTexts;
    std::vector<std::optional<AttributeTypeTexts>> oldTypes;
    for (long row = 0; row < rows; ++row) {
        oldTexts.push_back(m_grid->RowTexts(row));
        oldTypes.push_back(RowTypeTexts(row));
    }
    m_format = format;
    m_grid->SetFormat(format);
    m_grid->SetRegistry(registryOf(*format));
    const StringSet formatNames = CAttrGrid::FormatAttrNames(*format);

    for (long row = 0; row < rows; ++row) {
        const QStringList &before = oldTexts[std::size_t(row)];
        const std::optional<AttributeTypeTexts> &type = oldTypes[std::size_t(row)];
        const QString name = before.value(CAttrGrid::kNameColumn);
        const QStringList form
            = m_rowForms.move(old->getId(), format->getId(), before, [&](const QStringList &texts) {
                  m_grid->SetRowTexts(row, texts);
                  UserAttributeTypes moved{toNarrow(name), type ? type->type : toNarrow(texts.value(m_grid->typeColumn())),
                                           type ? type->generic : std::string()};
                  moved = MoveUserAttribute(*old, *format, moved, m_grid->TakenBy(row, formatNames));
                  // A row still without a name keeps none; its type moves all the same.
                  if (name.isEmpty())
                      moved.name.clear();
                  ShowMovedRow(row, moved, type.has_value());
                  return m_grid->RowTexts(row);
              });
        m_grid->SetRowTexts(row, form);
        const QString shown = m_grid->GetCellString(row, CAttrGrid::kNameColumn);
        if (!name.isEmpty() && !shown.isEmpty() && name != shown) {
            m_grid->NoteMovedName(row, name);
            m_dialog->AttributeRenamed(toNarrow(name), toNarrow(shown));
        }
    }
    m_grid->EnableGrid(editable());
    EnableGridRowButtons(*this, editable());
    m_grid->RepaintAll();
}

} // namespace vyr
