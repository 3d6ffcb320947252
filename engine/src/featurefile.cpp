#include "vyr/vyr_featurefile.h"

#include "featurejsonreader.h"
#include "vyrfeature.h"

#include "util/safefiles.h"

#include <nlohmann/json.hpp>

#include <optional>

namespace {

void report(IVYRString *error, const std::string &message)
{
    if (error)
        error->assign(message.data(), message.size());
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
    std::string reason;
    std::optional<vyr::engine::VYRFeature> read = vyr::engine::readFeatureJson(std::string_view(text, length), where, reason);
    if (!read) {
        report(error, reason);
        return false;
    }
    *target = std::move(*read);
    return true;
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
