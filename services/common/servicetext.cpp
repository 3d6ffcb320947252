#include "servicetext.h"

#include "guilocalizer.h"
#include "util/stringconverter.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace vyr::services {

QString localized(const char *text)
{
    const std::size_t length = std::strlen(text);
    std::string buffer(std::max<std::size_t>(1024, 4 * length), '\0');
    const int size = GuiLoc_Localize(text, buffer.data(), static_cast<int>(buffer.size()));
    if (size <= 0)
        return QString::fromUtf8(text);
    return QString::fromStdString(vyr::ansiToUtf8(std::string_view(buffer.data(), static_cast<std::size_t>(size))));
}

} // namespace vyr::services
