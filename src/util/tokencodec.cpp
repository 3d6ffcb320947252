#include "util/tokencodec.h"

#include "util/transcoder_p.h"

#include <cstdio>
#include <algorithm>
#include <cstring>
#include <optional>

namespace vyr {
namespace {

constexpr char kHexDigits[] = "0123456789abcdef";

// For each ASCII character: 0 when it stands for itself, else its row in the
// token table plus one.
constexpr std::array<unsigned char, 128> kTokenRowOf = [] {
    std::array<unsigned char, 128> rows{};
    for (std::size_t row = 0; row < kCharacterTokens.size(); ++row)
        rows[static_cast<unsigned char>(kCharacterTokens[row].character)] = static_cast<unsigned char>(row + 1);
    return rows;
}();

int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// The value of exactly four hex digits; nothing when one is not a hex digit.
std::optional<unsigned> fourHexDigits(std::string_view digits)
{
    unsigned value = 0;
    for (char c : digits.substr(0, 4)) {
        const int digit = hexValue(c);
        if (digit < 0)
            return std::nullopt;
        value = value * 16 + static_cast<unsigned>(digit);
    }
    return value;
}

// The value of the four bytes after "u" in a "<uXXXX>" token, read as the
// C library's "%4x" conversion reads them (so " 1f", "+0ff" and "0x1" count
// too); 0 when nothing can be read.
unsigned readTokenHex(std::string_view digits)
{
    if (auto value = fourHexDigits(digits))
        return *value;
    char buffer[5] = {};
    std::memcpy(buffer, digits.data(), std::min<std::size_t>(digits.size(), 4));
    unsigned scanned = 0;
    if (std::sscanf(buffer, "%4x", &scanned) != 1)
        return 0;
    return scanned;
}

// The decoder's output in its two forms.
struct NarrowOutput
{
    std::string text;
    void raw(std::string_view bytes) { text.append(bytes); }
    void character(unsigned value) { text.push_back(static_cast<char>(value & 0xFF)); }
};

struct WideOutput
{
    std::u16string text;
    void raw(std::string_view bytes)
    {
        const std::size_t at = text.size();
        text.resize(at + bytes.size());
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const auto byte = static_cast<unsigned char>(bytes[i]);
            text[at + i] = byte < 0x80 ? byte : static_cast<char16_t>(kEscapedByteBase + byte);
        }
    }
    void character(unsigned value) { text.push_back(static_cast<char16_t>(value)); }
};

template <typename Output>
void decodeTokensInto(std::string_view text, Output &out)
{
    std::size_t i = 0;
    const std::size_t size = text.size();
    while (i < size) {
        const std::size_t open = text.find('<', i);
        if (open == std::string_view::npos) {
            out.raw(text.substr(i));
            return;
        }
        out.raw(text.substr(i, open - i));
        const std::size_t close = text.find('>', open + 1);
        if (close == std::string_view::npos) {
            out.raw(text.substr(open));
            return;
        }
        const std::string_view token = text.substr(open + 1, close - open - 1);
        bool named = false;
        for (const CharacterToken &row : kCharacterTokens) {
            if (token == row.name) {
                out.character(static_cast<unsigned char>(row.character));
                named = true;
                break;
            }
        }
        if (!named && token != "u") {
            if (token.size() == 5 && token[0] == 'u') {
                if (const unsigned value = readTokenHex(token.substr(1)) & 0xFFFF)
                    out.character(value);
            } else {
                out.raw(text.substr(open, close - open + 1));
            }
        }
        i = close + 1;
    }
}

void appendUnitRun(std::string &out, std::u16string_view units)
{
    const std::size_t at = out.size();
    out.resize(at + units.size());
    for (std::size_t k = 0; k < units.size(); ++k)
        out[at + k] = static_cast<char>(units[k]);
}

} // namespace

std::string encodeTokens(std::u16string_view wide)
{
    std::string out;
    out.reserve(wide.size() + wide.size() / 4);
    const std::size_t size = wide.size();
    std::size_t i = 0;
    while (i < size) {
        const std::size_t runStart = i;
        while (i < size && wide[i] < 128 && !kTokenRowOf[wide[i]])
            ++i;
        appendUnitRun(out, wide.substr(runStart, i - runStart));
        if (i == size)
            break;
        const char16_t unit = wide[i++];
        out.push_back('<');
        if (unit < 128) {
            out.append(kCharacterTokens[kTokenRowOf[unit] - 1].name);
        } else {
            const char hex[5] = {'u', kHexDigits[unit >> 12], kHexDigits[(unit >> 8) & 0xF],
                                 kHexDigits[(unit >> 4) & 0xF], kHexDigits[unit & 0xF]};
            out.append(hex, sizeof hex);
        }
        out.push_back('>');
    }
    return out;
}

std::string decodeTokens(std::string_view text)
{
    NarrowOutput out;
    out.text.reserve(text.size());
    decodeTokensInto(text, out);
    return std::move(out.text);
}

std::u16string decodeTokensWide(std::string_view text)
{
    WideOutput out;
    out.text.reserve(text.size());
    decodeTokensInto(text, out);
    return std::move(out.text);
}

std::u16string expandUnicodeEscapes(std::string_view text)
{
    std::u16string out;
    out.reserve(text.size());
    const std::size_t size = text.size();
    for (std::size_t i = 0; i < size; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte != '\\') {
            out.push_back(byte);
            continue;
        }
        if (i + 1 < size && text[i + 1] == '\\') {
            out.push_back(u'\\');
            ++i;
            continue;
        }
        if (i + 5 < size && text[i + 1] == 'u') {
            if (auto value = fourHexDigits(text.substr(i + 2, 4))) {
                out.push_back(static_cast<char16_t>(*value));
                i += 5;
                continue;
            }
        }
        out.push_back(u'\\');
    }
    return out;
}

std::string encodeTokenText(std::string_view text, const IVYRSimpleStringConverter &converter)
{
    return encodeTokens(converter.toWide(text));
}

std::string decodeTokenText(std::string_view text, const IVYRSimpleStringConverter &converter)
{
    constexpr std::string_view kLegacyPrefix = "<u>";
    if (text.size() > kLegacyPrefix.size() && text.starts_with(kLegacyPrefix))
        return converter.fromWide(expandUnicodeEscapes(decodeTokens(text.substr(kLegacyPrefix.size()))));
    if (text.find("<u") != std::string_view::npos)
        return converter.fromWide(decodeTokensWide(text));
    return decodeTokens(text);
}

std::string encodeWWJD(std::string_view text)
{
    return encodeTokenText(text, VYRSimpleWindowsStringConverter(kAnsiCodePage));
}

std::string decodeWWJD(std::string_view text)
{
    return decodeTokenText(text, VYRSimpleWindowsStringConverter(kAnsiCodePage));
}

} // namespace vyr
