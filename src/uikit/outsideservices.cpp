#include "uikit/outsideservices.h"

#include "util/installdir.h"

#include <dlfcn.h>

#include <map>
#include <string>

namespace vyr {

namespace {

constexpr char kHelpLibrary[] = "libvyr_robohelp.so";
constexpr char kLocalizerLibrary[] = "libGUILocalizer.so";
constexpr char kPrompterLibrary[] = "libvyrprompter.so";

template <class Function>
Function *serviceFunction(const char *fileName, const char *symbol)
{
    return reinterpret_cast<Function *>(findServiceFunction(fileName, symbol));
}

} // namespace

void *findServiceFunction(const char *fileName, const char *symbol)
{
    // Handles stay open for the process: the functions may be called again.
    static std::map<std::string, void *> handles;
    auto found = handles.find(fileName);
    if (found == handles.end()) {
        const std::string path = getInstallDirectory() + fileName;
        found = handles.emplace(fileName, ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)).first;
    }
    return found->second ? ::dlsym(found->second, symbol) : nullptr;
}

int showHelpByString(const std::string &helpFile, const std::string &topic)
{
    using Show = int(void *, const char *, const char *, const char *);
    auto *show = serviceFunction<Show>(kHelpLibrary, "VYR_CHM_ShowHelpByString");
    return show ? show(nullptr, helpFile.c_str(), topic.c_str(), "") : 0;
}

int showFormatHelp(const std::string &helpFile, const std::string &formatName, int topicNumber)
{
    using Show = int(void *, const char *, const char *, int);
    auto *show = serviceFunction<Show>(kHelpLibrary, "VYR_CHM_ShowFormatHelp");
    return show ? show(nullptr, helpFile.c_str(), formatName.c_str(), topicNumber) : 0;
}

int showLoomhouseHelp(const std::string &topic)
{
    return showHelpByString(getInstallDirectory() + "help/VYRLoomhouse.chm", topic);
}

int localize(const char *text, char *buffer, int bufferSize)
{
    using Localize = int(const char *, char *, int);
    auto *translate = serviceFunction<Localize>(kLocalizerLibrary, "GuiLoc_Localize");
    return translate ? translate(text, buffer, bufferSize) : 0;
}

bool selectionDialog(IVYRStringArray &all, IVYRStringArray &preselected, IVYRStringArray &icons, IVYRString &title,
                     int flagA, int flagB, IVYRStringArray &chosen, void *parent)
{
    using Select = bool(IVYRStringArray &, IVYRStringArray &, IVYRStringArray &, IVYRString &, int, int,
                        IVYRStringArray &, void *);
    auto *select = serviceFunction<Select>(kPrompterLibrary, "selectionDialog");
    return select && select(all, preselected, icons, title, flagA, flagB, chosen, parent);
}

IGuiPrompter *createGuiPrompter()
{
    auto *create = serviceFunction<IGuiPrompter *()>(kPrompterLibrary, "vyrprompter_createGuiPrompter");
    return create ? create() : nullptr;
}

void releaseGuiPrompter(IGuiPrompter *prompter)
{
    if (auto *destroy = serviceFunction<void(IGuiPrompter *)>(kPrompterLibrary, "vyrprompter_destroyGuiPrompter"))
        destroy(prompter);
}

} // namespace vyr
