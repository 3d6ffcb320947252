// What OK saves, predicted from what the pages show: the edited feature
// type written as the screen shows it, the others only where "Apply to
// Others" sent something, nothing the person did not touch changed.
#include "model/schemamodel.h"

#include "util/listpacking.h"

#include <algorithm>

namespace vyr::model {

namespace {

bool isGeometryAttribute(const std::string &name)
{
    const std::string bare = name.rfind('*', 0) == 0 ? name.substr(1) : name;
    return bare.rfind("vyr_geometry{", 0) == 0 && bare.back() == '}';
}

void writeGeometry(FeatureData &feature, const std::string &geometry, const FormatModel &format)
{
    std::erase_if(feature.attributes, [](const auto &attribute) { return isGeometryAttribute(attribute.first); });
    Strings generics;
    Strings tokens = splitList(geometry, ' ');
    tokens.erase(std::remove(tokens.begin(), tokens.end(), std::string()), tokens.end());
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        feature.attributes["*vyr_geometry{" + std::to_string(i) + "}"] = tokens[i];
        const std::string generic = format.geometryToGeneric(tokens[i]);
        if (std::find(generics.begin(), generics.end(), generic) == generics.end())
            generics.push_back(generic);
    }
    for (std::size_t i = 0; i < generics.size(); ++i)
        feature.attributes["vyr_geometry{" + std::to_string(i) + "}"] = generics[i];
}

// The parameter pairs of a feature as name -> value (the last pair counts).
std::map<std::string, std::string> parametersOf(const FeatureData &feature)
{
    std::map<std::string, std::string> values;
    const Strings names = feature.list(kParameterNames);
    const Strings stored = feature.list(kParameterValues);
    if (names.size() != stored.size())
        return values;
    for (std::size_t i = 0; i < names.size(); ++i)
        values[names[i]] = stored[i];
    return values;
}

// What a parameter held before the dialog: its stored value, else the
// format's default.
std::string valueBefore(const std::map<std::string, std::string> &stored, const Parameter &parameter)
{
    const auto found = stored.find(parameter.name);
    return found != stored.end() ? found->second : parameter.defaultValue;
}

void writeParameters(FeatureData &feature, const std::map<std::string, std::string> &values)
{
    Strings names, stored;
    for (const auto &[name, value] : values) {
        names.push_back(name);
        stored.push_back(value);
    }
    feature.setList(kParameterNames, names);
    feature.setList(kParameterValues, stored);
}

std::string elementName(const std::string &placeholderName, int index)
{
    std::string name = placeholderName;
    name.replace(name.find("{}"), 2, "{" + std::to_string(index) + "}");
    return name;
}

// Whether `name` is element `index` or beyond of a list row, or one of it
// at all (index -1).
std::optional<int> elementIndex(const std::string &placeholderName, const std::string &name)
{
    const std::size_t braces = placeholderName.find("{}");
    const std::string head = placeholderName.substr(0, braces + 1);
    const std::string tail = placeholderName.substr(braces + 1);
    if (name.size() < head.size() + tail.size() + 1 || name.compare(0, head.size(), head) != 0
        || name.compare(name.size() - tail.size(), tail.size(), tail) != 0)
        return std::nullopt;
    const std::string digits = name.substr(head.size(), name.size() - head.size() - tail.size());
    if (digits.empty() || digits.find_first_not_of("0123456789") != std::string::npos)
        return std::nullopt;
    return std::stoi(digits);
}

bool samePage(const PageState &a, const PageState &b)
{
    if (a.format != b.format || a.name != b.name || a.user != b.user || a.geometry != b.geometry || a.fanout != b.fanout
        || (a.fanout && a.fanoutAttribute != b.fanoutAttribute) || a.parameters != b.parameters)
        return false;
    return std::ranges::equal(a.attributes, b.attributes,
                              [](const AttributeRow &x, const AttributeRow &y) {
                                  return x.name == y.name && x.cells == y.cells && x.genericOnly == y.genericOnly;
                              })
        && std::ranges::equal(a.formatAttributes, b.formatAttributes,
                              [](const FormatAttributeRow &x, const FormatAttributeRow &y) {
                                  return x.ticked == y.ticked && (!x.ticked || !x.isList() || x.count == y.count);
                              });
}

} // namespace

class Predictor
{
public:
    explicit Predictor(const SchemaModel &model)
        : m(model)
        , page(model.m_page)
        , format(model.format())
    {}

    Prediction run()
    {
        Prediction prediction;
        prediction.mustRefuse = m.refusals();
        danglingReferences(prediction);
        if (!prediction.mustRefuse.empty())
            return prediction;
        Expectation &e = prediction.edited;
        e.feature = m.m_original;
        e.pairNames = kParameterNames;
        e.pairValues = kParameterValues;
        const bool moved = page.format != m.m_opened.format;
        nameAndFormat(e, moved);
        if (m.isWriter())
            geometryAndFanout(e, moved);
        userAttributes(e);
        formatAttributes(e, moved);
        parameters(e, moved);
        prediction.unchanged = samePage(page, m.m_opened) && m.m_apply.empty();
        if (!m.m_apply.empty() && m.m_apply.confirm)
            applied(prediction);
        return prediction;
    }

private:
    const SchemaModel &m;
    const PageState &page;
    const FormatModel &format;

    struct RowTypes
    {
        std::optional<std::string> native, generic;
    };

    // The stored type texts a row is saved with.
    RowTypes typesOf(const AttributeRow &row) const
    {
        RowTypes types;
        if (row.typeAsOpened()) {
            types.native = row.storedNative;
            types.generic = row.storedGeneric;
            if (row.name == row.origin)
                return types;
        }
        if (row.genericOnly) {
            types.generic = formatType(parseType(composedType(row.cells), ListMode::Shown), ListMode::Shown);
            return types;
        }
        if (const auto type = format.types().create(composedType(row.cells), ListMode::Shown)) {
            if (!types.native)
                types.native = formatType(*type, ListMode::Stored);
            if (!types.generic) {
                if (const auto generic = format.types().toGeneric(*type))
                    types.generic = formatType(*generic, ListMode::Shown);
            }
        }
        return types;
    }

    void danglingReferences(Prediction &prediction) const
    {
        const Strings names = m.attributeNames();
        prediction.mayRefuse = m.possibleRefusals();
        for (const Refusal &reason : prediction.mayRefuse) {
            prediction.references[reason.parameter] = std::set<std::string>(names.begin(), names.end());
            prediction.edited.anyParameter.insert(reason.parameter);
        }
    }

    void nameAndFormat(Expectation &e, bool moved) const
    {
        const auto [name, user] = m.resolvedName();
        e.feature.featureType = user.empty() ? name : user + "." + name;
        if (moved)
            e.feature.attributes["vyr_format"] = page.format;
    }

    void geometryAndFanout(Expectation &e, bool moved) const
    {
        if (!format.supportsMultiGeom()) {
            if (moved || page.geometry != m.m_opened.geometry)
                writeGeometry(e.feature, page.geometry, format);
        } else if (moved) {
            writeGeometry(e.feature, page.geometry, format);
        }
        if (format.supportsFanout() && page.fanout) {
            e.feature.attributes["vyr_fanout"] = "yes";
            e.feature.attributes["vyr_fanout_attribute"] = page.fanoutAttribute;
        } else if (page.fanout) {
            // Kept or not by a format that cannot fan out: the rules leave
            // it open.
            e.anyAttribute.insert("vyr_fanout");
            e.anyAttribute.insert("vyr_fanout_attribute");
        } else if (page.fanout != m.m_opened.fanout || page.fanoutAttribute != m.m_opened.fanoutAttribute) {
            e.feature.attributes.erase("vyr_fanout");
            e.anyAttribute.insert("vyr_fanout_attribute");
        }
    }

    void userAttributes(Expectation &e) const
    {
        const FormatModel &opened = m.openedFormat();
        const bool editable = m.attributesEditable();
        if (!format.hasUserAttributes() && opened.hasUserAttributes()) {
            // A format without user attributes keeps none.
            for (const std::string &name : userAttributeNames(m.m_original)) {
                e.feature.attributes.erase(name);
                e.anyAttribute.insert("*" + name);
            }
            e.feature.order.clear();
            return;
        }
        if (!editable)
            return;
        const Strings before = userAttributeNames(m.m_original);
        Strings after;
        bool same = before.size() == page.attributes.size();
        for (std::size_t i = 0; i < page.attributes.size(); ++i) {
            after.push_back(page.attributes[i].name);
            same = same && page.attributes[i].asOpened() && page.attributes[i].name == before[i];
        }
        if (same)
            return;
        for (const std::string &name : before) {
            if (std::find(after.begin(), after.end(), name) != after.end())
                continue;
            e.feature.attributes.erase(name);
            // The engine keeps the "*" companion of a removed attribute; a
            // move may also put it into the new format's words.
            if (const auto companion = m.m_original.attribute("*" + name)) {
                e.feature.attributes.erase("*" + name);
                if (page.format != m.m_opened.format)
                    e.anyAttribute.insert("*" + name);
                else
                    e.ifPresent["*" + name] = *companion;
            }
        }
        for (const AttributeRow &row : page.attributes) {
            const RowTypes types = typesOf(row);
            e.feature.attributes[row.name] = types.generic.value_or("");
            e.ifPresent.erase("*" + row.name);
            if (types.native) {
                e.feature.attributes["*" + row.name] = *types.native;
            } else if (row.genericOnly) {
                e.feature.attributes.erase("*" + row.name);
                e.anyAttribute.insert("*" + row.name);
            } else {
                e.feature.attributes.erase("*" + row.name);
            }
        }
        e.feature.order = after;
    }

    void formatAttributes(Expectation &e, bool moved) const
    {
        Strings names, types;
        if (!moved) {
            names = m.m_original.list(kExposedNames);
            types = m.m_original.list(kExposedTypes);
        }
        Strings keptNames, keptTypes;
        for (std::size_t i = 0; i < names.size(); ++i) {
            bool keep = true;
            for (const FormatAttributeRow &row : page.formatAttributes) {
                if (row.name == names[i] && !row.isList())
                    keep = row.ticked;
                if (row.isList()) {
                    if (names[i] == row.name)
                        keep = row.ticked;
                    else if (const auto index = elementIndex(row.name, names[i]))
                        keep = row.ticked && *index < row.count;
                }
            }
            if (keep) {
                keptNames.push_back(names[i]);
                keptTypes.push_back(i < types.size() ? types[i] : std::string());
            }
        }
        e.keptExposures = keptNames.size();
        const auto present = [&keptNames](const std::string &name) {
            return std::find(keptNames.begin(), keptNames.end(), name) != keptNames.end();
        };
        // A list row as it was at opening keeps the elements it exposed,
        // also when they are not the first ones.
        const auto asOpened = [this, moved](const FormatAttributeRow &row) {
            return !moved && std::ranges::any_of(m.m_opened.formatAttributes, [&row](const FormatAttributeRow &was) {
                return was.name == row.name && was.ticked == row.ticked && was.count == row.count;
            });
        };
        Strings addedNames, addedTypes;
        for (const FormatAttributeRow &row : page.formatAttributes) {
            if (!row.ticked || (row.isList() && asOpened(row)))
                continue;
            const std::string type = format.formatAttributeType(row.name);
            if (!row.isList()) {
                if (!present(row.name)) {
                    addedNames.push_back(row.name);
                    addedTypes.push_back(type);
                }
                continue;
            }
            for (int i = 0; i < row.count; ++i) {
                const std::string element = elementName(row.name, i);
                if (!present(element)) {
                    addedNames.push_back(element);
                    addedTypes.push_back(type);
                }
            }
        }
        keptNames.insert(keptNames.end(), addedNames.begin(), addedNames.end());
        keptTypes.insert(keptTypes.end(), addedTypes.begin(), addedTypes.end());
        e.feature.setList(kExposedNames, keptNames);
        e.feature.setList(kExposedTypes, keptTypes);
    }

    void parameters(Expectation &e, bool moved) const
    {
        const std::map<std::string, std::string> had = parametersOf(m.m_original);
        std::map<std::string, std::string> stored = had;
        if (moved)
            std::erase_if(stored, [this](const auto &pair) { return !format.parameter(pair.first); });
        for (const Parameter &parameter : format.parameters()) {
            if (parameter.type == "DISABLE")
                continue;
            if (const std::string &now = page.parameters.at(parameter.name); now != valueBefore(had, parameter))
                stored[parameter.name] = now;
        }
        if (stored != had || moved)
            writeParameters(e.feature, stored);
    }

    void applied(Prediction &prediction) const
    {
        const ApplySelection &apply = m.m_apply;
        for (std::size_t index = 0; index < m.m_others.size(); ++index) {
            const OtherFeatureType &other = m.m_others[index];
            if (std::find(apply.targets.begin(), apply.targets.end(), other.feature.featureType) == apply.targets.end())
                continue;
            Expectation e;
            e.feature = other.feature;
            e.pairNames = kParameterNames;
            e.pairValues = kParameterValues;
            e.keptExposures = other.feature.list(kExposedNames).size();
            const FormatModel &target = *other.format;
            const bool sameFormat = target.name() == format.name();
            if (apply.geometry && !target.supportsMultiGeom()) {
                const std::string geometry =
                    sameFormat ? page.geometry : translatedGeometry(page.geometry, format, target);
                if (format.supportsMultiGeom() || geometry.empty()) {
                    // Several geometries, or one the target cannot name: the
                    // rules do not say what reaches it.
                    for (int i = 0; i < 4; ++i) {
                        e.anyAttribute.insert("*vyr_geometry{" + std::to_string(i) + "}");
                        e.anyAttribute.insert("vyr_geometry{" + std::to_string(i) + "}");
                    }
                } else {
                    writeGeometry(e.feature, geometry, target);
                }
            }
            for (const std::string &name : apply.deleteAttributes) {
                if (!e.feature.attribute(name))
                    continue;
                e.feature.attributes.erase(name);
                if (const auto companion = other.feature.attribute("*" + name)) {
                    e.feature.attributes.erase("*" + name);
                    e.ifPresent["*" + name] = *companion;
                }
                std::erase(e.feature.order, name);
            }
            for (const std::string &name : apply.attributes)
                applyAttribute(e, other, name);
            const std::map<std::string, std::string> had = parametersOf(other.feature);
            std::map<std::string, std::string> stored = had;
            for (const std::string &name : apply.parameters) {
                const Parameter *parameter = target.parameter(name);
                const auto shown = page.parameters.find(name);
                // What the page no longer lists (after a move) reaches nobody.
                if (!parameter || parameter->type == "DISABLE" || shown == page.parameters.end())
                    continue;
                // A value naming an attribute the target lacks would name
                // nothing there: it is not applied.
                if (namesAttributes(*parameter) && !allNamedIn(shown->second, e.feature))
                    continue;
                if (shown->second != valueBefore(had, *parameter))
                    stored[name] = shown->second;
                else
                    e.anyParameter.insert(name);
            }
            if (stored != had)
                writeParameters(e.feature, stored);
            prediction.others[index] = e;
        }
    }

    static bool namesAttributes(const Parameter &parameter)
    {
        return parameter.type == "ATTR" || parameter.type == "ATTRLIST" || parameter.type == "ATTRLIST_COMMAS";
    }
    // Whether every attribute `value` names (comma-separated) is one the
    // feature has, user or exposed.
    static bool allNamedIn(const std::string &value, const FeatureData &feature)
    {
        Strings names = userAttributeNames(feature);
        for (const std::string &exposed : feature.list(kExposedNames))
            names.push_back(exposed);
        return std::ranges::all_of(splitList(value, ','), [&names](const std::string &piece) {
            return piece.empty() || std::find(names.begin(), names.end(), piece) != names.end();
        });
    }

    void applyAttribute(Expectation &e, const OtherFeatureType &other, const std::string &name) const
    {
        const auto row = std::find_if(page.attributes.begin(), page.attributes.end(),
                                      [&name](const AttributeRow &r) { return r.name == name; });
        if (row == page.attributes.end())
            return;
        const FormatModel &target = *other.format;
        const Strings theirs = userAttributeNames(other.feature);
        std::string legal = name;
        if (target.name() != format.name()) {
            legal = legalAttributeName(target, name, {});
            if (std::find(theirs.begin(), theirs.end(), legal) == theirs.end()) {
                NameSet taken(theirs.begin(), theirs.end());
                for (const std::string &exposed : other.feature.list(kExposedNames))
                    taken.insert(exposed);
                legal = legalAttributeName(target, name, taken);
            }
        }
        const RowTypes types = typesOf(*row);
        std::optional<std::string> native;
        std::optional<std::string> targetGeneric;
        if (target.name() == format.name()) {
            // A user attribute of the target's format has both types, also
            // one this feature type holds by its generic type alone.
            native = types.native;
            if (!native && !row->genericOnly) {
                if (const auto own = format.types().create(composedType(row->cells), ListMode::Shown))
                    native = formatType(*own, ListMode::Stored);
            }
        } else if (!row->genericOnly) {
            if (const auto own = format.types().create(composedType(row->cells), ListMode::Shown)) {
                if (const auto converted = target.types().convertFrom(format.types(), *own)) {
                    native = formatType(*converted, ListMode::Stored);
                    if (const auto generic = target.types().toGeneric(*converted))
                        targetGeneric = formatType(*generic, ListMode::Shown);
                }
            }
        } else if (types.generic) {
            // Kept by its generic type here: the target may have a word for it.
            if (const auto generic = target.types().create(*types.generic, ListMode::Shown)) {
                if (const auto converted = target.types().toNative(*generic))
                    native = formatType(*converted, ListMode::Stored);
            }
        }
        e.feature.attributes[legal] = types.generic.value_or("");
        // "Its generic type": the attribute's own, or that of its type in the
        // target's words; the rules do not choose.
        if (targetGeneric && targetGeneric != types.generic)
            e.oneOf[legal] = {types.generic.value_or(""), *targetGeneric};
        if (native) {
            e.feature.attributes["*" + legal] = *native;
        } else if (const auto companion = other.feature.attribute("*" + legal)) {
            e.feature.attributes.erase("*" + legal);
            e.ifPresent["*" + legal] = *companion;
        }
        if (std::find(e.feature.order.begin(), e.feature.order.end(), legal) == e.feature.order.end())
            e.feature.order.push_back(legal);
    }
};

Prediction SchemaModel::predict() const
{
    return Predictor(*this).run();
}

} // namespace vyr::model
