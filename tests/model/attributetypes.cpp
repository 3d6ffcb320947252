#include "model/attributetypes.h"

#include "util/listpacking.h"
#include "util/numbertext.h"
#include "util/tokencodec.h"

#include <algorithm>
#include <cstdint>

namespace vyr::model {

TypeText parseType(std::string_view text, ListMode mode)
{
    TypeText type;
    std::string rest(text);
    // A suffix is what follows the last comma when no comma or parenthesis
    // comes after it.
    const std::size_t comma = rest.rfind(',');
    if (comma != std::string::npos && rest.find_first_of(",()", comma + 1) == std::string::npos) {
        type.suffix = rest.substr(comma + 1);
        rest.erase(comma);
    }
    const std::size_t open = rest.find('(');
    if (open != std::string::npos && open > 0 && rest.size() >= open + 2 && rest.back() == ')') {
        type.name = rest.substr(0, open);
        const std::string arguments = rest.substr(open + 1, rest.size() - open - 2);
        if (arguments.empty()) {
            type.values.emplace_back();
        } else if (mode == ListMode::Shown) {
            type.values = csvSplit(arguments, ',');
        } else {
            for (const std::string &piece : splitList(arguments, ','))
                type.values.push_back(decodeWWJD(piece));
        }
    } else {
        type.name = rest;
    }
    return type;
}

std::string formatType(const TypeText &type, ListMode mode)
{
    std::string text = type.name;
    if (!type.values.empty()) {
        text += '(';
        if (mode == ListMode::Shown) {
            text += csvJoin(type.values, ',');
        } else {
            for (std::size_t i = 0; i < type.values.size(); ++i)
                text += (i ? "," : "") + encodeWWJD(type.values[i]);
        }
        text += ')';
    }
    if (!type.suffix.empty())
        text += ',' + type.suffix;
    return text;
}

bool isDomainKind(ArgKind kind)
{
    return kind == ArgKind::RangeDomain || kind == ArgKind::CodedDomain;
}

namespace {

bool isUnsignedNumber(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

ArgTemplate argumentFor(const std::string &keyword, const std::string &typeName)
{
    ArgTemplate arg;
    arg.keyword = keyword;
    if (keyword == "stringset")
        arg.kind = ArgKind::StringSet;
    else if (keyword == "stringlist")
        arg.kind = ArgKind::StringList;
    else if (keyword == "stringmap")
        arg.kind = ArgKind::StringMap;
    else if (keyword == "binint-width" || keyword == "byte-size")
        arg.kind = ArgKind::BinIntWidth;
    else if (keyword == "range_domain")
        arg.kind = ArgKind::RangeDomain;
    else if (keyword == "coded_domain")
        arg.kind = ArgKind::CodedDomain;
    else if (keyword == "width" && typeName == "int")
        arg.kind = ArgKind::IntWidth;
    else if (isUnsignedNumber(keyword))
        arg.fixed = keyword;
    return arg;
}

// The generic names whose bare form stands for a template with arguments.
std::string genericTemplateText(const std::string &text)
{
    if (text == "vyr_char")
        return "vyr_char(width)";
    if (text == "vyr_decimal")
        return "vyr_decimal(width,decimal)";
    if (text == "vyr_varchar")
        return "vyr_varchar(width)";
    return text;
}

TypeTemplate templateOf(const std::string &text)
{
    const TypeText parsed = parseType(text, ListMode::Stored);
    TypeTemplate result;
    result.name = parsed.name;
    for (const std::string &keyword : parsed.values)
        result.args.push_back(argumentFor(keyword, parsed.name));
    return result;
}

} // namespace

bool TypeTemplate::isOffered() const
{
    return std::none_of(args.begin(), args.end(), [](const ArgTemplate &arg) { return !arg.fixed.empty(); });
}

std::string TypeTemplate::acceptedValue(std::size_t index, std::string_view text) const
{
    if (index >= args.size())
        return std::string(text);
    const ArgTemplate &arg = args[index];
    switch (arg.kind) {
    case ArgKind::Integer: {
        std::int32_t number = 0;
        if (!text.empty() && parseInteger(text, number))
            return std::string(text);
        if (!arg.fixed.empty())
            return arg.fixed;
        return index == 1 ? "10" : "20";
    }
    case ArgKind::IntWidth: {
        std::uint32_t number = 0;
        if (parseUnsigned(text, number) && number >= 1 && number <= 16)
            return std::string(text);
        return "11";
    }
    case ArgKind::BinIntWidth:
        return text == "2" || text == "4" ? std::string(text) : std::string("4");
    default:
        return std::string(text);
    }
}

TypeText TypeTemplate::build(const Strings &values, std::string suffix) const
{
    TypeText type;
    type.name = name;
    type.suffix = std::move(suffix);
    for (std::size_t i = 0; i < args.size(); ++i)
        type.values.push_back(acceptedValue(i, i < values.size() ? std::string_view(values[i]) : std::string_view()));
    return type;
}

bool TypeTemplate::matches(std::string_view shownText) const
{
    const TypeText parsed = parseType(shownText, ListMode::Shown);
    return parsed.name == name && parsed.values.size() == args.size();
}

TypeMappings::TypeMappings(const Strings &flat)
{
    for (std::size_t i = 0; i + 1 < flat.size(); i += 2) {
        std::pair pair{templateOf(flat[i]), templateOf(genericTemplateText(flat[i + 1]))};
        const auto same = [&pair](const std::pair<TypeTemplate, TypeTemplate> &known) {
            const auto text = [](const TypeTemplate &t) {
                TypeText type{t.name, {}, {}};
                for (const ArgTemplate &arg : t.args)
                    type.values.push_back(arg.keyword);
                return formatType(type, ListMode::Stored);
            };
            return text(known.first) == text(pair.first) && text(known.second) == text(pair.second);
        };
        if (std::none_of(m_pairs.begin(), m_pairs.end(), same))
            m_pairs.push_back(std::move(pair));
    }
}

std::optional<TypeText> TypeMappings::create(std::string_view text, ListMode mode) const
{
    const TypeText parsed = parseType(text, mode);
    for (const auto &[native, generic] : m_pairs) {
        for (const TypeTemplate *candidate : {&native, &generic}) {
            if (candidate->name == parsed.name && candidate->args.size() == parsed.values.size())
                return candidate->build(parsed.values, parsed.suffix);
        }
    }
    for (const auto &[native, generic] : m_pairs) {
        for (const TypeTemplate *candidate : {&native, &generic}) {
            if (candidate->name == parsed.name && candidate->args.empty())
                return candidate->build({}, parsed.suffix);
        }
    }
    return std::nullopt;
}

std::optional<TypeText> TypeMappings::toGeneric(const TypeText &native) const
{
    const std::string text = formatType(native, ListMode::Shown);
    for (const auto &[nativeTemplate, genericTemplate] : m_pairs) {
        if (nativeTemplate.matches(text)) {
            const TypeText parsed = parseType(text, ListMode::Shown);
            return genericTemplate.build(parsed.values, parsed.suffix);
        }
    }
    return std::nullopt;
}

std::optional<TypeText> TypeMappings::toNative(const TypeText &generic) const
{
    const std::string text = formatType(generic, ListMode::Shown);
    for (const auto &[nativeTemplate, genericTemplate] : m_pairs) {
        if (genericTemplate.matches(text)) {
            // No format permits a suffix to cross into its own words.
            return nativeTemplate.build(parseType(text, ListMode::Shown).values, {});
        }
    }
    return std::nullopt;
}

std::optional<TypeText> TypeMappings::convertFrom(const TypeMappings &from, const TypeText &type) const
{
    const std::string text = formatType(type, ListMode::Shown);
    for (const auto &[nativeTemplate, genericTemplate] : m_pairs) {
        if (nativeTemplate.matches(text))
            return nativeTemplate.build(parseType(text, ListMode::Shown).values, {});
    }
    const std::optional<TypeText> generic = from.toGeneric(type);
    return generic ? toNative(*generic) : std::nullopt;
}

std::optional<TypeText> TypeMappings::defaultType() const
{
    if (m_pairs.empty())
        return std::nullopt;
    for (const auto &pair : m_pairs) {
        if (pair.first.args.empty())
            return pair.first.build({}, {});
    }
    return m_pairs.front().first.build({}, {});
}

const TypeTemplate *TypeMappings::nativeTemplate(std::string_view name) const
{
    for (const auto &pair : m_pairs) {
        if (pair.first.name == name)
            return &pair.first;
    }
    return nullptr;
}

Strings TypeMappings::offeredNames() const
{
    Strings names;
    for (const auto &pair : m_pairs) {
        if (pair.first.isOffered())
            names.push_back(pair.first.name);
    }
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

} // namespace vyr::model
