// The engine's feature: attributes and list attributes in memory.
#ifndef VYR_ENGINE_VYRFEATURE_H
#define VYR_ENGINE_VYRFEATURE_H

#include "vyr/IVYRFeature.h"

#include <nlohmann/json.hpp>

#include <string>
#include <unordered_map>
#include <vector>

namespace vyr::engine {

class VYRFeature final : public IVYRFeature
{
public:
    VYRFeature();
    ~VYRFeature() override;
    VYRFeature(const VYRFeature &) = default;
    VYRFeature &operator=(const VYRFeature &) = default;
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

private:
    std::string m_featureType;
    // Values by name, and the names in the order first set.
    std::unordered_map<std::string, std::string> m_values;
    std::vector<std::string> m_names;
    std::vector<std::string> m_ordered;
    std::unordered_map<std::string, std::vector<std::string>> m_lists;
};

} // namespace vyr::engine

#endif // VYR_ENGINE_VYRFEATURE_H
