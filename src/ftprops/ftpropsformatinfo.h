// FTPropsFormatInfo: what a data format allows a feature type to be - name
// rules, user attributes, format attributes, parameters, data types and
// geometry names - as the feature type properties dialog asks for it.
// Read-only; every answer has a fixed default for a format that says nothing.
#ifndef VYR_FTPROPS_FTPROPSFORMATINFO_H
#define VYR_FTPROPS_FTPROPSFORMATINFO_H

#include "ftprops/guiparameterline.h"
#include "util/listpacking.h"

#include <string>
#include <unordered_set>

namespace vyr {

class DataTypeMappings;
class GeometryTypeMappings;

using StringSet = std::unordered_set<std::string>;

class FTPropsFormatInfo
{
public:
    virtual ~FTPropsFormatInfo() = default;

    // Pairs the record with the schema records made for it.
    virtual std::string getId() const = 0;
    virtual std::string getFormatName() const = 0;
    virtual std::string getFormatLongName() const = 0;
    // A reader (true) or a writer format.
    virtual bool isSource() const = 0;
    virtual bool isSchemaReader() const = 0;
    virtual StringList getDeflineParmNames() const = 0;
    virtual std::string getDeflineParm(const std::string &name) const = 0;
    // The parameter's definition line read into its parts, as
    // ParseParameterLine reads getDeflineParm; a record may read each once.
    virtual GuiParameterLine getDeflineParmLine(const std::string &name) const
    {
        return ParseParameterLine(getDeflineParm(name));
    }
    virtual std::string getDeflineParmDefault(const std::string &name) const = 0;
    // What the parameter is for, in a sentence or two, as the format's
    // capabilities give it ("DEFLINE_PARM_HELP": name, text pairs); empty
    // when they do not.
    virtual std::string getDeflineParmHelp(const std::string &name) const = 0;
    virtual bool hasDeflineAttrs() const = 0;
    virtual bool isDatabase() const = 0;
    virtual bool supportsFeatTypeFanout() const = 0;
    virtual bool supportsMultiGeom() const = 0;
    virtual StringList getFormatAttrNames() const = 0;
    virtual std::string getFormatAttrType(const std::string &name) const = 0;
    virtual std::string getAttrCase() const = 0;
    virtual int getMaxAttrLength() const = 0;
    virtual std::string getAttrNameInvalidChars() const = 0;
    virtual StringList getDestIllegalAttrList() const = 0;
    virtual StringSet getDestIllegalAttrSet() const = 0;
    virtual std::string getFeatureTypeCase() const = 0;
    virtual int getFeatureTypeLength() const = 0;
    virtual bool featureTypeLengthIncludesPrefix() const = 0;
    virtual std::string getFeatureTypeInvalidChars() const = 0;
    virtual StringList getFeatureTypeReservedWords() const = 0;
    virtual StringSet getFeatureTypeReservedWordSet() const = 0;
    virtual StringList getAllowedFeatTypes() const = 0;
    virtual std::string getFeatTypeValidationScript() const = 0;
    // The list mode in which type strings of this format are written.
    virtual int getTypeListMode() const = 0;
    // Never null; valid as long as the record.
    virtual const DataTypeMappings *getDataTypeMappings() const = 0;
    virtual const GeometryTypeMappings *getGeometryTypeMappings() const = 0;
};

} // namespace vyr

#endif // VYR_FTPROPS_FTPROPSFORMATINFO_H
