#include "ftprops/schemamove.h"

#include "attrtypes/datatypemappings.h"
#include "attrtypes/typestring.h"


namespace vyr {

std::optional<AttributeTypeTexts> MoveAttributeType(const DataTypeMappings &from, const DataTypeMappings &to,
                                                    std::string_view type, std::string_view knownGeneric,
                                                    int listMode)
{
    const std::unique_ptr<AttrType> read = from.createType(type, listMode);
    std::string generic(knownGeneric);
    if (read) {
        if (const auto converted = DataTypeMappings::convertType(from, read.get(), to)) {
            const auto convertedGeneric = to.toGeneric(*converted);
            return AttributeTypeTexts{formatType(*converted, listMode),
                                      convertedGeneric ? formatType(*convertedGeneric, kDialogListMode) : generic};
        }
        if (generic.empty()) {
            if (const auto readGeneric = from.toGeneric(*read))
                generic = formatType(*readGeneric, kDialogListMode);
        }
    }
    if (generic.empty())
        return std::nullopt;
    // A type the old format could not read may still have a counterpart
    // through the generic type stored with it.
    if (const auto genericType = to.createType(generic, kDialogListMode)) {
        if (const auto native = to.toNative(*genericType))
            return AttributeTypeTexts{formatType(*native, listMode), generic};
    }
    return AttributeTypeTexts{generic, generic};
}

UserAttributeTypes MoveUserAttribute(const FTPropsFormatInfo &from, const FTPropsFormatInfo &to,
                                     const UserAttributeTypes &attribute, const NameTakenTest &isTaken)
{
    UserAttributeTypes moved = attribute;
    moved.name = LegaliseAttributeNameSteps(to, attribute.name, isTaken).unique;
    const DataTypeMappings *source = from.getDataTypeMappings();
    const DataTypeMappings *target = to.getDataTypeMappings();
    if (source && target) {
        if (auto texts = MoveAttributeType(*source, *target, attribute.type, attribute.generic, to.getTypeListMode())) {
            moved.type = std::move(texts->type);
            moved.generic = std::move(texts->generic);
        }
    }
    return moved;
}

} // namespace vyr
