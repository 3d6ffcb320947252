// What a feature type's schema becomes when it moves to another format:
// each part carried into the target format's vocabulary, so that the moved
// schema holds nothing only the old format understands.
#ifndef VYR_FTPROPS_SCHEMAMOVE_H
#define VYR_FTPROPS_SCHEMAMOVE_H

#include "ftprops/ftpropsformatinfo.h"
#include "ftprops/ftpropsschemainfo.h"
#include "ftprops/namerules.h"

#include <optional>
#include <string>
#include <string_view>

namespace vyr {

class DataTypeMappings;

// An attribute's type as a format writes it, with its generic type.
struct AttributeTypeTexts
{
    std::string type;
    std::string generic;
};

// `type` of the format of `from` (read in `listMode`) as the format of `to`
// writes it (in `listMode`): its counterpart there when it has one, with
// that counterpart's generic type. A type the target has no counterpart for
// is carried by its generic type alone (type and generic the same text):
// the generic vocabulary is what every format shares, so it is never lost.
// `knownGeneric` is the generic type stored for the attribute, used when
// `from` cannot read the type itself. Nothing when no generic type is known
// either.
std::optional<AttributeTypeTexts> MoveAttributeType(const DataTypeMappings &from, const DataTypeMappings &to,
                                                    std::string_view type, std::string_view knownGeneric,
                                                    int listMode);

// A user attribute carried from the format `from` to the format `to`: its
// name made legal there and not one `isTaken` says is taken, its type
// carried as MoveAttributeType carries it in `to`'s list mode (kept as it is
// when neither format knows anything of it).
UserAttributeTypes MoveUserAttribute(const FTPropsFormatInfo &from, const FTPropsFormatInfo &to,
                                     const UserAttributeTypes &attribute, const NameTakenTest &isTaken);

} // namespace vyr

#endif // VYR_FTPROPS_SCHEMAMOVE_H
