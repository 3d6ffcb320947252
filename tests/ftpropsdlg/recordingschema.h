// A schema record in memory that writes every change it is handed into a
// log shared by the records of one test ("first name: call(value)"), so that a
// test sees what was written, into which record, and in which order.
#ifndef VYR_TESTS_RECORDINGSCHEMA_H
#define VYR_TESTS_RECORDINGSCHEMA_H

#include "ftprops/ftpropsschemainfo.h"
#include "util/listpacking.h"

#include <algorithm>
#include <map>
#include <string>

namespace vyr::test {

class RecordingSchema final : public FTPropsSchemaInfo
{
public:
    RecordingSchema(std::string name, std::string formatId, StringList &log)
        : name(name)
        , formatId(std::move(formatId))
        , m_label(std::move(name))
        , m_log(log)
    {}

    std::string name;
    std::string formatId;
    std::string geometry;
    bool merged = false;
    std::string mergeFilter;
    int mergeKind = 0;
    bool mergeOption = false;
    bool fanout = false;
    std::string fanoutAttribute;
    StringList userAttributes;
    std::map<std::string, std::string> attributeTypes;
    std::map<std::string, std::string> genericTypes;
    StringList formatAttributes;
    StringList schemaSources;
    bool dynamic = false;
    DynamicSchemaInfo dynamicSettings;
    StringList additionalNames;
    bool flagA = true;
    bool flagB = true;
    std::map<std::string, std::string> parameters;

    std::string getName() const override { return name; }
    void setName(const std::string &value) override { record("setName", name = value); }
    std::string getLongName() const override { return name; }
    std::string getFormatId() const override { return formatId; }
    void setFormatId(const std::string &value) override { record("setFormatId", formatId = value); }
    std::string getGeometry() const override { return geometry; }
    void setGeometry(const std::string &value) override { record("setGeometry", geometry = value); }
    void setMerged(bool value) override { record("setMerged", (merged = value) ? "yes" : "no"); }
    bool isMerged() const override { return merged; }
    void setMergeSettings(const std::string &filter, int kind, bool option) override
    {
        mergeFilter = filter;
        mergeKind = kind;
        mergeOption = option;
        record("setMergeSettings", filter + "/" + std::to_string(kind) + "/" + (option ? "yes" : "no"));
    }
    std::string getMergeFilter() const override { return mergeFilter; }
    int getMergeKind() const override { return mergeKind; }
    bool getMergeOption() const override { return mergeOption; }
    void setFanout(bool value) override { record("setFanout", (fanout = value) ? "yes" : "no"); }
    bool isFanout() const override { return fanout; }
    void setFanoutAttribute(const std::string &value) override { record("setFanoutAttribute", fanoutAttribute = value); }
    std::string getFanoutAttribute() const override { return fanoutAttribute; }
    void beginUpdate() override { record("beginUpdate"); }
    void endUpdate() override { record("endUpdate"); }
    StringList getAttributeNames(bool user, bool format) const override
    {
        StringList names = user ? userAttributes : StringList();
        if (format)
            names.insert(names.end(), formatAttributes.begin(), formatAttributes.end());
        return names;
    }
    std::string getGenericAttributeType(const std::string &attribute) const override
    {
        const auto found = genericTypes.find(attribute);
        return found == genericTypes.end() ? std::string() : found->second;
    }
    std::string getAttributeType(const std::string &attribute) const override
    {
        const auto found = attributeTypes.find(attribute);
        return found == attributeTypes.end() ? std::string() : found->second;
    }
    void setAttributeType(const std::string &attribute, const std::string &) override { record("setAttributeType", attribute); }
    StringList getExtraFanoutNames() const override { return {}; }
    void removeAttribute(const std::string &attribute) override
    {
        std::erase(userAttributes, attribute);
        record("removeAttribute", attribute);
    }
    void storeAttribute(const std::string &attribute, const std::string &, bool) override { record("storeAttribute", attribute); }
    void setAttributes(const StringList &) override { record("setAttributes"); }
    // Holds what it stores, so that a scratch copy shows what was written.
    void storeUserAttribute(const UserAttributeTypes &attribute) override
    {
        if (std::find(userAttributes.begin(), userAttributes.end(), attribute.name) == userAttributes.end())
            userAttributes.push_back(attribute.name);
        attributeTypes[attribute.name] = attribute.type;
        genericTypes[attribute.name] = attribute.generic;
        record("storeUserAttribute", attribute.name + " " + attribute.type + " " + attribute.generic);
    }
    std::string getParameter(const std::string &parameter) const override
    {
        const auto found = parameters.find(parameter);
        return found == parameters.end() ? std::string() : found->second;
    }
    void setParameter(const std::string &parameter, const std::string &value) override
    {
        parameters[parameter] = value;
        record("setParameter", parameter);
    }
    bool iconFlagA() const override { return flagA; }
    bool iconFlagB() const override { return flagB; }
    void notifyApplied() override { record("notifyApplied"); }
    StringList getSchemaSources() const override { return schemaSources; }
    void setSchemaSources(const StringList &value) override
    {
        schemaSources = value;
        record("setSchemaSources", joinList(value, ','));
    }
    bool isDynamic() const override { return dynamic; }
    void setDynamic(bool value) override { record("setDynamic", (dynamic = value) ? "yes" : "no"); }
    bool getSpareFlag() const override { return false; }
    void setSpareFlag(bool) override { record("setSpareFlag"); }
    DynamicSchemaInfo getDynamicSchemaInfo() const override { return dynamicSettings; }
    void setDynamicSchemaInfo(const IDynamicSchemaInfo &value) override
    {
        dynamicSettings.assignFrom(value);
        record("setDynamicSchemaInfo");
    }
    StringList getAdditionalNames() const override { return additionalNames; }
    void setAdditionalNames(const StringList &value) override
    {
        additionalNames = value;
        record("setAdditionalNames");
    }
    void expandListAttribute(const std::string &attribute, int) override { record("expandListAttribute", attribute); }
    // Logs into the same log as "copy of <name>".
    ScratchSchema makeScratchCopy() const override
    {
        auto *copy = new RecordingSchema(*this);
        copy->m_label = "copy of " + m_label;
        return ownScratch(copy);
    }

private:
    RecordingSchema(const RecordingSchema &) = default;

    void record(const char *call, const std::string &value = {})
    {
        m_log.push_back(m_label + ": " + call + (value.empty() ? "" : "(" + value + ")"));
    }

    std::string m_label; // the name at the start, for the log
    StringList &m_log;
};

} // namespace vyr::test

#endif // VYR_TESTS_RECORDINGSCHEMA_H
