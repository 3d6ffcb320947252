#include "attrtypes/attrtypeargtemplate.h"

namespace vyr {

AttrTypeArgTemplate::AttrTypeArgTemplate(std::string_view keyword, const AttrType *templateType)
    : m_prototype(createArg(keyword, 0, templateType))
{
    m_value = std::string(keyword);
}

AttrTypeArgTemplate::~AttrTypeArgTemplate() = default;

void AttrTypeArgTemplate::setValue(std::string_view text)
{
    m_value = std::string(text);
}

void AttrTypeArgTemplate::setDefault(std::string_view text)
{
    m_value = std::string(text);
}

std::unique_ptr<AttrTypeArg> AttrTypeArgTemplate::clone() const
{
    return nullptr;
}

bool AttrTypeArgTemplate::isSelectable(int mode) const
{
    return m_prototype->isSelectable(mode);
}

std::unique_ptr<AttrTypeArg> AttrTypeArgTemplate::createNew() const
{
    return nullptr;
}

} // namespace vyr
