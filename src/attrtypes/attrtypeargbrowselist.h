// The argument kinds whose value is edited in an editor of its own rather
// than typed: sets, lists and maps of strings, and attribute domains. Their
// values are kept as they come; their default is empty. How their grid cell
// opens the editor comes with the grid.
#ifndef VYR_ATTRTYPES_ATTRTYPEARGBROWSELIST_H
#define VYR_ATTRTYPES_ATTRTYPEARGBROWSELIST_H

#include "attrtypes/attrtypearg.h"

namespace vyr {

class AttrTypeArgBrowseList : public AttrTypeArg
{
public:
    void setValue(std::string_view text) override;
    void setDefault(std::string_view text) override;

protected:
    AttrTypeArgBrowseList() = default;
};

class AttrTypeArgStringSet final : public AttrTypeArgBrowseList
{
public:
    std::unique_ptr<AttrTypeArg> createNew() const override;
    void accept(AttrTypeArgVisitor &visitor) const override { visitor.visit(*this); }
};

class AttrTypeArgStringList final : public AttrTypeArgBrowseList
{
public:
    std::unique_ptr<AttrTypeArg> createNew() const override;
    void accept(AttrTypeArgVisitor &visitor) const override { visitor.visit(*this); }
};

class AttrTypeArgStringMap final : public AttrTypeArgBrowseList
{
public:
    std::unique_ptr<AttrTypeArg> createNew() const override;
    void accept(AttrTypeArgVisitor &visitor) const override { visitor.visit(*this); }
};

// A domain argument refuses an empty value, telling the user (message
// 59534, the attribute's label for "%1").
class AttrTypeArgDomain : public AttrTypeArgBrowseList
{
public:
    bool validate(std::string_view value, std::string_view label) const override;

protected:
    AttrTypeArgDomain() = default;
};

class AttrTypeArgRangeDomain final : public AttrTypeArgDomain
{
public:
    std::unique_ptr<AttrTypeArg> createNew() const override;
    void accept(AttrTypeArgVisitor &visitor) const override { visitor.visit(*this); }
};

class AttrTypeArgCodedDomain final : public AttrTypeArgDomain
{
public:
    std::unique_ptr<AttrTypeArg> createNew() const override;
    void accept(AttrTypeArgVisitor &visitor) const override { visitor.visit(*this); }
};

} // namespace vyr

#endif // VYR_ATTRTYPES_ATTRTYPEARGBROWSELIST_H
