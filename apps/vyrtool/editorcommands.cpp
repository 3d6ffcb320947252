// vyrtool domain / list: the editors behind the buttons of list-valued
// attribute type arguments, on their own - for format authors trying a
// packed value, and for checks without a display.
//
//   vyrtool domain range|coded VALUE --format CAPFILE
//   vyrtool list stringset|stringlist|stringmap VALUE [--source]
//
// VALUE is the argument's value as it is kept: the list's elements joined
// with colons, quoted where needed. After OK the new value is printed.
#include "commands.h"
#include "dialogrunner.h"
#include "toolarguments.h"

#include "attrtypes/attrtypearg.h"
#include "attrtypesdlg/argumentcells.h"
#include "attrtypesdlg/argumenteditor.h"
#include "attrtypes/datatypemappings.h"
#include "ftprops/vyrobjftpropsformatinfo.h"
#include "uikit/cvyrdialog.h"

#include "vyr/vyr_session.h"

#include <cstdio>
#include <memory>

using namespace vyr;

namespace {

constexpr const char *kUsage = "usage:\n"
                               "  vyrtool domain range|coded VALUE --format CAPFILE [--screenshot FILE] [--accept]\n"
                               "  vyrtool list stringset|stringlist|stringmap VALUE [--source] [--screenshot FILE] "
                               "[--accept]\n";

int usage(const char *command, const char *message)
{
    std::fprintf(stderr, "vyrtool %s: %s\n%s", command, message, kUsage);
    return 2;
}

// The editor kind of a type template keyword, as the model reads keywords.
std::optional<ArgumentEditor::Kind> kindOf(const std::string &keyword)
{
    return editorKindOf(*createArg(keyword, 0, nullptr));
}

} // namespace

int runEditorCommand(std::string_view command, std::span<const std::string_view> arguments)
{
    const bool domain = command == "domain";
    const char *name = domain ? "domain" : "list";
    const std::optional<ToolArguments> read = domain
        ? readToolArguments(arguments, {"format", "screenshot"}, name, {"accept"})
        : readToolArguments(arguments, {"screenshot"}, name, {"accept", "source"});
    if (!read)
        return 2;
    if (read->words.size() != 2)
        return usage(name, "a kind and a value are needed");
    const std::string &kindWord = read->words[0];
    const std::optional<ArgumentEditor::Kind> kind
        = domain ? (kindWord == "range" || kindWord == "coded" ? kindOf(kindWord + "_domain") : std::nullopt)
                 : (kindWord.rfind("string", 0) == 0 ? kindOf(kindWord) : std::nullopt);
    if (!kind)
        return usage(name, "unknown kind");

    IVYRSession *session = nullptr;
    std::unique_ptr<VYRObjFTPropsFormatInfo> format;
    const DataTypeMappings *registry = nullptr;
    if (domain) {
        const auto path = read->option("format");
        if (!path)
            return usage(name, "--format is missing");
        const auto capabilities = readCapabilities(*path, name);
        if (!capabilities)
            return 2;
        session = VYR_SessionCreate();
        format = std::make_unique<VYRObjFTPropsFormatInfo>(*capabilities, session);
        registry = format->getDataTypeMappings();
    }
    const bool editable = domain ? !(registry && registry->isSource()) : !read->hasFlag("source");

    int status = 2;
    if (startDialogApplication(dialogOptions(*read), name)) {
        ArgumentEditor editor(*kind, read->words[1], registry, editable);
        const DialogOutcome outcome = runToolDialog(editor.dialog(), dialogOptions(*read), name);
        if (outcome == DialogOutcome::Accepted)
            std::printf("%s\n", editor.packedResult().c_str());
        // Drawn only, the editor was not accepted: as a Cancel.
        status = outcome == DialogOutcome::Drawn ? 1 : exitStatus(outcome);
    }
    format.reset();
    if (session)
        VYR_SessionDestroy(session);
    return status;
}
