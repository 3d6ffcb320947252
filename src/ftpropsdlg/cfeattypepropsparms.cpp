#include "ftpropsdlg/cfeattypepropsparms.h"

#include "ftprops/guiparameterline.h"
#include "ftpropsdlg/cdefparmsgrid.h"
#include "ftpropsdlg/cfeattypepropsdlg.h"

#include <QKeyEvent>
#include <QLineEdit>

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
    fillRows(m_format, m_schema->getParameters(m_format->getDeflineParmNames()));
    m_initialised = true;
    return true;
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

void CFeatTypePropsParms::collectShownValues()
{
    if (!m_grid)
        return;
    m_grid->CommitEdit();
    for (long row = 0; row < m_grid->GetRowCount(); ++row)
        m_values[m_grid->ParameterNameOf(row)] = m_grid->GetParameterValue(row);
}

void CFeatTypePropsParms::fillRows(const FTPropsFormatInfo *format, const std::map<std::string, std::string> &values)
{
    m_names = format->getDeflineParmNames();
    m_values.clear();
    for (const std::string &name : m_names) {
        const auto found = values.find(name);
        m_values[name] = found != values.end() ? found->second : format->getDeflineParmDefault(name);
    }
    showRows();
}

void CFeatTypePropsParms::showRows()
{
    if (!m_grid)
        return;
    m_grid->BeginBatch();
    m_grid->RemoveAllRows();
    m_grid->SetOutsideDisableValue(std::nullopt);
    const QString filter = m_filterText.trimmed();
    for (const std::string &name : m_names) {
        const std::string line = m_format->getDeflineParm(name);
        const GuiParameterLine parameter = ParseParameterLine(line);
        if (!filter.isEmpty() && !CDefParmsGrid::LocalizedPrompt(parameter).contains(filter, Qt::CaseInsensitive)) {
            // A hidden DISABLE parameter still rules over the rows shown.
            if (parameter.type == "DISABLE")
                m_grid->SetOutsideDisableValue(m_values[name]);
            continue;
        }
        m_grid->AddParameterRow(line, m_values[name]);
    }
    m_grid->ApplyDisableRule();
    m_grid->EndBatch();
    m_grid->RepaintAll();
}

void CFeatTypePropsParms::SetFilter(const QString &text)
{
    if (text == m_filterText)
        return;
    collectShownValues();
    m_filterText = text;
    showRows();
    if (m_filter && m_filter->text() != text) {
        const QSignalBlocker quiet(m_filter);
        m_filter->setText(text);
    }
}

std::map<std::string, std::string> CFeatTypePropsParms::ParameterValues()
{
    collectShownValues();
    return m_values;
}

bool CFeatTypePropsParms::ValidatePage()
{
    if (m_grid)
        m_grid->CommitEdit();
    return true;
}

void CFeatTypePropsParms::WriteToSchema(FTPropsSchemaInfo &target, const std::set<std::string> *names)
{
    if (!m_grid)
        return;
    const FTPropsFormatInfo *targetFormat = m_dialog ? m_dialog->formats().find(target.getFormatId()) : nullptr;
    if (!targetFormat)
        targetFormat = m_format;
    const std::map<std::string, std::string> values = ParameterValues();
    std::vector<std::pair<std::string, std::string>> written;
    for (const std::string &name : m_names) {
        if (targetFormat->getDeflineParm(name).empty() || (names && !names->contains(name)))
            continue;
        written.emplace_back(name, values.at(name));
    }
    if (!written.empty())
        target.setParameters(written);
}

void CFeatTypePropsParms::ChangeFormat(const FTPropsFormatInfo *format)
{
    if (!format)
        return;
    const std::map<std::string, std::string> kept = ParameterValues();
    m_format = format;
    if (m_grid)
        m_grid->SetFormat(format);
    fillRows(format, kept);
}

} // namespace vyr
