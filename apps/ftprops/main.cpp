// vyr-ftprops: the authoring application's part on this platform - a
// workspace of feature types, and the feature type properties dialog of the
// dialog library on the one the user picks.
//
//   vyr-ftprops [WORKSPACE.json] [--edit NAME] [--page N] [--review] [--screenshot FILE] [--accept]
//
// Without a workspace (started from a desktop's menu) it asks for one.
// Without --edit a window lists the workspace's feature types; Enter, a
// double click or "Properties..." opens the dialog. --edit opens the dialog
// on the named feature type at once and ends with it; --page shows its Nth
// tab (1 is General) before anything else happens, --review opens its review
// of the changes, which --screenshot and --accept then take for the dialog.
// --screenshot saves the dialog as a PNG once it shows; --accept then
// presses OK (otherwise Cancel, when a screenshot was asked for; the dialog
// under a review is cancelled with it), so that it runs without a person; a
// refused OK prints why on standard error and exits with 3; a save that
// fails says why on standard error and exits with 2. Where nobody can reach
// a window (no display, or the offscreen or minimal platform) it runs only
// when --screenshot or --accept ends the dialog by itself (offscreen, when
// there is no display), and otherwise refuses to start with 2.
#include "vyrversion.h"
#include "workspace.h"
#include "workspacewindow.h"

#include "uikit/commandlineusage.h"
#include "uikit/headless.h"
#include "uikit/screenshotfile.h"
#include "uikit/unattendedrun.h"
#include "util/codepage.h"
#include "vyr/vyr_session.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCommandLineParser>
#include <QDialog>
#include <QFileDialog>
#include <QTabBar>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

using namespace vyr::ftprops;

namespace {

struct Automation
{
    QString screenshot;
    bool accept = false;
    int page = 0; // the tab to show, from 1; 0 leaves the first
    bool review = false; // open the review of the changes, and end that
    bool active() const { return accept || !screenshot.isEmpty(); }
};

// What the unattended run came to beside the dialog's own end.
struct AutomationOutcome
{
    bool refused = false; // OK was refused; the reasons went to standard error
    bool pictureFailed = false; // the picture could not be saved; said why
};

// Waits for the dialog to show, then takes the picture and ends it.
void automateNextDialog(const Automation &automation, AutomationOutcome &outcome)
{
    auto *poll = new QTimer(qApp);
    poll->setInterval(50);
    QObject::connect(poll, &QTimer::timeout, qApp, [poll, automation, &outcome, waited = 0]() mutable {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        // The picture shows the keyboard's place, which only the active
        // window marks; a display that never activates it gets one anyway.
        constexpr int kPollsForActivation = 40;
        if (!dialog->isActiveWindow() && ++waited < kPollsForActivation)
            return;
        poll->deleteLater();
        poll->stop();
        if (auto *tabs = dialog->findChild<QTabBar *>(); tabs && automation.page > 0) {
            if (automation.page > tabs->count())
                std::fprintf(stderr, "vyr-ftprops: the dialog has %d tabs, not %d\n", tabs->count(), automation.page);
            else
                tabs->setCurrentIndex(automation.page - 1);
        }
        if (automation.review) {
            // The review window is the next dialog; once it has ended, the
            // dialog under it is cancelled unless the review's OK saved.
            Automation review = automation;
            review.review = false;
            review.page = 0;
            automateNextDialog(review, outcome);
            QTimer::singleShot(0, dialog, [dialog] {
                if (auto *button = dialog->findChild<QAbstractButton *>(QStringLiteral("reviewButton")))
                    button->click();
                if (dialog->isVisible())
                    dialog->reject();
            });
            return;
        }
        std::string error;
        if (!automation.screenshot.isEmpty() && !vyr::saveScreenshot(dialog->grab(), automation.screenshot, error)) {
            std::fprintf(stderr, "vyr-ftprops: %s\n", error.c_str());
            outcome.pictureFailed = true;
        }
        if (!automation.accept) {
            dialog->reject();
            return;
        }
        vyr::UnattendedRun run;
        if (run.accept(*dialog))
            return;
        outcome.refused = true;
        for (const QString &reason : run.refusalReasons())
            std::fprintf(stderr, "vyr-ftprops: %s\n", qPrintable(reason));
    });
    poll->start();
}

} // namespace

int main(int argc, char *argv[])
{
    // Decided before Qt takes its own arguments (-platform) out of argv.
    const bool personThere = vyr::prepareHeadlessRun(argc, argv);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vyr-ftprops"));
    QApplication::setApplicationVersion(QString::fromLatin1(kVyrVersion));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Edit the feature types of a translation workspace."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("workspace"),
                                 QStringLiteral("The workspace file (JSON); asked for on a display when not given."),
                                 QStringLiteral("[workspace]"));
    const QCommandLineOption edit(QStringLiteral("edit"), QStringLiteral("Open the dialog on this feature type."),
                                  QStringLiteral("name"));
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Save the dialog as a PNG once it shows."),
                                        QStringLiteral("file"));
    const QCommandLineOption accept(QStringLiteral("accept"), QStringLiteral("Press OK in the dialog."));
    const QCommandLineOption page(QStringLiteral("page"), QStringLiteral("Show the dialog's Nth tab (1 is General)."),
                                  QStringLiteral("N"));
    const QCommandLineOption review(QStringLiteral("review"),
                                    QStringLiteral("Open the dialog's review of the changes OK will write."));
    parser.addOptions({edit, screenshot, accept, page, review});
    vyr::processCommandLine(parser, QCoreApplication::arguments());
    QStringList files = parser.positionalArguments();
    bool pageRead = true;
    const Automation automation{parser.value(screenshot), parser.isSet(accept),
                                parser.isSet(page) ? parser.value(page).toInt(&pageRead) : 0, parser.isSet(review)};
    if (!personThere && !automation.active()) {
        std::fprintf(stderr, "vyr-ftprops: %s; use --accept or --screenshot to run without a person\n",
                     vyr::kNobodyCanReachWindows);
        return 2;
    }
    // Started from a desktop's menu, without a file: the person picks one.
    if (files.isEmpty() && !parser.isSet(edit) && !automation.active()) {
        const QString chosen = QFileDialog::getOpenFileName(nullptr, QStringLiteral("Open a workspace"), QString(),
                                                            QStringLiteral("Workspaces (*.json);;All files (*)"));
        if (chosen.isEmpty())
            return 1;
        files.append(chosen);
    }
    if (files.size() != 1) {
        // Bad usage goes to standard error, where a script looks for why.
        std::fprintf(stderr, "vyr-ftprops: give one workspace file\n%s", qPrintable(parser.helpText()));
        return 2;
    }

    if (!pageRead || automation.page < 0) {
        std::fprintf(stderr, "vyr-ftprops: --page needs the number of a tab, from 1\n");
        return 2;
    }

    // Feature files and capability files would be read and saved in a code
    // page other than the one asked for.
    if (const auto refusal = vyr::refusedVyrCodePage()) {
        std::fprintf(stderr, "vyr-ftprops: %s\n", refusal->c_str());
        return 2;
    }

    IVYRSession *session = VYR_SessionCreate();
    std::string error;
    std::unique_ptr<Workspace> workspace =
        Workspace::open(files.first().toStdString(), *session, error);
    if (!workspace) {
        std::fprintf(stderr, "vyr-ftprops: %s\n", error.c_str());
        VYR_SessionDestroy(session);
        return 2;
    }

    int status = 0;
    if (parser.isSet(edit) || automation.active()) {
        const std::string name = parser.isSet(edit) ? parser.value(edit).toStdString()
                                                    : workspace->featureTypes().empty()
                                                        ? std::string()
                                                        : workspace->featureTypes().front().name();
        const int index = workspace->find(name);
        if (index < 0) {
            std::fprintf(stderr, "vyr-ftprops: the workspace has no feature type \"%s\"\n", name.c_str());
            status = 2;
        } else {
            AutomationOutcome outcome;
            if (automation.active())
                automateNextDialog(automation, outcome);
            std::string message;
            const EditResult result = workspace->edit(index, nullptr, message);
            if (outcome.refused) {
                std::printf("OK was refused, nothing saved\n");
                status = vyr::kExitRefused;
            } else if (result == EditResult::Cancelled) {
                std::printf("cancelled, nothing saved\n");
                status = 1;
            } else if (result == EditResult::SaveFailed || result == EditResult::NotOpened) {
                std::fprintf(stderr, "vyr-ftprops: %s\n", message.c_str());
                status = 2;
            } else {
                std::printf("%s\n", message.c_str());
            }
            // A picture asked for and not saved is a failure, whatever the
            // dialog's end.
            if (outcome.pictureFailed && status != vyr::kExitRefused)
                status = 2;
        }
    } else {
        WorkspaceWindow window(*workspace);
        window.show();
        status = QApplication::exec();
    }
    workspace.reset();
    VYR_SessionDestroy(session);
    return status;
}
