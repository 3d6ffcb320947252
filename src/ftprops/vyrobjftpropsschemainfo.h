// VYRObjFTPropsSchemaInfo: the schema record over an engine schema feature.
// It keeps no copy: every question reads the feature and every change is
// written to it at once. Stored form on the feature (names case-sensitive):
//
//   feature type                    the feature type name
//   N                               user attribute N's generic data type
//   *N                              the same type as the user wrote it (it
//                                   goes when N is removed)
//   list *vyr_format_attr_name/type exposed format attributes and their types
//   list *vyr_parameter_name/value  parameters that have a value
//   *vyr_geometry{i}, i = 0, 1 ...  geometry names in the format's vocabulary
//   vyr_geometry{j}, j = 0, 1 ...   the same as generic names, each once
//
// Names starting with "vyr_" or "*" are never user attributes. Merge, fan-out,
// schema sources, dynamic schema, additional names and the spare flag are
// not kept (see FTPropsSchemaInfo for their defaults); both icon flags are
// true. Every engine string or array an operation makes is given back before
// it returns.
#ifndef VYR_FTPROPS_VYROBJFTPROPSSCHEMAINFO_H
#define VYR_FTPROPS_VYROBJFTPROPSSCHEMAINFO_H

#include "ftprops/ftpropsformatinfo.h"
#include "ftprops/ftpropsschemainfo.h"

#include <functional>
#include <map>
#include <optional>
#include <unordered_map>
#include <utility>

class IVYRFeature;
class IVYRSession;
class IVYRString;

namespace vyr {

class VYRObjFTPropsSchemaInfo : public FTPropsSchemaInfo
{
public:
    // None owned; all must outlive the record.
    VYRObjFTPropsSchemaInfo(IVYRSession &session, IVYRFeature &feature, const FTPropsFormatInfo &format);
    virtual ~VYRObjFTPropsSchemaInfo();

    VYRObjFTPropsSchemaInfo(const VYRObjFTPropsSchemaInfo &) = delete;
    VYRObjFTPropsSchemaInfo &operator=(const VYRObjFTPropsSchemaInfo &) = delete;

    std::string getName() const override;
    void setName(const std::string &name) override;
    std::string getLongName() const override;
    std::string getFormatId() const override;
    void setFormatId(const std::string &) override {}
    std::string getGeometry() const override;
    void setGeometry(const std::string &geometry) override;
    void setMerged(bool) override {}
    bool isMerged() const override { return false; }
    void setMergeSettings(const std::string &, int, bool) override {}
    std::string getMergeFilter() const override { return {}; }
    int getMergeKind() const override { return 0; }
    bool getMergeOption() const override { return false; }
    void setFanout(bool) override {}
    bool isFanout() const override { return false; }
    void setFanoutAttribute(const std::string &) override {}
    std::string getFanoutAttribute() const override { return {}; }
    // Within an update the record answers the names of all attributes from
    // what it read last, until it changes one: the dialog's write-back asks
    // for them once per list attribute, on schemas of thousands.
    void beginUpdate() override;
    void endUpdate() override;
    // Within a reading the record answers every list of names from what it
    // read first, until it changes an attribute.
    void beginReading() override;
    void endReading() override;
    StringList getAttributeNames(bool user, bool format) const override;
    bool isAttribute(const std::string &name) const override;
    std::string getAttributeType(const std::string &name) const override;
    void setAttributeType(const std::string &name, const std::string &type) override;
    std::string getGenericAttributeType(const std::string &name) const override;
    StringList getExtraFanoutNames() const override { return {}; }
    void removeAttribute(const std::string &name) override;
    void storeAttribute(const std::string &name, const std::string &type, bool asFormatAttribute) override;
    void setAttributes(const StringList &namesAndTypes) override;
    // An attribute whose stored types already answer the type given keeps
    // them byte for byte: writing back what was read changes nothing, and a
    // generic type the format has no counterpart for is never erased. A
    // type given as its own generic type (one the format has no word for)
    // is stored as the generic type alone.
    void setUserAttributes(const std::vector<UserAttributeTypes> &attributes) override;
    void storeUserAttribute(const UserAttributeTypes &attribute) override;
    std::string getParameter(const std::string &name) const override;
    void setParameter(const std::string &name, const std::string &value) override;
    // Read and written with one pass over the parameter lists each: the
    // page asks for and writes every parameter of formats with hundreds.
    std::map<std::string, std::string> getParameters(const StringList &names) const override;
    void setParameters(const std::vector<std::pair<std::string, std::string>> &values) override;
    bool iconFlagA() const override { return true; }
    bool iconFlagB() const override { return true; }
    void notifyApplied() override {}
    StringList getSchemaSources() const override { return {}; }
    void setSchemaSources(const StringList &) override {}
    bool isDynamic() const override { return false; }
    void setDynamic(bool) override {}
    bool getSpareFlag() const override { return false; }
    void setSpareFlag(bool) override {}
    DynamicSchemaInfo getDynamicSchemaInfo() const override { return {}; }
    void setDynamicSchemaInfo(const IDynamicSchemaInfo &) override {}
    StringList getAdditionalNames() const override { return {}; }
    void setAdditionalNames(const StringList &) override {}
    void expandListAttribute(const std::string &name, int count) override;
    // Over a feature of its own, made by the session and destroyed with the
    // copy; null when the session makes none.
    ScratchSchema makeScratchCopy() const override;

protected:
    // A copy of the feature from the session: its type, its attributes in
    // their order, and its lists - those of this record and `moreLists`
    // (the engine lists no names of lists). Null when the session makes
    // none.
    IVYRFeature *copyFeature(const StringList &moreLists) const;
    // The record destroys its feature through the session when destroyed.
    void ownFeature() { m_ownsFeature = true; }
    // From now on the record reads and writes in `format`'s vocabulary.
    void bindFormat(const FTPropsFormatInfo &format);
    const FTPropsFormatInfo &format() const { return *m_format; }
    IVYRSession &session() const { return m_session; }
    IVYRFeature &feature() const { return m_feature; }
    bool readAttribute(const std::string &name, std::string &value) const;
    StringList readList(const char *name) const;
    // Keeps the exposed format attributes (with their types), or the
    // parameters (with their values), whose names `keep` accepts, of the
    // pairs as readPairs reads them.
    enum class PairKind { FormatAttributes, Parameters };
    void retainPairs(PairKind kind, const std::function<bool(const std::string &)> &keep);

private:
    struct PairLists
    {
        const char *names;
        const char *values;
    };

    void writeLists(PairLists lists, const StringList &names, const StringList &values);
    // The names of the user attributes, and the exposed format attributes'
    // (those the feature has as attributes of its own left out when `afterUser`).
    StringList readUserAttributeNames() const;
    StringList readFormatAttributeNames(bool afterUser) const;
    // A list of names as read first while it is kept (keepsNames).
    const StringList &namesOf(int part) const;
    // Removes a user attribute with both its types.
    void removeUserAttribute(const std::string &name);
    // Writes one user attribute's types; `last` puts it at the end of the
    // attribute order, else a new attribute goes there and an existing one
    // keeps its place.
    void writeUserAttribute(const UserAttributeTypes &attribute, bool last);
    // An attribute came or went: the names must be read again.
    void attributesChanged() { m_namesRead.clear(); }
    // Whether the names read last still answer (true, true), or any list.
    bool keepsNames(bool all) const { return m_readingDepth > 0 || (all && m_updateDepth > 0); }
    // Both lists of a pair list, of one length: lists of two lengths are
    // made whole where the pairs can be known (exposed format attributes,
    // whose types are the format's) and read as no pairs where they cannot
    // (parameters). Removing and setting an entry start from these.
    std::pair<StringList, StringList> readPairs(PairLists lists) const;
    void removeEntry(PairLists lists, const std::string &name);
    void setEntry(PairLists lists, const std::string &name, const std::string &value);
    // Whether a parameter is part of the format's prompt rather than a value
    // of the feature type, and so never stored.
    bool isUnstoredParameter(const std::string &name) const;
    // Whether a name is the feature's own attribute.
    bool hasAttribute(const std::string &name, IVYRString &text) const;
    // The generic form of a type as the user writes it; empty when the
    // format's data types do not know it.
    std::string genericType(const std::string &type) const;
    StringList geometryFamily(const std::string &prefix) const;
    // The type of a format attribute of the record's format, or of the
    // list attribute a name is an element of; null for other names.
    const std::string *formatAttributeType(const std::string &name) const;

    IVYRSession &m_session;
    IVYRFeature &m_feature;
    const FTPropsFormatInfo *m_format = nullptr;
    std::unordered_map<std::string, std::string> m_formatAttributeTypes;
    bool m_ownsFeature = false;
    int m_updateDepth = 0;
    int m_readingDepth = 0;
    // The lists of names read, by part (user attributes, exposed format
    // attributes after them, exposed format attributes alone), while an
    // update (all attributes' names) or a reading (any) lasts.
    enum NamePart { UserNames, FormatNamesAfterUser, FormatNames };
    mutable std::map<int, StringList> m_namesRead;
};

} // namespace vyr

#endif // VYR_FTPROPS_VYROBJFTPROPSSCHEMAINFO_H
