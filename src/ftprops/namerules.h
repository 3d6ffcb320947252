// The rules that make a feature type or attribute name acceptable to a
// format: the allowed names, a validation script run by the engine, or rules
// for length, letter case, characters and reserved words - and always
// distinct from the names already taken.
//
// Names are bytes in the narrow code page. A character of more than one byte
// is one unit: never case-converted, never searched for or replaced. In
// every code page but UTF-8 a byte from 129 to 175 or from 224 to 252 that
// is not the last starts such a unit with the byte after it, whether the
// code page has double-byte characters or not (so "\xe9a" in CP1252 keeps
// its "a"). In UTF-8, which those byte ranges would cut apart, a whole valid
// sequence is the unit instead; a broken one is bytes of their own. Lengths
// count characters as UTF-16 code units. Letter case changes ASCII letters.
#ifndef VYR_FTPROPS_NAMERULES_H
#define VYR_FTPROPS_NAMERULES_H

#include "ftprops/ftpropsformatinfo.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

class IVYRSession;

namespace vyr {

// The name a feature type of `format` gets for `proposed`, given the names
// the format's other feature types have. `session` runs the format's
// validation script (none runs without one). A script that is not a plain
// file of the installation's metafile/ folder is not run (said on standard
// error), and the format's name rules apply as if it named none. May be
// empty: when the format allows only names that are all taken, or for an
// empty proposal.
std::string ResolveFeatureTypeName(const FTPropsFormatInfo &format, std::string_view proposed, const StringSet &taken,
                                   IVYRSession *session);

// Runs the format's validation script (under the installation directory's
// metafile/) on `name` through an engine feature, at most 1,000 times, until
// the name it leaves is not taken, and for no longer than scriptSecondsLimit
// in all (the pass under way then ends by the engine's own limit). The name
// comes from a capability file: one that may not name an installed script
// (util/installedscripts.h) runs nothing, and the answer is nothing, with
// the reason in `refusal` when given.
std::optional<std::string> RunValidationScript(IVYRSession &session, std::string_view script, std::string_view name,
                                               const StringSet &taken, std::string *refusal = nullptr);

// `name`, or when taken, name_2, name_3 ... (a number already at its end
// is dropped first).
std::string MakeUniqueScriptName(std::string_view name, const StringSet &taken);

// Length limit (a prefix up to the first "." not counted unless
// `lengthIncludesPrefix`), letter case, invalid characters, then uniqueness
// against taken names and reserved words.
std::string LegaliseName(std::string_view name, std::string_view invalidChars, std::string_view caseRule,
                         const StringSet &reservedWords, const StringSet &taken, unsigned maxLength,
                         bool lengthIncludesPrefix, char replacement);

// ANY, UPPER, LOWER, FIRST_UPPER, FIRST_LOWER, UPPER_FIRST_ALPHA ("Q_" before
// a name that does not start with a letter), ANY_FIRST_NONNUMERIC ("_" before
// a leading digit); the prefixed names are cut to `limit` when it is not 0.
std::string ApplyNameCase(std::string_view name, std::string_view rule, unsigned limit);

// `name`, or when it is taken or (upper-cased) a reserved word, the first of
// name00, name01 ... name99, name100 ... that is not, the name part cut so
// that the whole fits `limit` (0: no limit). Empty when no number fits; the
// name itself when the limit is 1.
std::string MakeUniqueNumberedName(std::string_view name, unsigned limit, const StringSet &taken,
                                   const StringSet &reservedWords);

// The attribute name a format accepts: invalid characters replaced (list
// brackets "{}" kept), ATTR_CASE, MAX_ATTR_LENGTH in bytes, then unique
// against `taken` and DEST_ILLEGAL_ATTR_LIST.
std::string LegaliseAttributeName(const FTPropsFormatInfo &format, std::string_view name, const StringSet &taken);

// The name after each rule of LegaliseAttributeName, so that a person can be
// told which of them changed it.
struct AttributeNameSteps
{
    std::string replaced; // invalid characters replaced
    std::string cased; // ATTR_CASE applied
    std::string cut; // MAX_ATTR_LENGTH applied
    std::string unique; // the result: not taken, not illegal
    bool reserved = false; // `cut` is one of the format's illegal names
};
AttributeNameSteps LegaliseAttributeNameSteps(const FTPropsFormatInfo &format, std::string_view name,
                                              const StringSet &taken);
// Whether a name is taken, for a caller that keeps its own index of names
// and would otherwise copy them all into a set for every name it checks.
using NameTakenTest = std::function<bool(const std::string &)>;
AttributeNameSteps LegaliseAttributeNameSteps(const FTPropsFormatInfo &format, std::string_view name,
                                              const NameTakenTest &isTaken);

} // namespace vyr

#endif // VYR_FTPROPS_NAMERULES_H
