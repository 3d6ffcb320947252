// CUGCtrl: find and replace, through the data store's search.
#include "grid/cugctrl.h"

#include "grid/cugfinddialog.h"
#include "grid/cugmem.h"

#include <QLineEdit>
#include <QMessageBox>

namespace vyr {

namespace {

void showDialog(CUGFindDialog *dialog)
{
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
    dialog->findEdit()->setFocus();
    dialog->findEdit()->selectAll();
}

} // namespace

void CUGCtrl::FindDialog()
{
    if (!m_findDialog) {
        m_findDialog = new CUGFindDialog(false, this);
        connect(m_findDialog, &CUGFindDialog::findNextRequested, this, [this] {
            FindReplace(m_findDialog->findText(), QString(), m_findDialog->storeFlags(), FindNextRequest);
        });
        connect(m_findDialog, &CUGFindDialog::replaceRequested, this, [this] {
            FindReplace(m_findDialog->findText(), m_findDialog->replaceText(), m_findDialog->storeFlags(),
                        ReplaceRequest);
        });
        connect(m_findDialog, &CUGFindDialog::replaceAllRequested, this, [this] {
            FindReplace(m_findDialog->findText(), m_findDialog->replaceText(), m_findDialog->storeFlags(),
                        ReplaceAllRequest);
        });
    }
    m_findDialog->setReplaceDialog(false);
    showDialog(m_findDialog);
}

void CUGCtrl::ReplaceDialog()
{
    FindDialog();
    m_findDialog->setReplaceDialog(true);
    showDialog(m_findDialog);
}

int CUGCtrl::FindReplace(const QString &findText, const QString &replaceText, int storeFlags, FindRequest request)
{
    if (findText.isEmpty() || m_info.numberOfColumns == 0)
        return ug::OutOfRange;
    const int column = std::max(0, m_info.currentColumn);
    const bool replacing = request != FindNextRequest;
    if (replacing && m_info.currentRow >= 0) {
        SetCellText(column, m_info.currentRow, replaceText);
        RepaintCell(column, m_info.currentRow);
        // A replacement that is found again would be replaced for ever.
        const Qt::CaseSensitivity sensitivity
            = (storeFlags & ug::FindIgnoreCase) ? Qt::CaseInsensitive : Qt::CaseSensitive;
        if (replaceText.compare(findText, sensitivity) == 0
            || ((storeFlags & ug::FindPartial) && replaceText.contains(findText, sensitivity)))
            return ug::Success;
    }
    bool foundAny = false;
    for (;;) {
        int storeColumn = 0;
        CUGDataSource *store = storeFor(column, storeColumn);
        long row = m_info.currentRow;
        if (store->FindNext(findText, storeColumn, row, storeFlags) != 0 || row >= m_info.numberOfRows)
            break;
        foundAny = true;
        if (moveCurrentTo(column, row, DragMode::None) != ug::Success)
            return ug::Refused;
        if (request != ReplaceAllRequest)
            return ug::Success;
        SetCellText(column, row, replaceText);
        RepaintCell(column, row);
    }
    if (request == ReplaceAllRequest && foundAny)
        return ug::Success;
    QWidget *owner = m_findDialog && m_findDialog->isVisible() ? static_cast<QWidget *>(m_findDialog) : this;
    QMessageBox box(QMessageBox::Information, QStringLiteral("Not Found"), QStringLiteral("Item not found"),
                    QMessageBox::Ok, owner);
    box.setObjectName(QStringLiteral("notFoundBox"));
    box.exec();
    if (owner != this) {
        owner->activateWindow();
        m_findDialog->findEdit()->setFocus();
    }
    return ug::OutOfRange;
}

} // namespace vyr
