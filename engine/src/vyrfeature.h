// The engine's feature: attributes and list attributes in memory.
#ifndef VYR_ENGINE_VYRFEATURE_H
#define VYR_ENGINE_VYRFEATURE_H

#include "vyr/IVYRFeature.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <list>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace vyr::engine {

class VYRFeature final : public IVYRFeature
{
public:
    VYRFeature();
    ~VYRFeature() override;
    VYRFeature(const VYRFeature &other);
    VYRFeature &operator=(const VYRFeature &other);
    VYRFeature(VYRFeature &&) = default;
    VYRFeature &operator=(VYRFeature &&) = default;

    bool getAttribute(const char *name, IVYRString &value) const override;
    void setAttribute(const char *name, const char *value) override;
    void setOrderedAttribute(const char *name, const char *value) override;
    void removeAttribute(const char *name) override;
    void getAllAttributeNames(IVYRStringArray &names) const override;
    void getOrderedAttributeNames(IVYRStringArray &names) const override;
    void getListAttribute(const char *name, IVYRStringArray &elements) const override;
    void setListAttribute(const char *name, const IVYRStringArray &elements) override;
    void removeListAttribute(const char *name) override;
    const char *getFeatureType() const override;
    void setFeatureType(const char *name) override;
    bool performFunction(const char *function, IVYRString &result) override;

    // The feature in the layout of vyr_featurefile.h (texts in UTF-8).
    nlohmann::ordered_json toJson() const;
    // Room for `attributes` attributes, for a reader that knows how many
    // come.
    void reserve(std::size_t attributes);
    // How many attributes the feature has.
    std::size_t attributeCount() const { return m_attributes.size(); }
    // Puts the attribute `name` last in the order of the user's attributes,
    // as setOrderedAttribute with its own value does; false when there is
    // no such attribute.
    bool order(const std::string &name);

private:
    using NameList = std::list<std::string>;

    struct Attribute
    {
        std::string value;
        NameList::iterator name; // in m_names
        std::optional<NameList::iterator> ordered; // in m_ordered
    };

    // The attribute `name`, made when it is new, with `value`.
    Attribute &store(const char *name, const char *value);
    void putInOrder(Attribute &attribute, const std::string &name);

    // Linked lists of names, so that a schema with thousands of attributes
    // is rewritten in linear time: every name leaves its lists at once.
    std::string m_featureType;
    std::unordered_map<std::string, Attribute> m_attributes;
    NameList m_names;
    NameList m_ordered;
    std::unordered_map<std::string, std::vector<std::string>> m_lists;
    // The functions performed on one feature share one time limit, counted
    // from the first: a job such as a name resolution, however many
    // functions it performs, ends within it. Not copied with the feature.
    std::optional<std::chrono::steady_clock::time_point> m_scriptDeadline;
};

} // namespace vyr::engine

#endif // VYR_ENGINE_VYRFEATURE_H
