// vyrtool about / template: show a dialog of the resource library, as a user
// or a translator would see it.
#include "commands.h"
#include "dialogrunner.h"

#include "uikit/application.h"
#include "uikit/caboutdlg.h"
#include "util/numbertext.h"

#include <QApplication>

#include <cstdio>
#include <memory>
#include <string>

namespace {

// Reads --screenshot FILE and --accept; false on anything else.
bool readOptions(std::span<const std::string_view> arguments, DialogOptions &options)
{
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == "--accept") {
            options.accept = true;
        } else if (arguments[i] == "--screenshot") {
            if (i + 1 == arguments.size()) {
                std::fputs("vyrtool: --screenshot needs a file name\n", stderr);
                return false;
            }
            options.screenshot = std::string(arguments[++i]);
        } else {
            std::fprintf(stderr, "vyrtool: unknown option \"%.*s\"\n", static_cast<int>(arguments[i].size()),
                         arguments[i].data());
            return false;
        }
    }
    return true;
}

} // namespace

int runDialogCommand(std::string_view command, std::span<const std::string_view> arguments)
{
    unsigned templateId = 0;
    if (command == "template") {
        std::uint32_t id = 0;
        if (arguments.empty() || !vyr::parseUnsigned(arguments.front(), id)) {
            std::fputs("vyrtool: template needs a template ID\n", stderr);
            return 2;
        }
        templateId = id;
        arguments = arguments.subspan(1);
    }
    DialogOptions options;
    if (!readOptions(arguments, options))
        return 2;
    if (!vyr::ensureApplication()) {
        std::fputs("vyrtool: no window can be shown here\n", stderr);
        return 1;
    }
    std::unique_ptr<vyr::CVyrDialog> dialog;
    if (command == "about")
        dialog = std::make_unique<vyr::CAboutDlg>();
    else
        dialog = std::make_unique<vyr::CVyrDialog>(templateId, 0, true, std::string(), nullptr,
                                                   vyr::DialogMode::ModeModal);
    const DialogOutcome outcome = runToolDialog(*dialog, options, std::string(command).c_str());
    if (outcome == DialogOutcome::Accepted || outcome == DialogOutcome::Cancelled)
        std::printf("%d\n", outcome == DialogOutcome::Accepted ? vyr::kEndOk : vyr::kEndCancel);
    return outcome == DialogOutcome::Cancelled ? 0 : exitStatus(outcome);
}
