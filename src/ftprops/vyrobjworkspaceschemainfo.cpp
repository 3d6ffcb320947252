#include "ftprops/vyrobjworkspaceschemainfo.h"

#include "attrtypes/datatypemappings.h"
#include "ftprops/geometrytranslation.h"
#include "ftprops/listelements.h"
#include "ftprops/schemamove.h"
#include "ftprops/sessionobjects.h"
#include "util/numbertext.h"

#include "vyr/IVYRFeature.h"

#include <utility>

namespace vyr {
namespace {

constexpr const char *kSchemaSources = "vyr_schema_sources";
constexpr const char *kAdditionalNames = "vyr_additional_names";
constexpr const char *kDynamicOptions[] = {"vyr_dynamic_option1", "vyr_dynamic_option2", "vyr_dynamic_option3"};
constexpr const char *kDynamicTexts[] = {"vyr_dynamic_text1", "vyr_dynamic_text2", "vyr_dynamic_text3"};

// Anything unreadable counts as 0, the default.
std::int32_t numberOf(const std::string &text)
{
    std::int32_t value = 0;
    return parseInteger(text, value) ? value : 0;
}

} // namespace

VYRObjWorkspaceSchemaInfo::VYRObjWorkspaceSchemaInfo(IVYRSession &session, IVYRFeature &feature,
                                                     const FTPropsFormatInfo &format, FormatLookup lookup)
    : VYRObjFTPropsSchemaInfo(session, feature, format)
    , m_lookup(std::move(lookup))
{}

ScratchSchema VYRObjWorkspaceSchemaInfo::makeScratchCopy() const
{
    IVYRFeature *copy = copyFeature({kSchemaSources, kAdditionalNames});
    if (!copy)
        return NoScratchSchema();
    auto *record = new VYRObjWorkspaceSchemaInfo(session(), *copy, format(), m_lookup);
    record->ownFeature();
    return ownScratch(record);
}

std::string VYRObjWorkspaceSchemaInfo::text(const char *name) const
{
    std::string value;
    readAttribute(name, value);
    return value;
}

bool VYRObjWorkspaceSchemaInfo::flag(const char *name) const
{
    return text(name) == "yes";
}

// A setting is written only when it changes, so that a feature that was not
// edited keeps its file as it was, defaults left unwritten.
void VYRObjWorkspaceSchemaInfo::setText(const char *name, const std::string &value)
{
    if (text(name) != value)
        feature().setAttribute(name, value.c_str());
}

void VYRObjWorkspaceSchemaInfo::setFlag(const char *name, bool value)
{
    if (flag(name) != value)
        setText(name, value ? "yes" : "no");
}

void VYRObjWorkspaceSchemaInfo::setNumber(const char *name, std::int32_t value)
{
    if (numberOf(text(name)) != value)
        setText(name, std::to_string(value));
}

void VYRObjWorkspaceSchemaInfo::setList(const char *name, const StringList &values)
{
    if (readList(name) == values)
        return;
    // An empty list reads as no list: kept as none, so that taking a
    // choice back leaves the feature as it was.
    if (values.empty()) {
        feature().removeListAttribute(name);
        return;
    }
    SessionArray array(session());
    array.assign(values);
    feature().setListAttribute(name, *array);
}

void VYRObjWorkspaceSchemaInfo::setFormatId(const std::string &formatId)
{
    const FTPropsFormatInfo *target = m_lookup ? m_lookup(formatId) : nullptr;
    if (!target || formatId == getFormatId())
        return;
    moveSchema(format(), *target);
    setText("vyr_format", formatId);
}

void VYRObjWorkspaceSchemaInfo::moveSchema(const FTPropsFormatInfo &from, const FTPropsFormatInfo &to)
{
    // Everything is read in the old format's words before the record takes
    // the new ones.
    const std::string geometry = getGeometry();
    std::vector<UserAttributeTypes> attributes;
    for (std::string &name : getAttributeNames(true, false)) {
        std::string generic;
        readAttribute(name, generic);
        std::string type = getAttributeType(name);
        attributes.push_back({std::move(name), std::move(type), std::move(generic)});
    }
    bindFormat(to);

    const bool bothMapGeometries = HasGeometryMappings(from) && HasGeometryMappings(to);
    setGeometry(bothMapGeometries ? TranslateGeometry(geometry, from, to) : std::string());

    const std::string fanoutAttribute = getFanoutAttribute();
    std::vector<UserAttributeTypes> moved;
    if (to.hasDeflineAttrs()) {
        const StringList formatNames = to.getFormatAttrNames();
        StringSet taken(formatNames.begin(), formatNames.end());
        for (const UserAttributeTypes &attribute : attributes) {
            UserAttributeTypes carried
                = MoveUserAttribute(from, to, attribute, [&taken](const std::string &name) { return taken.contains(name); });
            taken.insert(carried.name);
            if (carried.name != attribute.name && fanoutAttribute == attribute.name)
                setFanoutAttribute(carried.name);
            moved.push_back(std::move(carried));
        }
    }
    // A format without user attributes keeps none; an attribute carried
    // under a new name leaves nothing of the old one.
    // Fan-out is for formats that write one feature type per value.
    if (!to.supportsFeatTypeFanout()) {
        setFanout(false);
        setFanoutAttribute({});
    }
    setUserAttributes(moved);
    const StringList formatAttributes = to.getFormatAttrNames();
    retainPairs(PairKind::FormatAttributes,
                [&formatAttributes](const std::string &name) { return IsFormatAttribute(formatAttributes, name); });
    retainPairs(PairKind::Parameters, [&to](const std::string &name) { return !to.getDeflineParm(name).empty(); });
}

void VYRObjWorkspaceSchemaInfo::setMerged(bool merged)
{
    setFlag("vyr_merged", merged);
}

bool VYRObjWorkspaceSchemaInfo::isMerged() const
{
    return flag("vyr_merged");
}

void VYRObjWorkspaceSchemaInfo::setMergeSettings(const std::string &filter, int kind, bool option)
{
    setText("vyr_merge_filter", filter);
    setNumber("vyr_merge_kind", kind);
    setFlag("vyr_merge_option", option);
}

std::string VYRObjWorkspaceSchemaInfo::getMergeFilter() const
{
    return text("vyr_merge_filter");
}

int VYRObjWorkspaceSchemaInfo::getMergeKind() const
{
    return numberOf(text("vyr_merge_kind"));
}

bool VYRObjWorkspaceSchemaInfo::getMergeOption() const
{
    return flag("vyr_merge_option");
}

void VYRObjWorkspaceSchemaInfo::setFanout(bool fanout)
{
    setFlag("vyr_fanout", fanout);
}

bool VYRObjWorkspaceSchemaInfo::isFanout() const
{
    return flag("vyr_fanout");
}

void VYRObjWorkspaceSchemaInfo::setFanoutAttribute(const std::string &name)
{
    setText("vyr_fanout_attribute", name);
}

std::string VYRObjWorkspaceSchemaInfo::getFanoutAttribute() const
{
    return text("vyr_fanout_attribute");
}

StringList VYRObjWorkspaceSchemaInfo::getSchemaSources() const
{
    return readList(kSchemaSources);
}

void VYRObjWorkspaceSchemaInfo::setSchemaSources(const StringList &sources)
{
    setList(kSchemaSources, sources);
}

bool VYRObjWorkspaceSchemaInfo::isDynamic() const
{
    return flag("vyr_dynamic");
}

void VYRObjWorkspaceSchemaInfo::setDynamic(bool dynamic)
{
    setFlag("vyr_dynamic", dynamic);
}

DynamicSchemaInfo VYRObjWorkspaceSchemaInfo::getDynamicSchemaInfo() const
{
    DynamicSchemaInfo settings;
    SessionString texts[3] = {SessionString(session()), SessionString(session()), SessionString(session())};
    for (int i = 0; i < 3; ++i)
        (*texts[i]).assign(text(kDynamicTexts[i]).c_str());
    settings.setOption1(numberOf(text(kDynamicOptions[0])));
    settings.setText1(*texts[0]);
    settings.setOption2(numberOf(text(kDynamicOptions[1])));
    settings.setText2(*texts[1]);
    settings.setOption3(numberOf(text(kDynamicOptions[2])));
    settings.setText3(*texts[2]);
    return settings;
}

void VYRObjWorkspaceSchemaInfo::setDynamicSchemaInfo(const IDynamicSchemaInfo &settings)
{
    const std::int32_t options[3] = {settings.getOption1(), settings.getOption2(), settings.getOption3()};
    SessionString texts[3] = {SessionString(session()), SessionString(session()), SessionString(session())};
    settings.getText1(*texts[0]);
    settings.getText2(*texts[1]);
    settings.getText3(*texts[2]);
    for (int i = 0; i < 3; ++i) {
        setNumber(kDynamicOptions[i], options[i]);
        setText(kDynamicTexts[i], texts[i].text());
    }
}

StringList VYRObjWorkspaceSchemaInfo::getAdditionalNames() const
{
    return readList(kAdditionalNames);
}

void VYRObjWorkspaceSchemaInfo::setAdditionalNames(const StringList &names)
{
    setList(kAdditionalNames, names);
}

} // namespace vyr
