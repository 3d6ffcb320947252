#include "util/jsonnesting.h"

namespace vyr {

std::optional<std::string> refuseDeepJson(std::string_view text, int most)
{
    int depth = 0;
    bool inString = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (inString) {
            if (c == '\\')
                ++at;
            else if (c == '"')
                inString = false;
            continue;
        }
        switch (c) {
        case '"': inString = true; break;
        case '[':
        case '{':
            if (++depth > most)
                return "arrays and objects nest more than " + std::to_string(most) + " levels deep";
            break;
        case ']':
        case '}': depth = depth > 0 ? depth - 1 : 0; break;
        default: break;
        }
    }
    return std::nullopt;
}

} // namespace vyr
