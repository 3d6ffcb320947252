#include "model/namerules.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

namespace vyr::model {

std::string upperCased(std::string text)
{
    for (char &c : text)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

std::string lowerCased(std::string text)
{
    for (char &c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

namespace {

void replaceAll(std::string &text, const std::string &from, const std::string &to)
{
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

void replaceCharacters(std::string &text, const std::string &characters, char by)
{
    for (const char bad : characters) {
        for (char &c : text) {
            if (c == bad)
                c = by;
        }
    }
}

bool startsWithDigit(const std::string &text)
{
    return !text.empty() && std::isdigit(static_cast<unsigned char>(text[0]));
}

bool startsWithCapital(const std::string &text)
{
    return !text.empty() && text[0] >= 'A' && text[0] <= 'Z';
}

NameSet upperSet(const Strings &words)
{
    NameSet set;
    for (const std::string &word : words)
        set.insert(upperCased(word));
    return set;
}

std::string trimmedBlanks(const std::string &text)
{
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// The workbook format's sheet-name script, as the engine runs it on a name.
std::string sheetName(std::string name)
{
    for (char &c : name) {
        if (std::string_view(":\\/?*[]").find(c) != std::string_view::npos)
            c = '_';
    }
    const std::size_t first = name.find_first_not_of('\'');
    name = first == std::string::npos ? std::string() : name.substr(first, name.find_last_not_of('\'') - first + 1);
    if (name.empty())
        name = "Sheet";
    if (upperCased(name) == "HISTORY")
        name = "History_";
    return name.substr(0, 31);
}

std::string uniqueScriptName(const std::string &name, const NameSet &taken)
{
    if (!taken.count(name))
        return name;
    std::string base = name;
    const std::size_t underscore = base.rfind('_');
    if (underscore != std::string::npos && underscore + 1 < base.size()
        && base.find_first_not_of("0123456789", underscore + 1) == std::string::npos)
        base.erase(underscore);
    for (int n = 2;; ++n) {
        const std::string candidate = base + "_" + std::to_string(n);
        if (!taken.count(candidate))
            return candidate;
    }
}

std::string byScript(const FormatModel &format, const std::string &name, const NameSet &taken)
{
    if (format.value("FEAT_TYPE_VALIDATION_SCRIPT") != "xlsx_sheet_names.tcl")
        return name; // Only the bundled script is known here.
    std::string result = name;
    for (int pass = 0; pass < 1000; ++pass) {
        const std::string scripted = sheetName(result);
        if (!scripted.empty())
            result = scripted;
        if (!taken.count(result))
            break;
        result = uniqueScriptName(result, taken);
    }
    return result;
}

std::string applyNameCase(std::string name, const std::string &rule, std::size_t limit)
{
    if (rule == "UPPER")
        return upperCased(name);
    if (rule == "LOWER")
        return lowerCased(name);
    if (rule == "FIRST_UPPER" && !name.empty())
        name[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(name[0])));
    if (rule == "FIRST_LOWER" && !name.empty())
        name[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(name[0])));
    if (rule == "UPPER_FIRST_ALPHA") {
        name = upperCased(name);
        if (!startsWithCapital(name)) {
            name = "Q_" + name;
            if (limit)
                name = name.substr(0, limit);
        }
    }
    if (rule == "ANY_FIRST_NONNUMERIC" && startsWithDigit(name)) {
        name = "_" + name;
        if (limit)
            name = name.substr(0, limit);
    }
    return name;
}

} // namespace

std::string uniqueNumberedName(const std::string &name, std::size_t limit, const NameSet &taken,
                               const NameSet &reservedUpper)
{
    const auto collides = [&](const std::string &candidate) {
        return taken.count(candidate) || reservedUpper.count(upperCased(candidate));
    };
    if (!collides(name) || limit == 1)
        return name;
    std::string base = name;
    std::string candidate = name;
    for (int n = 0; collides(candidate); ++n) {
        char suffix[16];
        std::snprintf(suffix, sizeof suffix, n < 100 ? "%02d" : "%d", n);
        const std::string digits(suffix);
        if (limit != 0) {
            if (digits.size() > limit)
                return {};
            if (base.size() > limit - digits.size())
                base.resize(limit - digits.size());
        }
        candidate = base + digits;
    }
    return candidate;
}

std::string legalAttributeName(const FormatModel &format, const std::string &typed, const NameSet &taken)
{
    static const std::string kBrackets = "___FAKE___BRACKET___";
    std::string name = typed;
    replaceAll(name, "{}", kBrackets);
    replaceCharacters(name, format.value("ATTR_NAME_INVALID_CHARS"), '_');
    replaceAll(name, kBrackets, "{}");
    const std::string rule = format.value("ATTR_CASE");
    if (rule == "UPPER") {
        name = upperCased(name);
    } else if (rule == "LOWER") {
        name = lowerCased(name);
    } else if (rule == "FIRSTUPPER" && !name.empty()) {
        name[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(name[0])));
    } else if (rule == "FIRSTLOWER" && !name.empty()) {
        name[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(name[0])));
    } else if (rule == "UPPERFIRSTALPHA") {
        name = upperCased(name);
        if (!startsWithCapital(name))
            name = "Q_" + name;
    } else if (rule == "ANYFIRSTNONNUMERIC" && startsWithDigit(name)) {
        name = "_" + name;
    }
    const int maximum = format.maxAttrLength();
    if (maximum > 0 && name.size() > std::size_t(maximum))
        name.resize(std::size_t(maximum));
    return uniqueNumberedName(name, std::size_t(std::max(maximum, 0)), taken,
                              upperSet(format.list("DEST_ILLEGAL_ATTR_LIST")));
}

std::string resolveFeatureTypeName(const FormatModel &format, const std::string &typed, const NameSet &taken)
{
    const std::string name = trimmedBlanks(typed);
    const Strings allowed = format.list("ALLOWED_FEAT_TYPES");
    if (!allowed.empty()) {
        if (std::find(allowed.begin(), allowed.end(), name) != allowed.end() && !taken.count(name))
            return name;
        for (const std::string &candidate : allowed) {
            if (!taken.count(candidate))
                return candidate;
        }
        return {};
    }
    if (!format.value("FEAT_TYPE_VALIDATION_SCRIPT").empty())
        return byScript(format, name, taken);
    std::size_t limit = std::size_t(std::max(format.integer("FEATURE_TYPE_LENGTH"), 0));
    std::string result = name;
    if (limit > 0) {
        const std::size_t dot = result.find('.');
        if (!format.flag("FEATURE_TYPE_LENGTH_INCLUDES_PREFIX", false) && dot != std::string::npos)
            limit = dot + 1 + limit;
        if (result.size() > limit)
            result.resize(limit);
    }
    result = applyNameCase(result, format.value("FEATURE_TYPE_CASE"), limit);
    std::string invalid = format.value("FEATURE_TYPE_INVALID_CHARS");
    replaceCharacters(result, invalid, '_');
    return uniqueNumberedName(result, limit, taken, upperSet(format.list("FEATURE_TYPE_RESERVED_WORDS")));
}

} // namespace vyr::model
