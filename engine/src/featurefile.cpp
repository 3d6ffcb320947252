#include "vyr/vyr_featurefile.h"

#include "vyrfeature.h"

#include "stringobjects/vyrrwstringarrayimp.h"
#include "stringobjects/vyrrwstringimp.h"
#include "util/jsonlocation.h"
#include "util/jsonnesting.h"
#include "util/safefiles.h"
#include "util/stringconverter.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <set>

// Read into the library's sorted objects, which find a key without looking
// at every other one; the order of the attributes is taken down as they are
// read.
using Json = nlohmann::json;

namespace {

// A layout error: what is wrong, and where in the file.
class FeatureFileError : public std::runtime_error
{
public:
    FeatureFileError(vyr::JsonPath where, const std::string &what)
        : std::runtime_error(what)
        , m_where(std::move(where))
    {}
    const vyr::JsonPath &where() const { return m_where; }

private:
    vyr::JsonPath m_where;
};

void report(IVYRString *error, const std::string &message)
{
    if (error)
        error->assign(message.data(), message.size());
}

const Json &member(const Json &object, const char *name, Json::value_t type, const char *kind)
{
    static const Json missing;
    const auto found = object.find(name);
    if (found == object.end())
        return missing;
    if (found->type() != type)
        throw FeatureFileError({std::string(name)}, std::string("\"") + name + "\" must be " + kind);
    return *found;
}

std::string narrowText(const Json &value, vyr::JsonPath where, const std::string &what)
{
    if (!value.is_string())
        throw FeatureFileError(std::move(where), what + " must be a text");
    return vyr::utf8ToAnsi(value.get<std::string>());
}

vyr::engine::VYRFeature parse(const Json &document, const std::vector<std::string> &attributeNames)
{
    if (!document.is_object())
        throw FeatureFileError({}, "a feature file holds one JSON object");
    vyr::engine::VYRFeature feature;
    const auto type = document.find("feature_type");
    if (type == document.end())
        throw FeatureFileError({}, "\"feature_type\" is missing");
    feature.setFeatureType(narrowText(*type, {std::string("feature_type")}, "\"feature_type\"").c_str());
    const Json &attributes = member(document, "attributes", Json::value_t::object, "an object of texts");
    feature.reserve(attributeNames.size());
    for (const std::string &name : attributeNames) {
        const Json &value = attributes.at(name);
        feature.setAttribute(vyr::utf8ToAnsi(name).c_str(),
                             narrowText(value, {std::string("attributes"), name}, "attribute \"" + name + "\"").c_str());
    }
    const Json &order = member(document, "attribute_order", Json::value_t::array, "a list of attribute names");
    for (std::size_t i = 0; i < order.size(); ++i) {
        const vyr::JsonPath where{std::string("attribute_order"), i};
        const std::string name = narrowText(order[i], where, "\"attribute_order\" element " + std::to_string(i + 1));
        if (!feature.order(name))
            throw FeatureFileError(where, "\"attribute_order\" names \"" + name + "\", which is no attribute");
    }
    for (const auto &[name, elements] : member(document, "lists", Json::value_t::object, "an object of lists").items()) {
        const vyr::JsonPath where{std::string("lists"), name};
        if (!elements.is_array())
            throw FeatureFileError(where, "list \"" + name + "\" must be a list of texts");
        VYRRWStringArrayImp array;
        for (std::size_t i = 0; i < elements.size(); ++i) {
            array.append(narrowText(elements[i], {std::string("lists"), name, i},
                                    "element " + std::to_string(i + 1) + " of list \"" + name + "\"")
                             .c_str());
        }
        feature.setListAttribute(vyr::utf8ToAnsi(name).c_str(), array);
    }
    return feature;
}

// Refuses an object `member` of the top object that names a key twice:
// `keys` are its keys as the text gave them.
void refuseKeysGivenTwice(const Json &document, const char *member, const char *kind, std::vector<std::string> keys)
{
    const auto found = document.is_object() ? document.find(member) : document.end();
    if (found == document.end() || !found->is_object() || found->size() == keys.size())
        return;
    std::sort(keys.begin(), keys.end());
    const auto twice = std::adjacent_find(keys.begin(), keys.end());
    if (twice != keys.end())
        throw FeatureFileError({std::string(member), *twice}, std::string(kind) + " \"" + *twice + "\" is given twice");
}

// A list on one line, as people write them: a changed name or element
// changes one line of a file kept under version control, not a screenful.
std::string inlineArray(const nlohmann::ordered_json &array)
{
    std::string text = "[";
    for (std::size_t i = 0; i < array.size(); ++i)
        text += (i ? ", " : "") + array[i].dump();
    return text + "]";
}

// The members of an object, one a line, `indent` deep; arrays inline.
std::string objectText(const nlohmann::ordered_json &object, const std::string &indent)
{
    if (object.empty())
        return "{}";
    std::string text = "{\n";
    bool first = true;
    for (const auto &[key, value] : object.items()) {
        text += (first ? "" : ",\n") + indent + "  " + nlohmann::ordered_json(key).dump() + ": ";
        if (value.is_object())
            text += objectText(value, indent + "  ");
        else if (value.is_array())
            text += inlineArray(value);
        else
            text += value.dump();
        first = false;
    }
    return text + "\n" + indent + "}";
}

// The feature's text as a feature file; nothing, with the reason in
// `error`, when two of its names would be written alike. Members that
// would be empty are left out, as the layout allows.
std::optional<std::string> jsonText(const vyr::engine::VYRFeature &feature, std::string &error)
{
    try {
        nlohmann::ordered_json document = feature.toJson();
        for (const char *member : {"attribute_order", "lists"}) {
            if (document.contains(member) && document[member].empty())
                document.erase(member);
        }
        return objectText(document, "") + '\n';
    } catch (const std::exception &failure) {
        error = failure.what();
        return std::nullopt;
    }
}

} // namespace

extern "C" bool VYR_FeatureReadJson(IVYRFeature *feature, const char *text, size_t length, const char *origin,
                                    IVYRString *error)
{
    auto *target = dynamic_cast<vyr::engine::VYRFeature *>(feature);
    const std::string where = origin ? origin : "feature";
    if (!target || !text) {
        report(error, where + ": not a feature of this engine");
        return false;
    }
    if (const auto refusal = vyr::refuseDeepJson(std::string_view(text, length))) {
        report(error, where + ": " + *refusal);
        return false;
    }
    try {
        // The keys of the top object's "attributes", in the order written.
        std::vector<std::string> attributeNames;
        std::string topKey;
        std::vector<std::string> listNames;
        std::set<std::string> topKeys;
        // The JSON library keeps the last of two equal keys: a file naming a
        // key twice is refused rather than read half. The top object's few
        // keys are checked as they come; the many below it are counted
        // against what the library kept, and looked for only when short.
        const auto note = [&](int depth, Json::parse_event_t event, Json &parsed) {
            if (event == Json::parse_event_t::key && depth <= 2 && parsed.is_string()) {
                std::string key = parsed.get<std::string>();
                if (depth == 1) {
                    if (!topKeys.insert(key).second)
                        throw FeatureFileError({key}, "\"" + key + "\" is given twice");
                    topKey = std::move(key);
                } else if (topKey == "attributes") {
                    attributeNames.push_back(std::move(key));
                } else if (topKey == "lists") {
                    listNames.push_back(std::move(key));
                }
            }
            return true;
        };
        const Json document = Json::parse(text, text + length, note);
        refuseKeysGivenTwice(document, "attributes", "attribute", attributeNames);
        refuseKeysGivenTwice(document, "lists", "list", listNames);
        *target = parse(document, attributeNames);
        return true;
    } catch (const Json::parse_error &failure) {
        report(error, vyr::jsonSyntaxError(where, std::string_view(text, length), failure.byte));
    } catch (const Json::out_of_range &failure) {
        // 406 is the library's number too large for a double.
        report(error, failure.id == 406 ? vyr::jsonNumberTooLarge(where, std::string_view(text, length), failure.what())
                                        : where + ": " + failure.what());
    } catch (const FeatureFileError &failure) {
        report(error, vyr::jsonPlace(where, std::string_view(text, length), failure.where()) + failure.what());
    } catch (const std::exception &failure) {
        report(error, where + ": " + failure.what());
    }
    return false;
}

extern "C" bool VYR_FeatureLoadJson(IVYRFeature *feature, const char *path, IVYRString *error)
{
    std::string reason;
    const std::optional<std::string> text = vyr::readUntrustedFile(path ? path : "", reason);
    if (!text) {
        report(error, reason);
        return false;
    }
    return VYR_FeatureReadJson(feature, text->data(), text->size(), path, error);
}

extern "C" bool VYR_FeatureWriteJson(const IVYRFeature *feature, IVYRString *text)
{
    const auto *source = dynamic_cast<const vyr::engine::VYRFeature *>(feature);
    if (!source || !text)
        return false;
    std::string error;
    const std::optional<std::string> written = jsonText(*source, error);
    if (!written)
        return false;
    text->assign(written->data(), written->size());
    return true;
}

extern "C" bool VYR_FeatureSaveJson(const IVYRFeature *feature, const char *path, IVYRString *error)
{
    const auto *source = dynamic_cast<const vyr::engine::VYRFeature *>(feature);
    const std::string target = path ? path : "";
    if (!source || target.empty()) {
        report(error, target + ": not a feature of this engine");
        return false;
    }
    std::string reason;
    const std::optional<std::string> written = jsonText(*source, reason);
    if (!written) {
        report(error, target + ": cannot be saved: " + reason);
        return false;
    }
    if (!vyr::replaceFileContent(target, *written, reason)) {
        report(error, reason);
        return false;
    }
    return true;
}
