#include "attrtypes/typestring.h"

#include "attrtypes/attrtype.h"
#include "util/tokencodec.h"

namespace vyr {

namespace {

// Where the suffix's comma is: the last comma, when no parenthesis follows.
std::optional<std::size_t> suffixComma(std::string_view text)
{
    const std::size_t comma = text.rfind(',');
    if (comma == std::string_view::npos || text.find_first_of("()", comma + 1) != std::string_view::npos)
        return std::nullopt;
    return comma;
}

// Whether the text ends in an argument list: a "(" after a non-empty name
// and a ")" as the last character.
bool hasArgumentList(std::string_view text)
{
    const std::size_t open = text.find('(');
    return open != std::string_view::npos && open > 0 && text.size() >= open + 2 && text.back() == ')';
}

StringList splitValues(std::string_view text, int listMode)
{
    if (text.empty())
        return {std::string()};
    if (listMode == kDialogListMode)
        return csvSplit(text, ',');
    StringList values = splitList(text, ',');
    if (listMode == kStoredListMode) {
        for (std::string &value : values)
            value = decodeWWJD(value);
    }
    return values;
}

} // namespace

ParsedType parseType(std::string_view text, int listMode)
{
    ParsedType parsed;
    std::string_view rest = text;
    if (const std::optional<std::size_t> comma = suffixComma(rest)) {
        parsed.suffix = std::string(rest.substr(*comma + 1));
        rest = rest.substr(0, *comma);
    }
    if (hasArgumentList(rest)) {
        const std::size_t open = rest.find('(');
        parsed.name = std::string(rest.substr(0, open));
        parsed.values = splitValues(rest.substr(open + 1, rest.size() - open - 2), listMode);
    } else {
        parsed.name = std::string(rest);
    }
    return parsed;
}

std::string_view typeSuffix(std::string_view text)
{
    const std::optional<std::size_t> comma = suffixComma(text);
    return comma ? text.substr(*comma + 1) : std::string_view();
}

std::optional<std::string> typeTextProblem(std::string_view text, int listMode)
{
    bool quoted = false;
    int depth = 0;
    for (const char c : text) {
        if (c == '"' && listMode == kDialogListMode)
            quoted = !quoted;
        else if (quoted)
            continue;
        else if (c == '(')
            ++depth;
        else if (c == ')' && --depth < 0)
            return "a \")\" closes no \"(\"";
    }
    if (quoted)
        return "a quoted value is not closed with '\"'";
    if (depth > 0)
        return "the argument list is not closed with \")\"";
    const std::string name = parseType(text, listMode).name;
    if (name.empty() || name.front() == '(')
        return "the type has no name";
    if (name.find_first_of("()") != std::string::npos)
        return "text follows the argument list (only \",suffix\" may)";
    return std::nullopt;
}

std::string formatType(std::string_view name, const StringList &values, std::string_view suffix, int listMode)
{
    std::string text(name);
    if (!values.empty()) {
        text += '(';
        if (listMode == kDialogListMode) {
            text += csvJoin(values, ',');
        } else if (listMode == kStoredListMode) {
            StringList encoded;
            encoded.reserve(values.size());
            for (const std::string &value : values)
                encoded.push_back(encodeWWJD(value));
            text += joinList(encoded, ',');
        } else {
            text += joinList(values, ',');
        }
        text += ')';
    }
    if (!suffix.empty()) {
        text += ',';
        text += suffix;
    }
    return text;
}

std::string formatType(const AttrType &type, int listMode)
{
    StringList values;
    values.reserve(type.argCount());
    for (std::size_t i = 0; i < type.argCount(); ++i)
        values.push_back(type.arg(i)->value());
    return formatType(type.name(), values, type.suffix(), listMode);
}

} // namespace vyr
