#include "vyrfeature.h"

#include "tclfunctions.h"
#include "util/installedscripts.h"

#include "util/stringconverter.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_set>

namespace vyr::engine {

namespace {

std::string text(const char *value)
{
    return value ? std::string(value) : std::string();
}

template <class Texts>
void fill(IVYRStringArray &array, const Texts &texts)
{
    array.clear();
    for (const std::string &entry : texts)
        array.append(entry.c_str());
}

} // namespace

VYRFeature::VYRFeature() = default;
VYRFeature::~VYRFeature() = default;

// The iterators of a copy must point into the copy's own lists.
VYRFeature::VYRFeature(const VYRFeature &other)
    : m_featureType(other.m_featureType)
    , m_lists(other.m_lists)
{
    for (const std::string &name : other.m_names)
        setAttribute(name.c_str(), other.m_attributes.at(name).value.c_str());
    for (const std::string &name : other.m_ordered)
        setOrderedAttribute(name.c_str(), other.m_attributes.at(name).value.c_str());
}

VYRFeature &VYRFeature::operator=(const VYRFeature &other)
{
    if (this != &other)
        *this = VYRFeature(other);
    return *this;
}

bool VYRFeature::getAttribute(const char *name, IVYRString &value) const
{
    const auto found = m_attributes.find(text(name));
    if (found == m_attributes.end())
        return false;
    value.assign(found->second.value.data(), found->second.value.size());
    return true;
}

void VYRFeature::setAttribute(const char *name, const char *value)
{
    const std::string key = text(name);
    if (const auto found = m_attributes.find(key); found != m_attributes.end()) {
        found->second.value = text(value);
        return;
    }
    m_names.push_back(key);
    m_attributes.emplace(key, Attribute{text(value), std::prev(m_names.end()), std::nullopt});
}

void VYRFeature::setOrderedAttribute(const char *name, const char *value)
{
    setAttribute(name, value);
    Attribute &attribute = m_attributes.at(text(name));
    if (attribute.ordered)
        m_ordered.erase(*attribute.ordered);
    m_ordered.push_back(text(name));
    attribute.ordered = std::prev(m_ordered.end());
}

void VYRFeature::removeAttribute(const char *name)
{
    const auto found = m_attributes.find(text(name));
    if (found == m_attributes.end())
        return;
    m_names.erase(found->second.name);
    if (found->second.ordered)
        m_ordered.erase(*found->second.ordered);
    m_attributes.erase(found);
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
    bool evaluated = false;
    if (isTclFunction(text(function), script)) {
        if (!m_scriptDeadline)
            m_scriptDeadline = std::chrono::steady_clock::now() + std::chrono::seconds(scriptSecondsLimit());
        evaluated = evaluateTcl(*this, script, *m_scriptDeadline, value);
    }
    result.assign(value.data(), value.size());
    return evaluated;
}

namespace {

// JSON holds UTF-8 only: a byte that is no UTF-8 (which a stranger's
// capability file can put into a feature in a UTF-8 code page) is written
// as U+FFFD.
std::string jsonText(std::string_view text)
{
    return wellFormedUtf8(ansiToUtf8(text));
}

// A name that is written like an earlier one would make the file hold a key
// twice, which no reader takes back: the save is refused instead.
void refuseSameName(std::unordered_set<std::string> &written, const std::string &name, const char *kind)
{
    if (!written.insert(name).second)
        throw std::runtime_error(std::string("two ") + kind + " names are both written \"" + name
                                 + "\" (they differ only in bytes that are no text)");
}

} // namespace

nlohmann::ordered_json VYRFeature::toJson() const
{
    nlohmann::ordered_json document;
    document["feature_type"] = jsonText(m_featureType);
    auto &attributes = document["attributes"] = nlohmann::ordered_json::object();
    // The names are distinct: appended as they are, without the search for
    // an equal key that an insertion into the ordered object makes each
    // time (which made writing 100,000 attributes take minutes).
    auto &members = static_cast<std::vector<std::pair<const std::string, nlohmann::ordered_json>> &>(
        attributes.get_ref<nlohmann::ordered_json::object_t &>());
    members.reserve(m_names.size());
    std::unordered_set<std::string> written;
    written.reserve(m_names.size());
    for (const std::string &name : m_names) {
        std::string key = jsonText(name);
        refuseSameName(written, key, "attribute");
        members.emplace_back(std::move(key), jsonText(m_attributes.at(name).value));
    }
    auto &order = document["attribute_order"] = nlohmann::ordered_json::array();
    for (const std::string &name : m_ordered)
        order.push_back(jsonText(name));
    auto &lists = document["lists"] = nlohmann::ordered_json::object();
    std::vector<std::string> listNames;
    for (const auto &[name, elements] : m_lists)
        listNames.push_back(name);
    // Sorted, so that saving the same feature twice gives the same file.
    std::sort(listNames.begin(), listNames.end());
    written.clear();
    for (const std::string &name : listNames) {
        const std::string key = jsonText(name);
        refuseSameName(written, key, "list");
        auto &elements = lists[key] = nlohmann::ordered_json::array();
        for (const std::string &element : m_lists.at(name))
            elements.push_back(jsonText(element));
    }
    return document;
}

} // namespace vyr::engine
