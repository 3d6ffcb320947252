// A schema feature as its JSON file holds it, and what a saved feature is
// expected to hold: exact values where the rules fix them, leeway where
// they leave a choice open.
#ifndef VYR_TESTS_MODEL_FEATUREDATA_H
#define VYR_TESTS_MODEL_FEATUREDATA_H

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vyr::model {

using Strings = std::vector<std::string>;

// The lists a schema feature keeps its exposed format attributes and its
// parameters in, as pairs of names and values.
inline constexpr char kExposedNames[] = "*vyr_format_attr_name";
inline constexpr char kExposedTypes[] = "*vyr_format_attr_type";
inline constexpr char kParameterNames[] = "*vyr_parameter_name";
inline constexpr char kParameterValues[] = "*vyr_parameter_value";

struct FeatureData
{
    std::string featureType;
    std::map<std::string, std::string> attributes;
    Strings order;                          // attribute_order
    std::map<std::string, Strings> lists;   // an absent list reads as empty

    // Reads the engine's JSON layout; nothing when the text is not of it.
    static std::optional<FeatureData> fromJson(const std::string &text);

    std::optional<std::string> attribute(const std::string &name) const;
    Strings list(const std::string &name) const;
    void setList(const std::string &name, Strings values);

    bool operator==(const FeatureData &other) const;
};

// The expected content of a saved feature.
struct Expectation
{
    FeatureData feature;
    // Attributes that may be present with any value or absent.
    std::set<std::string> anyAttribute;
    // Attributes that, when present, hold the given value.
    std::map<std::string, std::string> ifPresent;
    // Attributes that must hold one of several values.
    std::map<std::string, std::set<std::string>> oneOf;
    // Lists compared as name -> value pairs (the parameter lists): order
    // free, but each name once.
    std::string pairNames, pairValues;
    // Parameters whose pair may be absent or hold any value.
    std::set<std::string> anyParameter;
    // Exposed format attributes: the first `keptExposures` entries in this
    // order, the rest in any order.
    std::size_t keptExposures = 0;

    // What differs, one line each; empty when `actual` meets it.
    Strings differences(const FeatureData &actual) const;
};

// A line per difference of two string lists, for messages.
std::string joined(const Strings &list, const char *separator = ", ");

} // namespace vyr::model

#endif // VYR_TESTS_MODEL_FEATUREDATA_H
