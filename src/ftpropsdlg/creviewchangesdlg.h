// CReviewChangesDlg: the read-only window that lists what OK is about to
// write into a feature type, as the feature type properties dialog reviewed
// it. OK saves (the dialog it came from then runs its OK), Copy puts the
// list on the clipboard as plain text, Cancel and Escape go back.
#ifndef VYR_FTPROPSDLG_CREVIEWCHANGESDLG_H
#define VYR_FTPROPSDLG_CREVIEWCHANGESDLG_H

#include "ftpropsdlg/reviewtexts.h"
#include "uikit/cvyrdialog.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QString>

namespace vyr {

class CReviewChangesDlg : public CVyrDialog
{
    Q_OBJECT

public:
    static constexpr unsigned kIdChanges = 1001;
    static constexpr unsigned kIdCopy = 1002;
    // F1 opens the section of the feature type properties help about this
    // window.
    static constexpr char kHelpTopic[] = "Editing_Feature_Type_Properties.htm#review-changes";

    // `text`: the review as ReviewAsText writes it, in the narrow code page.
    CReviewChangesDlg(const std::string &text, QWidget *parent);

    QString text() const { return m_text; }

protected:
    bool OnInitDialog() override;
    qintptr OnHelpRequest(qintptr wParam, qintptr lParam) override;

private:
    void CopyToClipboard();

    QString m_text;
    DialogControl<QPlainTextEdit> m_changes;
    DialogControl<QPushButton> m_copy;
};

} // namespace vyr

#endif // VYR_FTPROPSDLG_CREVIEWCHANGESDLG_H
