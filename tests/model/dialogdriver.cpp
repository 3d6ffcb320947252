#include "model/dialogdriver.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QTabBar>
#include <QtTest>

namespace vyr::model {

namespace {

QAccessibleTableInterface *tableOf(QWidget *grid)
{
    QAccessibleInterface *face = grid ? QAccessible::queryAccessibleInterface(grid) : nullptr;
    return face ? face->tableInterface() : nullptr;
}

// The page widget (a direct child of the dialog) that holds `widget`.
QWidget *pageOf(QDialog *dialog, QWidget *widget)
{
    while (widget && widget->parentWidget() != dialog)
        widget = widget->parentWidget();
    return widget;
}

Qt::Key keyOfLetter(QChar letter)
{
    const char c = letter.toUpper().toLatin1();
    if (c >= 'A' && c <= 'Z')
        return Qt::Key(Qt::Key_A + (c - 'A'));
    if (c >= '0' && c <= '9')
        return Qt::Key(Qt::Key_0 + (c - '0'));
    return Qt::Key_unknown;
}

} // namespace

QChar mnemonicOf(const QString &text)
{
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != QLatin1Char('&'))
            continue;
        if (text[i + 1] == QLatin1Char('&')) {
            ++i;
            continue;
        }
        return text[i + 1];
    }
    return {};
}

DialogDriver::DialogDriver(QDialog *dialog, ModalWatcher &watcher)
    : m_dialog(dialog)
    , m_watcher(watcher)
{}

void DialogDriver::problem(const QString &what)
{
    if (!m_problems.contains(what))
        m_problems.append(what);
}

QWidget *DialogDriver::control(const char *name) const
{
    if (!m_dialog)
        return nullptr;
    QWidget *hidden = nullptr;
    for (QWidget *widget : m_dialog->findChildren<QWidget *>(QLatin1String(name))) {
        if (widget->isVisible())
            return widget;
        if (!hidden)
            hidden = widget;
    }
    return hidden;
}

QWidget *DialogDriver::controlBeside(QWidget *grid, const char *name) const
{
    QWidget *page = pageOf(m_dialog, grid);
    return page ? page->findChild<QWidget *>(QLatin1String(name)) : nullptr;
}

QWidget *DialogDriver::focus() const
{
    if (QWidget *popup = QApplication::activePopupWidget())
        return popup->focusWidget() ? popup->focusWidget() : popup;
    if (QWidget *widget = QApplication::focusWidget())
        return widget;
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    return m_dialog;
}

void DialogDriver::settle()
{
    QCoreApplication::processEvents();
    QWidget *modal = QApplication::activeModalWidget();
    if (m_dialog && m_dialog->isVisible() && (!modal || modal == m_dialog) && !QApplication::activePopupWidget()
        && QApplication::activeWindow() != m_dialog) {
        // The offscreen platform gives the activation back only when asked.
        if (!ModalWatcher::activate(m_dialog))
            problem(QStringLiteral("the dialog did not become active again"));
    }
}

void DialogDriver::key(int key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(focus(), Qt::Key(key), modifiers);
    settle();
}

void DialogDriver::type(const QString &text)
{
    for (const QChar c : text) {
        const char ascii = c.toLatin1();
        if (ascii)
            QTest::keyClick(focus(), ascii);
        else
            QTest::keyClicks(focus(), QString(c));
        QCoreApplication::processEvents();
    }
    settle();
}

bool DialogDriver::mnemonic(QWidget *widget)
{
    QString text;
    if (auto *label = qobject_cast<QLabel *>(widget))
        text = label->text();
    else if (auto *button = qobject_cast<QAbstractButton *>(widget))
        text = button->text();
    const QChar letter = mnemonicOf(text);
    if (letter.isNull()) {
        problem(QStringLiteral("no mnemonic on ") + (widget ? widget->objectName() : QStringLiteral("(none)")));
        return false;
    }
    key(keyOfLetter(letter), Qt::AltModifier);
    // A button's letter presses it the way a click animates: released a
    // moment later, and only then clicked.
    if (auto *button = qobject_cast<QAbstractButton *>(widget)) {
        if (!QTest::qWaitFor([button] { return !button->isDown(); }, 3000))
            problem(QStringLiteral("the letter of %1 left it pressed").arg(button->objectName()));
        settle();
    }
    return true;
}

bool DialogDriver::reach(QWidget *label, QWidget *field)
{
    mnemonic(label);
    if (field && QApplication::focusWidget() == field)
        return true;
    problem(QStringLiteral("the letter of %1 did not reach %2%3")
                .arg(label ? label->objectName() : QStringLiteral("(none)"),
                     field ? field->objectName() : QStringLiteral("(none)"),
                     field && !field->isEnabled() ? QStringLiteral(", which is disabled") : QString()));
    return false;
}

void DialogDriver::click(QWidget *widget)
{
    if (!widget) {
        problem(QStringLiteral("a control to click is missing"));
        return;
    }
    QTest::mouseClick(widget, Qt::LeftButton);
    settle();
}

bool DialogDriver::showPageOf(QWidget *widget)
{
    auto *tabs = m_dialog ? m_dialog->findChild<QTabBar *>() : nullptr;
    const int turns = tabs ? tabs->count() : 0;
    for (int turn = 0; turn <= turns && widget && !widget->isVisible(); ++turn)
        key(Qt::Key_PageDown, Qt::ControlModifier);
    if (!widget || !widget->isVisible()) {
        QWidget *focus = QApplication::focusWidget();
        problem(QStringLiteral("Control+Page Down did not reach the page of %1 (the keyboard is on %2 %3)")
                    .arg(widget ? widget->objectName() : QStringLiteral("(none)"),
                         QString::fromLatin1(focus ? focus->metaObject()->className() : "nothing"),
                         focus ? focus->objectName() : QString()));
        return false;
    }
    return true;
}

bool DialogDriver::focusGrid(QWidget *grid)
{
    if (!showPageOf(grid))
        return false;
    const auto inGrid = [grid] {
        QWidget *focus = QApplication::focusWidget();
        return focus && (focus == grid || grid->isAncestorOf(focus));
    };
    if (!inGrid())
        mnemonic(controlBeside(grid, "gridLabel"));
    if (!inGrid()) {
        problem(QStringLiteral("the label's letter did not reach ") + grid->objectName());
        return false;
    }
    return true;
}

bool DialogDriver::gotoCell(QWidget *grid, int row, int column)
{
    if (!focusGrid(grid))
        return false;
    // Home first: Control+Home keeps the column, and a row whose cell there
    // is disabled refuses the move.
    key(Qt::Key_Home);
    key(Qt::Key_Home, Qt::ControlModifier);
    // A move to the cell that is already current keeps an old selection;
    // a step away and back leaves only the current cell selected.
    if (rowCount(grid) > 1) {
        key(Qt::Key_Down);
        key(Qt::Key_Up);
    }
    for (int i = 0; i < row; ++i)
        key(Qt::Key_Down);
    for (int i = 0; i < column; ++i)
        key(Qt::Key_Right);
    const auto [atRow, atColumn] = currentCell(grid);
    if (atRow != row || atColumn != column) {
        problem(QStringLiteral("the arrow keys reached cell %1,%2 of %3, not %4,%5")
                    .arg(atRow)
                    .arg(atColumn)
                    .arg(grid->objectName())
                    .arg(row)
                    .arg(column));
        return false;
    }
    return true;
}

QList<int> DialogDriver::selectedRows(QWidget *grid) const
{
    QList<int> rows;
    if (QAccessibleTableInterface *table = tableOf(grid)) {
        for (QAccessibleInterface *cell : table->selectedCells()) {
            if (QAccessibleTableCellInterface *place = cell ? cell->tableCellInterface() : nullptr) {
                if (!rows.contains(place->rowIndex()))
                    rows.append(place->rowIndex());
            }
        }
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

std::pair<int, int> DialogDriver::currentCell(QWidget *grid) const
{
    QAccessibleInterface *face = grid ? QAccessible::queryAccessibleInterface(grid) : nullptr;
    QAccessibleInterface *focused = face ? face->focusChild() : nullptr;
    QAccessibleTableCellInterface *cell = focused ? focused->tableCellInterface() : nullptr;
    if (!cell)
        return {-1, -1};
    return {cell->rowIndex(), cell->columnIndex()};
}

QStringList DialogDriver::openListTexts() const
{
    QStringList texts;
    QWidget *popup = QApplication::activePopupWidget();
    if (!popup)
        return texts;
    auto *list = qobject_cast<QListWidget *>(popup);
    if (!list)
        list = popup->findChild<QListWidget *>();
    if (list) {
        for (int i = 0; i < list->count(); ++i)
            texts.append(list->item(i)->text());
        return texts;
    }
    // A combo box's popup: a view over its model.
    if (auto *view = popup->findChild<QAbstractItemView *>()) {
        for (int i = 0; i < view->model()->rowCount(); ++i)
            texts.append(view->model()->index(i, 0).data().toString());
    }
    return texts;
}

bool DialogDriver::pickFromList(const QString &text)
{
    if (!QApplication::activePopupWidget())
        key(Qt::Key_F4);
    const QStringList texts = openListTexts();
    return pickEntry(int(texts.indexOf(text)), QStringLiteral("\"%1\" is not among the list's entries [%2]")
                                                    .arg(text, texts.join(QStringLiteral(", "))));
}

bool DialogDriver::pickFromListAt(int index, bool empty)
{
    if (!QApplication::activePopupWidget())
        key(Qt::Key_F4);
    const QStringList texts = openListTexts();
    int at = -1;
    for (int i = 0, seen = 0; i < texts.size(); ++i) {
        const bool blank = texts[i].trimmed().isEmpty();
        if (empty ? blank : (!blank && seen++ == index)) {
            at = i;
            break;
        }
    }
    return pickEntry(at, QStringLiteral("no entry %1 in the list [%2]")
                             .arg(empty ? QStringLiteral("(empty)") : QString::number(index),
                                  texts.join(QStringLiteral(", "))));
}

bool DialogDriver::pickEntry(int at, const QString &missing)
{
    if (at < 0) {
        problem(missing);
        if (QApplication::activePopupWidget())
            key(Qt::Key_Escape);
        return false;
    }
    key(Qt::Key_Home);
    for (int i = 0; i < at; ++i)
        key(Qt::Key_Down);
    key(Qt::Key_Return);
    return true;
}

bool DialogDriver::chooseInCombo(QComboBox *combo, const QString &text)
{
    if (!combo)
        return false;
    if (QApplication::focusWidget() != combo)
        click(combo);
    else
        key(Qt::Key_F4);
    if (!QApplication::activePopupWidget()) {
        problem(QStringLiteral("the list of ") + combo->objectName() + QStringLiteral(" did not open"));
        return false;
    }
    return pickFromList(text);
}

void DialogDriver::checkListEntries(QListWidget *list, const std::function<bool(const QString &)> &wanted)
{
    if (!list || list->count() == 0)
        return;
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());
    QCoreApplication::processEvents();
    for (int i = 0; i < list->count(); ++i) {
        QListWidgetItem *item = list->item(i);
        const bool on = item->checkState() == Qt::Checked;
        if (on != wanted(item->text()))
            QTest::keyClick(list, Qt::Key_Space);
        if (i + 1 < list->count())
            QTest::keyClick(list, Qt::Key_Down);
        QCoreApplication::processEvents();
    }
    for (int i = 0; i < list->count(); ++i) {
        if ((list->item(i)->checkState() == Qt::Checked) != wanted(list->item(i)->text()))
            problem(QStringLiteral("Space did not turn over \"%1\"").arg(list->item(i)->text()));
    }
}

QString DialogDriver::localised(const std::string &text) const
{
    const QString plain = QString::fromStdString(text);
    return m_localiser ? m_localiser(plain) : plain;
}

int DialogDriver::rowCount(QWidget *grid) const
{
    QAccessibleTableInterface *table = tableOf(grid);
    return table ? table->rowCount() : -1;
}

QString DialogDriver::cell(QWidget *grid, int row, int column) const
{
    QAccessibleTableInterface *table = tableOf(grid);
    QAccessibleInterface *cell = table ? table->cellAt(row, column) : nullptr;
    return cell ? cell->text(QAccessible::Value) : QString();
}

} // namespace vyr::model
