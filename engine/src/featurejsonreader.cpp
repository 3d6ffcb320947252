#include "featurejsonreader.h"

#include "stringobjects/vyrrwstringarrayimp.h"
#include "util/jsonlocation.h"
#include "util/jsonnesting.h"
#include "util/stringconverter.h"

#include <nlohmann/json.hpp>
#include <simdjson.h>

#include <algorithm>
#include <set>
#include <stdexcept>
#include <utility>
#include <vector>

// A feature file is read with simdjson, whose DOM is built many times faster
// than nlohmann's. What simdjson refuses goes to nlohmann, whose verdict on a
// text has always decided what a feature file may be and which syntax
// message a refusal gives: the texts nlohmann takes and simdjson does not
// (integers beyond 64 bits, a byte order mark, a null after the text) are
// restated by nlohmann in plain JSON and read from there.

namespace vyr::engine {
namespace {

using Json = nlohmann::json;
using Element = simdjson::dom::element;

// A layout error: what is wrong, and where in the file.
class FeatureFileError : public std::runtime_error
{
public:
    FeatureFileError(JsonPath where, const std::string &what)
        : std::runtime_error(what)
        , m_where(std::move(where))
    {}
    const JsonPath &where() const { return m_where; }

private:
    JsonPath m_where;
};

// A text that is no JSON: the message, place and all.
class JsonRefused : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// The keys of the top object, few, each allowed once.
class TopKeys
{
public:
    void add(std::string_view key)
    {
        if (!m_keys.emplace(key).second)
            throw FeatureFileError({std::string(key)}, "\"" + std::string(key) + "\" is given twice");
    }

private:
    std::set<std::string, std::less<>> m_keys;
};

// The members of the top object that the layout names.
struct Members
{
    std::optional<Element> featureType;
    std::optional<Element> attributes;
    std::optional<Element> order;
    std::optional<Element> lists;
};

// `value`, the member `name` of the top object, as a T (an object or an
// array); nothing when it is absent.
template <class T>
std::optional<T> member(const std::optional<Element> &value, const char *name, const char *kind)
{
    if (!value)
        return std::nullopt;
    T typed;
    if (value->get(typed) != simdjson::SUCCESS)
        throw FeatureFileError({std::string(name)}, std::string("\"") + name + "\" must be " + kind);
    return typed;
}

std::vector<std::string_view> keysOf(const std::optional<Element> &value)
{
    std::vector<std::string_view> keys;
    simdjson::dom::object object;
    if (value && value->get(object) == simdjson::SUCCESS) {
        for (const simdjson::dom::key_value_pair field : object)
            keys.push_back(field.key);
    }
    return keys;
}

// Refuses the object `member` of the top object when it names a key twice;
// of several such keys the first in byte order is named.
void refuseKeysGivenTwice(const Members &members, const char *member, const char *kind)
{
    std::vector<std::string_view> keys = keysOf(std::string_view(member) == "lists" ? members.lists : members.attributes);
    std::sort(keys.begin(), keys.end());
    const auto twice = std::adjacent_find(keys.begin(), keys.end());
    if (twice != keys.end())
        throw FeatureFileError({std::string(member), std::string(*twice)},
                               std::string(kind) + " \"" + std::string(*twice) + "\" is given twice");
}

// A key given twice is refused before anything else about the file is
// said; `attributesMayRepeat` is false when the attributes read are known to
// be as many as the keys, which spares sorting them.
void refuseRepeatedKeys(const Members &members, bool attributesMayRepeat)
{
    if (attributesMayRepeat)
        refuseKeysGivenTwice(members, "attributes", "attribute");
    refuseKeysGivenTwice(members, "lists", "list");
}

// Texts of the file in the narrow code page, for the feature's setters: as
// simdjson holds them (with a null after each) when the code page is UTF-8,
// which spares a copy of every name and value.
class NarrowText
{
public:
    explicit NarrowText(bool asIs)
        : m_asIs(asIs)
    {}
    const char *of(const char *utf8, std::size_t size)
    {
        if (m_asIs)
            return utf8;
        m_narrow = utf8ToAnsi(std::string_view(utf8, size));
        return m_narrow.c_str();
    }

private:
    bool m_asIs;
    std::string m_narrow;
};

// The feature the members describe; `keys` counts the keys of "attributes".
VYRFeature build(const Members &members, std::size_t &keys)
{
    VYRFeature feature;
    const bool asIs = utf8IsAnsi();
    NarrowText narrowName(asIs);
    NarrowText narrowValue(asIs);
    std::string_view text;
    if (!members.featureType)
        throw FeatureFileError({}, "\"feature_type\" is missing");
    if (members.featureType->get(text) != simdjson::SUCCESS)
        throw FeatureFileError({std::string("feature_type")}, "\"feature_type\" must be a text");
    feature.setFeatureType(utf8ToAnsi(text).c_str());

    if (const auto attributes = member<simdjson::dom::object>(members.attributes, "attributes", "an object of texts")) {
        feature.reserve(attributes->size());
        for (auto field = attributes->begin(); field != attributes->end(); ++field) {
            ++keys;
            if (field.value().get(text) != simdjson::SUCCESS)
                throw FeatureFileError({std::string("attributes"), std::string(field.key())},
                                       "attribute \"" + std::string(field.key()) + "\" must be a text");
            feature.setAttribute(narrowName.of(field.key_c_str(), field.key_length()),
                                 narrowValue.of(text.data(), text.size()));
        }
    }

    if (const auto order = member<simdjson::dom::array>(members.order, "attribute_order", "a list of attribute names")) {
        std::size_t i = 0;
        for (const Element element : *order) {
            if (element.get(text) != simdjson::SUCCESS)
                throw FeatureFileError({std::string("attribute_order"), i},
                                       "\"attribute_order\" element " + std::to_string(i + 1) + " must be a text");
            const std::string name = utf8ToAnsi(text);
            if (!feature.order(name))
                throw FeatureFileError({std::string("attribute_order"), i},
                                       "\"attribute_order\" names \"" + name + "\", which is no attribute");
            ++i;
        }
    }

    if (const auto lists = member<simdjson::dom::object>(members.lists, "lists", "an object of lists")) {
        // In byte order, so that of two faulty lists the same is named
        // whatever order the file gives them in.
        std::vector<std::pair<std::string_view, Element>> sorted;
        for (const simdjson::dom::key_value_pair field : *lists)
            sorted.emplace_back(field.key, field.value);
        std::stable_sort(sorted.begin(), sorted.end(),
                         [](const auto &left, const auto &right) { return left.first < right.first; });
        for (const auto &[key, value] : sorted) {
            const std::string name(key);
            simdjson::dom::array elements;
            if (value.get(elements) != simdjson::SUCCESS)
                throw FeatureFileError({std::string("lists"), name}, "list \"" + name + "\" must be a list of texts");
            VYRRWStringArrayImp array;
            std::size_t i = 0;
            for (const Element element : elements) {
                if (element.get(text) != simdjson::SUCCESS)
                    throw FeatureFileError({std::string("lists"), name, i}, "element " + std::to_string(i + 1)
                                                                                + " of list \"" + name
                                                                                + "\" must be a text");
                array.append(utf8ToAnsi(text).c_str());
                ++i;
            }
            feature.setListAttribute(utf8ToAnsi(name).c_str(), array);
        }
    }
    return feature;
}

VYRFeature readLayout(Element document)
{
    simdjson::dom::object top;
    if (document.get(top) != simdjson::SUCCESS)
        throw FeatureFileError({}, "a feature file holds one JSON object");
    TopKeys keys;
    Members members;
    for (const simdjson::dom::key_value_pair field : top) {
        keys.add(field.key);
        if (field.key == "feature_type")
            members.featureType = field.value;
        else if (field.key == "attributes")
            members.attributes = field.value;
        else if (field.key == "attribute_order")
            members.order = field.value;
        else if (field.key == "lists")
            members.lists = field.value;
    }
    std::size_t attributeKeys = 0;
    std::optional<VYRFeature> feature;
    try {
        feature = build(members, attributeKeys);
    } catch (const FeatureFileError &) {
        refuseRepeatedKeys(members, true);
        throw;
    }
    // Two keys the code page writes alike are one attribute, as they always
    // were; only keys alike in the file are refused.
    refuseRepeatedKeys(members, feature->attributeCount() < attributeKeys);
    return std::move(*feature);
}

// nlohmann's reading of a text simdjson refused, as a SAX handler: it
// refuses what nlohmann refuses, with the message the text always got, and
// otherwise restates the text in JSON that simdjson takes. The layout holds
// no numbers that count, so any number is restated as 0.
class Restatement
{
public:
    Restatement(std::string_view text, const std::string &origin)
        : m_text(text)
        , m_origin(origin)
    {}
    const std::string &restated() const { return m_restated; }

    bool null() { return put("null"); }
    bool boolean(bool value) { return put(value ? "true" : "false"); }
    bool number_integer(Json::number_integer_t) { return put("0"); }
    bool number_unsigned(Json::number_unsigned_t) { return put("0"); }
    bool number_float(Json::number_float_t, const std::string &) { return put("0"); }
    bool string(std::string &value) { return put(Json(value).dump()); }
    bool binary(Json::binary_t &) { return false; } // JSON text holds none
    bool start_object(std::size_t) { return open("{"); }
    bool end_object() { return close("}"); }
    bool start_array(std::size_t) { return open("["); }
    bool end_array() { return close("]"); }
    bool key(std::string &name)
    {
        // Refused where nlohmann meets it, before any fault further on.
        if (m_depth == 1)
            m_topKeys.add(name);
        put(Json(name).dump());
        m_restated += ':';
        m_separate = false;
        return true;
    }
    bool parse_error(std::size_t byte, const std::string &, const nlohmann::detail::exception &failure)
    {
        // 406 is nlohmann's number too large for a double.
        if (failure.id == 406)
            throw JsonRefused(jsonNumberTooLarge(m_origin, m_text, failure.what()));
        if (dynamic_cast<const Json::parse_error *>(&failure))
            throw JsonRefused(jsonSyntaxError(m_origin, m_text, byte));
        throw JsonRefused(m_origin + ": " + failure.what());
    }

private:
    bool put(std::string_view token)
    {
        if (m_separate)
            m_restated += ',';
        m_restated += token;
        m_separate = true;
        return true;
    }
    bool open(std::string_view bracket)
    {
        put(bracket);
        m_separate = false;
        ++m_depth;
        return true;
    }
    bool close(std::string_view bracket)
    {
        m_restated += bracket;
        m_separate = true;
        --m_depth;
        return true;
    }

    std::string_view m_text;
    const std::string &m_origin;
    std::string m_restated;
    bool m_separate = false;
    int m_depth = 0;
    TopKeys m_topKeys;
};

} // namespace

std::optional<VYRFeature> readFeatureJson(std::string_view text, const std::string &origin, std::string &error)
{
    try {
        // simdjson refuses nesting beyond the guard's limit itself, which
        // spares the guard's walk over every text that is read.
        simdjson::dom::parser parser;
        Element document;
        if (parser.allocate(text.size(), kMostJsonNesting) == simdjson::SUCCESS
            && parser.parse(text.data(), text.size()).get(document) == simdjson::SUCCESS)
            return readLayout(document);
        if (const auto refusal = refuseDeepJson(text))
            throw JsonRefused(origin + ": " + *refusal);
        Restatement restatement(text, origin);
        Json::sax_parse(text.data(), text.data() + text.size(), &restatement);
        const std::string &restated = restatement.restated();
        const simdjson::error_code failure = parser.parse(restated.data(), restated.size()).get(document);
        if (failure != simdjson::SUCCESS)
            throw JsonRefused(origin + ": " + simdjson::error_message(failure));
        return readLayout(document);
    } catch (const FeatureFileError &failure) {
        error = jsonPlace(origin, text, failure.where()) + failure.what();
    } catch (const JsonRefused &failure) {
        error = failure.what();
    } catch (const std::exception &failure) {
        error = origin + ": " + failure.what();
    }
    return std::nullopt;
}

} // namespace vyr::engine
