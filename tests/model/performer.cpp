// Each action done as a person does it: the page turned with
// Control+Page Down, a control reached by its letter, cells by the arrow
// keys, values typed, lists opened with F4, buttons by their letter or a
// click, editors answered in their own windows.
#include "model/actions.h"
#include "model/dialogdriver.h"

#include "util/listpacking.h"

#include <QApplication>
#include <QClipboard>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QtTest>

#include <algorithm>

namespace vyr::model {

namespace {

QString qs(const std::string &text)
{
    return QString::fromStdString(text);
}

QWidget *attributeGrid(DialogDriver &d)
{
    return d.control("attributeGrid");
}

// Extends the selection from the current row over `count` rows with
// Shift+Down, and makes sure they are what is selected.
void selectDown(DialogDriver &d, QWidget *grid, std::size_t count)
{
    const int first = d.currentCell(grid).first;
    for (std::size_t i = 1; i < count; ++i)
        d.key(Qt::Key_Down, Qt::ShiftModifier);
    QList<int> expected;
    for (int row = first; row < first + int(count); ++row)
        expected.append(row);
    const QList<int> selected = d.selectedRows(grid);
    if (selected != expected) {
        QStringList rows;
        for (int row : selected)
            rows.append(QString::number(row));
        d.problem(QStringLiteral("Shift+Down selected the rows [%1] from row %2").arg(rows.join(QLatin1Char(',')))
                      .arg(first));
    }
}

// Replaces the text of the field that has the focus.
void retype(DialogDriver &d, const std::string &text)
{
    d.key(Qt::Key_A, Qt::ControlModifier);
    if (text.empty())
        d.key(Qt::Key_Delete);
    else
        d.type(qs(text));
}

// Types into the current grid cell: over what it holds, or after F2 and
// selecting it all; an empty text clears it.
void typeInCell(DialogDriver &d, const std::string &text, int how)
{
    if (text.empty() || how == 1) {
        d.key(Qt::Key_F2);
        retype(d, text);
    } else {
        d.type(qs(text));
    }
    d.key(Qt::Key_Return);
}

// A button pressed by its letter (how 0) or clicked.
void press(DialogDriver &d, QWidget *button, int how)
{
    if (how == 0)
        d.mnemonic(button);
    else
        d.click(button);
}

void pressButton(DialogDriver &d, QWidget *grid, const char *name, int how)
{
    press(d, d.controlBeside(grid, name), how);
}

QPushButton *okOf(QWidget *window)
{
    for (auto *box : window->findChildren<QDialogButtonBox *>()) {
        if (QPushButton *ok = box->button(QDialogButtonBox::Ok))
            return ok;
    }
    return window->findChild<QPushButton *>(QStringLiteral("okButton"));
}

void acceptWindow(DialogDriver &d, QWidget *window)
{
    if (QPushButton *ok = okOf(window))
        QTest::mouseClick(ok, Qt::LeftButton);
    else
        d.problem(QStringLiteral("no OK button in ") + QString::fromLatin1(window->metaObject()->className()));
}

int parameterRow(DialogDriver &d, QWidget *grid, const Parameter &parameter)
{
    const QString prompt = d.localised(parameter.prompt);
    for (int row = 0; row < d.rowCount(grid); ++row) {
        if (d.cell(grid, row, 0) == prompt)
            return row;
    }
    d.problem(QStringLiteral("no row shows the prompt \"%1\"").arg(prompt));
    return -1;
}

void setParameter(DialogDriver &d, const SchemaModel &model, const Action &action)
{
    QWidget *grid = d.control("parameterGrid");
    const Parameter *parameter = model.format().parameter(action.name);
    if (!grid || !parameter)
        return d.problem(QStringLiteral("no parameter grid or parameter ") + qs(action.name));
    const int row = parameterRow(d, grid, *parameter);
    if (row < 0 || !d.gotoCell(grid, row, 1))
        return;
    const std::string &type = parameter->type;
    if (type == "CHOICE" || type == "DISABLE") {
        const Strings choices = type == "DISABLE" ? Strings{"Yes", "No"} : parameter->choices;
        const auto at = std::find(choices.begin(), choices.end(), action.text);
        d.pickFromListAt(int(at - choices.begin()), action.text.empty());
    } else if (type == "ATTR") {
        d.key(Qt::Key_F4);
        if (action.text.empty())
            d.pickFromListAt(0, true);
        else
            d.pickFromList(qs(action.text));
    } else if (type == "ATTRLIST" || type == "ATTRLIST_COMMAS") {
        const Strings wanted = splitList(action.text, ',');
        d.watcher().expect([&d, wanted](QWidget *box) {
            auto *list = box->findChild<QListWidget *>();
            if (!list)
                return d.problem(QStringLiteral("the selection box has no list"));
            d.checkListEntries(list, [&wanted](const QString &entry) {
                return std::find(wanted.begin(), wanted.end(), entry.toStdString()) != wanted.end();
            });
            acceptWindow(d, box);
        });
        d.key(Qt::Key_F4);
    } else if (type == "COLOR_PICK") {
        const std::string text = action.text;
        d.watcher().expect([&d, text](QWidget *window) {
            auto *colours = qobject_cast<QColorDialog *>(window);
            if (!colours)
                return d.problem(QStringLiteral("the colour cell opened no colour dialog"));
            if (!text.empty()) {
                // The colour's HTML notation, typed into its field.
                QLineEdit *html = nullptr;
                for (QLineEdit *field : colours->findChildren<QLineEdit *>()) {
                    if (field->text().startsWith(QLatin1Char('#')))
                        html = field;
                }
                if (!html)
                    return d.problem(QStringLiteral("the colour dialog has no HTML field"));
                const Strings parts = splitList(text, ',');
                QString notation = QStringLiteral("#");
                for (const std::string &part : parts)
                    notation += part == "1" ? QStringLiteral("ff") : QStringLiteral("00");
                QTest::mouseClick(html, Qt::LeftButton);
                QTest::keyClick(html, Qt::Key_A, Qt::ControlModifier);
                QTest::keyClicks(html, notation);
                QTest::keyClick(html, Qt::Key_Tab);
            }
            acceptWindow(d, colours);
        });
        d.key(Qt::Key_F4);
    } else {
        typeInCell(d, action.text, action.how);
    }
}

void applyToOthers(DialogDriver &d, const SchemaModel &model, const Action &action)
{
    QWidget *button = d.control("applyButton");
    if (!model.refusals().empty()) {
        // The pages refuse first, with a message of their own.
        press(d, button, action.how);
        return;
    }
    const ApplySelection apply = action.apply;
    Strings prompts;
    for (const std::string &name : apply.parameters)
        prompts.push_back(d.localised(model.format().parameter(name)->prompt).toStdString());
    d.watcher().expect([&d, apply, prompts](QWidget *form) {
        const auto listOf = [form](const char *key) -> QListWidget * {
            QWidget *prompt = form->findChild<QWidget *>(QStringLiteral("prompt_") + QLatin1String(key));
            return prompt ? prompt->findChild<QListWidget *>() : nullptr;
        };
        const auto among = [](const Strings &names) {
            return [names](const QString &entry) {
                return std::find(names.begin(), names.end(), entry.toStdString()) != names.end();
            };
        };
        const auto tick = [&](const char *key, const Strings &names) {
            QListWidget *list = listOf(key);
            if (!list) {
                if (!names.empty())
                    d.problem(QStringLiteral("the apply prompt offers no ") + QLatin1String(key));
                return;
            }
            for (const std::string &name : names) {
                if (list->findItems(qs(name), Qt::MatchExactly).isEmpty())
                    d.problem(QStringLiteral("the apply prompt's %1 does not offer %2").arg(QLatin1String(key), qs(name)));
            }
            d.checkListEntries(list, among(names));
        };
        tick("FEAT_TYPES", apply.targets);
        tick("ATTRIBUTES", apply.attributes);
        tick("DELETE_ATTRIBUTES", apply.deleteAttributes);
        tick("FORMAT_ATTRIBUTES", {});
        tick("DELETE_FORMAT_ATTRIBUTES", {});
        tick("PARAMETERS", prompts);
        if (auto *geometry = form->findChild<QComboBox *>(QStringLiteral("prompt_GEOM"))) {
            QTest::mouseClick(geometry, Qt::LeftButton);
            d.pickFromListAt(apply.geometry ? 0 : 1);
        } else if (apply.geometry) {
            d.problem(QStringLiteral("the apply prompt offers no geometry"));
        }
        acceptWindow(d, form);
    });
    press(d, button, action.how);
}

void chooseDomain(DialogDriver &d, const Action &action)
{
    QWidget *grid = attributeGrid(d);
    if (!d.gotoCell(grid, int(action.row), 2))
        return;
    const std::string text = action.text;
    d.watcher().expect([&d, text](QWidget *domain) {
        auto *name = domain->findChild<QLineEdit *>(QStringLiteral("nameEdit"));
        if (!name)
            return d.problem(QStringLiteral("the domain dialog has no name field"));
        if (!text.empty()) {
            QTest::mouseClick(name, Qt::LeftButton);
            QTest::keyClick(name, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(name, qs(text));
        }
        acceptWindow(d, domain);
    });
    d.key(action.how == 0 ? Qt::Key_F4 : Qt::Key_Return);
}

void moveDataset(DialogDriver &d, const std::string &format)
{
    d.showPageOf(d.control("nameEdit"));
    if (d.reach(d.control("datasetLabel"), d.control("datasetCombo")))
        d.chooseInCombo(qobject_cast<QComboBox *>(d.control("datasetCombo")), qs(format));
}

} // namespace

void perform(DialogDriver &d, const SchemaModel &model, const Action &action)
{
    switch (action.kind) {
    case ActionKind::RenameFeatureType:
        d.showPageOf(d.control("nameEdit"));
        if (d.reach(d.control("nameLabel"), d.control("nameEdit"))) {
            retype(d, action.text);
            d.key(Qt::Key_Tab, action.how == 1 ? Qt::ShiftModifier : Qt::NoModifier);
        }
        break;
    case ActionKind::TypeNameAndStay:
        d.showPageOf(d.control("nameEdit"));
        if (d.reach(d.control("nameLabel"), d.control("nameEdit")))
            retype(d, action.text);
        break;
    case ActionKind::Custom:
        if (action.custom)
            action.custom(d);
        break;
    case ActionKind::TypeDatabaseUser:
        d.showPageOf(d.control("userEdit"));
        if (d.reach(d.control("userLabel"), d.control("userEdit"))) {
            retype(d, action.text);
            d.key(Qt::Key_Tab);
        }
        break;
    case ActionKind::ChooseGeometry:
        d.showPageOf(d.control("geometryCombo"));
        if (d.reach(d.control("geometryLabel"), d.control("geometryCombo")))
            d.chooseInCombo(qobject_cast<QComboBox *>(d.control("geometryCombo")), qs(action.text));
        break;
    case ActionKind::TurnFanoutOn:
        d.showPageOf(d.control("fanoutCheck"));
        d.mnemonic(d.control("fanoutCheck"));
        if (d.reach(d.control("fanoutLabel"), d.control("fanoutCombo")))
            d.chooseInCombo(qobject_cast<QComboBox *>(d.control("fanoutCombo")), qs(action.text));
        break;
    case ActionKind::TurnFanoutOff:
        d.showPageOf(d.control("fanoutCheck"));
        press(d, d.control("fanoutCheck"), action.how);
        break;
    case ActionKind::MoveToDataset:
        moveDataset(d, action.text);
        break;
    case ActionKind::MoveToDatasetAndBack: {
        const std::string home = model.page().format;
        moveDataset(d, action.text);
        moveDataset(d, home);
        break;
    }
    case ActionKind::RenameAttribute:
        if (d.gotoCell(attributeGrid(d), int(action.row), 0))
            typeInCell(d, action.text, action.how);
        break;
    case ActionKind::AddAttribute:
        if (d.gotoCell(attributeGrid(d), int(model.page().attributes.size()), 0)) {
            d.type(qs(action.text));
            d.key(Qt::Key_Return);
        }
        break;
    case ActionKind::DeleteAttributes:
        if (d.gotoCell(attributeGrid(d), int(action.row), 0)) {
            selectDown(d, attributeGrid(d), action.count);
            if (action.how == 0)
                d.key(Qt::Key_Delete);
            else
                pressButton(d, attributeGrid(d), "deleteButton", action.how - 1);
        }
        break;
    case ActionKind::MoveAttributes:
        if (d.gotoCell(attributeGrid(d), int(action.row), 0)) {
            selectDown(d, attributeGrid(d), action.count);
            pressButton(d, attributeGrid(d), action.up ? "moveUpButton" : "moveDownButton", action.how);
        }
        break;
    case ActionKind::SortAttributes:
        if (d.focusGrid(attributeGrid(d)))
            pressButton(d, attributeGrid(d), "sortButton", action.how);
        break;
    case ActionKind::PasteAttributes: {
        QString text;
        for (const Strings &line : action.lines) {
            QStringList cells;
            for (const std::string &cell : line)
                cells.append(qs(cell));
            text += cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
        }
        QApplication::clipboard()->setText(text);
        if (d.gotoCell(attributeGrid(d), int(model.page().attributes.size()), 0))
            d.key(Qt::Key_V, Qt::ControlModifier);
        break;
    }
    case ActionKind::ChooseType:
        if (d.gotoCell(attributeGrid(d), int(action.row), 1)) {
            selectDown(d, attributeGrid(d), action.count);
            d.pickFromList(qs(action.text));
        }
        break;
    case ActionKind::TypeArgument:
        // The rows are selected by their names, then the selection grows
        // right to the argument of the last one, which takes it; a row whose
        // argument cell is disabled could not be reached on its own.
        if (d.gotoCell(attributeGrid(d), int(action.row), 0)) {
            selectDown(d, attributeGrid(d), action.count);
            for (int column = 0; column < 2 + action.which; ++column)
                d.key(Qt::Key_Right, Qt::ShiftModifier);
            typeInCell(d, action.text, action.how);
        }
        break;
    case ActionKind::ChooseDomain:
        chooseDomain(d, action);
        break;
    case ActionKind::ToggleExposure:
        if (d.gotoCell(d.control("formatAttributeGrid"), int(action.row), 0))
            d.key(Qt::Key_Space);
        break;
    case ActionKind::SetListCount:
        if (d.gotoCell(d.control("formatAttributeGrid"), int(action.row), 2))
            typeInCell(d, action.text, action.how);
        break;
    case ActionKind::CheckAll:
    case ActionKind::ClearAll: {
        QWidget *grid = d.control("formatAttributeGrid");
        if (d.focusGrid(grid))
            pressButton(d, grid, action.kind == ActionKind::CheckAll ? "checkAllButton" : "clearAllButton", action.how);
        break;
    }
    case ActionKind::SetParameter:
        setParameter(d, model, action);
        break;
    case ActionKind::OpenColourUnchanged: {
        Action unchanged = action;
        unchanged.kind = ActionKind::SetParameter;
        unchanged.text.clear();
        setParameter(d, model, unchanged);
        break;
    }
    case ActionKind::CancelIconPicker: {
        QWidget *grid = d.control("parameterGrid");
        const Parameter *parameter = model.format().parameter(action.name);
        const int row = parameter ? parameterRow(d, grid, *parameter) : -1;
        if (row < 0 || !d.gotoCell(grid, row, 1))
            break;
        bool opened = false;
        d.watcher().expect([&opened](QWidget *picker) {
            opened = true;
            QTest::keyClick(picker, Qt::Key_Escape);
        });
        d.key(Qt::Key_F4);
        if (!opened) {
            d.watcher().forgetExpected();
            d.problem(QStringLiteral("the icon cell opened no picker"));
        }
        break;
    }
    case ActionKind::Undo:
    case ActionKind::Redo: {
        const char *names[] = {"attributeGrid", "formatAttributeGrid", "parameterGrid"};
        if (!d.focusGrid(d.control(names[int(action.grid)])))
            break;
        if (action.kind == ActionKind::Undo)
            d.key(Qt::Key_Z, Qt::ControlModifier);
        else if (action.how == 0)
            d.key(Qt::Key_Y, Qt::ControlModifier);
        else
            d.key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        break;
    }
    case ActionKind::ApplyToOthers:
        applyToOthers(d, model, action);
        break;
    }
}

void performEnding(DialogDriver &d, const SchemaModel &model, const Ending &ending)
{
    if (ending.isOk() && !model.applySelection().empty() && model.refusals().empty()) {
        const bool confirm = model.applySelection().confirm;
        d.watcher().expect([&d, confirm](QWidget *window) {
            if (auto *box = qobject_cast<QMessageBox *>(window)) {
                // Not the preview but OK refusing: a message like any other.
                d.watcher().dismiss(box);
                return;
            }
            auto *answer = window->objectName() == QLatin1String("applyPreviewDialog")
                ? window->findChild<QAbstractButton *>(confirm ? QStringLiteral("yesButton") : QStringLiteral("noButton"))
                : nullptr;
            if (!answer)
                return d.problem(QStringLiteral("OK showed no preview before applying to others"));
            QTest::mouseClick(answer, Qt::LeftButton);
        });
    }
    switch (ending.kind) {
    case EndingKind::OkButton:
        d.click(d.control("okButton"));
        break;
    case EndingKind::EnterKey:
        // In a grid Enter edits or presses a cell's button, so OK is
        // Control+Enter there, from the row's first cell, which has none.
        if (QWidget *focus = QApplication::focusWidget(); focus && focus->objectName().endsWith(QLatin1String("Grid"))) {
            d.key(Qt::Key_Home);
            d.key(Qt::Key_Return, Qt::ControlModifier);
        } else {
            d.key(Qt::Key_Return);
        }
        break;
    case EndingKind::EnterInName:
        d.showPageOf(d.control("nameEdit"));
        if (d.reach(d.control("nameLabel"), d.control("nameEdit")))
            d.key(Qt::Key_Return);
        break;
    case EndingKind::Cancel:
        d.click(d.control("cancelButton"));
        break;
    case EndingKind::Escape:
        d.key(Qt::Key_Escape);
        break;
    case EndingKind::CloseBox:
        if (d.dialog())
            d.dialog()->close();
        break;
    }
}

} // namespace vyr::model
