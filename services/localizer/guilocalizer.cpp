#include "guilocalizer.h"

#include "util/installdir.h"
#include "util/stringconverter.h"

#include <libintl.h>

#include <cstring>
#include <string>

namespace {

constexpr char kDomain[] = "vyr-gui";

void bindCatalogs()
{
    static const bool bound = [] {
        const std::string catalogs = vyr::getInstallDirectory() + "messages";
        bindtextdomain(kDomain, catalogs.c_str());
        bind_textdomain_codeset(kDomain, "UTF-8");
        return true;
    }();
    (void)bound;
}

} // namespace

extern "C" int GuiLoc_Localize(const char *text, char *buffer, int bufferSize)
{
    if (!text || !*text || !buffer || bufferSize <= 0)
        return 0;
    bindCatalogs();
    const std::string key = vyr::ansiToUtf8(text);
    const char *translated = dgettext(kDomain, key.c_str());
    if (!translated || translated == key.c_str() || std::strcmp(translated, key.c_str()) == 0)
        return 0;
    const std::string result = vyr::utf8ToAnsi(translated);
    if (result.empty() || result.size() > static_cast<std::size_t>(bufferSize))
        return 0;
    std::memcpy(buffer, result.data(), result.size());
    if (result.size() < static_cast<std::size_t>(bufferSize))
        buffer[result.size()] = '\0';
    return static_cast<int>(result.size());
}
