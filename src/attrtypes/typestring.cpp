#include "attrtypes/typestring.h"

#include "attrtypes/attrtype.h"
#include "util/pattern.h"
#include "util/tokencodec.h"

namespace vyr {

namespace {

// Compiled once: type strings are read by the thousand when a schema loads.
const Pattern &suffixPattern()
{
    static const Pattern pattern(",[^,()]*$");
    return pattern;
}

const Pattern &argumentListPattern()
{
    // Parentheses are ordinary characters in this pattern language.
    static const Pattern pattern("^[^(]+(.*)$");
    return pattern;
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
    if (const auto suffix = suffixPattern().find(rest)) {
        parsed.suffix = std::string(rest.substr(suffix->begin + 1, suffix->end - suffix->begin - 1));
        rest = rest.substr(0, suffix->begin);
    }
    if (argumentListPattern().foundIn(rest)) {
        const std::size_t open = rest.find('(');
        parsed.name = std::string(rest.substr(0, open));
        parsed.values = splitValues(rest.substr(open + 1, rest.size() - open - 2), listMode);
    } else {
        parsed.name = std::string(rest);
    }
    return parsed;
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
