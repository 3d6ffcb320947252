#include "model/formatmodel.h"

#include "util/capabilityvalues.h"
#include "util/listpacking.h"
#include "util/wordsplitter.h"

#include <algorithm>

namespace vyr::model {

namespace {

Pairs pairsOf(const Strings &flat)
{
    Pairs pairs;
    for (std::size_t i = 0; i + 1 < flat.size(); i += 2)
        pairs.emplace_back(flat[i], flat[i + 1]);
    return pairs;
}

const std::set<std::string> &choiceTakingTypes()
{
    static const std::set<std::string> types{
        "CHOICE", "ATTR", "LISTBOX", "FLOAT_OR_ATTR", "INT_OR_ATTR", "FILE_OR_ATTR", "STRING_OR_ATTR",
        "STRING_OR_CHOICE", "INT_OR_CHOICE", "FLOAT_OR_CHOICE", "FONT_OR_ATTR", "LISTBOX_OR_ATTR",
        "STRING_OR_ATTR_ENCODED", "FLOAT_OR_ATTR_ENCODED", "INT_OR_ATTR_ENCODED", "ATTR_ENCODED",
        "ATTRLIST_ENCODED", "ATTRLIST_COMMAS_ENCODED", "ACTIVECHOICE", "CHECKBOX", "ACTIVECHECKBOX",
        "ACTIVEGROUP", "RADIO_GROUP"};
    return types;
}

} // namespace

Parameter parseParameterLine(const std::string &line)
{
    Parameter parameter;
    Strings tokens;
    if (!splitWords(line, tokens, " ", true, false, false) || tokens.empty() || tokens[0] != "GUI")
        return parameter;
    std::size_t at = 1;
    for (; at < tokens.size(); ++at) {
        const std::string &token = tokens[at];
        if (token == "OPTIONAL")
            parameter.optional = true;
        else if (token == "DISABLED_ONLY")
            parameter.disabledOnly = true;
        else if (token == "ALWAYS_ENABLED")
            parameter.alwaysEnabled = true;
        else if (token != "WHOLE_LINE" && token != "FORCE_DEFS")
            break;
    }
    if (at < tokens.size())
        parameter.type = tokens[at++];
    if (at < tokens.size())
        parameter.name = tokens[at++];
    const std::string &type = parameter.type;
    if ((type == "FILENAME" || type == "MULTIFILE" || type == "ESRI_LAYER") && at < tokens.size())
        ++at;
    if (choiceTakingTypes().count(type) && at < tokens.size()) {
        for (std::string piece : splitList(tokens[at++], '%')) {
            if (piece.empty())
                continue;
            if (piece.size() >= 2 && piece.front() == '"' && piece.back() == '"')
                piece = piece.substr(1, piece.size() - 2);
            parameter.choices.push_back(piece);
        }
    }
    for (; at < tokens.size(); ++at)
        parameter.prompt += (parameter.prompt.empty() ? "" : " ") + tokens[at];
    return parameter;
}

FormatModel::FormatModel(const std::string &capabilities)
    : m_capabilities(capabilities)
{
    const Strings flat = csvSplit(capabilities, ',');
    for (const auto &[key, value] : pairsOf(flat))
        m_values[key] = value;
    m_formatAttributes = pairsOf(list("FORMAT_ATTRS"));
    m_geometries = pairsOf(list("GEOM_TYPE_MAPPINGS"));
    m_types = TypeMappings(list("DATA_TYPE_MAPPINGS"));
    for (const auto &[line, defaultValue] : pairsOf(list("DEFLINE_PARMS"))) {
        Parameter parameter = parseParameterLine(line);
        if (parameter.name.empty())
            continue;
        parameter.defaultValue = defaultValue;
        const auto same = [&parameter](const Parameter &known) { return known.name == parameter.name; };
        const auto known = std::find_if(m_parameters.begin(), m_parameters.end(), same);
        if (known != m_parameters.end())
            *known = parameter;
        else
            m_parameters.push_back(parameter);
    }
}

std::string FormatModel::value(const std::string &key) const
{
    const auto found = m_values.find(key);
    return found == m_values.end() ? std::string() : found->second;
}

Strings FormatModel::list(const std::string &key) const
{
    return csvSplit(value(key), ',');
}

int FormatModel::integer(const std::string &key) const
{
    return leadingInteger(value(key));
}

bool FormatModel::flag(const std::string &key, bool otherwise) const
{
    return capabilityFlag(value(key)).value_or(otherwise);
}

std::string FormatModel::formatAttributeType(const std::string &name) const
{
    for (const auto &[attribute, type] : m_formatAttributes) {
        if (attribute == name)
            return type;
    }
    return {};
}

Strings FormatModel::formatAttributeNames() const
{
    Strings names;
    for (const auto &pair : m_formatAttributes)
        names.push_back(pair.first);
    return names;
}

Strings FormatModel::nativeGeometries() const
{
    Strings names;
    for (const auto &[native, generic] : m_geometries) {
        if (native != "vyr_no_map" && std::find(names.begin(), names.end(), native) == names.end())
            names.push_back(native);
    }
    return names;
}

std::string FormatModel::geometryToGeneric(const std::string &native) const
{
    for (const auto &[n, g] : m_geometries) {
        if (n == native)
            return g;
    }
    return {};
}

std::string FormatModel::geometryToNative(const std::string &generic) const
{
    for (const auto &[n, g] : m_geometries) {
        if (g == generic)
            return n;
    }
    return {};
}

const Parameter *FormatModel::parameter(const std::string &name) const
{
    for (const Parameter &parameter : m_parameters) {
        if (parameter.name == name)
            return &parameter;
    }
    return nullptr;
}

} // namespace vyr::model
