#include "util/macrovalues.h"

namespace vyr {

namespace {

bool isQuoted(std::string_view value)
{
    return value.size() >= 2 && value.front() == '"' && value.back() == '"';
}

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

} // namespace

std::string quoteMacroValue(std::string_view value)
{
    if (value.empty())
        return "\"\"";
    if (value.find(' ') != std::string_view::npos && !isQuoted(value))
        return "\"" + std::string(value) + "\"";
    return std::string(value);
}

std::string joinMacroValues(const StringList &values)
{
    std::string joined;
    for (const std::string &value : values) {
        joined += quoteMacroValue(value);
        joined += '%';
    }
    joined.erase(joined.find_last_not_of('%') + 1);
    return joined;
}

StringList splitMacroValues(std::string_view text, bool keepQuotes)
{
    StringList values;
    if (text.empty())
        return values;
    bool quoted = false;
    std::size_t start = 0;
    const auto take = [&](std::size_t end) {
        std::string_view piece = text.substr(start, end - start);
        if (!keepQuotes && isQuoted(piece))
            piece = piece.substr(1, piece.size() - 2);
        values.emplace_back(piece);
        start = end + 1;
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '"')
            quoted = !quoted;
        else if (text[i] == '%' && !quoted)
            take(i);
    }
    take(text.size());
    return values;
}

std::string_view takeMacroToken(std::string_view &rest)
{
    std::size_t begin = 0;
    while (begin < rest.size() && isBlank(rest[begin]))
        ++begin;
    bool quoted = false;
    std::size_t end = begin;
    for (; end < rest.size(); ++end) {
        if (rest[end] == '"')
            quoted = !quoted;
        else if (isBlank(rest[end]) && !quoted)
            break;
    }
    const std::string_view token = rest.substr(begin, end - begin);
    rest = end < rest.size() ? rest.substr(end + 1) : std::string_view();
    return token;
}

} // namespace vyr
