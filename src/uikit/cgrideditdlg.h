// CGridEditDlg: a list of records edited in a grid - the editor of list
// values behind a cell's button (sets, lists and maps of strings).
//
// The dialog shows a title, a label above the grid and an optional second
// label under it; Move Up, Move Down, Sort and Delete work on the selected
// rows, and the grid keeps a blank last row for a new record. With choices,
// column 0 is an editable drop list offering the choices no row holds yet.
// On OK the result holds the records whose every cell has a text, row by
// row; incomplete rows and the blank row are dropped. A read-only dialog
// gives back the values it was given. Escape while a cell
// is being edited ends the edit only; the next Escape closes the dialog.
// With unique values, column 0 holds each text once: a repeat is refused
// where it is entered, and OK refuses one the list came with, naming it and
// showing its second row.
#ifndef VYR_UIKIT_CGRIDEDITDLG_H
#define VYR_UIKIT_CGRIDEDITDLG_H

#include "uikit/cellactionhandler.h"
#include "uikit/cvyrdialog.h"
#include "uikit/gridrowbuttons.h"

#include <QLabel>
#include <QPointer>
#include <QStringList>

namespace vyr {

class CVVyrGrid;

class CGridEditDlg : public CVyrDialog, public CellActionHandler
{
    Q_OBJECT

public:
    static constexpr unsigned kTemplateId = 552;
    static constexpr unsigned kIdLabel = 1200;
    static constexpr unsigned kIdSecondLabel = 1342;
    static constexpr unsigned kIdGrid = 61206;
    static constexpr unsigned kIdMoveUp = kIdMoveRowsUp;
    static constexpr unsigned kIdMoveDown = kIdMoveRowsDown;
    static constexpr unsigned kIdSort = kIdSortRows;
    static constexpr unsigned kIdDelete = kIdDeleteRows;

    // `values` are the records' texts, `columnCount` at a time. An empty
    // help topic hides the Help button.
    CGridEditDlg(int columnCount, QString title, QString label, QStringList values, bool enabled, QStringList choices,
                 QString secondLabel, std::string helpTopic, QWidget *parent = nullptr);
    ~CGridEditDlg() override;

    // After OK: the kept records' texts, row by row.
    const QStringList &result() const { return m_result; }
    // Before the dialog runs: column 0 holds each text once; message
    // `messageId` (its %1 the text) tells of a repeat.
    void setUniqueValues(unsigned messageId) { m_uniqueMessage = messageId; }
    CVVyrGrid *grid() const { return m_grid; }

    void OnOK() override;
    void OnCancel() override;
    void OnGetChoices(CVVyrGrid &grid, int column, long row, CUGCell &cell, QStringList &choices) override;

protected:
    bool OnInitDialog() override;
    qintptr OnHelpRequest(qintptr wParam, qintptr lParam) override;

private:
    int m_columnCount;
    QString m_title;
    QString m_label;
    QString m_secondLabel;
    QStringList m_values;
    bool m_enabled;
    QStringList m_choices;
    QStringList m_result;
    // 0: values may repeat.
    unsigned m_uniqueMessage = 0;
    QPointer<CVVyrGrid> m_grid;
    DialogControl<QLabel> m_labelControl;
    DialogControl<QLabel> m_secondLabelControl;
};

} // namespace vyr

#endif // VYR_UIKIT_CGRIDEDITDLG_H
