#include "dialogrunner.h"
#include "toolarguments.h"

#include "uikit/application.h"
#include "uikit/cvyrdialog.h"
#include "uikit/headless.h"
#include "uikit/screenshotfile.h"
#include "uikit/unattendedrun.h"

#include <QApplication>
#include <QPixmap>
#include <QTimer>

#include <cstdio>
#include <optional>

DialogOptions dialogOptions(const ToolArguments &arguments)
{
    return {arguments.option("screenshot").value_or(std::string()), arguments.hasFlag("accept")};
}

bool startDialogApplication(const DialogOptions &options, const char *command)
{
    const bool endsByItself = options.accept || !options.screenshot.empty();
    if (!endsByItself && !vyr::aPersonCanReachWindows()) {
        std::fprintf(stderr, "vyrtool %s: %s; use --accept or --screenshot to run without a person\n", command,
                     vyr::kNobodyCanReachWindows);
        return false;
    }
    if (endsByItself)
        vyr::drawOffscreenWithoutDisplay();
    vyr::ensureRuntimeFolder();
    if (vyr::ensureApplication())
        return true;
    std::fprintf(stderr, "vyrtool %s: no window can be shown here\n", command);
    return false;
}

DialogOutcome runToolDialog(vyr::CVyrDialog &dialog, const DialogOptions &options, const char *command)
{
    if (!dialog.Create()) {
        std::fprintf(stderr, "vyrtool %s: template %u is not in the resource library\n", command, dialog.templateId());
        return DialogOutcome::Failed;
    }
    if (!options.screenshot.empty()) {
        dialog.show();
        QApplication::processEvents();
        std::string error;
        if (!vyr::saveScreenshot(dialog.grab(), QString::fromLocal8Bit(options.screenshot.c_str()), error)) {
            std::fprintf(stderr, "vyrtool %s: %s\n", command, error.c_str());
            return DialogOutcome::Failed;
        }
        if (!options.accept)
            return DialogOutcome::Drawn;
    }
    std::optional<bool> accepted;
    QStringList reasons;
    if (options.accept) {
        QTimer::singleShot(0, &dialog, [&] {
            vyr::UnattendedRun run;
            accepted = run.accept(dialog);
            reasons = run.refusalReasons();
        });
    }
    const int result = dialog.DoModal();
    if (accepted && !*accepted) {
        for (const QString &reason : std::as_const(reasons))
            std::fprintf(stderr, "vyrtool %s: %s\n", command, qPrintable(reason));
        return DialogOutcome::Refused;
    }
    return result == vyr::kEndOk ? DialogOutcome::Accepted : DialogOutcome::Cancelled;
}

int exitStatus(DialogOutcome outcome)
{
    switch (outcome) {
    case DialogOutcome::Accepted:
    case DialogOutcome::Drawn:
        return 0;
    case DialogOutcome::Refused:
        return vyr::kExitRefused;
    case DialogOutcome::Failed:
        return 2;
    default:
        return 1;
    }
}
