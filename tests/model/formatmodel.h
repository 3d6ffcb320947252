// A format as its capability file describes it: the keys the feature type
// properties dialog obeys, read independently of the library's own record.
#ifndef VYR_TESTS_MODEL_FORMATMODEL_H
#define VYR_TESTS_MODEL_FORMATMODEL_H

#include "model/attributetypes.h"

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vyr::model {

using Pairs = std::vector<std::pair<std::string, std::string>>;

// One per-feature-type parameter: its GUI definition line taken apart.
struct Parameter
{
    std::string name;
    std::string type; // INTEGER, CHOICE, DISABLE, ATTR, ATTRLIST, COLOR_PICK, TEXT ...
    bool optional = false;
    bool disabledOnly = false;
    bool alwaysEnabled = false;
    Strings choices;
    std::string prompt;
    std::string defaultValue;
};

class FormatModel
{
public:
    // From the capability string (comma-separated KEY,VALUE pairs).
    explicit FormatModel(const std::string &capabilities);

    const std::string &capabilities() const { return m_capabilities; }
    std::string value(const std::string &key) const;

    std::string name() const { return value("FORMAT"); }
    bool isSource() const { return flag("SOURCE", true); }
    bool isDatabase() const { return value("FORMAT_TYPE") == "DATABASE"; }
    bool hasUserAttributes() const { return flag("HAS_DEFLINE_ATTRS", true); }
    bool supportsFanout() const { return flag("SUPPORTS_FEAT_TYPE_FANOUT", false); }
    bool supportsMultiGeom() const { return flag("SUPPORTS_MULTI_GEOM", false); }
    int maxAttrLength() const { return integer("MAX_ATTR_LENGTH"); }

    // FORMAT_ATTRS: the type of one (empty when unknown), the names in order.
    std::string formatAttributeType(const std::string &name) const;
    Strings formatAttributeNames() const;

    const TypeMappings &types() const { return m_types; }

    // GEOM_TYPE_MAPPINGS: native names in order, and the two directions
    // (the first pair naming a name wins). Unknown names map to "".
    Strings nativeGeometries() const;
    std::string geometryToGeneric(const std::string &native) const;
    std::string geometryToNative(const std::string &generic) const;
    bool hasGeometryMappings() const { return !m_geometries.empty(); }

    const std::vector<Parameter> &parameters() const { return m_parameters; }
    const Parameter *parameter(const std::string &name) const;

    Strings list(const std::string &key) const;
    int integer(const std::string &key) const;
    bool flag(const std::string &key, bool otherwise) const;

private:
    std::string m_capabilities;
    std::map<std::string, std::string> m_values;
    Pairs m_formatAttributes;
    Pairs m_geometries;
    TypeMappings m_types;
    std::vector<Parameter> m_parameters;
};

// A GUI definition line taken apart (the parameter's name, type, modifiers,
// choices and prompt).
Parameter parseParameterLine(const std::string &line);

} // namespace vyr::model

#endif // VYR_TESTS_MODEL_FORMATMODEL_H
