#include "ftprops/vyrobjftpropsformatinfo.h"

#include "attrtypes/typestring.h"
#include "ftprops/guiparameterline.h"

#include "vyr/IVYRSession.h"

#include <utility>

namespace vyr {

namespace {

// The elements of a list value as pairs; an unpaired last element is left out.
template <class Visit>
void forEachPair(const StringList &elements, Visit visit)
{
    for (std::size_t i = 0; i + 1 < elements.size(); i += 2)
        visit(elements[i], elements[i + 1]);
}

} // namespace

VYRObjFTPropsFormatInfo::VYRObjFTPropsFormatInfo(std::string_view capabilities, IVYRSession *session, std::string id)
    : m_session(session)
    , m_id(std::move(id))
    , m_capabilities(capabilities)
{
    const auto list = [this](const std::string &key) { return m_capabilities.list(key); };
    forEachPair(list("DEFLINE_PARMS"), [this](const std::string &line, const std::string &fallback) {
        GuiParameterLine parts = ParseParameterLine(line);
        const std::string name = parts.name;
        if (!m_parameterLines.contains(name))
            m_parameterNames.push_back(name);
        m_parameterLines[name] = line;
        m_parameterParts[name] = std::move(parts);
        m_parameterDefaults[name] = fallback;
    });
    forEachPair(list("DEFLINE_PARM_HELP"),
                [this](const std::string &name, const std::string &help) { m_parameterHelp[name] = help; });
    m_dataTypes = std::make_unique<DataTypeMappings>(m_capabilities.formatName(), m_capabilities.isSource());
    forEachPair(list("DATA_TYPE_MAPPINGS"), [this](const std::string &native, const std::string &generic) {
        m_dataTypes->addMapping(native, generic, kStoredListMode);
    });
    forEachPair(list("GEOM_TYPE_MAPPINGS"), [this](const std::string &native, const std::string &generic) {
        m_geometryTypes.add(native, generic);
    });
    // A page asks for the type of each of hundreds of format attributes.
    forEachPair(list("FORMAT_ATTRS"), [this](const std::string &name, const std::string &type) {
        m_formatAttrNames.push_back(name);
        m_formatAttrTypes.emplace(name, type);
    });
}

std::unique_ptr<VYRObjFTPropsFormatInfo> VYRObjFTPropsFormatInfo::namedByFormat(std::string_view capabilities,
                                                                                 IVYRSession *session)
{
    auto record = std::make_unique<VYRObjFTPropsFormatInfo>(capabilities, session, std::string());
    record->m_id = record->getFormatName();
    return record;
}

VYRObjFTPropsFormatInfo::~VYRObjFTPropsFormatInfo() = default;

std::string VYRObjFTPropsFormatInfo::getId() const
{
    return m_id;
}

std::string VYRObjFTPropsFormatInfo::getFormatName() const
{
    return m_capabilities.formatName();
}

std::string VYRObjFTPropsFormatInfo::getFormatLongName() const
{
    return m_capabilities.formatName();
}

bool VYRObjFTPropsFormatInfo::isSource() const
{
    return m_capabilities.isSource();
}

bool VYRObjFTPropsFormatInfo::isSchemaReader() const
{
    return m_capabilities.text("ROLE") == "SCHEMA_READER";
}

StringList VYRObjFTPropsFormatInfo::getDeflineParmNames() const
{
    return m_parameterNames;
}

std::string VYRObjFTPropsFormatInfo::getDeflineParm(const std::string &name) const
{
    const auto found = m_parameterLines.find(name);
    return found == m_parameterLines.end() ? std::string() : found->second;
}

GuiParameterLine VYRObjFTPropsFormatInfo::getDeflineParmLine(const std::string &name) const
{
    const auto found = m_parameterParts.find(name);
    return found == m_parameterParts.end() ? ParseParameterLine(std::string_view()) : found->second;
}

std::string VYRObjFTPropsFormatInfo::getDeflineParmDefault(const std::string &name) const
{
    const auto found = m_parameterDefaults.find(name);
    return found == m_parameterDefaults.end() ? std::string() : found->second;
}

std::string VYRObjFTPropsFormatInfo::getDeflineParmHelp(const std::string &name) const
{
    const auto found = m_parameterHelp.find(name);
    return found == m_parameterHelp.end() ? std::string() : found->second;
}

bool VYRObjFTPropsFormatInfo::hasDeflineAttrs() const
{
    return m_capabilities.flag("HAS_DEFLINE_ATTRS", true);
}

bool VYRObjFTPropsFormatInfo::isDatabase() const
{
    if (!m_session)
        return false;
    IVYRStringArray *query = m_session->createStringArray();
    if (!query)
        return false;
    query->append(getFormatName().c_str());
    bool database = false;
    if (m_session->getProperties(kVyrSessionPropFormatInfo, *query)) {
        for (std::size_t i = 0; i + 1 < query->entries(); i += 2) {
            if (std::string_view(query->elementAt(i)) == "FORMAT_TYPE")
                database = std::string_view(query->elementAt(i + 1)) == "DATABASE";
        }
    }
    m_session->destroyStringArray(query);
    return database;
}

bool VYRObjFTPropsFormatInfo::supportsFeatTypeFanout() const
{
    return m_capabilities.flag("SUPPORTS_FEAT_TYPE_FANOUT", false);
}

bool VYRObjFTPropsFormatInfo::supportsMultiGeom() const
{
    return m_capabilities.flag("SUPPORTS_MULTI_GEOM", false);
}

StringList VYRObjFTPropsFormatInfo::getFormatAttrNames() const
{
    return m_formatAttrNames;
}

std::string VYRObjFTPropsFormatInfo::getFormatAttrType(const std::string &name) const
{
    // The first pair of a name holds, as a search from the front finds it.
    const auto found = m_formatAttrTypes.find(name);
    return found == m_formatAttrTypes.end() ? std::string() : found->second;
}

std::string VYRObjFTPropsFormatInfo::getAttrCase() const
{
    return m_capabilities.text("ATTR_CASE");
}

int VYRObjFTPropsFormatInfo::getMaxAttrLength() const
{
    return m_capabilities.integer("MAX_ATTR_LENGTH");
}

std::string VYRObjFTPropsFormatInfo::getAttrNameInvalidChars() const
{
    return m_capabilities.text("ATTR_NAME_INVALID_CHARS");
}

StringList VYRObjFTPropsFormatInfo::getDestIllegalAttrList() const
{
    return m_capabilities.list("DEST_ILLEGAL_ATTR_LIST");
}

StringSet VYRObjFTPropsFormatInfo::getDestIllegalAttrSet() const
{
    const StringList names = getDestIllegalAttrList();
    return StringSet(names.begin(), names.end());
}

std::string VYRObjFTPropsFormatInfo::getFeatureTypeCase() const
{
    return m_capabilities.text("FEATURE_TYPE_CASE");
}

int VYRObjFTPropsFormatInfo::getFeatureTypeLength() const
{
    return m_capabilities.integer("FEATURE_TYPE_LENGTH");
}

bool VYRObjFTPropsFormatInfo::featureTypeLengthIncludesPrefix() const
{
    return m_capabilities.flag("FEATURE_TYPE_LENGTH_INCLUDES_PREFIX", false);
}

std::string VYRObjFTPropsFormatInfo::getFeatureTypeInvalidChars() const
{
    return m_capabilities.text("FEATURE_TYPE_INVALID_CHARS");
}

StringList VYRObjFTPropsFormatInfo::getFeatureTypeReservedWords() const
{
    return m_capabilities.list("FEATURE_TYPE_RESERVED_WORDS");
}

StringSet VYRObjFTPropsFormatInfo::getFeatureTypeReservedWordSet() const
{
    const StringList words = getFeatureTypeReservedWords();
    return StringSet(words.begin(), words.end());
}

StringList VYRObjFTPropsFormatInfo::getAllowedFeatTypes() const
{
    return m_capabilities.list("ALLOWED_FEAT_TYPES");
}

std::string VYRObjFTPropsFormatInfo::getFeatTypeValidationScript() const
{
    return m_capabilities.text("FEAT_TYPE_VALIDATION_SCRIPT");
}

int VYRObjFTPropsFormatInfo::getTypeListMode() const
{
    return kStoredListMode;
}

const DataTypeMappings *VYRObjFTPropsFormatInfo::getDataTypeMappings() const
{
    return m_dataTypes.get();
}

const GeometryTypeMappings *VYRObjFTPropsFormatInfo::getGeometryTypeMappings() const
{
    return &m_geometryTypes;
}

} // namespace vyr
