// CUGFindDialog: the find (and find and replace) dialog a grid opens. It
// stays open beside the grid; each button asks the grid for one step, with
// the options turned into the data store's find flags.
#ifndef VYR_GRID_CUGFINDDIALOG_H
#define VYR_GRID_CUGFINDDIALOG_H

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace vyr {

class CUGFindDialog final : public QDialog
{
    Q_OBJECT

public:
    CUGFindDialog(bool replace, QWidget *parent);

    bool isReplaceDialog() const { return m_replace; }
    // Switches between the two forms, keeping what was typed.
    void setReplaceDialog(bool replace);

    QString findText() const;
    QString replaceText() const;
    void setFindText(const QString &text);
    void setReplaceText(const QString &text);
    // Not down: 4; not whole word: 1; not match case: 2; replace form: 8.
    int storeFlags() const;

    QLineEdit *findEdit() const { return m_findEdit; }
    QLineEdit *replaceEdit() const { return m_replaceEdit; }
    QCheckBox *wholeWordBox() const { return m_wholeWord; }
    QCheckBox *matchCaseBox() const { return m_matchCase; }
    QRadioButton *upButton() const { return m_up; }
    QRadioButton *downButton() const { return m_down; }
    QPushButton *findNextButton() const { return m_findNext; }
    QPushButton *replaceButton() const { return m_replaceButton; }
    QPushButton *replaceAllButton() const { return m_replaceAll; }

signals:
    void findNextRequested();
    void replaceRequested();
    void replaceAllRequested();

private:
    void updateButtons();

    bool m_replace;
    QLineEdit *m_findEdit;
    QLabel *m_replaceLabel;
    QLineEdit *m_replaceEdit;
    QCheckBox *m_wholeWord;
    QCheckBox *m_matchCase;
    QRadioButton *m_up;
    QRadioButton *m_down;
    QPushButton *m_findNext;
    QPushButton *m_replaceButton;
    QPushButton *m_replaceAll;
};

} // namespace vyr

#endif // VYR_GRID_CUGFINDDIALOG_H
