#include "vyrfeature.h"

#include "tclfunctions.h"

#include "util/stringconverter.h"

#include <algorithm>

namespace vyr::engine {

namespace {

std::string text(const char *value)
{
    return value ? std::string(value) : std::string();
}

void eraseName(std::vector<std::string> &names, const std::string &name)
{
    names.erase(std::remove(names.begin(), names.end(), name), names.end());
}

void fill(IVYRStringArray &array, const std::vector<std::string> &texts)
{
    array.clear();
    for (const std::string &entry : texts)
        array.append(entry.c_str());
}

} // namespace

VYRFeature::VYRFeature() = default;
VYRFeature::~VYRFeature() = default;

bool VYRFeature::getAttribute(const char *name, IVYRString &value) const
{
    const auto found = m_values.find(text(name));
    if (found == m_values.end())
        return false;
    value.assign(found->second.data(), found->second.size());
    return true;
}

void VYRFeature::setAttribute(const char *name, const char *value)
{
    const std::string key = text(name);
    const auto [entry, added] = m_values.insert_or_assign(key, text(value));
    (void)entry;
    if (added)
        m_names.push_back(key);
}

void VYRFeature::setOrderedAttribute(const char *name, const char *value)
{
    setAttribute(name, value);
    const std::string key = text(name);
    eraseName(m_ordered, key);
    m_ordered.push_back(key);
}

void VYRFeature::removeAttribute(const char *name)
{
    const std::string key = text(name);
    if (m_values.erase(key) == 0)
        return;
    eraseName(m_names, key);
    eraseName(m_ordered, key);
}

void VYRFeature::getAllAttributeNames(IVYRStringArray &names) const
{
    fill(names, m_names);
}

void VYRFeature::getOrderedAttributeNames(IVYRStringArray &names) const
{
    fill(names, m_ordered);
}

void VYRFeature::getListAttribute(const char *name, IVYRStringArray &elements) const
{
    const auto found = m_lists.find(text(name));
    fill(elements, found == m_lists.end() ? std::vector<std::string>() : found->second);
}

void VYRFeature::setListAttribute(const char *name, const IVYRStringArray &elements)
{
    std::vector<std::string> copy;
    copy.reserve(elements.entries());
    for (std::size_t i = 0; i < elements.entries(); ++i)
        copy.emplace_back(elements.elementAt(i));
    m_lists[text(name)] = std::move(copy);
}

void VYRFeature::removeListAttribute(const char *name)
{
    m_lists.erase(text(name));
}

const char *VYRFeature::getFeatureType() const
{
    return m_featureType.c_str();
}

void VYRFeature::setFeatureType(const char *name)
{
    m_featureType = text(name);
}

bool VYRFeature::performFunction(const char *function, IVYRString &result)
{
    std::string script;
    std::string value;
    const bool evaluated = isTclFunction(text(function), script) && evaluateTcl(*this, script, value);
    result.assign(value.data(), value.size());
    return evaluated;
}

nlohmann::ordered_json VYRFeature::toJson() const
{
    nlohmann::ordered_json document;
    document["feature_type"] = ansiToUtf8(m_featureType);
    auto &attributes = document["attributes"] = nlohmann::ordered_json::object();
    for (const std::string &name : m_names)
        attributes[ansiToUtf8(name)] = ansiToUtf8(m_values.at(name));
    auto &order = document["attribute_order"] = nlohmann::ordered_json::array();
    for (const std::string &name : m_ordered)
        order.push_back(ansiToUtf8(name));
    auto &lists = document["lists"] = nlohmann::ordered_json::object();
    std::vector<std::string> listNames;
    for (const auto &[name, elements] : m_lists)
        listNames.push_back(name);
    // Sorted, so that saving the same feature twice gives the same file.
    std::sort(listNames.begin(), listNames.end());
    for (const std::string &name : listNames) {
        auto &elements = lists[ansiToUtf8(name)] = nlohmann::ordered_json::array();
        for (const std::string &element : m_lists.at(name))
            elements.push_back(ansiToUtf8(element));
    }
    return document;
}

} // namespace vyr::engine
