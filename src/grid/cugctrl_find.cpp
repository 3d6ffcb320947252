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

namespace {

// The cell's text with the search's hits replaced: the whole text when
// whole texts are searched, else every occurrence.
QString replacedText(const QString &text, const QString &findText, const QString &replaceText, int storeFlags)
{
    if (!(storeFlags & ug::FindPartial))
        return replaceText;
    const Qt::CaseSensitivity sensitivity = (storeFlags & ug::FindIgnoreCase) ? Qt::CaseInsensitive : Qt::CaseSensitive;
    QString result = text;
    return result.replace(findText, replaceText, sensitivity);
}

} // namespace

int CUGCtrl::FindReplace(const QString &findText, const QString &replaceText, int storeFlags, FindRequest request)
{
    if (findText.isEmpty() || m_info.numberOfColumns == 0)
        return ug::OutOfRange;
    if (request == ReplaceAllRequest) {
        OnUserActionBegins();
        const int result = findReplaceAll(findText, replaceText, storeFlags);
        OnUserActionEnds();
        return result;
    }
    const int column = std::max(0, m_info.currentColumn);
    bool replaced = false;
    // Only a hit is replaced: the current cell is usually the one the last
    // search found, but the person may have moved since.
    if (request == ReplaceRequest && m_info.currentRow >= 0) {
        const QString text = GetCellText(column, m_info.currentRow);
        if (findMatches(text, findText, storeFlags))
            replaced = WriteUserText(column, m_info.currentRow, replacedText(text, findText, replaceText, storeFlags),
                                     ug::TextReplaced)
                == ug::Success;
        RepaintCell(column, m_info.currentRow);
    }
    int storeColumn = 0;
    CUGDataSource *store = storeFor(column, storeColumn);
    long row = m_info.currentRow;
    while (store->FindNext(findText, storeColumn, row, storeFlags) == 0 && row >= 0 && row < m_info.numberOfRows) {
        // A cell the current cell may not move to is passed over.
        if (moveCurrentTo(column, row, DragMode::None) == ug::Success)
            return ug::Success;
    }
    showNotFound();
    return replaced ? ug::Success : ug::OutOfRange;
}

int CUGCtrl::findReplaceAll(const QString &findText, const QString &replaceText, int storeFlags)
{
    const int column = std::max(0, m_info.currentColumn);
    int storeColumn = 0;
    CUGDataSource *store = storeFor(column, storeColumn);
    long lastReplaced = -1;
    bool found = false;
    const auto replaceAt = [&](long row) {
        const QString text = GetCellText(column, row);
        found = true;
        if (WriteUserText(column, row, replacedText(text, findText, replaceText, storeFlags), ug::TextReplaced)
            == ug::Success) {
            lastReplaced = row;
            RepaintCell(column, row);
        }
    };
    long row = m_info.currentRow;
    if (row >= 0 && findMatches(GetCellText(column, row), findText, storeFlags))
        replaceAt(row);
    // Each search starts past the last hit, so a replacement that holds
    // the searched text is not found again.
    while (store->FindNext(findText, storeColumn, row, storeFlags) == 0 && row >= 0 && row < m_info.numberOfRows)
        replaceAt(row);
    if (lastReplaced >= 0)
        moveCurrentTo(column, lastReplaced, DragMode::None);
    if (found)
        return lastReplaced >= 0 ? ug::Success : ug::Refused;
    showNotFound();
    return ug::OutOfRange;
}

void CUGCtrl::showNotFound()
{
    QWidget *owner = m_findDialog && m_findDialog->isVisible() ? static_cast<QWidget *>(m_findDialog) : this;
    QMessageBox box(QMessageBox::Information, QStringLiteral("Not Found"), QStringLiteral("Item not found"),
                    QMessageBox::Ok, owner);
    box.setObjectName(QStringLiteral("notFoundBox"));
    box.exec();
    if (owner != this) {
        owner->activateWindow();
        m_findDialog->findEdit()->setFocus();
    }
}

} // namespace vyr
