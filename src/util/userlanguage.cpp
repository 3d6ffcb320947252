#include "util/userlanguage.h"

#include "util/asciitext.h"
#include "util/environment.h"

namespace vyr {

std::string userLanguage()
{
    std::string locale;
    for (const char *variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        locale = getEnvironment(variable);
        if (!locale.empty())
            break;
    }
    const std::string language = locale.substr(0, locale.find_first_of("_.@"));
    constexpr std::size_t kLongestName = 9;
    if (language.empty() || language.size() > kLongestName || language == "C" || language == "POSIX")
        return {};
    for (const char c : language) {
        if (lowerAscii(c) < 'a' || lowerAscii(c) > 'z')
            return {};
    }
    std::string lower = language;
    for (char &c : lower)
        c = lowerAscii(c);
    return lower;
}

} // namespace vyr
