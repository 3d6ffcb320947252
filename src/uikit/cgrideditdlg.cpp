#include "uikit/cgrideditdlg.h"

#include "uikit/cvvyrgrid.h"
#include "uikit/dialogutils.h"
#include "uikit/gridrowbuttons.h"
#include "uikit/resourcelibrary.h"
#include "util/resourceids.h"


namespace vyr {

CGridEditDlg::CGridEditDlg(int columnCount, QString title, QString label, QStringList values, bool enabled,
                           QStringList choices, QString secondLabel, std::string helpTopic, QWidget *parent)
    : CVyrDialog(kTemplateId, 0, true, std::move(helpTopic), parent, DialogMode::ModeModal)
    , m_columnCount(std::max(1, columnCount))
    , m_title(std::move(title))
    , m_label(std::move(label))
    , m_secondLabel(std::move(secondLabel))
    , m_values(std::move(values))
    , m_enabled(enabled)
    , m_choices(std::move(choices))
{
    RegisterControl(&m_labelControl, kIdLabel);
    RegisterControl(&m_secondLabelControl, kIdSecondLabel);
}

CGridEditDlg::~CGridEditDlg() = default;

bool CGridEditDlg::OnInitDialog()
{
    CVyrDialog::OnInitDialog();
    if (helpTopic().empty()) {
        if (QWidget *help = GetDlgItem(kIdHelp))
            help->hide();
    }
    setWindowTitle(m_title);
    if (m_labelControl)
        m_labelControl->setText(m_label);
    if (m_secondLabelControl) {
        m_secondLabelControl->setText(m_secondLabel);
        m_secondLabelControl->setVisible(!m_secondLabel.isEmpty());
    }

    auto *grid = new CVVyrGrid(m_columnCount, true);
    if (!grid->AttachToDialogItem(this, kIdGrid)) {
        delete grid;
        return true;
    }
    m_grid = grid;
    if (m_uniqueMessage)
        grid->SetUniqueColumn(0, m_uniqueMessage);
    if (!m_choices.isEmpty()) {
        // The first column offers the choices, in the new row too: it was
        // stored before the column had them.
        const auto offerChoices = [this, grid](CUGCell &cell) {
            cell.setCellType(grid->DropListTypeId());
            cell.setCellTypeParam(ug::ParamEditable);
            grid->SetCellActionHandler(cell, this);
        };
        CUGCell cell;
        grid->GetColumnDefault(0, cell);
        offerChoices(cell);
        grid->SetColumnDefault(0, cell);
        grid->GetCellResolved(0, 0, cell);
        offerChoices(cell);
        grid->SetCell(0, 0, cell);
    }
    for (qsizetype at = 0; at + m_columnCount <= m_values.size(); at += m_columnCount)
        grid->AppendRowTexts(m_values.mid(at, m_columnCount));
    m_result.clear();
    grid->EnableGrid(m_enabled);

    ConnectGridRowButtons(*this, *grid, m_enabled);
    grid->setFocus();
    return true;
}

void CGridEditDlg::OnGetChoices(CVVyrGrid &grid, int, long, CUGCell &, QStringList &choices)
{
    QStringList taken;
    for (long row = 0; row < grid.GetRowCount(); ++row)
        taken.append(grid.GetCellString(row, 0));
    for (const QString &choice : std::as_const(m_choices)) {
        if (!taken.contains(choice))
            choices.append(choice);
    }
}

void CGridEditDlg::OnOK()
{
    // Read-only, the dialog only showed the list: it gives it back whole.
    if (!m_enabled) {
        m_result = m_values;
    } else if (m_grid) {
        // A text the grid refused keeps its edit open: the grid said why.
        m_grid->CommitEdit();
        if (m_grid->IsEditing())
            return;
        if (m_uniqueMessage && m_grid->RefuseRepeatedText(0, m_uniqueMessage))
            return;
        m_result.clear();
        for (long row = 0; row < m_grid->GetRowCount(); ++row) {
            QStringList texts;
            m_grid->GetRowTexts(row, texts);
            const bool complete
                = std::none_of(texts.cbegin(), texts.cend(), [](const QString &text) { return text.isEmpty(); });
            if (complete)
                m_result.append(texts);
        }
    }
    CVyrDialog::OnOK();
}

void CGridEditDlg::OnCancel()
{
    // Escape first ends the edit in progress without keeping its text.
    if (m_grid && m_grid->IsEditing()) {
        m_grid->CancelEdit();
        m_grid->setFocus();
        return;
    }
    CVyrDialog::OnCancel();
}

qintptr CGridEditDlg::OnHelpRequest(qintptr, qintptr)
{
    return ShowTopicHelp();
}

} // namespace vyr
