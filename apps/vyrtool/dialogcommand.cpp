// vyrtool about / template: show a dialog of the resource library, as a user
// or a translator would see it.
#include "commands.h"
#include "dialogrunner.h"
#include "toolarguments.h"

#include "uikit/caboutdlg.h"
#include "util/numbertext.h"

#include <QApplication>

#include <cstdio>
#include <memory>
#include <string>


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
    const std::string name(command);
    const std::optional<ToolArguments> read = readToolArguments(arguments, {"screenshot"}, name.c_str(), {"accept"});
    if (!read)
        return 2;
    if (!read->words.empty()) {
        std::fprintf(stderr, "vyrtool %s: unexpected \"%s\"\n", name.c_str(), read->words.front().c_str());
        return 2;
    }
    const DialogOptions options = dialogOptions(*read);
    if (!startDialogApplication(options, name.c_str()))
        return 2;
    std::unique_ptr<vyr::CVyrDialog> dialog;
    if (command == "about")
        dialog = std::make_unique<vyr::CAboutDlg>();
    else
        dialog = std::make_unique<vyr::CVyrDialog>(templateId, 0, true, std::string(), nullptr,
                                                   vyr::DialogMode::ModeModal);
    // These dialogs give back nothing but how they ended, which the exit
    // status says.
    const DialogOutcome outcome = runToolDialog(*dialog, options, name.c_str());
    return outcome == DialogOutcome::Cancelled ? 0 : exitStatus(outcome);
}
