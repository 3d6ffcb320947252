#include "attrtypes/datatypemappings.h"

#include "attrtypes/typestring.h"

namespace vyr {

namespace {

std::string_view fullGenericTemplate(std::string_view generic)
{
    if (generic == "vyr_char")
        return "vyr_char(width)";
    if (generic == "vyr_decimal")
        return "vyr_decimal(width,decimal)";
    if (generic == "vyr_varchar")
        return "vyr_varchar(width)";
    return generic;
}

bool fits(const AttrTypeTemplate &typeTemplate, const ParsedType &parsed)
{
    return typeTemplate.name() == parsed.name && typeTemplate.argCount() == parsed.values.size();
}

} // namespace

DataTypeMappings::DataTypeMappings(std::string formatName, bool isSource)
    : m_formatName(std::move(formatName))
    , m_isSource(isSource)
{}

DataTypeMappings::~DataTypeMappings() = default;

void DataTypeMappings::addMapping(std::string_view nativeText, std::string_view genericText, int listMode)
{
    auto native = std::make_unique<AttrTypeTemplate>(nativeText, this, listMode);
    auto generic = std::make_unique<AttrTypeTemplate>(fullGenericTemplate(genericText), this, listMode);
    if (!m_pairTexts.emplace(formatType(*native, kDialogListMode), formatType(*generic, kDialogListMode)).second)
        return;
    m_pairs.emplace_back(std::move(native), std::move(generic));
}

std::unique_ptr<AttrType> DataTypeMappings::createType(std::string_view text, int listMode) const
{
    ParsedType parsed = parseType(text, listMode);
    for (const TemplatePair &pair : m_pairs) {
        for (const AttrTypeTemplate *candidate : {pair.first.get(), pair.second.get()}) {
            if (fits(*candidate, parsed))
                return std::make_unique<AttrType>(*candidate, parsed.values, std::move(parsed.suffix), this);
        }
    }
    for (const TemplatePair &pair : m_pairs) {
        for (const AttrTypeTemplate *candidate : {pair.first.get(), pair.second.get()}) {
            if (candidate->name() == parsed.name && candidate->argCount() == 0)
                return std::make_unique<AttrType>(*candidate, StringList(), std::move(parsed.suffix), this);
        }
    }
    return nullptr;
}

std::optional<std::size_t> DataTypeMappings::findPair(const ParsedType &parsed, bool nativeSide) const
{
    for (std::size_t i = 0; i < m_pairs.size(); ++i) {
        if (fits(nativeSide ? *m_pairs[i].first : *m_pairs[i].second, parsed))
            return i;
    }
    return std::nullopt;
}

std::unique_ptr<AttrType> DataTypeMappings::buildNative(std::size_t pair, const ParsedType &parsed) const
{
    // No suffix is known to survive the way into a format's own vocabulary.
    return std::make_unique<AttrType>(*m_pairs[pair].first, parsed.values, std::string(), this);
}

std::unique_ptr<AttrType> DataTypeMappings::toGeneric(const AttrType &type) const
{
    const ParsedType parsed = parseType(formatType(type, kDialogListMode), kDialogListMode);
    const auto pair = findPair(parsed, true);
    return pair ? std::make_unique<AttrType>(*m_pairs[*pair].second, parsed.values, parsed.suffix, this) : nullptr;
}

std::unique_ptr<AttrType> DataTypeMappings::toNative(const AttrType &type) const
{
    const ParsedType parsed = parseType(formatType(type, kDialogListMode), kDialogListMode);
    const auto pair = findPair(parsed, false);
    return pair ? buildNative(*pair, parsed) : nullptr;
}

std::string DataTypeMappings::genericText(std::string_view nativeText, int listMode) const
{
    const auto native = createType(nativeText, listMode);
    const auto generic = native ? toGeneric(*native) : nullptr;
    return generic ? formatType(*generic, kDialogListMode) : std::string();
}

std::unique_ptr<AttrType> DataTypeMappings::convertType(const DataTypeMappings &source, const AttrType *type,
                                                        const DataTypeMappings &target)
{
    if (!type)
        return nullptr;
    const ParsedType parsed = parseType(formatType(*type, kDialogListMode), kDialogListMode);
    if (const auto direct = target.findPair(parsed, true))
        return target.buildNative(*direct, parsed);
    const std::unique_ptr<AttrType> generic = source.toGeneric(*type);
    return generic ? target.toNative(*generic) : nullptr;
}

std::unique_ptr<AttrType> DataTypeMappings::defaultType() const
{
    if (m_pairs.empty())
        return nullptr;
    const AttrTypeTemplate *chosen = m_pairs.front().first.get();
    for (const TemplatePair &pair : m_pairs) {
        if (pair.first->argCount() == 0) {
            chosen = pair.first.get();
            break;
        }
    }
    return std::make_unique<AttrType>(*chosen, StringList(), std::string(), this);
}

} // namespace vyr
