// vyrtool geodb: the geodatabase picker, through the library's export as a
// host calls it.
//
//   vyrtool geodb [PATH] [--must-exist] [--screenshot FILE] [--accept]
//
// The chosen path is printed after OK. The picker is a window of another
// library, so --screenshot and --accept reach it as the active modal window.
#include "commands.h"
#include "dialogrunner.h"
#include "toolarguments.h"

#include "uikit/screenshotfile.h"
#include "uikit/unattendedrun.h"
#include "vyrguimfc/vyrguimfc.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QTimer>

#include <cstdio>
#include <memory>

namespace {

enum class Unattended { None, Drawn, Accepted, Refused, Failed };

// Draws and answers the picker once it is up, after a moment for the
// window manager and the first paint.
void answerPicker(const DialogOptions &options, Unattended &outcome, QString &reason)
{
    auto *picker = qobject_cast<QDialog *>(QApplication::activeModalWidget());
    if (!picker) {
        outcome = Unattended::Failed;
        reason = QStringLiteral("the picker did not open");
        return;
    }
    if (!options.screenshot.empty()) {
        QElapsedTimer settling;
        settling.start();
        while (settling.elapsed() < 400)
            QApplication::processEvents(QEventLoop::AllEvents, 50);
        std::string error;
        if (!vyr::saveScreenshot(picker->grab(), QString::fromLocal8Bit(options.screenshot.c_str()), error)) {
            outcome = Unattended::Failed;
            reason = QString::fromStdString(error);
            picker->reject();
            return;
        }
        outcome = Unattended::Drawn;
    }
    if (!options.accept) {
        picker->reject();
        return;
    }
    vyr::UnattendedRun run;
    if (run.accept(*picker)) {
        outcome = Unattended::Accepted;
        return;
    }
    outcome = Unattended::Refused;
    const auto *status = picker->findChild<QLabel *>(QStringLiteral("status"));
    reason = status && !status->text().isEmpty() ? status->text() : QStringLiteral("the picker did not take OK");
}

} // namespace

int runGeodatabaseCommand(std::span<const std::string_view> arguments)
{
    const std::optional<ToolArguments> read
        = readToolArguments(arguments, {"screenshot"}, "geodb", {"accept", "must-exist"});
    if (!read)
        return 2;
    if (read->words.size() > 1) {
        std::fprintf(stderr, "vyrtool geodb: unexpected \"%s\"\nusage: vyrtool geodb [PATH] [--must-exist] "
                             "[--screenshot FILE] [--accept]\n",
                     read->words[1].c_str());
        return 2;
    }
    const DialogOptions options = dialogOptions(*read);
    if (!startDialogApplication(options, "geodb"))
        return 2;
    const std::unique_ptr<VYRStringObject, void (*)(VYRStringHandle)> location(VYR_StringCreate(), VYR_StringDestroy);
    if (!read->words.empty())
        VYR_StringSet(location.get(), read->words.front().c_str());

    Unattended outcome = Unattended::None;
    QString reason;
    if (options.accept || !options.screenshot.empty())
        QTimer::singleShot(0, qApp, [&] { answerPicker(options, outcome, reason); });
    const bool chosen = VYREsriGeoDBDlg(0, location.get(), read->hasFlag("must-exist"), 0, nullptr);
    if (outcome == Unattended::Failed || outcome == Unattended::Refused) {
        std::fprintf(stderr, "vyrtool geodb: %s\n", qPrintable(reason));
        return outcome == Unattended::Refused ? vyr::kExitRefused : 2;
    }
    if (chosen) {
        std::printf("%s\n", VYR_StringGet(location.get()));
        return 0;
    }
    if (outcome == Unattended::Drawn)
        return 0;
    // The export answers false alike for a cancelled picker and for one that
    // could not be opened.
    std::fputs("vyrtool geodb: no geodatabase was chosen (cancelled, or libvyr_dirDialog.so is missing)\n", stderr);
    return 1;
}
