#include "attrtypes/attrtype.h"

#include "attrtypes/attrtypeargtemplate.h"
#include "attrtypes/datatypemappings.h"
#include "attrtypes/typestring.h"

namespace vyr {

AttrType::AttrType() = default;

AttrType::AttrType(std::string name, AttrTypeArgs args, std::string suffix)
    : m_name(std::move(name))
    , m_args(std::move(args))
    , m_suffix(std::move(suffix))
{}

AttrType::AttrType(const AttrTypeTemplate &typeTemplate, const StringList &values, std::string suffix,
                   const DataTypeMappings *registry)
    : m_name(typeTemplate.name())
    , m_suffix(std::move(suffix))
    , m_registry(registry)
{
    m_args.reserve(typeTemplate.argCount());
    for (std::size_t i = 0; i < typeTemplate.argCount(); ++i) {
        auto arg = createArg(typeTemplate.arg(i)->value(), static_cast<std::uint32_t>(i), this);
        if (i < values.size() && !values[i].empty())
            arg->setValue(values[i]);
        else
            arg->setDefault({});
        m_args.push_back(std::move(arg));
    }
}

AttrType::AttrType(const AttrTypeTemplate &typeTemplate, std::string_view typeString, const DataTypeMappings *registry)
    : AttrType(typeTemplate, parseType(typeString, kDialogListMode), registry)
{}

AttrType::AttrType(const AttrTypeTemplate &typeTemplate, ParsedType parsed, const DataTypeMappings *registry)
    : AttrType(typeTemplate, parsed.values, std::move(parsed.suffix), registry)
{}

AttrType::~AttrType() = default;

std::unique_ptr<AttrType> AttrType::clone() const
{
    AttrTypeArgs args;
    args.reserve(m_args.size());
    for (const auto &arg : m_args)
        args.push_back(arg->clone());
    return std::make_unique<AttrType>(m_name, std::move(args), m_suffix);
}

bool AttrType::isSelectable(int mode) const
{
    for (const auto &arg : m_args) {
        if (!arg->isSelectable(mode))
            return false;
    }
    return !(mode == 1 && (m_name == "char" || m_name == "boolean"));
}

bool AttrType::isSource() const
{
    return m_registry && m_registry->isSource();
}

AttrTypeTemplate::AttrTypeTemplate(std::string_view text, const DataTypeMappings *registry, int listMode)
{
    ParsedType parsed = parseType(text, listMode);
    m_name = std::move(parsed.name);
    m_registry = registry;
    m_args.reserve(parsed.values.size());
    for (std::size_t i = 0; i < parsed.values.size(); ++i) {
        auto arg = std::make_unique<AttrTypeArgTemplate>(parsed.values[i], this);
        arg->place(static_cast<std::uint32_t>(i), parsed.values[i], this);
        m_args.push_back(std::move(arg));
    }
}

std::unique_ptr<AttrType> AttrTypeTemplate::clone() const
{
    return nullptr;
}

bool matchesTemplate(const AttrTypeTemplate &typeTemplate, std::string_view typeString)
{
    const ParsedType parsed = parseType(typeString, kDialogListMode);
    return parsed.name == typeTemplate.name() && parsed.values.size() == typeTemplate.argCount();
}

} // namespace vyr
