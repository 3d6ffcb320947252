// Answering the modal windows a test's code opens: the answer is queued
// before the call that runs the window, and runs once the window's own
// event loop has started.
#ifndef VYR_TESTS_MODALANSWERS_H
#define VYR_TESTS_MODALANSWERS_H

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QListWidget>
#include <QMessageBox>
#include <QTimer>
#include <QtTest>

#include <functional>

namespace vyr::test {

// `act` gets the next modal dialog; it decides itself how it ends.
inline void onNextModalDialog(std::function<void(QDialog *)> act)
{
    QTimer::singleShot(0, qApp, [act] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        act(dialog);
    });
}

// `answer` looks at the next modal dialog and says OK (true) or Cancel.
inline void answerNextDialog(std::function<bool(QDialog *)> answer)
{
    onNextModalDialog([answer](QDialog *dialog) {
        if (answer(dialog))
            dialog->accept();
        else
            dialog->reject();
    });
}

// What a message box showed.
struct ShownMessage
{
    QString caption;
    QString text;
    int icon = -1;
};

// Presses `button` in the next message box, keeping what it showed.
inline void answerNextMessageBox(ShownMessage *shown, QMessageBox::StandardButton button = QMessageBox::Ok)
{
    onNextModalDialog([shown, button](QDialog *dialog) {
        auto *box = qobject_cast<QMessageBox *>(dialog);
        QVERIFY(box);
        shown->caption = box->windowTitle();
        shown->text = box->text();
        shown->icon = box->icon();
        box->button(button)->click();
    });
}

// What a check list of a dialog offered, with icons or not, and had
// checked; afterwards only `wanted` is checked.
struct Offer
{
    QStringList items, checked;
    QList<bool> withIcon;
};
inline Offer recheck(QListWidget *list, const QStringList &wanted)
{
    Offer offer;
    for (int i = 0; i < list->count(); ++i) {
        QListWidgetItem *entry = list->item(i);
        offer.items.append(entry->text());
        offer.withIcon.append(!entry->icon().isNull());
        if (entry->checkState() == Qt::Checked)
            offer.checked.append(entry->text());
        entry->setCheckState(wanted.contains(entry->text()) ? Qt::Checked : Qt::Unchecked);
    }
    return offer;
}

} // namespace vyr::test

#endif // VYR_TESTS_MODALANSWERS_H
