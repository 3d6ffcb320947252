#include "model/featuredata.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace vyr::model {

namespace {

std::string quoted(const std::optional<std::string> &value)
{
    return value ? "\"" + *value + "\"" : std::string("(absent)");
}

std::vector<std::pair<std::string, std::string>> zipped(const Strings &names, const Strings &values)
{
    std::vector<std::pair<std::string, std::string>> pairs;
    for (std::size_t i = 0; i < names.size(); ++i)
        pairs.emplace_back(names[i], i < values.size() ? values[i] : std::string("(missing)"));
    return pairs;
}

} // namespace

std::string joined(const Strings &list, const char *separator)
{
    std::string text;
    for (std::size_t i = 0; i < list.size(); ++i)
        text += (i ? separator : "") + list[i];
    return text;
}

std::optional<FeatureData> FeatureData::fromJson(const std::string &text)
{
    const nlohmann::json json = nlohmann::json::parse(text, nullptr, false);
    if (json.is_discarded() || !json.is_object() || !json.contains("feature_type"))
        return std::nullopt;
    FeatureData data;
    try {
        data.featureType = json.at("feature_type").get<std::string>();
        if (json.contains("attributes")) {
            for (const auto &[name, value] : json.at("attributes").items())
                data.attributes[name] = value.get<std::string>();
        }
        if (json.contains("attribute_order"))
            data.order = json.at("attribute_order").get<Strings>();
        if (json.contains("lists")) {
            for (const auto &[name, values] : json.at("lists").items())
                data.setList(name, values.get<Strings>());
        }
    } catch (const nlohmann::json::exception &) {
        return std::nullopt;
    }
    return data;
}

std::optional<std::string> FeatureData::attribute(const std::string &name) const
{
    const auto found = attributes.find(name);
    return found == attributes.end() ? std::nullopt : std::optional(found->second);
}

Strings FeatureData::list(const std::string &name) const
{
    const auto found = lists.find(name);
    return found == lists.end() ? Strings() : found->second;
}

void FeatureData::setList(const std::string &name, Strings values)
{
    if (values.empty())
        lists.erase(name);
    else
        lists[name] = std::move(values);
}

bool FeatureData::operator==(const FeatureData &other) const
{
    return featureType == other.featureType && attributes == other.attributes && order == other.order
        && lists == other.lists;
}

Strings Expectation::differences(const FeatureData &actual) const
{
    Strings lines;
    if (actual.featureType != feature.featureType)
        lines.push_back("feature_type is \"" + actual.featureType + "\", expected \"" + feature.featureType + "\"");

    std::set<std::string> names;
    for (const auto &[name, value] : feature.attributes)
        names.insert(name);
    for (const auto &[name, value] : actual.attributes)
        names.insert(name);
    for (const auto &[name, value] : ifPresent)
        names.insert(name);
    for (const auto &[name, values] : oneOf)
        names.insert(name);
    for (const std::string &name : names) {
        if (anyAttribute.count(name))
            continue;
        const std::optional<std::string> got = actual.attribute(name);
        const auto choices = oneOf.find(name);
        if (choices != oneOf.end()) {
            if (!got || !choices->second.count(*got)) {
                Strings values(choices->second.begin(), choices->second.end());
                lines.push_back("attribute " + name + " is " + quoted(got) + ", expected one of \"" + joined(values, "\", \"")
                                + "\"");
            }
            continue;
        }
        const auto loose = ifPresent.find(name);
        if (loose != ifPresent.end()) {
            if (got && *got != loose->second)
                lines.push_back("attribute " + name + " is " + quoted(got) + ", expected \"" + loose->second
                                + "\" or absent");
            continue;
        }
        const std::optional<std::string> wanted = feature.attribute(name);
        if (got != wanted)
            lines.push_back("attribute " + name + " is " + quoted(got) + ", expected " + quoted(wanted));
    }
    if (actual.order != feature.order)
        lines.push_back("attribute_order is [" + joined(actual.order) + "], expected [" + joined(feature.order) + "]");

    std::set<std::string> listNames;
    for (const auto &[name, values] : feature.lists)
        listNames.insert(name);
    for (const auto &[name, values] : actual.lists)
        listNames.insert(name);
    for (const std::string &name : listNames) {
        if (name == kExposedTypes || name == pairValues)
            continue;
        if (name == kExposedNames) {
            auto got = zipped(actual.list(kExposedNames), actual.list(kExposedTypes));
            auto wanted = zipped(feature.list(kExposedNames), feature.list(kExposedTypes));
            bool same = got.size() == wanted.size();
            if (same) {
                const auto kept = std::ptrdiff_t(std::min(keptExposures, wanted.size()));
                same = std::equal(got.begin(), got.begin() + kept, wanted.begin());
                std::sort(got.begin() + kept, got.end());
                std::sort(wanted.begin() + kept, wanted.end());
                same = same && got == wanted;
            }
            if (!same) {
                const auto text = [](const FeatureData &data) {
                    std::string out;
                    for (const auto &[n, t] : zipped(data.list(kExposedNames), data.list(kExposedTypes)))
                        out += (out.empty() ? "" : ", ") + n + ":" + t;
                    return out;
                };
                lines.push_back("exposed format attributes are [" + text(actual) + "], expected ["
                                + text(feature) + "]" + (keptExposures ? " (the first " + std::to_string(keptExposures)
                                                                             + " in this order)"
                                                                       : std::string()));
            }
            continue;
        }
        if (!pairNames.empty() && name == pairNames) {
            std::map<std::string, std::string> got, wanted;
            for (const auto &[n, v] : zipped(actual.list(pairNames), actual.list(pairValues))) {
                if (got.count(n))
                    lines.push_back("parameter " + n + " is stored twice");
                got[n] = v;
            }
            if (actual.list(pairNames).size() != actual.list(pairValues).size())
                lines.push_back("the parameter lists differ in length");
            for (const auto &[n, v] : zipped(feature.list(pairNames), feature.list(pairValues)))
                wanted[n] = v;
            std::set<std::string> all;
            for (const auto &[n, v] : got)
                all.insert(n);
            for (const auto &[n, v] : wanted)
                all.insert(n);
            for (const std::string &n : all) {
                if (anyParameter.count(n))
                    continue;
                const auto g = got.find(n), w = wanted.find(n);
                const std::optional<std::string> gv = g == got.end() ? std::nullopt : std::optional(g->second);
                const std::optional<std::string> wv = w == wanted.end() ? std::nullopt : std::optional(w->second);
                if (gv != wv)
                    lines.push_back("parameter " + n + " is " + quoted(gv) + ", expected " + quoted(wv));
            }
            continue;
        }
        if (actual.list(name) != feature.list(name))
            lines.push_back("list " + name + " is [" + joined(actual.list(name)) + "], expected ["
                            + joined(feature.list(name)) + "]");
    }
    return lines;
}

} // namespace vyr::model
