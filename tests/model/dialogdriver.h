// Drives the feature type properties dialog as a person does: key presses
// on the focus widget, mnemonics, mouse clicks on controls found by their
// object names, and reading what the screen shows through the widgets'
// accessibility interfaces. Nothing private of the dialog is called.
#ifndef VYR_TESTS_MODEL_DIALOGDRIVER_H
#define VYR_TESTS_MODEL_DIALOGDRIVER_H

#include "model/modalwatcher.h"

#include <QDialog>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <functional>
#include <utility>

class QComboBox;
class QListWidget;

namespace vyr::model {

class DialogDriver
{
public:
    DialogDriver(QDialog *dialog, ModalWatcher &watcher);

    QDialog *dialog() const { return m_dialog; }
    bool isOpen() const { return m_dialog && m_dialog->isVisible(); }
    ModalWatcher &watcher() { return m_watcher; }

    // What went wrong while driving (a control not found, a key that did
    // not get where it should); empty while all is well.
    const QStringList &problems() const { return m_problems; }
    void problem(const QString &what);
    // What a named case's own step found wrong with the dialog; the
    // sequence goes on.
    const QStringList &findings() const { return m_findings; }
    void finding(const QString &what) { m_findings.append(what); }
    void clearFindings() { m_findings.clear(); }

    // A visible control of the dialog by object name (the shown page's
    // when several pages have one of that name); null when none is shown.
    QWidget *control(const char *name) const;
    // The control of that name on the page that holds `grid`.
    QWidget *controlBeside(QWidget *grid, const char *name) const;

    QWidget *focus() const;
    void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    // Each character as its own key press on whatever has the focus.
    void type(const QString &text);
    // Alt and the underlined letter of a label's or button's text.
    bool mnemonic(QWidget *labelOrButton);
    void click(QWidget *widget);
    // Alt and a label's letter, which must put the keyboard on `field`
    // (a disabled field does not take it: nothing is typed then).
    bool reach(QWidget *label, QWidget *field);
    // Lets events run and gives the dialog back its activation when no other
    // modal window is up.
    void settle();

    // Turns to the page that holds `widget` by Control+Page Down.
    bool showPageOf(QWidget *widget);
    // Puts the keyboard on a grid by its label's letter.
    bool focusGrid(QWidget *grid);
    // Moves to a grid's cell from its first: Control+Home, then the arrows.
    bool gotoCell(QWidget *grid, int row, int column);
    // The grid's current cell as its accessibility interface tells it
    // (-1, -1 when it tells none).
    std::pair<int, int> currentCell(QWidget *grid) const;
    // The rows that hold a selected cell, as accessibility tells them.
    QList<int> selectedRows(QWidget *grid) const;
    // Opens the current cell's drop list (F4) and picks the entry whose
    // text is `text` (Home and Down, then Enter). False when not listed.
    bool pickFromList(const QString &text);
    // The same by position among the list's non-empty entries; `empty`
    // picks the empty entry.
    bool pickFromListAt(int index, bool empty = false);
    // The texts of the drop list now open (empty when none is).
    QStringList openListTexts() const;

    // What a grid shows: its rows (the new row included) and cell texts.
    int rowCount(QWidget *grid) const;
    QString cell(QWidget *grid, int row, int column) const;

    // Chooses a combo box entry through its popup by text.
    bool chooseInCombo(QComboBox *combo, const QString &text);

    // The user's language's words for a text of the format (its parameter
    // prompts and choices), as the dialog shows them.
    void setLocaliser(std::function<QString(const QString &)> localiser) { m_localiser = std::move(localiser); }
    QString localised(const std::string &text) const;

    // Sets the check state of the entries of a checkable list by clicking
    // each entry and pressing Space where it must change.
    void checkListEntries(QListWidget *list, const std::function<bool(const QString &)> &wanted);

private:
    // Picks the open list's entry `at` by Home, Down and Enter; a negative
    // one reports `missing` and closes the list.
    bool pickEntry(int at, const QString &missing);

    QPointer<QDialog> m_dialog;
    ModalWatcher &m_watcher;
    QStringList m_problems;
    QStringList m_findings;
    std::function<QString(const QString &)> m_localiser;
};

// The mnemonic letter of a text ("Attri&butes" gives 'b'), or 0.
QChar mnemonicOf(const QString &text);

} // namespace vyr::model

#endif // VYR_TESTS_MODEL_DIALOGDRIVER_H
