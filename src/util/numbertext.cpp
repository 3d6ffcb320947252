#include "util/numbertext.h"

#include "util/asciitext.h"
#include "util/pattern.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <locale.h>
#include <optional>
#include <string>
#include <utility>

namespace vyr {
namespace {

std::string_view trimBlanks(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// What may follow an integer: nothing, ".", or "." with only zeros and
// blanks after it.
bool isZeroFraction(std::string_view rest)
{
    return rest.empty() || (rest.front() == '.' && rest.find_first_not_of("0 ", 1) == std::string_view::npos);
}

// Reads an integer with `convert` (strtol or strtoul). Decimal unless the
// text is "0x..."; when decimal stops short, base 0 is tried too so that
// "-0x1F" reads, and the reading that got further wins.
template <typename Integer, typename Convert>
bool readInteger(std::string_view text, Integer &value, Convert convert)
{
    const std::string trimmed(trimBlanks(text));
    if (trimmed.empty())
        return false;
    const char *begin = trimmed.c_str();
    const char *textEnd = begin + trimmed.size();
    const bool hex = trimmed.size() > 1 && (trimmed[1] == 'x' || trimmed[1] == 'X');
    char *end = nullptr;
    errno = 0;
    auto number = convert(begin, &end, hex ? 0 : 10);
    bool rangeError = errno == ERANGE;
    if (end != textEnd) {
        char *end0 = nullptr;
        errno = 0;
        const auto number0 = convert(begin, &end0, 0);
        if (end0 >= end) {
            number = number0;
            end = end0;
            rangeError = errno == ERANGE;
        }
    }
    if (end == begin || rangeError || !std::in_range<Integer>(number))
        return false;
    if (!isZeroFraction(std::string_view(end, static_cast<std::size_t>(textEnd - end))))
        return false;
    value = static_cast<Integer>(number);
    return true;
}

locale_t cLocale()
{
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", locale_t(nullptr));
    return locale;
}

enum class Reading { Whole, Partial, OutOfRange };

// strtod in the C locale, whatever locale the host has set.
Reading readDouble(const std::string &text, double &value)
{
    char *end = nullptr;
    errno = 0;
    const double number = strtod_l(text.c_str(), &end, cLocale());
    if (errno == ERANGE)
        return Reading::OutOfRange;
    if (end == text.c_str() || end != text.c_str() + text.size())
        return Reading::Partial;
    value = number;
    return Reading::Whole;
}

// An exponent written without its "E" after a mantissa, as "1.5-3".
const Pattern &bareExponent()
{
    static const Pattern pattern("[0-9][-+][0-9]+$");
    return pattern;
}

bool isAsciiDigit(char c)
{
    return c >= '0' && c <= '9';
}

// An optional sign, digits with at most one ".", an optional exponent; no
// blanks, hexadecimal or words.
bool isPlainDecimal(std::string_view text)
{
    std::size_t at = 0;
    const auto sign = [&] {
        if (at < text.size() && (text[at] == '+' || text[at] == '-'))
            ++at;
    };
    const auto digits = [&] {
        const std::size_t start = at;
        while (at < text.size() && isAsciiDigit(text[at]))
            ++at;
        return at - start;
    };
    sign();
    std::size_t mantissa = digits();
    if (at < text.size() && text[at] == '.') {
        ++at;
        mantissa += digits();
    }
    if (mantissa == 0)
        return false;
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        ++at;
        sign();
        if (digits() == 0)
            return false;
    }
    return at == text.size();
}

} // namespace

bool parseInteger(std::string_view text, std::int32_t &value)
{
    return readInteger(text, value, [](const char *s, char **end, int base) { return std::strtol(s, end, base); });
}

bool parseUnsigned(std::string_view text, std::uint32_t &value)
{
    const std::string_view trimmed = trimBlanks(text);
    if (!trimmed.empty() && trimmed.front() == '-')
        return false;
    return readInteger(trimmed, value, [](const char *s, char **end, int base) { return std::strtoul(s, end, base); });
}

bool parseDouble(std::string_view text, double &value)
{
    const std::string trimmed(trimBlanks(text));
    if (trimmed.empty())
        return false;

    // The text as written, then the variants other tools write, until one
    // reads whole; a reading out of range refuses at once.
    double number = 0;
    auto reads = [&](const std::string &candidate) -> std::optional<bool> {
        switch (readDouble(candidate, number)) {
        case Reading::Whole: value = number; return true;
        case Reading::OutOfRange: return false;
        case Reading::Partial: break;
        }
        return std::nullopt;
    };
    if (auto verdict = reads(trimmed))
        return *verdict;
    if (const auto d = trimmed.find('D'); d != std::string::npos) {
        if (auto verdict = reads(std::string(trimmed).replace(d, 1, "e")))
            return *verdict;
    }
    if (trimmed.find('.') != std::string::npos) {
        if (const auto exponent = bareExponent().find(trimmed)) {
            if (auto verdict = reads(std::string(trimmed).insert(exponent->begin + 1, "E")))
                return *verdict;
        }
    }
    if (const auto comma = trimmed.find(','); comma != std::string::npos) {
        if (auto verdict = reads(std::string(trimmed).replace(comma, 1, ".")))
            return *verdict;
    }
    const std::string upper = upperAscii(trimmed);
    if (upper == "NAN" || upper == "-1.#IND" || upper == "1.#QNAN") {
        value = std::numeric_limits<double>::quiet_NaN();
        return true;
    }
    return false;
}

bool parseFloat(std::string_view text, float &value)
{
    constexpr double kLargest = 3.4028234663852886e+38;
    double number = 0;
    if (!parseDouble(text, number) || std::isnan(number) || number < -kLargest || number > kLargest)
        return false;
    value = static_cast<float>(number);
    return true;
}

std::optional<std::string> plainNumberText(std::string_view text)
{
    double number = 0;
    if (!parseDouble(text, number) || !std::isfinite(number))
        return std::nullopt;
    if (isPlainDecimal(text))
        return std::string(text);
    char buffer[32];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, number);
    if (error != std::errc())
        return std::nullopt;
    return std::string(buffer, end);
}

bool parseBool(std::string_view text, bool &value)
{
    if (text.empty())
        return false;
    switch (text.front()) {
    case 't':
    case 'T':
    case 'y':
    case 'Y': value = true; return true;
    case 'f':
    case 'F':
    case 'n':
    case 'N': value = false; return true;
    default: break;
    }
    double number = 0;
    if (!parseDouble(text, number))
        return false;
    value = std::isnan(number) || number != 0;
    return true;
}

} // namespace vyr

namespace vyr {

namespace {

constexpr std::uint32_t kPreparedNumbers = 500;

} // namespace

std::string numberText(std::uint32_t number)
{
    static const auto prepared = [] {
        std::array<std::string, kPreparedNumbers> texts;
        for (std::uint32_t i = 0; i < kPreparedNumbers; ++i)
            texts[i] = std::to_string(i);
        return texts;
    }();
    return number < kPreparedNumbers ? prepared[number] : std::to_string(number);
}

} // namespace vyr
