// VYRObjFTPropsFormatInfo: the format record read from a format capability
// string - comma-separated KEY,VALUE pairs, quoted with double quotes where
// a value holds a comma (list values are quoted lists themselves):
//
//   FORMAT,SHAPEFILE,SOURCE,no,MAX_ATTR_LENGTH,10,
//   FORMAT_ATTRS,"shape_type,char(20),record_id,number(10,0)"
//
// A later value of a key replaces an earlier one, a key without a value is
// ignored, and a key that is absent gives the operation's default. Booleans
// read "t"/"y" and "f"/"n" (any case) or a number (non-zero is true);
// integers read their leading digits; anything unreadable is the default.
//
// isDatabase asks the session for the format's properties
// (kVyrSessionPropFormatInfo) and answers whether "FORMAT_TYPE" is
// "DATABASE". Parameter names come in the order the format first gives them.
#ifndef VYR_FTPROPS_VYROBJFTPROPSFORMATINFO_H
#define VYR_FTPROPS_VYROBJFTPROPSFORMATINFO_H

#include "attrtypes/datatypemappings.h"
#include "ftprops/formatcapabilities.h"
#include "ftprops/ftpropsformatinfo.h"
#include "ftprops/geometrytypemappings.h"

#include <memory>
#include <string_view>
#include <unordered_map>

class IVYRSession;

namespace vyr {

class VYRObjFTPropsFormatInfo final : public FTPropsFormatInfo
{
public:
    // The id every engine format record answers; schema records over engine
    // features pair with it.
    static constexpr char kEngineFormatId[] = "FRMT";

    // `session` (not owned, may be null) is asked only by isDatabase. A host
    // that holds several formats at once gives each its own `id`.
    VYRObjFTPropsFormatInfo(std::string_view capabilities, IVYRSession *session, std::string id = kEngineFormatId);
    // A record whose id is its format's name, for a host that holds several
    // formats and tells them apart by name.
    static std::unique_ptr<VYRObjFTPropsFormatInfo> namedByFormat(std::string_view capabilities, IVYRSession *session);
    ~VYRObjFTPropsFormatInfo() override;

    VYRObjFTPropsFormatInfo(const VYRObjFTPropsFormatInfo &) = delete;
    VYRObjFTPropsFormatInfo &operator=(const VYRObjFTPropsFormatInfo &) = delete;

    std::string getId() const override;
    std::string getFormatName() const override;
    std::string getFormatLongName() const override;
    bool isSource() const override;
    bool isSchemaReader() const override;
    StringList getDeflineParmNames() const override;
    std::string getDeflineParm(const std::string &name) const override;
    // Each line is read once, with the capabilities.
    GuiParameterLine getDeflineParmLine(const std::string &name) const override;
    std::string getDeflineParmDefault(const std::string &name) const override;
    std::string getDeflineParmHelp(const std::string &name) const override;
    bool hasDeflineAttrs() const override;
    bool isDatabase() const override;
    bool supportsFeatTypeFanout() const override;
    bool supportsMultiGeom() const override;
    StringList getFormatAttrNames() const override;
    std::string getFormatAttrType(const std::string &name) const override;
    std::string getAttrCase() const override;
    int getMaxAttrLength() const override;
    std::string getAttrNameInvalidChars() const override;
    StringList getDestIllegalAttrList() const override;
    StringSet getDestIllegalAttrSet() const override;
    std::string getFeatureTypeCase() const override;
    int getFeatureTypeLength() const override;
    bool featureTypeLengthIncludesPrefix() const override;
    std::string getFeatureTypeInvalidChars() const override;
    StringList getFeatureTypeReservedWords() const override;
    StringSet getFeatureTypeReservedWordSet() const override;
    StringList getAllowedFeatTypes() const override;
    std::string getFeatTypeValidationScript() const override;
    int getTypeListMode() const override;
    const DataTypeMappings *getDataTypeMappings() const override;
    const GeometryTypeMappings *getGeometryTypeMappings() const override;

private:
    IVYRSession *m_session;
    std::string m_id;
    FormatCapabilities m_capabilities;
    StringList m_parameterNames;
    std::unordered_map<std::string, std::string> m_parameterLines;
    std::unordered_map<std::string, GuiParameterLine> m_parameterParts;
    std::unordered_map<std::string, std::string> m_parameterDefaults;
    std::unordered_map<std::string, std::string> m_parameterHelp;
    std::unique_ptr<DataTypeMappings> m_dataTypes;
    GeometryTypeMappings m_geometryTypes;
    StringList m_formatAttrNames;
    std::unordered_map<std::string, std::string> m_formatAttrTypes;
};

} // namespace vyr

#endif // VYR_FTPROPS_VYROBJFTPROPSFORMATINFO_H
