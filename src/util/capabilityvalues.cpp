#include "util/capabilityvalues.h"

#include "util/asciitext.h"

#include <charconv>
#include <climits>
#include <cmath>
#include <limits>
#include <string>
#include <system_error>

namespace vyr {

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// The whole of `text` as sign, digits with an optional fraction (a digit at
// least) and an optional exponent; only then is it handed to from_chars,
// which would also read "inf", "nan" and hexadecimal.
std::optional<double> wholeDecimal(std::string_view text)
{
    std::size_t at = 0;
    if (at < text.size() && (text[at] == '+' || text[at] == '-'))
        ++at;
    const std::size_t mantissa = at;
    std::size_t digits = 0;
    for (; at < text.size() && isDigit(text[at]); ++at)
        ++digits;
    if (at < text.size() && text[at] == '.') {
        for (++at; at < text.size() && isDigit(text[at]); ++at)
            ++digits;
    }
    if (digits == 0)
        return std::nullopt;
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        ++at;
        if (at < text.size() && (text[at] == '+' || text[at] == '-'))
            ++at;
        const std::size_t exponent = at;
        while (at < text.size() && isDigit(text[at]))
            ++at;
        if (at == exponent)
            return std::nullopt;
    }
    if (at != text.size())
        return std::nullopt;
    // from_chars takes no "+"; the sign is put back by hand.
    const bool negative = text.front() == '-';
    double value = 0;
    const auto [end, error] = std::from_chars(text.data() + mantissa, text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || std::isinf(value))
        return std::nullopt;
    return negative ? -value : value;
}

// Where a sign stands between a digit and the digits that end the text.
std::size_t trailingSignedDigits(std::string_view text)
{
    std::size_t at = text.size();
    while (at > 0 && isDigit(text[at - 1]))
        --at;
    if (at == text.size() || at < 2 || (text[at - 1] != '+' && text[at - 1] != '-') || !isDigit(text[at - 2]))
        return std::string_view::npos;
    return at - 1;
}

// The repairs a value that does not read whole gets, in turn, each on what
// the one before left; each says whether it changed anything.
bool exponentLetterD(std::string &text)
{
    const std::size_t d = text.find('D');
    if (d == std::string::npos)
        return false;
    text[d] = 'E';
    return true;
}

bool exponentWithoutLetter(std::string &text)
{
    const std::size_t sign = trailingSignedDigits(text);
    if (sign == std::string::npos)
        return false;
    text.insert(sign, 1, 'E');
    return true;
}

bool decimalComma(std::string &text)
{
    const std::size_t comma = text.find(',');
    if (comma == std::string::npos)
        return false;
    text[comma] = '.';
    return true;
}

} // namespace

int leadingInteger(std::string_view text)
{
    std::size_t at = text.find_first_not_of(' ');
    if (at == std::string_view::npos)
        return 0;
    const bool negative = text[at] == '-';
    if (text[at] == '-' || text[at] == '+')
        ++at;
    long long value = 0;
    for (; at < text.size() && isDigit(text[at]); ++at)
        value = std::min<long long>(value * 10 + (text[at] - '0'), INT_MAX + 1LL);
    value = negative ? -value : std::min<long long>(value, INT_MAX);
    return static_cast<int>(std::max<long long>(value, INT_MIN));
}

std::optional<double> capabilityNumber(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return std::nullopt;
    const std::string_view trimmed = text.substr(first, text.find_last_not_of(' ') - first + 1);
    std::string candidate(trimmed);
    if (const auto value = wholeDecimal(candidate))
        return value;
    for (const auto repair : {exponentLetterD, exponentWithoutLetter, decimalComma}) {
        if (!repair(candidate))
            continue;
        if (const auto value = wholeDecimal(candidate))
            return value;
    }
    // As written: the repairs would have made "-1.#IND" something else.
    const std::string upper = upperAscii(trimmed);
    if (upper == "NAN" || upper == "-1.#IND" || upper == "1.#QNAN")
        return std::numeric_limits<double>::quiet_NaN();
    return std::nullopt;
}

std::optional<bool> capabilityFlag(std::string_view text)
{
    if (text.empty())
        return std::nullopt;
    switch (text.front()) {
    case 't':
    case 'T':
    case 'y':
    case 'Y': return true;
    case 'f':
    case 'F':
    case 'n':
    case 'N': return false;
    default: break;
    }
    const std::optional<double> number = capabilityNumber(text);
    if (!number)
        return std::nullopt;
    return std::isnan(*number) || *number != 0;
}

} // namespace vyr
