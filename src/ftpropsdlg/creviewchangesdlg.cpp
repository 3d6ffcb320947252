#include "ftpropsdlg/creviewchangesdlg.h"

#include "uikit/narrowtext.h"
#include "uikit/resourcelibrary.h"

#include <QApplication>
#include <QClipboard>

namespace vyr {

CReviewChangesDlg::CReviewChangesDlg(const std::string &text, QWidget *parent)
    : CVyrDialog(res::ReviewChangesDialog, 0, false, kHelpTopic, parent, DialogMode::ModeModal)
    , m_text(fromNarrow(text))
{
    setObjectName(QStringLiteral("reviewChangesDialog"));
    RegisterControl(&m_changes, kIdChanges);
    RegisterControl(&m_copy, kIdCopy);
}

bool CReviewChangesDlg::OnInitDialog()
{
    const bool result = CVyrDialog::OnInitDialog();
    if (m_changes) {
        m_changes->setPlainText(m_text);
        // The list is read with the keyboard from its start.
        m_changes->setFocus(Qt::OtherFocusReason);
    }
    if (m_copy)
        connect(m_copy.get(), &QPushButton::clicked, this, [this] { CopyToClipboard(); });
    return result;
}

void CReviewChangesDlg::CopyToClipboard()
{
    QApplication::clipboard()->setText(m_text);
}

qintptr CReviewChangesDlg::OnHelpRequest(qintptr, qintptr)
{
    return ShowTopicHelp();
}

} // namespace vyr
