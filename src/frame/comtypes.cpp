#include "frame/comtypes.h"

#include <cstdio>

namespace vyr::com {

std::string Guid::toString() const
{
    char text[39];
    std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", data1, data2, data3,
                  data4[0], data4[1], data4[2], data4[3], data4[4], data4[5], data4[6], data4[7]);
    return text;
}

std::optional<Guid> Guid::fromString(std::string_view text)
{
    if (text.size() == 38 && text.front() == '{' && text.back() == '}')
        text = text.substr(1, 36);
    if (text.size() != 36)
        return std::nullopt;
    std::uint8_t bytes[16];
    std::size_t count = 0;
    for (std::size_t i = 0; i < text.size();) {
        if (i == 8 || i == 13 || i == 18 || i == 23) {
            if (text[i++] != '-')
                return std::nullopt;
            continue;
        }
        const auto digit = [](char c) -> int {
            if (c >= '0' && c <= '9')
                return c - '0';
            if (c >= 'a' && c <= 'f')
                return c - 'a' + 10;
            if (c >= 'A' && c <= 'F')
                return c - 'A' + 10;
            return -1;
        };
        const int high = digit(text[i]);
        const int low = digit(text[i + 1]);
        if (high < 0 || low < 0)
            return std::nullopt;
        bytes[count++] = static_cast<std::uint8_t>(high * 16 + low);
        i += 2;
    }
    Guid guid;
    guid.data1 = (std::uint32_t{bytes[0]} << 24) | (std::uint32_t{bytes[1]} << 16) | (std::uint32_t{bytes[2]} << 8)
        | bytes[3];
    guid.data2 = static_cast<std::uint16_t>((bytes[4] << 8) | bytes[5]);
    guid.data3 = static_cast<std::uint16_t>((bytes[6] << 8) | bytes[7]);
    for (std::size_t i = 0; i < 8; ++i)
        guid.data4[i] = bytes[8 + i];
    return guid;
}

} // namespace vyr::com
