#include "ftpropsdlg/cattrgrid.h"

#include "attrtypes/typestring.h"
#include "ftprops/namerules.h"
#include "uikit/dialogutils.h"
#include "uikit/narrowtext.h"
#include "uikit/resourcelibrary.h"
#include "util/resourceids.h"

#include <algorithm>
#include <utility>

namespace vyr {

CAttrGrid::CAttrGrid(FTPropsSchemaInfo *schema, const FTPropsFormatInfo *format, const DataTypeMappings &registry,
                     StringList domainNames, QWidget *parent)
    : CAttrTypeGrid(registry, kTypeColumn, 0, true, std::move(domainNames), parent)
    , m_schema(schema)
    , m_format(format)
    , m_formatAttrNames(format ? FormatAttrNames(*format) : StringSet())
{}

void CAttrGrid::SetFormat(const FTPropsFormatInfo *format)
{
    m_format = format;
    m_formatAttrNames = format ? FormatAttrNames(*format) : StringSet();
}

void CAttrGrid::OnGridInit()
{
    CAttrTypeGrid::OnGridInit();
    SetCellText(kNameColumn, -1, loadResourceString(res::NameHeading));
    SetSideHeadingWidth(20);
}

long CAttrGrid::AppendLoadedRow(const QString &name, const AttrType *type, const QString &typeText)
{
    m_loading = true;
    const long row = AppendBlankRow();
    if (row >= 0)
        ShowLoadedRow(row, name, type, typeText);
    m_loading = false;
    return row;
}

void CAttrGrid::ShowLoadedRow(long row, const QString &name, const AttrType *type, const QString &typeText)
{
    SetCellText(kNameColumn, row, name);
    if (type)
        SetRowType(row, *type);
    else if (!typeText.isEmpty())
        SetTypeText(row, typeText);
}

void CAttrGrid::LoadAttributes(const StringList &names)
{
    const std::size_t first = m_loaded.size();
    m_loaded.reserve(first + names.size());
    for (const std::string &name : names)
        m_loaded.push_back({name, {}, {}});
    m_loadedShown.resize(m_loaded.size());
    AppendLoadedRows(first, long(names.size()));
}

const std::string &CAttrGrid::LoadedType(std::size_t record)
{
    UserAttributeTypes &attribute = m_loaded[record];
    if (!std::exchange(m_loadedShown[record].typeRead, true) && m_schema)
        attribute.type = m_schema->getAttributeType(attribute.name);
    return attribute.type;
}

void CAttrGrid::ReadLoadedTypes()
{
    for (std::size_t record = 0; record < m_loaded.size(); ++record)
        LoadedType(record);
}

void CAttrGrid::TakeDomainsFromLoadedTypes()
{
    SetDomainSource([this] {
        StringList domains;
        for (std::size_t record = 0; record < m_loaded.size(); ++record) {
            if (const std::string_view suffix = typeSuffix(LoadedType(record));
                !suffix.empty() && std::find(domains.begin(), domains.end(), suffix) == domains.end())
                domains.emplace_back(suffix);
        }
        return domains;
    });
}

const UserAttributeTypes *CAttrGrid::LoadedAttributeOf(long row) const
{
    const std::optional<std::size_t> record = LoadedRecordOf(row);
    return record ? &m_loaded[*record] : nullptr;
}

int CAttrGrid::typeListMode() const
{
    return m_format ? m_format->getTypeListMode() : kDialogListMode;
}

QString CAttrGrid::LoadedName(std::size_t record)
{
    std::optional<QString> &name = m_loadedShown[record].name;
    if (!name)
        name = fromNarrow(m_loaded[record].name);
    return *name;
}

std::unique_ptr<AttrType> CAttrGrid::LoadedRowType(std::size_t record)
{
    return registry().createType(LoadedType(record), typeListMode());
}

const CAttrGrid::TypeCells &CAttrGrid::loadedCells(std::size_t record)
{
    std::unique_ptr<TypeCells> &cells = m_loadedShown[record].cells;
    if (cells)
        return *cells;
    // What ShowLoadedRow leaves in the type columns.
    const std::unique_ptr<AttrType> type = LoadedRowType(record);
    cells = std::make_unique<TypeCells>();
    if (type)
        *cells = TypeCellsOf(*type);
    else
        cells->type = fromNarrow(LoadedType(record));
    return *cells;
}

QString CAttrGrid::LoadedText(std::size_t record, int column)
{
    if (column == kNameColumn)
        return LoadedName(record);
    if (column < typeColumn() || column > domainColumn())
        return {};
    const TypeCells &cells = loadedCells(record);
    if (column == typeColumn())
        return cells.type;
    if (column == domainColumn())
        return cells.domain;
    return cells.arguments[column - argumentColumn(0)];
}

bool CAttrGrid::IsLoadedCellEnabled(std::size_t record, int column)
{
    if (column == argumentColumn(0) || column == argumentColumn(1))
        return loadedCells(record).taken > std::size_t(column - argumentColumn(0));
    return column != domainColumn() || hasDomains();
}

void CAttrGrid::MakeLoadedRow(long row, std::size_t record)
{
    const std::unique_ptr<AttrType> type = LoadedRowType(record);
    const bool loading = std::exchange(m_loading, true);
    OnRowAdded(row);
    ShowLoadedRow(row, LoadedName(record), type.get(), fromNarrow(LoadedType(record)));
    m_loading = loading;
}

void CAttrGrid::SetTypeText(long row, const QString &text)
{
    SetCellText(typeColumn(), row, text);
    for (const int column : {argumentColumn(0), argumentColumn(1)}) {
        SetCellText(column, row, QString());
        EnableCell(column, row, false);
    }
}

template <class Cells>
QString CAttrGrid::typeKeyOf(const Cells &cellOf)
{
    QString key = cellOf(typeColumn(), false);
    for (const int column : {argumentColumn(0), argumentColumn(1), domainColumn()}) {
        key += u'\x1f';
        if (column != domainColumn() || hasDomains())
            key += cellOf(column, true);
    }
    return key;
}

QString CAttrGrid::TypeKey(long row)
{
    // Disabled cells keep texts that say nothing.
    return typeKeyOf([this, row](int column, bool ifEnabled) {
        return !ifEnabled || IsCellEnabled(column, row) ? GetCellString(row, column) : QString();
    });
}

QString CAttrGrid::LoadedTypeKey(std::size_t record)
{
    return typeKeyOf([this, record](int column, bool ifEnabled) {
        return !ifEnabled || IsLoadedCellEnabled(record, column) ? LoadedText(record, column) : QString();
    });
}

QStringList CAttrGrid::RowTexts(long row)
{
    QStringList texts;
    GetRowTexts(row, texts);
    // Disabled argument cells keep texts that say nothing.
    for (const int column : {argumentColumn(0), argumentColumn(1)}) {
        if (!IsCellEnabled(column, row))
            texts[column] = QString();
    }
    return texts;
}

void CAttrGrid::SetRowTexts(long row, const QStringList &texts)
{
    if (texts.size() != columnCount())
        return;
    const bool legalising = std::exchange(m_legalising, true);
    SetCellText(kNameColumn, row, texts[kNameColumn]);
    m_legalising = legalising;
    const AttrTypeTemplate *typeTemplate = TemplateOf(texts[typeColumn()]);
    if (!typeTemplate) {
        SetTypeText(row, texts[typeColumn()]);
    } else {
        SetCellText(typeColumn(), row, texts[typeColumn()]);
        for (const int column : {argumentColumn(0), argumentColumn(1)})
            SetCellText(column, row, texts[column]);
        SetUpArgumentCells(row, typeTemplate, false);
    }
    SetCellText(domainColumn(), row, texts[domainColumn()]);
}

std::unique_ptr<AttrType> CAttrGrid::FirstRowType() const
{
    const auto native = [this](std::string_view generic) -> std::unique_ptr<AttrType> {
        const auto type = registry().createType(generic, kDialogListMode);
        return type ? registry().toNative(*type) : nullptr;
    };
    if (auto type = native("vyr_char(30)"); type && TemplateOf(fromNarrow(type->name())))
        return type;
    if (auto type = native("vyr_int32"))
        return type;
    return registry().defaultType();
}

bool CAttrGrid::OnRowAdded(long row)
{
    CAttrTypeGrid::OnRowAdded(row);
    // Loaded rows take the schema's types right after.
    if (m_loading)
        return true;
    if (row == 0) {
        const std::unique_ptr<AttrType> type = FirstRowType();
        if (!type) {
            ShowMessageBox(this, loadResourceString(res::NoAttributeTypes), QString(), MbOk);
            return false;
        }
        SetRowType(row, *type);
    } else {
        for (const int column : {typeColumn(), argumentColumn(0), argumentColumn(1)})
            SetCellText(column, row, GetCellString(row - 1, column));
        if (const AttrTypeTemplate *typeTemplate = TemplateOf(GetCellString(row, typeColumn()))) {
            SetUpArgumentCells(row, typeTemplate, false);
        } else {
            // A type kept from another format takes its arguments as they are.
            for (const int column : {argumentColumn(0), argumentColumn(1)})
                EnableCell(column, row, IsCellEnabled(column, row - 1));
        }
        if (hasDomains())
            SetCellText(domainColumn(), row, QStringLiteral("none"));
    }
    EnableCell(domainColumn(), row, hasDomains());
    RepaintAll();
    return true;
}

NameTakenTest CAttrGrid::TakenBy(long row, const StringSet &formatNames)
{
    return [this, row, &formatNames](const std::string &name) {
        if (formatNames.contains(name))
            return true;
        const QString text = fromNarrow(name);
        long holders = CountColumnText(kNameColumn, text);
        // The row's own name and the new row's are not others' names.
        if (GetCellString(row, kNameColumn) == text)
            --holders;
        const long blank = GetRowCount() - 1;
        if (blank != row && isNewRow(blank) && GetCellString(blank, kNameColumn) == text)
            --holders;
        return holders > 0;
    };
}

StringSet CAttrGrid::FormatAttrNames(const FTPropsFormatInfo &format)
{
    const StringList names = format.getFormatAttrNames();
    return StringSet(names.begin(), names.end());
}

QString CAttrGrid::NameChangeRules(const QString &typed, const AttributeNameSteps &steps) const
{
    QStringList reasons;
    if (steps.replaced != toNarrow(typed))
        reasons << loadResourceString(res::NameChangedCharacters);
    if (steps.cased != steps.replaced) {
        // A case rule may put "Q_" or "_" in front of a name as well as
        // change its letters.
        const std::size_t added = steps.cased.size() - std::min(steps.cased.size(), steps.replaced.size());
        const std::string_view rest = std::string_view(steps.cased).substr(added);
        if (added > 0)
            reasons << formatResourceString(res::NameChangedPrefix, {fromNarrow(steps.cased.substr(0, added))});
        if (rest != steps.replaced)
            reasons << loadResourceString(res::NameChangedCase);
    }
    if (steps.cut != steps.cased)
        reasons << formatResourceString(res::NameChangedLength, {QString::number(m_format->getMaxAttrLength())});
    if (steps.unique != steps.cut)
        reasons << loadResourceString(steps.reserved ? res::NameChangedReserved : res::NameChangedNumber);
    return reasons.join(QStringLiteral("; "));
}

void CAttrGrid::OnCellChange(int column, long row, ug::TextSource source)
{
    CAttrTypeGrid::OnCellChange(column, row, source);
    // Only what a person gives a cell is made legal: a name that a sort, a
    // move, an undo or a redo puts back was already checked when it came,
    // or was the schema's own.
    if (column != kNameColumn || m_loading || m_legalising || source == ug::TextRestored || isNewRow(row)
        || m_format->isSource())
        return;
    const QString typed = GetCellString(row, kNameColumn);
    if (typed.isEmpty())
        return;
    const AttributeNameSteps steps
        = LegaliseAttributeNameSteps(*m_format, toNarrow(typed), TakenBy(row, m_formatAttrNames));
    const QString legal = fromNarrow(steps.unique);
    if (legal == typed) {
        // A name typed as it stands has no story, whatever an earlier row
        // of that name was told.
        m_nameChanges.remove(legal);
        return;
    }
    NoteNameChange(typed, steps);
    m_legalising = true;
    SetCellText(kNameColumn, row, legal);
    RepaintCell(kNameColumn, row);
    m_legalising = false;
}

void CAttrGrid::NoteNameChange(const QString &typed, const AttributeNameSteps &steps)
{
    m_nameChanges.insert(fromNarrow(steps.unique), {typed, NameChangeRules(typed, steps)});
}

void CAttrGrid::NoteMovedName(long row, const QString &before)
{
    const QString shown = GetCellString(row, kNameColumn);
    if (before.isEmpty() || shown == before)
        return;
    // The rules of the format the row moved to made the name.
    const AttributeNameSteps steps
        = LegaliseAttributeNameSteps(*m_format, toNarrow(before), TakenBy(row, m_formatAttrNames));
    if (fromNarrow(steps.unique) != shown)
        return;
    // A name an earlier move made tells its story from the name the person
    // knew; a move back that gave that name back leaves none.
    QString known = before;
    if (const auto earlier = m_nameChanges.constFind(before); earlier != m_nameChanges.cend()) {
        known = earlier->typed;
        m_nameChanges.remove(before);
    }
    if (known == shown)
        m_nameChanges.remove(shown);
    else
        m_nameChanges.insert(shown, {known, NameChangeRules(before, steps)});
}

QString CAttrGrid::NameChangeReason(long row)
{
    if (row < 0 || row >= attributeRowCount())
        return QString();
    const auto change = m_nameChanges.constFind(GetCellString(row, kNameColumn));
    return change == m_nameChanges.cend() ? QString()
                                          : formatResourceString(res::NameChangedBy, {change->typed, change->rules});
}

std::vector<NameLegalisation> CAttrGrid::NameLegalisations()
{
    std::vector<NameLegalisation> legalised;
    if (m_nameChanges.isEmpty())
        return legalised;
    for (long row = 0; row < attributeRowCount(); ++row) {
        // A row the user has not touched shows the schema's own name.
        if (LoadedAttributeOf(row))
            continue;
        const QString name = GetCellString(row, kNameColumn);
        const auto change = m_nameChanges.constFind(name);
        if (change != m_nameChanges.cend())
            legalised.push_back({toNarrow(change->typed), toNarrow(name), toNarrow(change->rules)});
    }
    return legalised;
}

QString CAttrGrid::OnCellDescription(int column, long row)
{
    if (column == kNameColumn)
        return NameChangeReason(row);
    return column == typeColumn() && m_typeNote && row < attributeRowCount() ? m_typeNote(row) : QString();
}

int CAttrGrid::OnCellTipText(int column, long row, int, QString &text)
{
    text = OnCellDescription(column, row);
    return text.isEmpty() ? 0 : 1;
}

QString CAttrGrid::OnCheckText(int column, long row, const QString &text)
{
    if (column == kNameColumn) {
        const bool control = std::any_of(text.begin(), text.end(), [](QChar c) { return c.category() == QChar::Other_Control; });
        return control ? loadResourceString(res::NameControlCharacters) : QString();
    }
    return CAttrTypeGrid::OnCheckText(column, row, text);
}

void CAttrGrid::OnCellTextReplaced(int column, long row, const QString &before)
{
    CAttrTypeGrid::OnCellTextReplaced(column, row, before);
    if (column != kNameColumn)
        return;
    const QString after = GetCellString(row, kNameColumn);
    if (!after.isEmpty() && before != after)
        emit nameReplaced(before, after);
}

void CAttrGrid::OnRecordsDeleting(long row, long count)
{
    CAttrTypeGrid::OnRecordsDeleting(row, count);
    for (long at = row; at < row + count && at < attributeRowCount(); ++at) {
        // An untouched row is left unmade.
        if (const UserAttributeTypes *loaded = LoadedAttributeOf(at)) {
            emit attributeDeleting(fromNarrow(loaded->name), true);
            continue;
        }
        const QString name = GetCellString(at, kNameColumn);
        if (!name.isEmpty())
            emit attributeDeleting(name, false);
    }
}

void CAttrGrid::OnRecordsRestored(long row, long count)
{
    CAttrTypeGrid::OnRecordsRestored(row, count);
    for (long at = row; at < row + count && at < attributeRowCount(); ++at) {
        const QString name = GetCellString(at, kNameColumn);
        if (!name.isEmpty())
            emit attributeRestored(name);
    }
}

StringList CAttrGrid::GetAttributeNames()
{
    StringList names;
    for (long row = 0; row < attributeRowCount(); ++row) {
        // An untouched row's name is the schema's, which needs no converting.
        if (const UserAttributeTypes *loaded = LoadedAttributeOf(row)) {
            if (!loaded->name.empty())
                names.push_back(loaded->name);
            continue;
        }
        const QString name = GetCellString(row, kNameColumn);
        if (!name.isEmpty())
            names.push_back(toNarrow(name));
    }
    return names;
}

void CAttrGrid::LayoutLeadingColumns(int width)
{
    SetColumnWidth(kNameColumn, int((showsDomainColumn() ? 0.4 : 0.6) * width));
}

} // namespace vyr
