// VYRObjWorkspaceSchemaInfo: the schema record of a feature type in a
// workspace of several formats. Over what VYRObjFTPropsSchemaInfo keeps, it
// keeps the settings of the feature type's role and its format in the
// feature, under names that are never user attributes:
//
//   vyr_format                        the format's id, once moved to another
//   vyr_merged, vyr_merge_filter,     merge settings ("yes"/"no", text,
//   vyr_merge_kind, vyr_merge_option  0 to 2, "yes"/"no")
//   vyr_fanout, vyr_fanout_attribute  fan-out
//   vyr_dynamic                       dynamic schema ("yes"/"no")
//   list vyr_schema_sources           schema source format ids
//   vyr_dynamic_option1 .. 3,         dynamic schema settings
//   vyr_dynamic_text1 .. 3
//   list vyr_additional_names         additional names
//
// Moving the feature type to another format (setFormatId) carries its schema
// into that format's vocabulary, so that nothing only the old format
// understands stays: the geometry is mapped through its generic names,
// attribute names are made legal and attribute types become their
// counterparts (or, without one, their generic types), and exposed format
// attributes and parameters the new format does not have are dropped - all
// user attributes too when it has none. The record reads and writes in the
// new format's vocabulary from then on.
#ifndef VYR_FTPROPS_VYROBJWORKSPACESCHEMAINFO_H
#define VYR_FTPROPS_VYROBJWORKSPACESCHEMAINFO_H

#include "ftprops/vyrobjftpropsschemainfo.h"

#include <functional>

namespace vyr {

class VYRObjWorkspaceSchemaInfo final : public VYRObjFTPropsSchemaInfo
{
public:
    // The format record of an id, or null for an unknown one.
    using FormatLookup = std::function<const FTPropsFormatInfo *(const std::string &id)>;

    VYRObjWorkspaceSchemaInfo(IVYRSession &session, IVYRFeature &feature, const FTPropsFormatInfo &format,
                              FormatLookup lookup);

    // An unknown id is ignored.
    void setFormatId(const std::string &formatId) override;
    void setMerged(bool merged) override;
    bool isMerged() const override;
    void setMergeSettings(const std::string &filter, int kind, bool option) override;
    std::string getMergeFilter() const override;
    int getMergeKind() const override;
    bool getMergeOption() const override;
    void setFanout(bool fanout) override;
    bool isFanout() const override;
    void setFanoutAttribute(const std::string &name) override;
    std::string getFanoutAttribute() const override;
    StringList getSchemaSources() const override;
    void setSchemaSources(const StringList &sources) override;
    bool isDynamic() const override;
    void setDynamic(bool dynamic) override;
    DynamicSchemaInfo getDynamicSchemaInfo() const override;
    void setDynamicSchemaInfo(const IDynamicSchemaInfo &settings) override;
    StringList getAdditionalNames() const override;
    void setAdditionalNames(const StringList &names) override;
    ScratchSchema makeScratchCopy() const override;

private:
    void moveSchema(const FTPropsFormatInfo &from, const FTPropsFormatInfo &to);
    std::string text(const char *name) const;
    bool flag(const char *name) const;
    void setText(const char *name, const std::string &value);
    void setFlag(const char *name, bool value);
    void setNumber(const char *name, std::int32_t value);
    void setList(const char *name, const StringList &values);

    FormatLookup m_lookup;
};

} // namespace vyr

#endif // VYR_FTPROPS_VYROBJWORKSPACESCHEMAINFO_H
