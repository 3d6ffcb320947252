#include "ftprops/vyrobjftpropsschemainfo.h"

#include "attrtypes/datatypemappings.h"
#include "attrtypes/typestring.h"
#include "ftprops/geometrytypemappings.h"
#include "ftprops/guiparameterline.h"
#include "ftprops/listelements.h"
#include "ftprops/sessionobjects.h"
#include "util/numbertext.h"
#include "util/pattern.h"

#include "stringobjects/vyrbufferstringimp.h"
#include "stringobjects/vyrpackedstringarrayimp.h"

#include "vyr/IVYRFeature.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace vyr {

namespace {

constexpr const char *kFormatAttrNames = "*vyr_format_attr_name";
constexpr const char *kFormatAttrTypes = "*vyr_format_attr_type";
constexpr const char *kParameterNames = "*vyr_parameter_name";
constexpr const char *kParameterValues = "*vyr_parameter_value";

bool isUserAttributeName(std::string_view name)
{
    return !name.starts_with("vyr_") && !name.starts_with("*");
}

bool isGeometryAttributeName(std::string_view name)
{
    static const Pattern geometry("^\\*?vyr_geometry{.*}$");
    return geometry.foundIn(name);
}

std::string indexed(std::string_view prefix, std::size_t index)
{
    return std::string(prefix) + "{" + numberText(static_cast<std::uint32_t>(index)) + "}";
}

} // namespace

VYRObjFTPropsSchemaInfo::VYRObjFTPropsSchemaInfo(IVYRSession &session, IVYRFeature &feature,
                                                 const FTPropsFormatInfo &format)
    : m_session(session)
    , m_feature(feature)
{
    bindFormat(format);
}

void VYRObjFTPropsSchemaInfo::bindFormat(const FTPropsFormatInfo &format)
{
    m_format = &format;
    attributesChanged();
    m_formatAttributeTypes.clear();
    for (const std::string &name : format.getFormatAttrNames())
        m_formatAttributeTypes.emplace(name, format.getFormatAttrType(name));
}

VYRObjFTPropsSchemaInfo::~VYRObjFTPropsSchemaInfo()
{
    if (m_ownsFeature) {
        IVYRFeature *feature = &m_feature;
        m_session.destroyFeature(feature);
    }
}

IVYRFeature *VYRObjFTPropsSchemaInfo::copyFeature(const StringList &moreLists) const
{
    IVYRFeature *copy = m_session.createFeature();
    if (!copy)
        return nullptr;
    copy->setFeatureType(m_feature.getFeatureType());
    SessionArray names(m_session);
    // Every attribute in the order it was first set, then those of the
    // attribute order again in that order, which puts them in it.
    m_feature.getAllAttributeNames(*names);
    VYRBufferStringImp value;
    for (const std::string &name : names.list()) {
        if (m_feature.getAttribute(name.c_str(), value))
            copy->setAttribute(name.c_str(), std::string(value.view()).c_str());
    }
    m_feature.getOrderedAttributeNames(*names);
    for (const std::string &name : names.list()) {
        if (m_feature.getAttribute(name.c_str(), value))
            copy->setOrderedAttribute(name.c_str(), std::string(value.view()).c_str());
    }
    StringList lists = {kFormatAttrNames, kFormatAttrTypes, kParameterNames, kParameterValues};
    lists.insert(lists.end(), moreLists.begin(), moreLists.end());
    SessionArray elements(m_session);
    for (const std::string &list : lists) {
        m_feature.getListAttribute(list.c_str(), *elements);
        if ((*elements).entries() > 0)
            copy->setListAttribute(list.c_str(), *elements);
    }
    return copy;
}

ScratchSchema VYRObjFTPropsSchemaInfo::makeScratchCopy() const
{
    IVYRFeature *copy = copyFeature({});
    if (!copy)
        return NoScratchSchema();
    auto *record = new VYRObjFTPropsSchemaInfo(m_session, *copy, *m_format);
    record->ownFeature();
    return ownScratch(record);
}

std::string VYRObjFTPropsSchemaInfo::getName() const
{
    return m_feature.getFeatureType();
}

void VYRObjFTPropsSchemaInfo::setName(const std::string &name)
{
    m_feature.setFeatureType(name.c_str());
}

std::string VYRObjFTPropsSchemaInfo::getLongName() const
{
    return getName();
}

std::string VYRObjFTPropsSchemaInfo::getFormatId() const
{
    return m_format->getId();
}

StringList VYRObjFTPropsSchemaInfo::readList(const char *name) const
{
    SessionArray list(m_session);
    m_feature.getListAttribute(name, *list);
    return list.list();
}

void VYRObjFTPropsSchemaInfo::writeLists(PairLists lists, const StringList &names, const StringList &values)
{
    attributesChanged();
    m_feature.removeListAttribute(lists.names);
    m_feature.removeListAttribute(lists.values);
    SessionArray array(m_session);
    array.assign(names);
    m_feature.setListAttribute(lists.names, *array);
    array.assign(values);
    m_feature.setListAttribute(lists.values, *array);
}

namespace {

// A pair list held in memory, its two lists of one length.
struct PairValues
{
    StringList names;
    StringList values;

    // Removes every pair of `name`; whether anything was removed.
    bool remove(const std::string &name)
    {
        if (std::find(names.begin(), names.end(), name) == names.end())
            return false;
        std::size_t kept = 0;
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (names[i] == name)
                continue;
            // Never onto itself: a string moved onto itself may be left empty.
            if (kept != i) {
                names[kept] = std::move(names[i]);
                values[kept] = std::move(values[i]);
            }
            ++kept;
        }
        names.resize(kept);
        values.resize(kept);
        return true;
    }
    // The pair of `name` at the end of both lists.
    void set(const std::string &name, const std::string &value)
    {
        remove(name);
        names.push_back(name);
        values.push_back(value);
    }
};

} // namespace

std::pair<StringList, StringList> VYRObjFTPropsSchemaInfo::readPairs(PairLists lists) const
{
    StringList names = readList(lists.names);
    StringList values = readList(lists.values);
    if (names.size() == values.size())
        return {std::move(names), std::move(values)};
    // Appending to lists of two lengths would pair later names with earlier
    // values. Exposed format attributes are shown by name, and their types
    // are the format's own, so the pairs can be made whole again; parameter
    // values that do not pair up were never read by anybody.
    if (std::string_view(lists.names) != kFormatAttrNames)
        return {};
    values.clear();
    for (const std::string &name : names) {
        const std::string *type = formatAttributeType(name);
        values.push_back(type ? *type : std::string());
    }
    return {std::move(names), std::move(values)};
}

void VYRObjFTPropsSchemaInfo::removeEntry(PairLists lists, const std::string &name)
{
    const StringList names = readList(lists.names);
    if (std::find(names.begin(), names.end(), name) == names.end())
        return;
    auto [pairNames, pairValues] = readPairs(lists);
    PairValues pairs{std::move(pairNames), std::move(pairValues)};
    if (pairs.remove(name))
        writeLists(lists, pairs.names, pairs.values);
}

void VYRObjFTPropsSchemaInfo::setEntry(PairLists lists, const std::string &name, const std::string &value)
{
    auto [names, values] = readPairs(lists);
    PairValues pairs{std::move(names), std::move(values)};
    pairs.set(name, value);
    writeLists(lists, pairs.names, pairs.values);
}

void VYRObjFTPropsSchemaInfo::retainPairs(PairKind kind, const std::function<bool(const std::string &)> &keep)
{
    const PairLists lists = kind == PairKind::FormatAttributes ? PairLists{kFormatAttrNames, kFormatAttrTypes}
                                                               : PairLists{kParameterNames, kParameterValues};
    auto [names, values] = readPairs(lists);
    PairValues pairs{std::move(names), std::move(values)};
    PairValues kept;
    for (std::size_t i = 0; i < pairs.names.size(); ++i) {
        if (keep(pairs.names[i])) {
            kept.names.push_back(std::move(pairs.names[i]));
            kept.values.push_back(std::move(pairs.values[i]));
        }
    }
    if (kept.names.size() == pairs.names.size())
        return;
    if (kept.names.empty()) {
        attributesChanged();
        m_feature.removeListAttribute(lists.names);
        m_feature.removeListAttribute(lists.values);
        return;
    }
    writeLists(lists, kept.names, kept.values);
}

bool VYRObjFTPropsSchemaInfo::readAttribute(const std::string &name, std::string &value) const
{
    VYRBufferStringImp text;
    if (!m_feature.getAttribute(name.c_str(), text))
        return false;
    value = std::string(text.view());
    return true;
}

std::string VYRObjFTPropsSchemaInfo::genericType(const std::string &type) const
{
    return m_format->getDataTypeMappings()->genericText(type, kDialogListMode);
}

std::string VYRObjFTPropsSchemaInfo::getAttributeType(const std::string &name) const
{
    if (const std::string *type = formatAttributeType(name))
        return *type;
    // One buffer for both reads, and no string of the session's: a page
    // reads the types of thousands.
    VYRBufferStringImp text;
    if (m_feature.getAttribute(("*" + name).c_str(), text))
        return std::string(text.view());
    const std::string stored = m_feature.getAttribute(name.c_str(), text) ? std::string(text.view()) : std::string();
    const DataTypeMappings &mappings = *m_format->getDataTypeMappings();
    const auto generic = mappings.createType(stored, kStoredListMode);
    const auto native = generic ? mappings.toNative(*generic) : nullptr;
    return native ? formatType(*native, kDialogListMode) : stored;
}

std::string VYRObjFTPropsSchemaInfo::getGenericAttributeType(const std::string &name) const
{
    std::string generic;
    readAttribute(name, generic);
    return generic;
}

void VYRObjFTPropsSchemaInfo::setAttributeType(const std::string &name, const std::string &type)
{
    attributesChanged();
    m_feature.setAttribute(("*" + name).c_str(), type.c_str());
    const std::string generic = genericType(type);
    if (!generic.empty())
        m_feature.setAttribute(name.c_str(), generic.c_str());
}

void VYRObjFTPropsSchemaInfo::setAttributes(const StringList &namesAndTypes)
{
    std::vector<UserAttributeTypes> attributes;
    attributes.reserve(namesAndTypes.size() / 2);
    for (std::size_t i = 0; i + 1 < namesAndTypes.size(); i += 2)
        attributes.push_back({namesAndTypes[i], namesAndTypes[i + 1], {}});
    setUserAttributes(attributes);
}

void VYRObjFTPropsSchemaInfo::setUserAttributes(const std::vector<UserAttributeTypes> &attributes)
{
    attributesChanged();
    // Only the attributes that go are removed: the others keep their place
    // among the feature's attributes, so that writing the same list again
    // leaves the feature as it was. The order comes from the list.
    std::unordered_set<std::string_view> kept;
    kept.reserve(attributes.size());
    for (const UserAttributeTypes &attribute : attributes)
        kept.insert(attribute.name);
    // Read packed, as the names are read on opening: one block, not a
    // string object per name.
    VYRPackedStringArrayImp all;
    m_feature.getAllAttributeNames(all);
    for (std::size_t i = 0; i < all.entries(); ++i) {
        if (const std::string_view name = all.view(i); isUserAttributeName(name) && !kept.contains(name))
            removeUserAttribute(std::string(name));
    }
    for (const UserAttributeTypes &attribute : attributes)
        writeUserAttribute(attribute, true);
}

void VYRObjFTPropsSchemaInfo::storeUserAttribute(const UserAttributeTypes &attribute)
{
    attributesChanged();
    writeUserAttribute(attribute, false);
}

void VYRObjFTPropsSchemaInfo::writeUserAttribute(const UserAttributeTypes &attribute, bool last)
{
    const std::string &name = attribute.name;
    std::string stored;
    const bool exists = readAttribute(name, stored);
    const auto place = [&](const std::string &generic) {
        if (last || !exists)
            m_feature.setOrderedAttribute(name.c_str(), generic.c_str());
        else if (generic != stored)
            m_feature.setAttribute(name.c_str(), generic.c_str());
    };
    if (exists && (attribute.generic.empty() || attribute.generic == stored)
        && getAttributeType(name) == attribute.type) {
        place(stored);
        return;
    }
    const std::string generic = attribute.generic.empty() ? genericType(attribute.type) : attribute.generic;
    const std::string companion = "*" + name;
    if (generic == attribute.type)
        m_feature.removeAttribute(companion.c_str());
    else
        m_feature.setAttribute(companion.c_str(), attribute.type.c_str());
    place(generic);
}

const std::string *VYRObjFTPropsSchemaInfo::formatAttributeType(const std::string &name) const
{
    if (const auto found = m_formatAttributeTypes.find(name); found != m_formatAttributeTypes.end())
        return &found->second;
    // An element "part{3}" of a format list attribute "part{}"; most names
    // have no braces at all.
    if (name.find('{') == std::string::npos)
        return nullptr;
    static const Pattern number("{[0-9]+}");
    const auto braces = number.find(name);
    if (!braces)
        return nullptr;
    const auto list = m_formatAttributeTypes.find(name.substr(0, braces->begin) + "{}" + name.substr(braces->end));
    return list == m_formatAttributeTypes.end() ? nullptr : &list->second;
}

void VYRObjFTPropsSchemaInfo::removeAttribute(const std::string &name)
{
    attributesChanged();
    if (formatAttributeType(name))
        removeEntry({kFormatAttrNames, kFormatAttrTypes}, name);
    else
        removeUserAttribute(name);
}

void VYRObjFTPropsSchemaInfo::removeUserAttribute(const std::string &name)
{
    // A removed attribute takes its type in the format's words with it: a
    // "*" companion of nothing is the form of a type nobody has, and after
    // a move one in the words of a format the feature type left.
    m_feature.removeAttribute(name.c_str());
    if (isUserAttributeName(name))
        m_feature.removeAttribute(("*" + name).c_str());
}

void VYRObjFTPropsSchemaInfo::storeAttribute(const std::string &name, const std::string &type, bool asFormatAttribute)
{
    attributesChanged();
    if (asFormatAttribute)
        setEntry({kFormatAttrNames, kFormatAttrTypes}, name, type);
    else
        m_feature.setAttribute(name.c_str(), type.c_str());
}

void VYRObjFTPropsSchemaInfo::beginUpdate()
{
    ++m_updateDepth;
}

void VYRObjFTPropsSchemaInfo::endUpdate()
{
    if (m_updateDepth > 0 && --m_updateDepth == 0 && m_readingDepth == 0)
        m_namesRead.clear();
}

void VYRObjFTPropsSchemaInfo::beginReading()
{
    ++m_readingDepth;
}

void VYRObjFTPropsSchemaInfo::endReading()
{
    if (m_readingDepth > 0 && --m_readingDepth == 0 && m_updateDepth == 0)
        m_namesRead.clear();
}

StringList VYRObjFTPropsSchemaInfo::getAttributeNames(bool user, bool format) const
{
    const bool kept = keepsNames(user && format);
    if (!format)
        return user ? (kept ? namesOf(UserNames) : readUserAttributeNames()) : StringList();
    if (!user)
        return kept ? namesOf(FormatNames) : readFormatAttributeNames(false);
    StringList names = kept ? namesOf(UserNames) : readUserAttributeNames();
    const StringList formatNames = kept ? namesOf(FormatNamesAfterUser) : readFormatAttributeNames(true);
    names.insert(names.end(), formatNames.begin(), formatNames.end());
    return names;
}

const StringList &VYRObjFTPropsSchemaInfo::namesOf(int part) const
{
    auto read = m_namesRead.find(part);
    if (read == m_namesRead.end()) {
        read = m_namesRead
                   .emplace(part, part == UserNames ? readUserAttributeNames()
                                                    : readFormatAttributeNames(part == FormatNamesAfterUser))
                   .first;
    }
    return read->second;
}

bool VYRObjFTPropsSchemaInfo::isAttribute(const std::string &name) const
{
    // A name the feature holds is listed as a user attribute or not at all;
    // any other is listed when the exposed format attributes name it.
    VYRBufferStringImp text;
    if (hasAttribute(name, text))
        return isUserAttributeName(name);
    const StringList formatNames = readList(kFormatAttrNames);
    return std::find(formatNames.begin(), formatNames.end(), name) != formatNames.end();
}

StringList VYRObjFTPropsSchemaInfo::readUserAttributeNames() const
{
    // The user's attributes in their order, then the others in the order
    // they were set: the engine keeps each name once in each list, and only
    // attributes in the order. When the order holds as many of the user's
    // names as the feature has, it holds them all. The lists are read
    // packed: a feature may have 100,000 names.
    VYRPackedStringArrayImp ordered;
    m_feature.getOrderedAttributeNames(ordered);
    VYRPackedStringArrayImp all;
    m_feature.getAllAttributeNames(all);
    const auto userNames = [](const VYRPackedStringArrayImp &names) {
        std::size_t count = 0;
        for (std::size_t i = 0; i < names.entries(); ++i)
            count += isUserAttributeName(names.view(i)) ? 1 : 0;
        return count;
    };
    const std::size_t inOrder = userNames(ordered);
    StringList result;
    result.reserve(inOrder);
    for (std::size_t i = 0; i < ordered.entries(); ++i) {
        if (const std::string_view name = ordered.view(i); isUserAttributeName(name))
            result.emplace_back(name);
    }
    if (inOrder == userNames(all))
        return result;
    // Views of the packed lists, which stay where they are.
    std::unordered_set<std::string_view> seen;
    seen.reserve(ordered.entries() + all.entries());
    for (std::size_t i = 0; i < ordered.entries(); ++i)
        seen.insert(ordered.view(i));
    for (std::size_t i = 0; i < all.entries(); ++i) {
        const std::string_view name = all.view(i);
        if (isUserAttributeName(name) && seen.insert(name).second)
            result.emplace_back(name);
    }
    return result;
}

bool VYRObjFTPropsSchemaInfo::hasAttribute(const std::string &name, IVYRString &text) const
{
    return m_feature.getAttribute(name.c_str(), text);
}

StringList VYRObjFTPropsSchemaInfo::readFormatAttributeNames(bool afterUser) const
{
    // After the user attributes, a format attribute the feature has as an
    // attribute of its own (a user attribute, or a name only the engine
    // uses) is not listed again; nor is a format attribute listed twice.
    StringList result;
    std::unordered_set<std::string> listed;
    VYRBufferStringImp text;
    for (std::string &name : readList(kFormatAttrNames)) {
        if ((afterUser && hasAttribute(name, text)) || !listed.insert(name).second)
            continue;
        result.push_back(std::move(name));
    }
    return result;
}

std::string VYRObjFTPropsSchemaInfo::getParameter(const std::string &name) const
{
    std::string value = m_format->getDeflineParmDefault(name);
    const StringList names = readList(kParameterNames);
    if (std::find(names.begin(), names.end(), name) == names.end())
        return value;
    const StringList values = readList(kParameterValues);
    if (values.size() != names.size())
        return value;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i] == name)
            value = values[i];
    }
    return value;
}

bool VYRObjFTPropsSchemaInfo::isUnstoredParameter(const std::string &name) const
{
    const GuiParameterLine line = m_format->getDeflineParmLine(name);
    // Whole-line and enabling parameters are part of the format's prompt,
    // not values of the feature type.
    return line.wholeLine || line.type == "DISABLE";
}

void VYRObjFTPropsSchemaInfo::setParameter(const std::string &name, const std::string &value)
{
    if (isUnstoredParameter(name))
        removeEntry({kParameterNames, kParameterValues}, name);
    else
        setEntry({kParameterNames, kParameterValues}, name, value);
}

std::map<std::string, std::string> VYRObjFTPropsSchemaInfo::getParameters(const StringList &names) const
{
    const StringList stored = readList(kParameterNames);
    const StringList values = readList(kParameterValues);
    // The later of two pairs of a name answers; an inconsistent pair list
    // answers nothing.
    std::unordered_map<std::string, std::size_t> last;
    if (values.size() == stored.size()) {
        for (std::size_t i = 0; i < stored.size(); ++i)
            last[stored[i]] = i;
    }
    std::map<std::string, std::string> result;
    for (const std::string &name : names) {
        const auto found = last.find(name);
        result[name] = found != last.end() ? values[found->second] : m_format->getDeflineParmDefault(name);
    }
    return result;
}

void VYRObjFTPropsSchemaInfo::setParameters(const std::vector<std::pair<std::string, std::string>> &values)
{
    auto [names, stored] = readPairs({kParameterNames, kParameterValues});
    PairValues pairs{std::move(names), std::move(stored)};
    bool changed = false;
    // What setting them one by one leaves, in one pass: the pairs of
    // names not given keep their order, and each name given ends up
    // where its last setting put it, at the end, or nowhere when that
    // removed it.
    std::unordered_map<std::string_view, std::size_t> last;
    for (std::size_t i = 0; i < values.size(); ++i)
        last[values[i].first] = i;
    PairValues result;
    for (std::size_t i = 0; i < pairs.names.size(); ++i) {
        if (last.contains(pairs.names[i])) {
            changed = true;
            continue;
        }
        result.names.push_back(std::move(pairs.names[i]));
        result.values.push_back(std::move(pairs.values[i]));
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        const auto &[name, value] = values[i];
        if (last.at(name) != i || isUnstoredParameter(name))
            continue;
        result.names.push_back(name);
        result.values.push_back(value);
        changed = true;
    }
    if (changed)
        writeLists({kParameterNames, kParameterValues}, result.names, result.values);
}

StringList VYRObjFTPropsSchemaInfo::geometryFamily(const std::string &prefix) const
{
    StringList values;
    std::string value;
    while (readAttribute(indexed(prefix, values.size()), value))
        values.push_back(value);
    return values;
}

std::string VYRObjFTPropsSchemaInfo::getGeometry() const
{
    StringList geometries = geometryFamily("*vyr_geometry");
    const GeometryTypeMappings &mappings = *m_format->getGeometryTypeMappings();
    for (const std::string &generic : geometryFamily("vyr_geometry")) {
        std::string native = mappings.toNative(generic, false);
        if (std::find(geometries.begin(), geometries.end(), native) == geometries.end())
            geometries.push_back(std::move(native));
    }
    if (!m_format->supportsMultiGeom() && !geometries.empty())
        return geometries.front();
    std::string joined;
    for (const std::string &geometry : geometries)
        joined += geometry + " ";
    const std::size_t first = joined.find_first_not_of(' ');
    return first == std::string::npos ? std::string() : joined.substr(first, joined.find_last_not_of(' ') - first + 1);
}

void VYRObjFTPropsSchemaInfo::setGeometry(const std::string &geometry)
{
    const GeometryTypeMappings &mappings = *m_format->getGeometryTypeMappings();
    std::vector<std::pair<std::string, std::string>> wanted;
    StringList generics;
    constexpr std::string_view kSeparators = " \t\n";
    std::size_t start = geometry.find_first_not_of(kSeparators);
    for (std::size_t index = 0; start != std::string::npos; ++index) {
        const std::size_t end = std::min(geometry.find_first_of(kSeparators, start), geometry.size());
        const std::string token = geometry.substr(start, end - start);
        wanted.emplace_back(indexed("*vyr_geometry", index), token);
        std::string generic = mappings.toGeneric(token, false);
        if (std::find(generics.begin(), generics.end(), generic) == generics.end())
            generics.push_back(std::move(generic));
        start = geometry.find_first_not_of(kSeparators, end);
    }
    for (std::size_t j = 0; j < generics.size(); ++j)
        wanted.emplace_back(indexed("vyr_geometry", j), generics[j]);

    SessionArray all(m_session);
    m_feature.getAllAttributeNames(*all);
    std::map<std::string, std::string> present;
    for (const std::string &name : all.list()) {
        if (isGeometryAttributeName(name))
            readAttribute(name, present[name]);
    }
    // The geometry it holds already: the feature stays as it is, its
    // attributes in their places.
    if (present == std::map<std::string, std::string>(wanted.begin(), wanted.end()))
        return;
    for (const auto &[name, value] : present)
        m_feature.removeAttribute(name.c_str());
    for (const auto &[name, value] : wanted)
        m_feature.setAttribute(name.c_str(), value.c_str());
}

void VYRObjFTPropsSchemaInfo::expandListAttribute(const std::string &name, int count)
{
    if (!ListElements::isList(name))
        return;
    const ListElements elements(name);
    const std::string type = getAttributeType(name);
    // Only elements can be present under an element's name.
    std::unordered_set<std::string> present;
    for (const std::string &existing : getAttributeNames(true, true)) {
        if (!elements.isElement(existing))
            continue;
        present.insert(existing);
        // An index too large to read is beyond any count.
        const auto index = elements.indexOf(existing);
        if (!index || static_cast<long long>(*index) + 1 > count)
            removeAttribute(existing);
    }
    for (int i = 0; i < count; ++i) {
        const std::string elementName = elements.elementName(static_cast<std::uint32_t>(i));
        if (!present.contains(elementName))
            storeAttribute(elementName, type, true);
    }
}

} // namespace vyr
