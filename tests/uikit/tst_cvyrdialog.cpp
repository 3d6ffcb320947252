#include "support/gridwindow.h"
#include "uikit/application.h"
#include "uikit/caboutdlg.h"
#include "uikit/cvyrdialog.h"
#include "uikit/helpevents.h"
#include "util/resourceids.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QToolTip>
#include <QtTest>

#include <functional>

using namespace vyr;

namespace {

constexpr unsigned kBuildLabel = 1001;
constexpr unsigned kLanguageLabel = 1004;
constexpr unsigned kMissingItem = 4242;

// The about template, with what a test wants to see of the base class.
// Records the keys a widget receives.
class KeyRecorder : public QObject
{
public:
    QList<int> keys;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress)
            keys << static_cast<QKeyEvent *>(event)->key();
        return QObject::eventFilter(watched, event);
    }
};

class ProbeDialog : public CVyrDialog
{
public:
    explicit ProbeDialog(DialogMode mode = DialogMode::ModeModal, std::string topic = "Probe_Topic.htm",
                         QWidget *parent = nullptr, bool toolTips = false, unsigned accelerators = 0)
        : CVyrDialog(res::AboutDialog, accelerators, toolTips, std::move(topic), parent, mode)
    {}

    qintptr helpAnswer = 0;
    int helpRequests = 0;
    std::function<void()> onDestroy;
    std::function<void()> beforeBindings;
    QList<unsigned> commands;

protected:
    qintptr OnHelpRequest(qintptr, qintptr) override
    {
        ++helpRequests;
        return helpAnswer;
    }
    // Runs between the window's creation and the resolution of the bindings.
    void SetupToolTips() override
    {
        CVyrDialog::SetupToolTips();
        if (beforeBindings)
            beforeBindings();
    }
    void OnDestroyDialog() override
    {
        CVyrDialog::OnDestroyDialog();
        if (onDestroy)
            onDestroy();
    }
    void OnCommand(unsigned id) override
    {
        commands.append(id);
        CVyrDialog::OnCommand(id);
    }
};

} // namespace

class CVyrDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(ensureApplication()); }

    void shouldBindRegisteredControlsOfTheRightType()
    {
        for (const bool windowFirst : {false, true}) {
            ProbeDialog dialog;
            if (windowFirst)
                QVERIFY(dialog.Create());
            DialogControl<QLabel> language;
            DialogControl<QPushButton> wrongType;
            DialogControl<QLabel> missing;
            dialog.RegisterControl(&language, kLanguageLabel);
            dialog.RegisterControl(&wrongType, kBuildLabel);
            dialog.RegisterControl(&missing, kMissingItem);
            // Without a window the binding waits for it; with one it is made at once.
            QCOMPARE(language.isAttached(), windowFirst);
            QVERIFY(dialog.Create());
            QCOMPARE(language.get(), dialog.GetDlgItem(kLanguageLabel));
            QVERIFY(!wrongType.isAttached());
            QVERIFY(!missing.isAttached());
            // What the code asks of a control the template lacks goes to a
            // stand-in nobody sees.
            dialog.show();
            missing->setText(QStringLiteral("nowhere"));
            missing->show();
            wrongType->click();
            QCOMPARE(missing->text(), QStringLiteral("nowhere"));
            QVERIFY(!missing->isVisible() && !missing.get() && !missing);
            QVERIFY(missing->window() != &dialog && wrongType->window() != &dialog);
        }
    }

    void shouldKeepAHiddenModeDialogOnCloseAndReleaseOnlyItsOwnControls()
    {
        auto *dialog = new ProbeDialog(DialogMode::ModeModelessHidden);
        DialogControl<QLabel> owner;
        DialogControl<QLabel> borrower;
        dialog->RegisterControl(&owner, kLanguageLabel);
        dialog->RegisterControl(&borrower, kBuildLabel);
        // Something else manages the build label before the bindings resolve.
        dialog->beforeBindings = [dialog] { DialogControlBase::setClaimed(dialog->GetDlgItem(kBuildLabel), true); };
        QVERIFY(dialog->Create());
        QVERIFY(owner.isAttached());
        QVERIFY(borrower.isAttached());
        QPointer<ProbeDialog> watch(dialog);
        dialog->show();
        dialog->close();
        QVERIFY(!dialog->isVisible());
        QVERIFY(dialog->hasWindow());
        QCoreApplication::processEvents();
        QVERIFY(!watch.isNull());

        bool ownerReleased = false;
        bool borrowerKept = false;
        dialog->onDestroy = [&] {
            ownerReleased = !owner.isAttached();
            borrowerKept = borrower.isAttached();
        };
        dialog->DestroyWindow();
        QVERIFY(ownerReleased);
        QVERIFY(borrowerKept);
        QTRY_VERIFY(watch.isNull()); // the modeless modes delete themselves
    }

    void shouldAnswerTheHelpTopicQuery_data()
    {
        QTest::addColumn<QByteArray>("topic");
        QTest::addColumn<qintptr>("reply");
        QTest::newRow("empty topic") << QByteArray() << qintptr(0);
        QTest::newRow("topic of 2047 bytes") << QByteArray(2047, 't') << qintptr(1);
        QTest::newRow("topic of 3000 bytes") << QByteArray(3000, 't') << qintptr(1);
    }

    void shouldAnswerTheHelpTopicQuery()
    {
        QFETCH(QByteArray, topic);
        QFETCH(qintptr, reply);
        ProbeDialog dialog(DialogMode::ModeModal, topic.toStdString());
        std::vector<char> buffer(kHelpTopicBufferSize + 16, 'x');
        HelpTopicEvent query(buffer.data());
        QCoreApplication::sendEvent(&dialog, &query);
        QCOMPARE(query.result(), reply);
        if (topic.isEmpty()) {
            QCOMPARE(buffer[0], 'x');
            return;
        }
        const std::size_t copied = std::min<std::size_t>(topic.size(), kHelpTopicBufferSize);
        QCOMPARE(QByteArray(buffer.data(), static_cast<qsizetype>(copied)), topic.left(static_cast<qsizetype>(copied)));
        // The terminator only while it fits; nothing past the 2,048 bytes.
        if (copied < kHelpTopicBufferSize)
            QCOMPARE(buffer[copied], '\0');
        QCOMPARE(buffer[kHelpTopicBufferSize], 'x');
    }

    void shouldPassUnansweredHelpRequestsToTheParent()
    {
        ProbeDialog outer;
        outer.helpAnswer = 7;
        QVERIFY(outer.Create());
        auto *inner = new ProbeDialog(DialogMode::ModeModal, "Inner.htm", &outer);
        QVERIFY(inner->Create());
        QWidget *focus = inner->GetDlgItem(kBuildLabel);
        QCOMPARE(routeHelpRequest(focus), qintptr(7));
        QCOMPARE(inner->helpRequests, 1);
        QCOMPARE(outer.helpRequests, 1);

        inner->helpAnswer = 3;
        QCOMPARE(routeHelpRequest(focus), qintptr(3));
        QCOMPARE(outer.helpRequests, 1);
        QCOMPARE(routeHelpRequest(nullptr), qintptr(0));

        // F1 starts at the focus; a template's Help button routes the same way.
        QVERIFY(test::showActive(outer));
        QWidget *ok = outer.GetDlgItem(kIdOk);
        ok->setFocus();
        QTRY_COMPARE(QApplication::focusWidget(), ok);
        QTest::keyClick(ok, Qt::Key_F1);
        QCOMPARE(outer.helpRequests, 2);
        qobject_cast<QPushButton *>(outer.GetDlgItem(kIdHelp))->click();
        QCOMPARE(outer.helpRequests, 3);

        // The host's own windows keep their F1, even while a dialog of the
        // library is open beside them.
        QDialog host;
        auto *field = new QLineEdit(&host);
        KeyRecorder seen;
        field->installEventFilter(&seen);
        QVERIFY(test::showActive(host));
        field->setFocus();
        QTest::keyClick(field, Qt::Key_F1);
        QCOMPARE(seen.keys, QList<int>{Qt::Key_F1});
        QCOMPARE(outer.helpRequests, 3);
    }

    void shouldEndModalDialogsWithTheirButtonCodes_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<int>("code");
        QTest::newRow("OK button") << "ok" << kEndOk;
        QTest::newRow("Escape") << "escape" << kEndCancel;
        QTest::newRow("close box") << "close" << kEndCancel;
    }

    void shouldEndModalDialogsWithTheirButtonCodes()
    {
        QFETCH(QString, action);
        QFETCH(int, code);
        ProbeDialog dialog;
        QTimer::singleShot(0, &dialog, [&] {
            if (action == QLatin1String("ok"))
                qobject_cast<QPushButton *>(dialog.GetDlgItem(kIdOk))->click();
            else if (action == QLatin1String("escape"))
                QTest::keyClick(&dialog, Qt::Key_Escape);
            else
                dialog.close();
        });
        QCOMPARE(dialog.DoModal(), code);
        // A modal dialog's window outlives the end, so its controls can be read.
        QVERIFY(dialog.hasWindow());
    }

    void shouldFailToRunWithoutATemplate()
    {
        CVyrDialog dialog(9999, 0, false, {}, nullptr, DialogMode::ModeModal);
        QCOMPARE(dialog.DoModal(), kEndFailed);
        QVERIFY(!dialog.isVisible());
    }

    void shouldDestroyModelessDialogsOnOk()
    {
        auto *dialog = new ProbeDialog(DialogMode::ModeModeless);
        QPointer<ProbeDialog> watch(dialog);
        QVERIFY(dialog->Create());
        dialog->show();
        dialog->OnOK();
        QVERIFY(!dialog->hasWindow());
        QTRY_VERIFY(watch.isNull());
    }

    void shouldShowToolTipsOverDisabledControls()
    {
        ProbeDialog dialog(DialogMode::ModeModal, {}, nullptr, true);
        QVERIFY(dialog.Create());
        QVERIFY(test::showActive(dialog));
        QWidget *help = dialog.GetDlgItem(kIdHelp);
        help->setEnabled(false);
        const QPoint centre = help->mapTo(&dialog, help->rect().center());
        QHelpEvent event(QEvent::ToolTip, centre, dialog.mapToGlobal(centre));
        QCoreApplication::sendEvent(&dialog, &event);
        QTRY_COMPARE(QToolTip::text(), help->toolTip());
        QToolTip::hideText();
    }

    void shouldRunAcceleratorsAsCommands()
    {
        ProbeDialog dialog(DialogMode::ModeModal, {}, nullptr, false, res::AboutAccelerators);
        QVERIFY(dialog.Create());
        QVERIFY(test::showActive(dialog));
        QTest::keyClick(&dialog, Qt::Key_I, Qt::ControlModifier);
        QCOMPARE(dialog.commands, QList<unsigned>{1002});
    }

    void shouldTakeTitleIconAndTextsFromTheResourceLibrary()
    {
        CAboutDlg about;
        QVERIFY(about.Create());
        QCOMPARE(about.windowTitle(), QStringLiteral("About vyrguimfc"));
        QVERIFY(!about.windowIcon().isNull());
        const auto *build = qobject_cast<QLabel *>(about.GetDlgItem(kBuildLabel));
        QCOMPARE(build->text(), QStringLiteral("Build 6233"));
        const auto *language = qobject_cast<QLabel *>(about.GetDlgItem(kLanguageLabel));
        QCOMPARE(language->text(), QStringLiteral("Language: English"));
    }
};

QTEST_MAIN(CVyrDialogTest)
#include "tst_cvyrdialog.moc"
