#include "attrtypes/attrtypeargbrowselist.h"

#include "util/resourceids.h"
#include "util/usernotice.h"

namespace vyr {

void AttrTypeArgBrowseList::setValue(std::string_view text)
{
    m_value = std::string(text);
}

void AttrTypeArgBrowseList::setDefault(std::string_view)
{
    m_value.clear();
}

std::unique_ptr<AttrTypeArg> AttrTypeArgStringSet::createNew() const
{
    return std::make_unique<AttrTypeArgStringSet>();
}

std::unique_ptr<AttrTypeArg> AttrTypeArgStringList::createNew() const
{
    return std::make_unique<AttrTypeArgStringList>();
}

std::unique_ptr<AttrTypeArg> AttrTypeArgStringMap::createNew() const
{
    return std::make_unique<AttrTypeArgStringMap>();
}

bool AttrTypeArgDomain::validate(std::string_view value, std::string_view label) const
{
    if (!value.empty())
        return true;
    notifyUser(res::DomainRequired, {std::string(label)});
    return false;
}

std::unique_ptr<AttrTypeArg> AttrTypeArgRangeDomain::createNew() const
{
    return std::make_unique<AttrTypeArgRangeDomain>();
}

std::unique_ptr<AttrTypeArg> AttrTypeArgCodedDomain::createNew() const
{
    return std::make_unique<AttrTypeArgCodedDomain>();
}

} // namespace vyr
