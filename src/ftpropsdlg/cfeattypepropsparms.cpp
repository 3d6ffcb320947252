#include "ftpropsdlg/cfeattypepropsparms.h"

#include "ftprops/guiparameterline.h"
#include "ftpropsdlg/cdefparmsgrid.h"
#include "ftpropsdlg/cfeattypepropsattrs.h"
#include "ftpropsdlg/cfeattypepropsdlg.h"
#include "uikit/dialogutils.h"
#include "uikit/narrowtext.h"
#include "uikit/resourcelibrary.h"
#include "util/listpacking.h"
#include "util/resourceids.h"

#include <QKeyEvent>
#include <QLineEdit>

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace vyr {

CFeatTypePropsParms::CFeatTypePropsParms(FTPropsSchemaInfo *schema, const FTPropsFormatInfo *format,
                                         CFeatTypePropsDlg *dialog)
    : CVyrDialog(kTemplateId, 0, false, std::string(), dialog, DialogMode::ModeModal)
    , m_schema(schema)
    , m_format(format)
    , m_dialog(dialog)
{
    // A page lives inside the frame, not in a window of its own.
    setWindowFlags(Qt::Widget);
}

CFeatTypePropsParms::~CFeatTypePropsParms() = default;

bool CFeatTypePropsParms::OnInitDialog()
{
    CVyrDialog::OnInitDialog();
    auto *grid = new CDefParmsGrid(m_format, m_dialog);
    if (!grid->AttachToDialogItem(this, kIdGrid)) {
        delete grid;
        return true;
    }
    m_grid = grid;
    m_filter = qobject_cast<QLineEdit *>(GetDlgItem(kIdFilter));
    if (m_filter) {
        m_filter->setClearButtonEnabled(true);
        m_filter->installEventFilter(this);
        connect(m_filter, &QLineEdit::textChanged, this, [this](const QString &text) { SetFilter(text); });
    }
    std::map<std::string, std::string> values = m_schema->getParameters(m_format->getDeflineParmNames());
    deriveSwitches(*m_format, values);
    fillRows(m_format, values);
    m_initialised = true;
    return true;
}

void CFeatTypePropsParms::deriveSwitches(const FTPropsFormatInfo &format, std::map<std::string, std::string> &values)
{
    // A switch is not stored: what it enables says where it stood. A format
    // whose switch enables nothing keeps the switch's default.
    const StringList names = format.getDeflineParmNames();
    bool enablesAny = false;
    bool valueGiven = false;
    for (const std::string &name : names) {
        if (TurnedOnBySwitch(format.getDeflineParmLine(name))) {
            enablesAny = true;
            valueGiven = valueGiven || !values[name].empty();
        }
    }
    if (!enablesAny)
        return;
    for (const std::string &name : names) {
        if (format.getDeflineParmLine(name).type == "DISABLE")
            values[name] = valueGiven ? "Yes" : "No";
    }
}

void CFeatTypePropsParms::resizeEvent(QResizeEvent *event)
{
    CVyrDialog::resizeEvent(event);
    if (m_initialised && m_grid)
        m_grid->CommitEdit();
}

bool CFeatTypePropsParms::eventFilter(QObject *watched, QEvent *event)
{
    // Escape empties the filter; an empty one lets Escape cancel the dialog.
    if (watched == m_filter && (event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride)) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Escape && key->modifiers() == Qt::NoModifier && !m_filter->text().isEmpty()) {
            if (event->type() == QEvent::KeyPress)
                m_filter->clear();
            event->accept();
            return event->type() == QEvent::KeyPress;
        }
    }
    return CVyrDialog::eventFilter(watched, event);
}

void CFeatTypePropsParms::fillRows(const FTPropsFormatInfo *format, const std::map<std::string, std::string> &values)
{
    m_names = format->getDeflineParmNames();
    if (!m_grid)
        return;
    m_grid->BeginBatch();
    m_grid->RemoveAllRows();
    m_grid->LoadParameters(m_names, values);
    m_grid->EndBatch();
    showRows();
}

void CFeatTypePropsParms::showRows()
{
    if (!m_grid)
        return;
    // The filter hides rows rather than making the rows anew: the values,
    // the switch's rule and the grid's undo history stay whatever it shows.
    const QString filter = m_filterText.trimmed();
    m_grid->BeginBatch();
    for (long row = 0; row < m_grid->GetRowCount(); ++row) {
        const GuiParameterLine *parameter = m_grid->ParameterOf(m_grid->ParameterNameOf(row));
        const bool shown = filter.isEmpty() || !parameter
            || CDefParmsGrid::LocalizedPrompt(*parameter).contains(filter, Qt::CaseInsensitive);
        m_grid->ShowRow(row, shown);
    }
    // The keyboard stays on a row the filter shows.
    if (!m_grid->IsRowShown(m_grid->GetCurrentRow())) {
        for (long row = 0; row < m_grid->GetRowCount(); ++row) {
            if (m_grid->IsRowShown(row)) {
                m_grid->GotoCell(std::max(0, m_grid->GetCurrentCol()), row);
                break;
            }
        }
    }
    m_grid->EndBatch();
    m_grid->RepaintAll();
}

void CFeatTypePropsParms::SetFilter(const QString &text)
{
    if (text == m_filterText)
        return;
    if (m_grid)
        m_grid->CommitEdit();
    m_filterText = text;
    showRows();
    if (m_filter && m_filter->text() != text) {
        const QSignalBlocker quiet(m_filter);
        m_filter->setText(text);
    }
}

std::map<std::string, std::string> CFeatTypePropsParms::ParameterValues()
{
    std::map<std::string, std::string> values;
    if (!m_grid)
        return values;
    m_grid->CommitEdit();
    for (long row = 0; row < m_grid->GetRowCount(); ++row)
        values[m_grid->ParameterNameOf(row)] = m_grid->GetParameterValue(row);
    return values;
}

bool CFeatTypePropsParms::Refuse(const std::string &name, const QString &message)
{
    if (m_dialog)
        m_dialog->ShowPage(this);
    if (m_grid && !m_grid->IsRowShown(m_grid->RowOf(name)))
        SetFilter(QString());
    if (m_grid) {
        if (const long row = m_grid->RowOf(name); row >= 0)
            m_grid->FocusCell(CDefParmsGrid::kValueColumn, row);
    }
    ShowMessageBox(this, message, QString(), MbOk);
    return false;
}

namespace {

bool namesAttributes(const GuiParameterLine &line)
{
    return line.type == "ATTR" || line.type == "ATTRLIST" || line.type == "ATTRLIST_COMMAS";
}

// The attribute names a value of such a parameter holds.
StringList attributesIn(const std::string &value)
{
    StringList names;
    for (std::string &piece : splitList(value, ','))
        if (!piece.empty())
            names.push_back(std::move(piece));
    return names;
}

bool contains(const StringList &names, const std::string &name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

} // namespace

bool CFeatTypePropsParms::ValidatePage()
{
    if (!m_grid)
        return true;
    const std::map<std::string, std::string> values = ParameterValues();
    // A switch that is Yes with nothing it enables given reads back as No.
    for (const std::string &name : m_names) {
        const GuiParameterLine line = m_format->getDeflineParmLine(name);
        if (line.type != "DISABLE" || values.at(name) == "No")
            continue;
        std::optional<std::string> firstEnabled;
        bool given = false;
        for (const std::string &other : m_names) {
            if (!TurnedOnBySwitch(m_format->getDeflineParmLine(other)))
                continue;
            if (!firstEnabled)
                firstEnabled = other;
            given = given || !values.at(other).empty();
        }
        if (firstEnabled && !given) {
            const GuiParameterLine enabled = m_format->getDeflineParmLine(*firstEnabled);
            return Refuse(*firstEnabled, formatResourceString(res::SwitchNeedsValue,
                                                              {CDefParmsGrid::LocalizedPrompt(line),
                                                               CDefParmsGrid::LocalizedPrompt(enabled)}));
        }
    }
    // A parameter naming an attribute the page had but no longer has; a
    // name that was never one of its attributes is left as it is.
    const CFeatTypePropsAttrs *attributes = m_dialog ? m_dialog->attributesPage() : nullptr;
    if (!attributes || !m_dialog->hasUserAttributes())
        return true;
    const StringList present = attributes->GetAttributeNames();
    for (const std::string &name : m_names) {
        const GuiParameterLine line = m_format->getDeflineParmLine(name);
        if (!namesAttributes(line))
            continue;
        for (const std::string &attribute : attributesIn(values.at(name))) {
            if (contains(present, attribute) || !m_dialog->WasAttribute(attribute))
                continue;
            return Refuse(name, formatResourceString(res::ParameterAttributeGone,
                                                     {CDefParmsGrid::LocalizedPrompt(line), fromNarrow(attribute)}));
        }
    }
    return true;
}

void CFeatTypePropsParms::RenameAttribute(const std::string &before, const std::string &after)
{
    if (!m_grid)
        return;
    m_grid->CommitEdit();
    for (long row = 0; row < m_grid->GetRowCount(); ++row) {
        const GuiParameterLine *line = m_grid->ParameterOf(m_grid->ParameterNameOf(row));
        if (!line || !namesAttributes(*line))
            continue;
        StringList pieces = splitList(m_grid->GetParameterValue(row), ',');
        bool renamed = false;
        for (std::string &piece : pieces) {
            if (piece == before) {
                piece = after;
                renamed = true;
            }
        }
        if (!renamed)
            continue;
        // One step of the grid's history, so that its undo list is kept.
        CVVyrGrid::UndoStep step(*m_grid);
        m_grid->SetCellText(CDefParmsGrid::kValueColumn, row, fromNarrow(joinList(pieces, ',')));
        m_grid->RepaintCell(CDefParmsGrid::kValueColumn, row);
    }
}

void CFeatTypePropsParms::WriteToSchema(FTPropsSchemaInfo &target, const std::set<std::string> *names)
{
    if (!m_grid)
        return;
    const FTPropsFormatInfo *targetFormat = m_dialog ? m_dialog->formats().find(target.getFormatId()) : nullptr;
    if (!targetFormat)
        targetFormat = m_format;
    const std::map<std::string, std::string> values = ParameterValues();
    StringList considered;
    for (const std::string &name : m_names) {
        // A switch is never stored; writing one could only remove what an
        // older file holds.
        if (!targetFormat->getDeflineParm(name).empty() && targetFormat->getDeflineParmLine(name).type != "DISABLE"
            && (!names || names->contains(name)))
            considered.push_back(name);
    }
    // Only what differs from what the feature type has: a value left as it
    // was, a default above all, stays as it is stored (or unstored).
    const std::map<std::string, std::string> current = target.getParameters(considered);
    // Applied to another feature type, a value naming an attribute it does
    // not have would name nothing there: such a parameter is left alone.
    const StringList targetAttributes = names ? target.getAttributeNames(true, true) : StringList();
    std::vector<std::pair<std::string, std::string>> written;
    for (const std::string &name : considered) {
        const std::string &value = values.at(name);
        if (current.at(name) == value)
            continue;
        if (names && namesAttributes(targetFormat->getDeflineParmLine(name))) {
            const StringList named = attributesIn(value);
            if (!std::all_of(named.begin(), named.end(),
                             [&](const std::string &attribute) { return contains(targetAttributes, attribute); }))
                continue;
        }
        written.emplace_back(name, value);
    }
    if (!written.empty())
        target.setParameters(written);
}

void CFeatTypePropsParms::ChangeFormat(const FTPropsFormatInfo *format)
{
    if (!format)
        return;
    const std::map<std::string, std::string> kept = ParameterValues();
    m_valuesByFormat[m_format->getId()] = kept;
    // A parameter both formats have keeps its value; one the page showed
    // in the new format before shows what it had there; others start at
    // their defaults (or, for a switch, where those put it).
    const auto earlier = m_valuesByFormat.find(format->getId());
    std::map<std::string, std::string> values;
    for (const std::string &name : format->getDeflineParmNames()) {
        if (kept.contains(name))
            values[name] = kept.at(name);
        else if (earlier != m_valuesByFormat.end() && earlier->second.contains(name))
            values[name] = earlier->second.at(name);
        else
            values[name] = format->getDeflineParmDefault(name);
    }
    if (earlier == m_valuesByFormat.end())
        deriveSwitches(*format, values);
    m_format = format;
    if (m_grid)
        m_grid->SetFormat(format);
    fillRows(format, values);
}

} // namespace vyr
