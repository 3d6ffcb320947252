// The argument of a type template: its value is the keyword, and a prototype
// argument of the keyword's kind answers for it. Never copied.
#ifndef VYR_ATTRTYPES_ATTRTYPEARGTEMPLATE_H
#define VYR_ATTRTYPES_ATTRTYPEARGTEMPLATE_H

#include "attrtypes/attrtypearg.h"

namespace vyr {

class AttrTypeArgTemplate final : public AttrTypeArg
{
public:
    // `templateType` is the template that holds the argument.
    AttrTypeArgTemplate(std::string_view keyword, const AttrType *templateType);
    ~AttrTypeArgTemplate() override;

    void setValue(std::string_view text) override;
    void setDefault(std::string_view text) override;
    std::unique_ptr<AttrTypeArg> clone() const override;
    bool isSelectable(int mode) const override;
    std::unique_ptr<AttrTypeArg> createNew() const override;
    void accept(AttrTypeArgVisitor &visitor) const override { visitor.visit(*this); }

    const AttrTypeArg &prototype() const { return *m_prototype; }

private:
    std::unique_ptr<AttrTypeArg> m_prototype;
};

} // namespace vyr

#endif // VYR_ATTRTYPES_ATTRTYPEARGTEMPLATE_H
