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

VYRFeature::Attribute &VYRFeature::store(const char *name, const char *value)
{
    // One search of the names: a new one goes in where the search ended.
    auto [found, added] = m_attributes.try_emplace(text(name));
    found->second.value = text(value);
    if (added) {
        m_names.push_back(found->first);
        found->second.name = std::prev(m_names.end());
    }
    return found->second;
}

void VYRFeature::setAttribute(const char *name, const char *value)
{
    store(name, value);
}

void VYRFeature::setOrderedAttribute(const char *name, const char *value)
{
    putInOrder(store(name, value), text(name));
}

bool VYRFeature::order(const std::string &name)
{
    const auto found = m_attributes.find(name);
    if (found == m_attributes.end())
        return false;
    putInOrder(found->second, name);
    return true;
}

void VYRFeature::putInOrder(Attribute &attribute, const std::string &name)
{
    if (attribute.ordered)
        m_ordered.erase(*attribute.ordered);
    m_ordered.push_back(name);
    attribute.ordered = std::prev(m_ordered.end());
}

void VYRFeature::reserve(std::size_t attributes)
{
    m_attributes.reserve(attributes);
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
// as U+FFFD. `repaired` is set when that happened.
std::string jsonText(std::string_view text, bool &repaired)
{
    std::string utf8 = ansiToUtf8(text);
    if (makeWellFormedUtf8(utf8))
        repaired = true;
    return utf8;
}

std::string jsonText(std::string_view text)
{
    bool repaired = false;
    return jsonText(text, repaired);
}

// Names that are distinct in the feature stay distinct as written unless a
// byte was replaced: two of them written alike would make the file hold a
// key twice, which no reader takes back, so the save is refused instead.
template <class Names>
void refuseNamesWrittenAlike(const Names &names, const char *kind)
{
    std::unordered_set<std::string_view> written;
    written.reserve(names.size());
    for (const auto &name : names) {
        const std::string_view key = name.first;
        if (!written.insert(key).second)
            throw std::runtime_error(std::string("two ") + kind + " names are both written \"" + std::string(key)
                                     + "\" (they differ only in bytes that are no text)");
    }
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
    bool repaired = false;
    for (const std::string &name : m_names)
        members.emplace_back(jsonText(name, repaired), jsonText(m_attributes.at(name).value));
    if (repaired)
        refuseNamesWrittenAlike(members, "attribute");
    auto &order = document["attribute_order"] = nlohmann::ordered_json::array();
    for (const std::string &name : m_ordered)
        order.push_back(jsonText(name));
    auto &lists = document["lists"] = nlohmann::ordered_json::object();
    std::vector<std::string> listNames;
    for (const auto &[name, elements] : m_lists)
        listNames.push_back(name);
    // Sorted, so that saving the same feature twice gives the same file.
    std::sort(listNames.begin(), listNames.end());
    std::vector<std::pair<std::string, const std::vector<std::string> *>> written;
    repaired = false;
    for (const std::string &name : listNames)
        written.emplace_back(jsonText(name, repaired), &m_lists.at(name));
    if (repaired)
        refuseNamesWrittenAlike(written, "list");
    for (const auto &[key, elements] : written) {
        auto &array = lists[key] = nlohmann::ordered_json::array();
        for (const std::string &element : *elements)
            array.push_back(jsonText(element));
    }
    return document;
}

} // namespace vyr::engine
