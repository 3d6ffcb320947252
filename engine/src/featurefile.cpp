#include "vyr/vyr_featurefile.h"

#include "vyrfeature.h"

#include "stringobjects/vyrrwstringarrayimp.h"
#include "stringobjects/vyrrwstringimp.h"
#include "util/jsonnesting.h"
#include "util/safefiles.h"
#include "util/stringconverter.h"

#include <nlohmann/json.hpp>

// Read into the library's sorted objects, which find a key without looking
// at every other one; the order of the attributes is taken down as they are
// read.
using Json = nlohmann::json;

namespace {

class FeatureFileError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

void report(IVYRString *error, const std::string &message)
{
    if (error)
        error->assign(message.data(), message.size());
}

const Json &member(const Json &object, const char *name, Json::value_t type, const std::string &where)
{
    static const Json missing;
    const auto found = object.find(name);
    if (found == object.end())
        return missing;
    if (found->type() != type)
        throw FeatureFileError(where + ": \"" + name + "\" has the wrong kind of value");
    return *found;
}

std::string narrowText(const Json &value, const std::string &where)
{
    if (!value.is_string())
        throw FeatureFileError(where + " must be a text");
    return vyr::utf8ToAnsi(value.get<std::string>());
}

vyr::engine::VYRFeature parse(const Json &document, const std::vector<std::string> &attributeNames,
                              const std::string &origin)
{
    if (!document.is_object())
        throw FeatureFileError(origin + ": a feature file holds one JSON object");
    vyr::engine::VYRFeature feature;
    const auto type = document.find("feature_type");
    if (type == document.end())
        throw FeatureFileError(origin + ": \"feature_type\" is missing");
    feature.setFeatureType(narrowText(*type, origin + ": \"feature_type\"").c_str());
    const Json &attributes = member(document, "attributes", Json::value_t::object, origin);
    for (const std::string &name : attributeNames) {
        const Json &value = attributes.at(name);
        feature.setAttribute(vyr::utf8ToAnsi(name).c_str(),
                             narrowText(value, origin + ": attribute \"" + name + "\"").c_str());
    }
    const Json &order = member(document, "attribute_order", Json::value_t::array, origin);
    for (std::size_t i = 0; i < order.size(); ++i) {
        const std::string name = narrowText(order[i], origin + ": \"attribute_order\" element " + std::to_string(i));
        VYRRWStringImp value;
        if (!feature.getAttribute(name.c_str(), value))
            throw FeatureFileError(origin + ": \"attribute_order\" names \"" + name + "\", which is no attribute");
        feature.setOrderedAttribute(name.c_str(), value.c_str());
    }
    for (const auto &[name, elements] : member(document, "lists", Json::value_t::object, origin).items()) {
        const std::string where = origin + ": list \"" + name + "\"";
        if (!elements.is_array())
            throw FeatureFileError(where + " must be an array of texts");
        VYRRWStringArrayImp array;
        for (const Json &element : elements)
            array.append(narrowText(element, where + " element").c_str());
        feature.setListAttribute(vyr::utf8ToAnsi(name).c_str(), array);
    }
    return feature;
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
        const auto note = [&](int depth, Json::parse_event_t event, Json &parsed) {
            if (event == Json::parse_event_t::key && depth <= 2 && parsed.is_string()) {
                if (depth == 1)
                    topKey = parsed.get<std::string>();
                else if (topKey == "attributes")
                    attributeNames.push_back(parsed.get<std::string>());
            }
            return true;
        };
        const Json document = Json::parse(text, text + length, note);
        *target = parse(document, attributeNames, where);
        return true;
    } catch (const Json::parse_error &failure) {
        report(error, where + ": " + failure.what());
    } catch (const std::exception &failure) {
        report(error, failure.what());
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
    const std::string written = source->toJson().dump(2) + '\n';
    text->assign(written.data(), written.size());
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
    if (!vyr::replaceFileContent(target, source->toJson().dump(2) + '\n', reason)) {
        report(error, reason);
        return false;
    }
    return true;
}
