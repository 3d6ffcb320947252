#include "ftpropsdlg/cdefparmsgrid.h"

#include "ftpropsdlg/cfeattypepropsattrs.h"
#include "ftpropsdlg/cfeattypepropsdlg.h"
#include "uikit/dialogutils.h"
#include "uikit/narrowtext.h"
#include "uikit/resourcelibrary.h"
#include "util/resourceids.h"

#include "vyr/IGuiPrompter.h"

#include <QRegularExpression>

#include <algorithm>
#include <utility>

namespace vyr {

namespace {

constexpr char kYes[] = "Yes";
constexpr char kNo[] = "No";
// The selection box's title, in the user's language as the prompts are.
constexpr char kSelectTitle[] = "Select";

bool typeIs(const GuiParameterLine &parameter, const char *type)
{
    return parameter.type == type;
}

bool isBrowsed(const GuiParameterLine &parameter)
{
    return typeIs(parameter, "ATTRLIST") || typeIs(parameter, "ATTRLIST_COMMAS") || typeIs(parameter, "ICONPICK");
}

// Drop list entries as the cell's label keeps them: each ended by a line
// feed.
QString dropListLabel(const QStringList &entries)
{
    QString label;
    for (const QString &entry : entries)
        label += entry + u'\n';
    return label;
}

QString localized(const std::string &text)
{
    return fromNarrow(LocalizeText(text));
}

// The rule is off only for No, in either language.
bool ruleOnFor(const std::string &storedOrShown)
{
    return storedOrShown != kNo && storedOrShown != LocalizeText(kNo);
}

bool isChoice(const GuiParameterLine &parameter)
{
    return typeIs(parameter, "CHOICE") || typeIs(parameter, "DISABLE");
}

StringList choicesOf(const GuiParameterLine &parameter)
{
    return typeIs(parameter, "DISABLE") ? StringList{kYes, kNo} : parameter.choices;
}

} // namespace

QStringList CDefParmsGrid::ChoiceEntries(const GuiParameterLine &parameter)
{
    QStringList entries;
    for (const std::string &choice : choicesOf(parameter))
        entries.append(localized(choice));
    if (parameter.optional && typeIs(parameter, "CHOICE"))
        entries.append(QString());
    return entries;
}

bool TurnedOnBySwitch(const GuiParameterLine &parameter)
{
    return parameter.disabledOnly && parameter.type != "DISABLE";
}

bool ParameterEnabledByRule(const GuiParameterLine &parameter, bool ruleOn)
{
    if (parameter.alwaysEnabled)
        return true;
    return parameter.disabledOnly ? ruleOn : !ruleOn;
}

CDefParmsGrid::CDefParmsGrid(const FTPropsFormatInfo *format, CFeatTypePropsDlg *dialog, QWidget *parent)
    : CVVyrGrid(2, false, parent)
    , m_format(format)
    , m_dialog(dialog)
{}

void CDefParmsGrid::OnGridInit()
{
    CVVyrGrid::OnGridInit();
    SetTopHeadingHeight(20);
    SetSideHeadingWidth(20);
    SetCellText(kPromptColumn, -1, loadResourceString(res::ParameterPromptHeading));
    SetCellText(kValueColumn, -1, loadResourceString(res::ParameterValueHeading));
    CUGCell cell;
    GetColumnDefault(kPromptColumn, cell);
    cell.setReadOnly(true);
    cell.setTextColor(palette().color(QPalette::WindowText));
    SetColumnDefault(kPromptColumn, cell);
}

void CDefParmsGrid::RemoveAllRows()
{
    CommitEdit();
    SetRowCount(0);
    m_parameters.clear();
    m_storedChoices.clear();
    m_rowNames.clear();
    m_loaded.clear();
    m_unmeasured.clear();
    m_disableRow = kNoDisableRow;
}

QString CDefParmsGrid::LocalizedPrompt(const GuiParameterLine &parameter)
{
    return localized(parameter.prompt);
}

CUGCell CDefParmsGrid::ValueCellOf(const GuiParameterLine &parameter)
{
    CUGCell cell;
    cell.setCellType(0);
    if (typeIs(parameter, "INTEGER")) {
        cell.setMask(QStringLiteral("##########"));
    } else if (isChoice(parameter)) {
        cell.setCellType(DropListTypeId());
        cell.setLabel(dropListLabel(ChoiceEntries(parameter)));
    } else if (typeIs(parameter, "ATTR")) {
        cell.setCellType(DropListTypeId());
        SetCellActionHandler(cell, this);
    } else if (isBrowsed(parameter)) {
        cell.setCellType(BrowseTypeId());
        cell.setCellTypeParam(ug::ParamEditable);
    } else if (typeIs(parameter, "COLOR_PICK")) {
        cell.setCellType(ColourTypeId());
        cell.setCellTypeParam(ug::ParamEditable);
    }
    return cell;
}

QString CDefParmsGrid::ShownValue(const GuiParameterLine &parameter, const std::string &value)
{
    // Only a value among the choices is shown translated, so that any other
    // value is stored back as it came.
    if (isChoice(parameter)) {
        for (const std::string &choice : choicesOf(parameter)) {
            if (choice == value)
                return localized(choice);
        }
    }
    return fromNarrow(value);
}

const std::map<QString, std::string> *CDefParmsGrid::StoredChoicesOf(const std::string &name)
{
    const GuiParameterLine *parameter = ParameterOf(name);
    if (!parameter || !isChoice(*parameter))
        return nullptr;
    auto [stored, added] = m_storedChoices.try_emplace(name);
    if (added) {
        for (const std::string &choice : choicesOf(*parameter)) {
            if (const QString entry = localized(choice); entry != fromNarrow(choice))
                stored->second.emplace(entry, choice);
        }
    }
    return stored->second.empty() ? nullptr : &stored->second;
}

void CDefParmsGrid::measurePrompt(const QString &prompt)
{
    // The cell's text margins and a little air.
    m_promptWidth = std::max(m_promptWidth, fontMetrics().horizontalAdvance(prompt) + 12);
}

void CDefParmsGrid::measureLoadedPrompts()
{
    for (const std::size_t record : std::exchange(m_unmeasured, {}))
        measurePrompt(LoadedText(record, kPromptColumn));
}

long CDefParmsGrid::rememberParameter(long row, const GuiParameterLine &parameter)
{
    if (m_rowNames.size() <= std::size_t(row))
        m_rowNames.resize(std::size_t(row) + 1);
    m_rowNames[std::size_t(row)] = parameter.name;
    m_parameters[parameter.name] = parameter;
    return row;
}

void CDefParmsGrid::writeParameterRow(long row, const GuiParameterLine &parameter, const QString &prompt,
                                      const QString &shown)
{
    SetCellText(kPromptColumn, row, prompt);
    SetCellText(kValueColumn, row, shown);
    CUGCell valueCell;
    GetCell(kValueColumn, row, valueCell);
    valueCell.addInfoFrom(ValueCellOf(parameter));
    SetCell(kValueColumn, row, valueCell);
}

long CDefParmsGrid::AddParameterRow(const std::string &line, const std::string &value)
{
    const GuiParameterLine parameter = ParseParameterLine(line);
    const QString prompt = LocalizedPrompt(parameter);
    measurePrompt(prompt);
    const long row = recordCount();
    if (InsertRow(row) != ug::Success)
        return -1;
    writeParameterRow(row, parameter, prompt, ShownValue(parameter, value));
    rememberParameter(row, parameter);

    if (typeIs(parameter, "DISABLE")) {
        m_disableRow = row;
        ApplyDisableRule();
    } else if (const std::optional<bool> ruleOn = disableRuleOn()) {
        // The other rows already follow the rule: only the new one needs it.
        applyRuleTo(row, *ruleOn);
    }
    return row;
}

void CDefParmsGrid::LoadParameters(const StringList &names, const std::map<std::string, std::string> &values)
{
    if (!m_format)
        return;
    const long first = GetRowCount();
    const std::size_t firstRecord = m_loaded.size();
    for (const std::string &name : names) {
        const long row = first + long(m_loaded.size() - firstRecord);
        const GuiParameterLine &parameter = m_parameters[name] = m_format->getDeflineParmLine(name);
        const auto found = values.find(name);
        m_loaded.push_back({parameter.name, found != values.end() ? found->second : m_format->getDeflineParmDefault(name),
                            {}, {}});
        m_unmeasured.push_back(m_loaded.size() - 1);
        rememberParameter(row, parameter);
        // The rule comes to the rows as they are made.
        if (typeIs(parameter, "DISABLE"))
            m_disableRow = row;
    }
    AppendLoadedRows(firstRecord, long(m_loaded.size() - firstRecord));
}

QString CDefParmsGrid::LoadedText(std::size_t record, int column)
{
    LoadedParameter &loaded = m_loaded[record];
    const GuiParameterLine *parameter = ParameterOf(loaded.name);
    if (!parameter)
        return {};
    std::optional<QString> &text = column == kPromptColumn ? loaded.prompt : loaded.shown;
    if (column != kPromptColumn && column != kValueColumn)
        return {};
    if (!text)
        text = column == kPromptColumn ? LocalizedPrompt(*parameter) : ShownValue(*parameter, loaded.value);
    return *text;
}

bool CDefParmsGrid::IsLoadedCellEnabled(std::size_t record, int column)
{
    const GuiParameterLine *parameter = ParameterOf(m_loaded[record].name);
    if (column != kValueColumn || !parameter || m_loaded[record].name == ParameterNameOf(m_disableRow))
        return true;
    const std::optional<bool> ruleOn = disableRuleOn();
    return !ruleOn || ParameterEnabledByRule(*parameter, *ruleOn);
}

void CDefParmsGrid::MakeLoadedRow(long row, std::size_t record)
{
    // As AddParameterRow left the row, with the rule as it stands.
    const GuiParameterLine *parameter = ParameterOf(m_loaded[record].name);
    if (!parameter)
        return;
    writeParameterRow(row, *parameter, LoadedText(record, kPromptColumn), LoadedText(record, kValueColumn));
    if (const std::optional<bool> ruleOn = disableRuleOn())
        applyRuleTo(row, *ruleOn);
}

void CDefParmsGrid::ShowRow(long row, bool shown)
{
    if (IsRowShown(row) == shown)
        return;
    if (!shown && row == GetCurrentRow())
        CommitEdit();
    SetRowHeight(row, shown ? gridInfo().defaultRowHeight : 0);
}

std::string CDefParmsGrid::ParameterNameOf(long row) const
{
    return row >= 0 && std::size_t(row) < m_rowNames.size() ? m_rowNames[std::size_t(row)] : std::string();
}

long CDefParmsGrid::RowOf(const std::string &name) const
{
    const auto found = std::find(m_rowNames.begin(), m_rowNames.end(), name);
    return found == m_rowNames.end() ? -1 : long(found - m_rowNames.begin());
}

const GuiParameterLine *CDefParmsGrid::ParameterOf(const std::string &name) const
{
    const auto found = m_parameters.find(name);
    return found == m_parameters.end() ? nullptr : &found->second;
}

std::string CDefParmsGrid::GetParameterValue(long row)
{
    const QString text = GetCellString(row, kValueColumn);
    if (const std::map<QString, std::string> *choices = StoredChoicesOf(ParameterNameOf(row))) {
        const auto stored = choices->find(text);
        if (stored != choices->end())
            return stored->second;
    }
    return toNarrow(text);
}

std::optional<bool> CDefParmsGrid::disableRuleOn()
{
    if (m_disableRow != kNoDisableRow)
        return ruleOnFor(toNarrow(GetCellString(m_disableRow, kValueColumn)));
    return std::nullopt;
}

void CDefParmsGrid::applyRuleTo(long row, bool ruleOn)
{
    if (row == m_disableRow)
        return;
    if (const GuiParameterLine *parameter = ParameterOf(ParameterNameOf(row)))
        EnableCell(kValueColumn, row, ParameterEnabledByRule(*parameter, ruleOn));
}

void CDefParmsGrid::ApplyDisableRule()
{
    const std::optional<bool> ruleOn = disableRuleOn();
    if (!ruleOn)
        return;
    BeginBatch();
    for (long row = 0; row < GetRowCount(); ++row)
        applyRuleTo(row, *ruleOn);
    EndBatch();
    RepaintAll();
}

void CDefParmsGrid::OnCellChange(int column, long row, ug::TextSource source)
{
    if (column != kValueColumn || row != m_disableRow)
        return;
    // A switch is not stored: the rows it turns on say where it stands. Off,
    // they are emptied, in the same step, or it would read back as on. Undo
    // and redo put those rows back themselves.
    if (source != ug::TextRestored && disableRuleOn() == false) {
        for (long other = 0; other < GetRowCount(); ++other) {
            const GuiParameterLine *parameter = ParameterOf(ParameterNameOf(other));
            if (parameter && TurnedOnBySwitch(*parameter) && !GetCellString(other, kValueColumn).isEmpty())
                SetCellText(kValueColumn, other, QString());
        }
    }
    ApplyDisableRule();
}

QString CDefParmsGrid::OnCheckText(int column, long row, const QString &text)
{
    const GuiParameterLine *parameter = ParameterOf(ParameterNameOf(row));
    if (column != kValueColumn || !parameter)
        return CVVyrGrid::OnCheckText(column, row, text);
    // A list's cell takes only its entries, however the text comes (a
    // paste, a replace); what it holds already stays, so a value read from
    // the file that is none of them is kept as it came.
    if (isChoice(*parameter)) {
        const QStringList entries = ChoiceEntries(*parameter);
        if (entries.contains(text) || text == GetCellString(row, column))
            return {};
        QStringList quoted;
        for (const QString &entry : entries)
            if (!entry.isEmpty())
                quoted.append(u'"' + entry + u'"');
        return formatResourceString(res::ChoiceRequired, {LocalizedPrompt(*parameter), quoted.join(QStringLiteral(", "))});
    }
    if (typeIs(*parameter, "ATTR")) {
        // Without a page of attributes there is nothing to hold it to.
        if (!(m_dialog && m_dialog->attributesPage()) || (text.isEmpty() && parameter->optional)
            || text == GetCellString(row, column))
            return {};
        for (const std::string &name : attributeNames())
            if (fromNarrow(name) == text)
                return {};
        return formatResourceString(res::AttributeChoiceRequired, {LocalizedPrompt(*parameter), text});
    }
    if (!typeIs(*parameter, "INTEGER"))
        return CVVyrGrid::OnCheckText(column, row, text);
    if (text.isEmpty() && parameter->optional)
        return {};
    // The cell's mask lets blanks and signs anywhere; a value is one sign at
    // most, then digits.
    static const QRegularExpression wholeNumber(QStringLiteral("^[+-]?[0-9]+$"));
    if (wholeNumber.match(text).hasMatch())
        return {};
    return formatResourceString(parameter->optional ? res::WholeNumberOrEmptyRequired : res::WholeNumberRequired,
                                {LocalizedPrompt(*parameter)});
}

StringList CDefParmsGrid::attributeNames() const
{
    const CFeatTypePropsAttrs *page = m_dialog ? m_dialog->attributesPage() : nullptr;
    return page ? page->GetAttributeNames() : StringList();
}

void CDefParmsGrid::OnGetChoices(CVVyrGrid &, int column, long row, CUGCell &, QStringList &choices)
{
    const GuiParameterLine *parameter = ParameterOf(ParameterNameOf(row));
    if (column != kValueColumn || !parameter)
        return;
    choices = fromNarrowList(attributeNames());
    if (parameter->optional)
        choices.append(QString());
}

int CDefParmsGrid::OnBrowse(int column, long row)
{
    const GuiParameterLine *parameter = ParameterOf(ParameterNameOf(row));
    if (column != kValueColumn || !parameter || !isBrowsed(*parameter) || !IsCellEnabled(column, row))
        return 1;
    IGuiPrompter *prompter = m_dialog ? m_dialog->prompter() : nullptr;
    if (prompter)
        prompter->setParentWindow(window());
    std::string value = toNarrow(GetCellString(row, kValueColumn));
    if (typeIs(*parameter, "ICONPICK")) {
        if (!PromptIconPick(prompter, LocalizeText(parameter->prompt), value))
            return 1;
    } else {
        StringList chosen;
        for (std::string &piece : splitList(value, ','))
            if (!piece.empty())
                chosen.push_back(std::move(piece));
        if (!PromptSelectionBox(prompter, LocalizeText(kSelectTitle), LocalizeText(parameter->prompt), attributeNames(),
                                chosen, std::string()))
            return 1;
        value = joinList(chosen, ',');
    }
    StoreUserText(kValueColumn, row, fromNarrow(value), ug::TextBrowsed);
    RepaintCell(kValueColumn, row);
    return 1;
}

QString CDefParmsGrid::HelpTextOf(long row) const
{
    const std::string name = ParameterNameOf(row);
    if (name.empty() || !m_format)
        return {};
    const std::string help = m_format->getDeflineParmHelp(name);
    return help.empty() ? QString() : localized(help);
}

int CDefParmsGrid::OnCellTipText(int, long row, int, QString &text)
{
    text = HelpTextOf(row);
    return text.isEmpty() ? 0 : 1;
}

QString CDefParmsGrid::OnCellDescription(int, long row)
{
    return HelpTextOf(row);
}

int CDefParmsGrid::OnAllowCellMove(int, long, int, long)
{
    // Rows the disable rule turned off must not stop the keyboard on its way
    // down the page, and a prompt is where the focus lands first; neither
    // takes an edit, since the grid refuses to write into them.
    return 1;
}

void CDefParmsGrid::OnLayoutComponents(Layout &layout)
{
    // German prompts run long: the prompts get what the longest needs, as
    // long as the values keep two fifths of the width and a third is left
    // for prompts in any case.
    const int width = layout.grid.width();
    // Prompts are measured only when they can be seen.
    if (isVisible())
        measureLoadedPrompts();
    const int prompts = std::clamp(m_promptWidth, width / 3, std::max(width / 3, width * 3 / 5));
    SetColumnWidth(kPromptColumn, prompts);
    SetColumnWidth(kValueColumn, width - prompts);
    layout.tabs = QRect();
}

} // namespace vyr
