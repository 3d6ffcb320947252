#include "attrtypes/attrtypearg.h"

#include "attrtypes/attrtype.h"
#include "attrtypes/attrtypeargbrowselist.h"
#include "attrtypes/attrtypeargint.h"

namespace vyr {

AttrTypeArg::~AttrTypeArg() = default;

std::string AttrTypeArg::value() const
{
    return m_value;
}

std::unique_ptr<AttrTypeArg> AttrTypeArg::clone() const
{
    std::unique_ptr<AttrTypeArg> copy = createNew();
    if (!copy)
        return nullptr;
    copy->setValue(m_value);
    copy->place(m_index, {}, m_type);
    return copy;
}

bool AttrTypeArg::isSelectable(int) const
{
    return true;
}

bool AttrTypeArg::validate(std::string_view, std::string_view) const
{
    return true;
}

void AttrTypeArg::place(std::uint32_t index, std::string keyword, const AttrType *type)
{
    m_index = index;
    m_keyword = std::move(keyword);
    m_type = type;
}

std::unique_ptr<AttrTypeArg> createArg(std::string_view keyword, std::uint32_t index, const AttrType *type)
{
    std::unique_ptr<AttrTypeArg> arg;
    if (keyword == "stringset")
        arg = std::make_unique<AttrTypeArgStringSet>();
    else if (keyword == "stringlist")
        arg = std::make_unique<AttrTypeArgStringList>();
    else if (keyword == "stringmap")
        arg = std::make_unique<AttrTypeArgStringMap>();
    else if (keyword == "binint-width" || keyword == "byte-size")
        arg = std::make_unique<AttrTypeArgBinIntWidth>();
    else if (keyword == "range_domain")
        arg = std::make_unique<AttrTypeArgRangeDomain>();
    else if (keyword == "coded_domain")
        arg = std::make_unique<AttrTypeArgCodedDomain>();
    else if (keyword == "width" && type && type->name() == "int")
        arg = std::make_unique<AttrTypeArgIntWidth>();
    else
        arg = std::make_unique<AttrTypeArgInt>(keyword);
    arg->place(index, std::string(keyword), type);
    return arg;
}

} // namespace vyr
