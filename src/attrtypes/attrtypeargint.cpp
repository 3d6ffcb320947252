#include "attrtypes/attrtypeargint.h"

#include "util/numbertext.h"

namespace vyr {

AttrTypeArgInt::AttrTypeArgInt(std::string_view keyword)
{
    std::uint32_t fixed = 0;
    if (parseUnsigned(keyword, fixed))
        m_fixedValue = std::string(keyword);
}

void AttrTypeArgInt::setValue(std::string_view text)
{
    std::int32_t number = 0;
    if (parseInteger(text, number))
        m_value = std::string(text);
    else if (!m_fixedValue.empty())
        m_value = m_fixedValue;
    else
        m_value = index() == 1 ? "10" : "20"; // decimals, else a width
}

void AttrTypeArgInt::setDefault(std::string_view text)
{
    setValue(text);
}

bool AttrTypeArgInt::isSelectable(int) const
{
    return m_fixedValue.empty();
}

std::unique_ptr<AttrTypeArg> AttrTypeArgInt::createNew() const
{
    auto fresh = std::make_unique<AttrTypeArgInt>(std::string_view());
    fresh->m_fixedValue = m_fixedValue;
    return fresh;
}

void AttrTypeArgIntWidth::setValue(std::string_view text)
{
    std::uint32_t width = 0;
    m_value = parseUnsigned(text, width) && width >= 1 && width <= 16 ? std::string(text) : std::string("11");
}

void AttrTypeArgIntWidth::setDefault(std::string_view text)
{
    setValue(text);
}

std::unique_ptr<AttrTypeArg> AttrTypeArgIntWidth::createNew() const
{
    return std::make_unique<AttrTypeArgIntWidth>();
}

void AttrTypeArgBinIntWidth::setValue(std::string_view text)
{
    m_value = text == "2" || text == "4" ? std::string(text) : std::string("4");
}

void AttrTypeArgBinIntWidth::setDefault(std::string_view text)
{
    setValue(text);
}

std::unique_ptr<AttrTypeArg> AttrTypeArgBinIntWidth::createNew() const
{
    return std::make_unique<AttrTypeArgBinIntWidth>();
}

} // namespace vyr
