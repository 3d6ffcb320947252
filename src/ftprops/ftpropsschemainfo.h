// FTPropsSchemaInfo: the schema of one feature type as the feature type
// properties dialog reads and changes it - name, geometry, user attributes
// with their data types, exposed format attributes, parameters - plus the
// role-specific settings (merge, fan-out, schema sources, dynamic schema)
// that an implementation may or may not keep; one that does not answers the
// defaults documented below and ignores changes.
//
// Never deleted through this interface: whoever makes a record destroys it.
#ifndef VYR_FTPROPS_FTPROPSSCHEMAINFO_H
#define VYR_FTPROPS_FTPROPSSCHEMAINFO_H

#include "ftprops/dynamicschemainfo.h"
#include "util/listpacking.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vyr {

// A user attribute as a page writes it: its type in the format's own words,
// and the generic type that goes with it (empty: the format's mappings make
// it from the type).
struct UserAttributeTypes
{
    std::string name;
    std::string type;
    std::string generic;
};

class FTPropsSchemaInfo;

// A record made by a record, which only it knows how to destroy.
using ScratchSchema = std::unique_ptr<FTPropsSchemaInfo, void (*)(FTPropsSchemaInfo *)>;

inline ScratchSchema NoScratchSchema()
{
    return ScratchSchema(nullptr, [](FTPropsSchemaInfo *) {});
}

class FTPropsSchemaInfo
{
public:
    virtual std::string getName() const = 0;
    virtual void setName(const std::string &name) = 0;
    virtual std::string getLongName() const = 0;
    // Equals the getId of the format record the schema belongs to.
    virtual std::string getFormatId() const = 0;
    virtual void setFormatId(const std::string &formatName) = 0;
    // The geometry names in the format's vocabulary, blank-separated.
    virtual std::string getGeometry() const = 0;
    virtual void setGeometry(const std::string &geometry) = 0;
    virtual void setMerged(bool merged) = 0;
    virtual bool isMerged() const = 0; // default false
    virtual void setMergeSettings(const std::string &filter, int kind, bool option) = 0;
    virtual std::string getMergeFilter() const = 0; // default empty
    virtual int getMergeKind() const = 0; // default 0
    virtual bool getMergeOption() const = 0; // default false
    virtual void setFanout(bool fanout) = 0;
    virtual bool isFanout() const = 0; // default false
    virtual void setFanoutAttribute(const std::string &name) = 0;
    virtual std::string getFanoutAttribute() const = 0; // default empty
    // Around the dialog's write-back.
    virtual void beginUpdate() = 0;
    virtual void endUpdate() = 0;
    // Around a run of questions that change nothing (the dialog opening its
    // pages): a record may read its store once for all of them, as long as
    // nothing changes it meanwhile but the record itself.
    virtual void beginReading() {}
    virtual void endReading() {}
    // User attributes (in their order), then exposed format attributes.
    virtual StringList getAttributeNames(bool user, bool format) const = 0;
    // Whether getAttributeNames(true, true) holds `name`; a record may
    // answer without listing 100,000 names.
    virtual bool isAttribute(const std::string &name) const
    {
        const StringList names = getAttributeNames(true, true);
        return std::find(names.begin(), names.end(), name) != names.end();
    }
    // The attribute's type as the user writes it (the format's vocabulary).
    virtual std::string getAttributeType(const std::string &name) const = 0;
    virtual void setAttributeType(const std::string &name, const std::string &type) = 0;
    // The generic type stored for a user attribute; empty where the record
    // keeps none.
    virtual std::string getGenericAttributeType(const std::string &) const { return {}; }
    virtual StringList getExtraFanoutNames() const = 0; // default empty
    virtual void removeAttribute(const std::string &name) = 0;
    virtual void storeAttribute(const std::string &name, const std::string &type, bool asFormatAttribute) = 0;
    // Replaces the user attributes with name, type, name, type...
    virtual void setAttributes(const StringList &namesAndTypes) = 0;
    // As setAttributes, each attribute with the generic type it carries: a
    // type the format has no counterpart for stays known by its generic
    // type.
    virtual void setUserAttributes(const std::vector<UserAttributeTypes> &attributes)
    {
        StringList namesAndTypes;
        for (const UserAttributeTypes &attribute : attributes) {
            namesAndTypes.push_back(attribute.name);
            namesAndTypes.push_back(attribute.type);
        }
        setAttributes(namesAndTypes);
    }
    // Adds one user attribute with both its types, or updates the one of
    // that name; a new one comes last in the order.
    virtual void storeUserAttribute(const UserAttributeTypes &attribute)
    {
        setAttributeType(attribute.name, attribute.type);
    }
    virtual std::string getParameter(const std::string &name) const = 0;
    virtual void setParameter(const std::string &name, const std::string &value) = 0;
    // Several parameters at once, with the result of getParameter and
    // setParameter one name after the other; a record may read and write
    // its store once for all of them.
    virtual std::map<std::string, std::string> getParameters(const StringList &names) const
    {
        std::map<std::string, std::string> values;
        for (const std::string &name : names)
            values[name] = getParameter(name);
        return values;
    }
    virtual void setParameters(const std::vector<std::pair<std::string, std::string>> &values)
    {
        for (const auto &[name, value] : values)
            setParameter(name, value);
    }
    // Together choose the icons of the General tab.
    virtual bool iconFlagA() const = 0;
    virtual bool iconFlagB() const = 0;
    // Called on the other feature types after the user applied changes to some.
    virtual void notifyApplied() = 0;
    virtual StringList getSchemaSources() const = 0; // default empty
    virtual void setSchemaSources(const StringList &sources) = 0;
    virtual bool isDynamic() const = 0; // default false
    virtual void setDynamic(bool dynamic) = 0;
    virtual bool getSpareFlag() const = 0; // default false
    virtual void setSpareFlag(bool flag) = 0;
    virtual DynamicSchemaInfo getDynamicSchemaInfo() const = 0; // default: all options 0
    virtual void setDynamicSchemaInfo(const IDynamicSchemaInfo &settings) = 0;
    virtual StringList getAdditionalNames() const = 0; // default empty
    virtual void setAdditionalNames(const StringList &names) = 0;
    // For a format list attribute "name{}": exposes elements 0 to count-1.
    virtual void expandListAttribute(const std::string &name, int count) = 0;
    // A record that holds what this one holds and answers as it does, but
    // is stored apart: changing it changes nothing of this one or of
    // anything else, and destroying it leaves nothing behind. The dialog
    // writes its pages into one to review them before OK writes them here.
    virtual ScratchSchema makeScratchCopy() const = 0;

protected:
    FTPropsSchemaInfo() = default;
    FTPropsSchemaInfo(const FTPropsSchemaInfo &) = default;
    FTPropsSchemaInfo &operator=(const FTPropsSchemaInfo &) = default;
    ~FTPropsSchemaInfo() = default;

    // Hands `record` over as a scratch copy that deletes it as its own type.
    template <class Record>
    static ScratchSchema ownScratch(Record *record)
    {
        return ScratchSchema(record, [](FTPropsSchemaInfo *copy) { delete static_cast<Record *>(copy); });
    }
};

} // namespace vyr

#endif // VYR_FTPROPS_FTPROPSSCHEMAINFO_H
