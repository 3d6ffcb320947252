// Reading what the pages show at opening from a schema feature: its user
// attributes with their types, its geometry, its exposed format
// attributes and its parameters.
#include "model/schemamodel.h"

#include "util/listpacking.h"

#include <algorithm>
#include <cctype>

namespace vyr::model {

namespace {

// The numbers between the braces of `name` where it fits a list
// attribute's pattern (the placeholder "{}" standing for "{digits}", every
// "." for any character), found anywhere in the name.
std::optional<int> listElement(const std::string &placeholderName, const std::string &name)
{
    const std::size_t braces = placeholderName.find("{}");
    const std::string head = placeholderName.substr(0, braces);
    const std::string tail = placeholderName.substr(braces + 2);
    const auto fits = [](const std::string &pattern, const std::string &text, std::size_t at) {
        if (at + pattern.size() > text.size())
            return false;
        for (std::size_t i = 0; i < pattern.size(); ++i) {
            if (pattern[i] != '.' && pattern[i] != text[at + i])
                return false;
        }
        return true;
    };
    for (std::size_t start = 0; start < name.size(); ++start) {
        if (!fits(head, name, start) || start + head.size() >= name.size() || name[start + head.size()] != '{')
            continue;
        std::size_t at = start + head.size() + 1;
        const std::size_t digits = at;
        while (at < name.size() && std::isdigit(static_cast<unsigned char>(name[at])))
            ++at;
        if (at == digits || at >= name.size() || name[at] != '}' || !fits(tail, name, at + 1))
            continue;
        // The count reads the first "{digits}" of the whole name.
        const std::size_t open = name.find('{');
        std::size_t end = open + 1;
        while (end < name.size() && std::isdigit(static_cast<unsigned char>(name[end])))
            ++end;
        if (end == open + 1 || end >= name.size() || name[end] != '}')
            return std::nullopt;
        return std::stoi(name.substr(open + 1, end - open - 1));
    }
    return std::nullopt;
}

} // namespace

void showName(PageState &page, const std::string &whole, bool database)
{
    const std::size_t dot = database ? whole.find('.') : std::string::npos;
    page.user = dot == std::string::npos ? std::string() : whole.substr(0, dot);
    page.name = dot == std::string::npos ? whole : whole.substr(dot + 1);
}

// Whether a row the switch turns on holds a value: the switch is not
// stored, and reads as on where one does.
bool switchedRowsHoldAValue(const PageState &page, const FormatModel &format)
{
    return std::ranges::any_of(format.parameters(), [&page](const Parameter &parameter) {
        const auto value = page.parameters.find(parameter.name);
        return parameter.disabledOnly && value != page.parameters.end() && !value->second.empty();
    });
}

TypeCells cellsOf(const TypeText &type)
{
    TypeCells cells;
    cells.type = type.name;
    if (!type.values.empty())
        cells.first = type.values[0];
    if (type.values.size() > 1)
        cells.second = type.values[1];
    cells.domain = type.suffix;
    return cells;
}

Strings userAttributeNames(const FeatureData &feature)
{
    Strings names;
    const auto add = [&names](const std::string &name) {
        if (name.rfind("vyr_", 0) == 0 || name.rfind('*', 0) == 0)
            return;
        if (std::find(names.begin(), names.end(), name) == names.end())
            names.push_back(name);
    };
    for (const std::string &name : feature.order)
        add(name);
    for (const auto &[name, value] : feature.attributes)
        add(name);
    return names;
}

std::string geometryOf(const FeatureData &feature, const FormatModel &format)
{
    Strings names;
    for (int i = 0;; ++i) {
        const auto value = feature.attribute("*vyr_geometry{" + std::to_string(i) + "}");
        if (!value)
            break;
        names.push_back(*value);
    }
    for (int i = 0;; ++i) {
        const auto value = feature.attribute("vyr_geometry{" + std::to_string(i) + "}");
        if (!value)
            break;
        const std::string native = format.geometryToNative(*value);
        if (std::find(names.begin(), names.end(), native) == names.end())
            names.push_back(native);
    }
    if (!format.supportsMultiGeom() && !names.empty())
        return names.front();
    return joined(names, " ");
}

std::string translatedGeometry(const std::string &geometry, const FormatModel &from, const FormatModel &to)
{
    Strings names = splitList(geometry, ' ');
    std::erase(names, std::string());
    if (names.empty())
        return {};
    if (!from.supportsMultiGeom())
        return to.geometryToNative(from.geometryToGeneric(names.front()));
    Strings translated;
    for (const std::string &name : names)
        translated.push_back(to.geometryToNative(from.geometryToGeneric(name)));
    if (!to.supportsMultiGeom())
        return translated.front();
    // Each name once, in order; the format of several geometries shows
    // them all.
    Strings unique;
    for (const std::string &name : translated) {
        if (!name.empty() && std::find(unique.begin(), unique.end(), name) == unique.end())
            unique.push_back(name);
    }
    return joined(unique, " ");
}

PageState SchemaModel::opened(const FeatureData &feature, const FormatModel &format) const
{
    PageState page;
    page.format = format.name();
    showName(page, feature.featureType, format.isDatabase());
    page.geometry = geometryOf(feature, format);
    page.fanout = feature.attribute("vyr_fanout").value_or("") == "yes";
    page.fanoutAttribute = feature.attribute("vyr_fanout_attribute").value_or("");
    if (format.hasUserAttributes()) {
        for (const std::string &name : userAttributeNames(feature)) {
            AttributeRow row;
            row.name = row.origin = name;
            row.storedNative = feature.attribute("*" + name);
            row.storedGeneric = feature.attribute(name);
            // The stored texts are in the stored form; what the grid shows
            // is the shown form.
            std::string text;
            ListMode mode = ListMode::Stored;
            if (row.storedNative) {
                text = *row.storedNative;
            } else {
                text = row.storedGeneric.value_or("");
                if (const auto generic = format.types().create(text, ListMode::Stored)) {
                    if (const auto native = format.types().toNative(*generic)) {
                        text = formatType(*native, ListMode::Shown);
                        mode = ListMode::Shown;
                    }
                }
            }
            if (const auto type = format.types().create(text, mode))
                row.cells = cellsOf(*type);
            else
                row.cells.type = text;
            row.originCells = row.cells;
            page.attributes.push_back(row);
        }
    }
    Strings exposed = feature.list(kExposedNames);
    Strings everything = userAttributeNames(feature);
    everything.insert(everything.end(), exposed.begin(), exposed.end());
    Strings names = format.formatAttributeNames();
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    for (const std::string &name : names) {
        FormatAttributeRow row;
        row.name = name;
        row.ticked = std::find(exposed.begin(), exposed.end(), name) != exposed.end();
        if (row.isList()) {
            for (const std::string &candidate : everything) {
                if (const auto element = listElement(name, candidate))
                    row.count = std::max(row.count, *element + 1);
            }
            // Exposed elements are what a list row shows ticked.
            row.ticked = row.ticked || row.count > 0;
        }
        page.formatAttributes.push_back(row);
    }
    const Strings parameterNames = feature.list(kParameterNames);
    const Strings parameterValues = feature.list(kParameterValues);
    for (const Parameter &parameter : format.parameters()) {
        std::string value = parameter.defaultValue;
        if (parameterNames.size() == parameterValues.size()) {
            for (std::size_t i = 0; i < parameterNames.size(); ++i) {
                if (parameterNames[i] == parameter.name)
                    value = parameterValues[i];
            }
        }
        page.parameters[parameter.name] = value;
    }
    for (const Parameter &parameter : format.parameters()) {
        if (parameter.type == "DISABLE")
            page.parameters[parameter.name] = switchedRowsHoldAValue(page, format) ? "Yes" : "No";
    }
    return page;
}

} // namespace vyr::model
