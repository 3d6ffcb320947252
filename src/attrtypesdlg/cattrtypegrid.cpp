#include "attrtypesdlg/cattrtypegrid.h"

#include "attrtypes/typestring.h"
#include "uikit/dialogutils.h"
#include "uikit/narrowtext.h"
#include "uikit/resourcelibrary.h"
#include "util/resourceids.h"

#include <QFontMetrics>

#include <algorithm>
#include <typeinfo>
#include <utility>

namespace vyr {

namespace {

const QString kNoDomain = QStringLiteral("none");

// A drop list's label: each entry ended by a line feed.
QString listLabel(const QStringList &entries)
{
    QString label;
    for (const QString &entry : entries)
        label += entry + u'\n';
    return label;
}

} // namespace

CAttrTypeGrid::CAttrTypeGrid(const DataTypeMappings &registry, int typeColumn, int mode, bool keepNewRow,
                             StringList domainNames, QWidget *parent)
    : CVVyrGrid(typeColumn + 4, keepNewRow, parent)
    , m_registry(&registry)
    , m_typeColumn(typeColumn)
    , m_mode(mode)
    , m_domainNames(std::move(domainNames))
    , m_argumentCells(*this)
{
    SetShowDisabledText(false);
    collectTemplates();
}

void CAttrTypeGrid::collectTemplates()
{
    m_templates.clear();
    m_typeNames.clear();
    for (std::size_t pair = 0; pair < m_registry->pairCount(); ++pair) {
        const AttrTypeTemplate &typeTemplate = m_registry->nativeTemplate(pair);
        const QString name = fromNarrow(typeTemplate.name());
        if (!typeTemplate.isSelectable(m_mode) || m_templates.contains(name))
            continue;
        m_templates.insert(name, &typeTemplate);
        m_typeNames.append(name);
    }
    std::sort(m_typeNames.begin(), m_typeNames.end());
}

void CAttrTypeGrid::offerTypeNames()
{
    CUGCell cell;
    GetColumnDefault(m_typeColumn, cell);
    cell.setCellType(DropListTypeId());
    cell.setLabel(listLabel(m_typeNames));
    SetColumnDefault(m_typeColumn, cell);
}

void CAttrTypeGrid::SetRegistry(const DataTypeMappings &registry)
{
    m_registry = &registry;
    collectTemplates();
    offerTypeNames();
    // A stored cell keeps the list it was written with.
    const QString label = listLabel(m_typeNames);
    for (long row = 0; row < GetRowCount(); ++row) {
        CUGCell cell;
        GetCell(m_typeColumn, row, cell);
        if (cell.isSet(CUGCell::Label)) {
            cell.setLabel(label);
            SetCell(m_typeColumn, row, cell);
        }
    }
    RepaintAll();
}

CAttrTypeGrid::~CAttrTypeGrid() = default;

const AttrTypeTemplate *CAttrTypeGrid::TemplateOf(const QString &displayName) const
{
    return m_templates.value(displayName, nullptr);
}

void CAttrTypeGrid::OnGridInit()
{
    CVVyrGrid::OnGridInit();
    SetTopHeadingHeight(20);
    const unsigned headings[] = {res::TypeHeading, res::WidthHeading, res::DecimalsHeading, res::DomainHeading};
    for (int i = 0; i < 4; ++i)
        SetCellText(m_typeColumn + i, -1, loadResourceString(headings[i]));

    offerTypeNames();
    CUGCell cell;
    GetColumnDefault(domainColumn(), cell);
    cell.setCellType(DropListTypeId());
    SetColumnDefault(domainColumn(), cell);
    if (m_domainNames)
        offerDomainNames();
    if (!keepsNewRow())
        return;
    if (m_domainNames) {
        prepareRow(GetRowCount() - 1);
        return;
    }
    EnableCell(argumentColumn(0), GetRowCount() - 1, false);
    EnableCell(argumentColumn(1), GetRowCount() - 1, false);
    m_newRowDomainPending = true;
}

void CAttrTypeGrid::offerDomainNames()
{
    CUGCell cell;
    GetColumnDefault(domainColumn(), cell);
    QStringList domains{kNoDomain};
    for (const std::string &name : *m_domainNames)
        domains.append(fromNarrow(name));
    cell.setLabel(listLabel(domains));
    SetColumnDefault(domainColumn(), cell);
}

void CAttrTypeGrid::SetDomainSource(std::function<StringList()> source)
{
    m_domainSource = std::move(source);
    m_domainNames.reset();
}

const StringList &CAttrTypeGrid::domainNames()
{
    if (!m_domainNames) {
        m_domainNames = m_domainSource ? m_domainSource() : StringList();
        offerDomainNames();
        // What OnGridInit left for the new row, as it would have done then.
        if (std::exchange(m_newRowDomainPending, false) && keepsNewRow() && GetRowCount() > 0)
            EnableCell(domainColumn(), GetRowCount() - 1, !m_domainNames->empty());
    }
    return *m_domainNames;
}

bool CAttrTypeGrid::showsDomainColumn()
{
    if (!m_domainNames && isVisible())
        domainNames();
    return m_domainNames && !m_domainNames->empty();
}

bool CAttrTypeGrid::IsCellEnabled(int column, long row)
{
    if (column == domainColumn())
        domainNames();
    return CVVyrGrid::IsCellEnabled(column, row);
}

void CAttrTypeGrid::OnCellRead(int column, long row, CUGCell &cell)
{
    CVVyrGrid::OnCellRead(column, row, cell);
    // A record's domain cell read before the domains are known is read
    // again once they are, with the list they give. The grid's own set-up
    // reads the new row's, which waits.
    if (column == domainColumn() && !m_domainNames && row >= 0 && row < recordCount()) {
        domainNames();
        GetCellResolved(column, row, cell);
    }
}

void CAttrTypeGrid::prepareRow(long row)
{
    EnableCell(argumentColumn(0), row, false);
    EnableCell(argumentColumn(1), row, false);
    EnableCell(domainColumn(), row, hasDomains());
}

bool CAttrTypeGrid::OnRowAdded(long row)
{
    prepareRow(row);
    return true;
}

long CAttrTypeGrid::AppendRowTexts(const QStringList &texts)
{
    const long row = CVVyrGrid::AppendRowTexts(texts);
    if (row >= 0) {
        prepareRow(row);
        SetUpArgumentCells(row, TemplateOf(GetCellString(row, m_typeColumn)), false);
    }
    return row;
}

void CAttrTypeGrid::SetUpArgumentCells(long row, const AttrType *pattern, bool fresh)
{
    // The defaults, as a type of the template without values takes them.
    std::unique_ptr<AttrType> defaults;
    if (const auto *typeTemplate = dynamic_cast<const AttrTypeTemplate *>(pattern); typeTemplate && fresh)
        defaults = std::make_unique<AttrType>(*typeTemplate, StringList(), std::string(), m_registry);
    for (int argument = 0; argument < 2; ++argument) {
        const int column = argumentColumn(argument);
        const bool takes = pattern && std::size_t(argument) < pattern->argCount();
        if (takes) {
            CUGCell cell;
            GetCell(column, row, cell);
            const QString kept = cell.text();
            m_argumentCells.configureCell(*pattern->arg(std::size_t(argument)), cell);
            cell.setText(defaults ? fromNarrow(defaults->arg(std::size_t(argument))->value()) : kept);
            SetCell(column, row, cell);
        }
        EnableCell(column, row, takes);
    }
    // A row being made is made for a paint under way.
    if (!isMakingRow())
        RepaintAll();
}

void CAttrTypeGrid::OnCellChange(int column, long row, ug::TextSource source)
{
    if (column < m_typeColumn || column > domainColumn())
        return;
    const QString text = GetCellString(row, column);
    // A text that names no template leaves the argument cells as they are.
    const AttrTypeTemplate *typeTemplate = column == m_typeColumn ? TemplateOf(text) : nullptr;
    if (typeTemplate)
        SetUpArgumentCells(row, typeTemplate, source != ug::TextRestored);
    if (!TakePastedType(column, row, source))
        SpreadChoice(column, row, source);
}

bool CAttrTypeGrid::TakePastedType(int column, long row, ug::TextSource source)
{
    const QString text = GetCellString(row, column);
    if (column != m_typeColumn || source != ug::TextPasted || text.isEmpty() || TemplateOf(text))
        return false;
    // Its arguments may come later in the pasted line, into cells that
    // take any text: mapped once the whole paste is in.
    for (int argument = 0; argument < 2; ++argument) {
        const int argumentAt = argumentColumn(argument);
        CUGCell cell;
        GetColumnDefault(argumentAt, cell);
        cell.setText(QString());
        SetCell(argumentAt, row, cell);
        EnableCell(argumentAt, row, true);
    }
    m_pastedTypeRows.push_back(row);
    return true;
}

int CAttrTypeGrid::StoreUserText(int column, long row, const QString &text, ug::TextSource source)
{
    UndoStep step(*this);
    const bool same = GetCellText(column, row) == text;
    const int result = CVVyrGrid::StoreUserText(column, row, text, source);
    // A text the cell held already changes nothing, and nothing hears of
    // it; yet a pasted type is mapped (or said to be unmapped) however the
    // row came by it - a new row takes the type of the row above.
    if (result == ug::Success && same && !TakePastedType(column, row, source))
        SpreadChoice(column, row, source);
    return result;
}

void CAttrTypeGrid::SpreadChoice(int column, long row, ug::TextSource source)
{
    if (column < m_typeColumn || column > domainColumn())
        return;
    const QString text = GetCellString(row, column);
    const AttrTypeTemplate *typeTemplate = column == m_typeColumn ? TemplateOf(text) : nullptr;
    // What a person chose in one of several selected rows goes to all of
    // them that can take it, in the same step of the history.
    const bool chosen = source == ug::TextEdited || source == ug::TextChosen || source == ug::TextBrowsed;
    if (!chosen || m_spreading || (column == m_typeColumn && !typeTemplate))
        return;
    m_spreading = true;
    // A typed text ends an edit, which collapsed the selection to its cell:
    // the rows selected when it began are meant.
    for (const long other : SelectedRecords(source == ug::TextEdited)) {
        if (other == row || !IsCellEnabled(column, other) || !TakesArgumentOf(other, column, row))
            continue;
        SetCellText(column, other, text);
        if (typeTemplate)
            SetUpArgumentCells(other, typeTemplate, true);
    }
    m_spreading = false;
    RepaintAll();
}

std::unique_ptr<AttrTypeArg> CAttrTypeGrid::ArgumentOf(long row, std::size_t index)
{
    // A template's arguments hold keywords; the argument a type of it
    // takes is made from the keyword.
    const AttrTypeTemplate *typeTemplate = TemplateOf(GetCellText(m_typeColumn, row));
    if (!typeTemplate || index >= typeTemplate->argCount())
        return nullptr;
    return createArg(typeTemplate->arg(index)->value(), std::uint32_t(index), typeTemplate);
}

bool CAttrTypeGrid::TakesArgumentOf(long row, int column, long source)
{
    if (column != argumentColumn(0) && column != argumentColumn(1))
        return true;
    // A width is no domain, nor a list of values: the argument must be of
    // the same kind in both rows' types.
    const std::size_t index = std::size_t(column - argumentColumn(0));
    const std::unique_ptr<AttrTypeArg> wanted = ArgumentOf(source, index);
    const std::unique_ptr<AttrTypeArg> offered = ArgumentOf(row, index);
    if (!wanted || !offered)
        return false;
    const AttrTypeArg &wantedKind = *wanted;
    const AttrTypeArg &offeredKind = *offered;
    return typeid(wantedKind) == typeid(offeredKind);
}

QString CAttrTypeGrid::OnCheckText(int column, long row, const QString &text)
{
    if (text.isEmpty() || (column != argumentColumn(0) && column != argumentColumn(1)))
        return CVVyrGrid::OnCheckText(column, row, text);
    const std::unique_ptr<AttrTypeArg> argument = ArgumentOf(row, std::size_t(column - argumentColumn(0)));
    if (!argument)
        return {};
    const std::string value = toNarrow(text);
    argument->setValue(value);
    if (argument->value() == value)
        return {};
    return formatResourceString(res::WholeNumberRequired, {GetCellText(column, -1)});
}

const AttrType &CAttrTypeGrid::PatternOf(const AttrType &type) const
{
    const AttrTypeTemplate *typeTemplate = TemplateOf(fromNarrow(type.name()));
    return typeTemplate ? *typeTemplate : type;
}

CAttrTypeGrid::TypeCells CAttrTypeGrid::TypeCellsOf(const AttrType &type)
{
    TypeCells cells;
    cells.type = fromNarrow(type.name());
    for (std::size_t argument = 0; argument < 2; ++argument) {
        if (const AttrTypeArg *value = type.arg(argument))
            cells.arguments[argument] = fromNarrow(value->value());
    }
    if (hasDomains())
        cells.domain = type.suffix().empty() ? kNoDomain : fromNarrow(type.suffix());
    cells.taken = PatternOf(type).argCount();
    return cells;
}

void CAttrTypeGrid::SetRowType(long row, const AttrType &type)
{
    if (row < 0 || row >= GetRowCount())
        return;
    const TypeCells cells = TypeCellsOf(type);
    SetCellText(m_typeColumn, row, cells.type);
    for (int argument = 0; argument < 2; ++argument)
        SetCellText(argumentColumn(argument), row, cells.arguments[argument]);
    if (hasDomains())
        SetCellText(domainColumn(), row, cells.domain);
    SetUpArgumentCells(row, &PatternOf(type), false);
}

std::unique_ptr<AttrType> CAttrTypeGrid::GetRowType(long row)
{
    return RowTypeIn(row, *m_registry);
}

std::unique_ptr<AttrType> CAttrTypeGrid::RowTypeIn(long row, const DataTypeMappings &registry)
{
    if (row < 0 || row >= GetRowCount())
        return nullptr;
    const QString name = GetCellString(row, m_typeColumn);
    if (name.isEmpty())
        return nullptr;
    StringList values;
    for (int argument = 0; argument < 2; ++argument) {
        const int column = argumentColumn(argument);
        const QString value = GetCellString(row, column);
        if (!IsCellEnabled(column, row) || value.isEmpty())
            break;
        values.push_back(toNarrow(value));
    }
    std::string domain;
    if (hasDomains() && IsCellEnabled(domainColumn(), row)) {
        const QString text = GetCellString(row, domainColumn());
        if (!text.isEmpty() && text != kNoDomain)
            domain = toNarrow(text);
    }
    return registry.createType(formatType(toNarrow(name), values, domain, kDialogListMode), kDialogListMode);
}

std::unique_ptr<AttrType> CAttrTypeGrid::NativePastedType(long row)
{
    // A pasted line says nothing of how many arguments its type takes, and
    // the cells past them may hold what the row had before: the most
    // arguments that make a type win.
    StringList values;
    for (int argument = 0; argument < 2; ++argument) {
        const QString value = GetCellString(row, argumentColumn(argument));
        if (value.isEmpty())
            break;
        values.push_back(toNarrow(value));
    }
    const std::string name = toNarrow(GetCellString(row, m_typeColumn));
    for (;;) {
        if (const std::unique_ptr<AttrType> read
            = m_registry->createType(formatType(name, values, {}, kDialogListMode), kDialogListMode)) {
            std::unique_ptr<AttrType> native = m_registry->toNative(*read);
            return native && TemplateOf(fromNarrow(native->name())) ? std::move(native) : nullptr;
        }
        if (values.empty())
            return nullptr;
        values.pop_back();
    }
}

void CAttrTypeGrid::OnPasted(const PasteResult &)
{
    // A spreadsheet's type in the generic words becomes the format's.
    QStringList unmapped;
    for (const long row : std::exchange(m_pastedTypeRows, {})) {
        if (const std::unique_ptr<AttrType> native = NativePastedType(row)) {
            SetRowType(row, *native);
        } else if (const QString text = GetCellString(row, m_typeColumn); !unmapped.contains(text)) {
            unmapped.append(text);
        }
    }
    RepaintAll();
    if (!unmapped.isEmpty())
        ShowMessageBox(this, formatResourceString(res::UnmappedPastedTypes, {unmapped.join(QStringLiteral(", "))}),
                       QString(), MbOk);
}

void CAttrTypeGrid::LayoutLeadingColumns(int) {}

int CAttrTypeGrid::ArgumentColumnFloor()
{
    // Headings are drawn in the heading font, bolder than the cells'.
    CUGCell heading;
    GetHeadingDefaultCell(heading);
    const QFontMetrics metrics(cellFont(heading));
    int floor = 0;
    for (const int column : {argumentColumn(0), argumentColumn(1)})
        floor = std::max(floor, metrics.horizontalAdvance(GetCellText(column, -1)) + 2 * cellMargin());
    CUGCell button;
    button.setCellType(BrowseTypeId());
    for (const unsigned label : {res::BrowseEditLabel, res::BrowseViewLabel}) {
        button.setLabel(loadResourceString(label));
        QSize size;
        GetCellType(button)->MeasureCell(size, button);
        floor = std::max(floor, size.width());
    }
    return floor;
}

void CAttrTypeGrid::OnLayoutComponents(Layout &layout)
{
    const int width = layout.grid.width();
    LayoutLeadingColumns(width);
    int leading = 0;
    for (int column = 0; column < m_typeColumn; ++column)
        leading += GetColumnWidth(column);
    // The leading columns (a name) give way before a button is cut: the type
    // and the arguments (and domains) keep at least an argument's width each.
    const int floor = ArgumentColumnFloor();
    const bool domains = showsDomainColumn();
    m_laidOutWithDomains = domains;
    const int needed = (domains ? 4 : 3) * floor;
    if (leading > 0 && width - leading < needed) {
        const int allowed = std::max(0, width - needed);
        for (int column = 0; column < m_typeColumn; ++column)
            SetColumnWidth(column, int(qint64(GetColumnWidth(column)) * allowed / leading));
        leading = allowed;
    }
    const int rest = width - leading;
    // Shares of what the leading columns leave; without domains the domain
    // column takes nothing and the others share its part.
    const double type = domains ? 0.35 : 0.5;
    const double argument = domains ? 0.15 : 0.25;
    const double domain = domains ? 0.35 : 0.0;
    // An argument column is never narrower than its heading or its button
    // ("Bearbeiten..." in German); the type and domain columns give way.
    const int argumentWidth = std::min(std::max(int(argument * rest), floor), rest / 3);
    const int left = rest - 2 * argumentWidth;
    SetColumnWidth(m_typeColumn, int(left * type / (type + domain)));
    SetColumnWidth(argumentColumn(0), argumentWidth);
    SetColumnWidth(argumentColumn(1), argumentWidth);
    SetColumnWidth(domainColumn(), int(left * domain / (type + domain)));
    layout.tabs = QRect();
}

} // namespace vyr
