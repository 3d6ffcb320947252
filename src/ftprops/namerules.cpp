#include "ftprops/namerules.h"

#include "util/asciitext.h"
#include "util/codepage.h"
#include "util/installedscripts.h"
#include "util/pattern.h"
#include "util/stringconverter.h"

#include "vyr/IVYRFeature.h"
#include "vyr/IVYRSession.h"

#include <chrono>
#include <cstdio>
#include <optional>

namespace vyr {

namespace {

constexpr int kScriptPasses = 1000;

// The number of bytes of the character at `at`, by the narrow code page.
std::size_t characterLength(std::string_view text, std::size_t at)
{
    const auto byte = static_cast<unsigned char>(text[at]);
    const std::size_t left = text.size() - at;
    if (byte < 0x80 || left < 2)
        return 1;
    const std::string codePage = narrowCodePage();
    if (codePage == "UTF-8") {
        const std::size_t length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
        if (length > left)
            return 1;
        // A broken sequence is bytes of its own, not one character.
        for (std::size_t i = 1; i < length; ++i) {
            if ((static_cast<unsigned char>(text[at + i]) & 0xC0) != 0x80)
                return 1;
        }
        return length;
    }
    // Every other code page pairs these lead bytes with the next byte, as
    // the names of the double-byte code pages need; a single-byte name
    // merely keeps such a pair as it is.
    return (byte >= 129 && byte <= 175) || (byte >= 224 && byte <= 252) ? 2 : 1;
}

bool startsWithMultiByte(std::string_view name)
{
    return !name.empty() && characterLength(name, 0) > 1;
}

// Applies `change` to every single-byte character.
template <class Change>
std::string changeSingleBytes(std::string_view name, Change change)
{
    std::string result(name);
    for (std::size_t at = 0; at < result.size();) {
        const std::size_t length = characterLength(result, at);
        if (length == 1)
            result[at] = change(result[at]);
        at += length;
    }
    return result;
}

std::string replaceInvalid(std::string_view name, std::string_view invalidChars, char replacement)
{
    return changeSingleBytes(name,
                             [&](char c) { return invalidChars.find(c) != std::string_view::npos ? replacement : c; });
}

// Cut to `limit` UTF-16 code units, never inside a surrogate pair.
std::string truncateCharacters(std::string_view name, std::size_t limit)
{
    const VYRSimpleWindowsStringConverter converter(kAnsiCodePage);
    std::u16string wide = converter.toWide(name);
    if (wide.size() <= limit)
        return std::string(name);
    wide.resize(limit);
    if (!wide.empty() && wide.back() >= 0xD800 && wide.back() <= 0xDBFF)
        wide.pop_back();
    return converter.fromWide(wide);
}

std::size_t characterCount(std::string_view name)
{
    return VYRSimpleWindowsStringConverter(kAnsiCodePage).toWide(name).size();
}

bool collides(const std::string &candidate, const NameTakenTest &isTaken, const StringSet &reservedWords)
{
    return isTaken(candidate) || reservedWords.contains(upperAscii(candidate));
}

NameTakenTest takenIn(const StringSet &taken)
{
    return [&taken](const std::string &name) { return taken.contains(name); };
}

std::string numberSuffix(unsigned n)
{
    char text[16];
    std::snprintf(text, sizeof text, n < 100 ? "%02u" : "%u", n);
    return text;
}

// The feature type name rules' case names for an attribute case rule.
std::string_view featureTypeCaseRule(std::string_view attributeRule)
{
    const std::pair<std::string_view, std::string_view> rules[] = {
        {"UPPER", "UPPER"},
        {"LOWER", "LOWER"},
        {"FIRSTUPPER", "FIRST_UPPER"},
        {"FIRSTLOWER", "FIRST_LOWER"},
        {"UPPERFIRSTALPHA", "UPPER_FIRST_ALPHA"},
        {"ANYFIRSTNONNUMERIC", "ANY_FIRST_NONNUMERIC"},
    };
    for (const auto &[attribute, featureType] : rules) {
        if (attributeRule == attribute)
            return featureType;
    }
    return "ANY";
}

// Cut to `limit` bytes, dropping a character the cut would split.
std::string truncateBytes(std::string_view name, std::size_t limit)
{
    std::size_t end = 0;
    while (end < name.size()) {
        const std::size_t length = characterLength(name, end);
        if (end + length > limit)
            break;
        end += length;
    }
    return std::string(name.substr(0, end));
}

} // namespace

std::string ApplyNameCase(std::string_view name, std::string_view rule, unsigned limit)
{
    const auto upper = [](char c) { return upperAscii(c); };
    const auto lower = [](char c) { return lowerAscii(c); };
    std::string result(name);
    if (rule == "UPPER")
        return changeSingleBytes(name, upper);
    if (rule == "LOWER")
        return changeSingleBytes(name, lower);
    if ((rule == "FIRST_UPPER" || rule == "FIRST_LOWER") && !result.empty() && !startsWithMultiByte(result)) {
        result[0] = rule == "FIRST_UPPER" ? upperAscii(result[0]) : lowerAscii(result[0]);
        return result;
    }
    if (rule == "UPPER_FIRST_ALPHA") {
        result = changeSingleBytes(name, upper);
        if (startsWithMultiByte(result))
            return result;
        if (result.empty() || result[0] < 'A' || result[0] > 'Z')
            result = "Q_" + result;
        return limit != 0 ? truncateCharacters(result, limit) : result;
    }
    if (rule == "ANY_FIRST_NONNUMERIC" && !startsWithMultiByte(result) && !result.empty() && result[0] >= '0'
        && result[0] <= '9') {
        result = "_" + result;
        return limit != 0 ? truncateCharacters(result, limit) : result;
    }
    return result;
}

namespace {

// The numbered search of MakeUniqueNumberedName, with the limit counted by
// `truncate` (characters for feature types, bytes for attribute names).
template <class Truncate>
std::string uniqueNumbered(std::string_view name, unsigned limit, const NameTakenTest &taken,
                           const StringSet &reservedWords, Truncate truncate)
{
    std::string candidate(name);
    if (!collides(candidate, taken, reservedWords) || limit == 1)
        return candidate;
    std::string base(name);
    for (unsigned n = 0;; ++n) {
        const std::string suffix = numberSuffix(n);
        if (limit != 0) {
            if (suffix.size() > limit)
                return {};
            base = truncate(base, limit - suffix.size());
        }
        candidate = base + suffix;
        if (!collides(candidate, taken, reservedWords))
            return candidate;
    }
}

} // namespace

std::string MakeUniqueNumberedName(std::string_view name, unsigned limit, const StringSet &taken,
                                   const StringSet &reservedWords)
{
    return uniqueNumbered(name, limit, takenIn(taken), reservedWords, truncateCharacters);
}

std::string LegaliseName(std::string_view name, std::string_view invalidChars, std::string_view caseRule,
                         const StringSet &reservedWords, const StringSet &taken, unsigned maxLength,
                         bool lengthIncludesPrefix, char replacement)
{
    std::string result(name);
    unsigned limit = maxLength;
    if (maxLength > 0) {
        const std::size_t stop = result.find('.');
        if (!lengthIncludesPrefix && stop != std::string::npos)
            limit = static_cast<unsigned>(characterCount(result.substr(0, stop)) + 1 + maxLength);
        result = truncateCharacters(result, limit);
    }
    result = ApplyNameCase(result, caseRule, limit);
    result = replaceInvalid(result, invalidChars, replacement);
    return MakeUniqueNumberedName(result, limit, taken, reservedWords);
}

std::string MakeUniqueScriptName(std::string_view name, const StringSet &taken)
{
    if (!taken.contains(std::string(name)))
        return std::string(name);
    static const Pattern numbered("_[0-9]+$");
    std::string_view base = name;
    if (const auto match = numbered.find(name))
        base = name.substr(0, match->begin);
    for (unsigned n = 2;; ++n) {
        std::string candidate = std::string(base) + "_" + std::to_string(n);
        if (!taken.contains(candidate))
            return candidate;
    }
}

std::optional<std::string> RunValidationScript(IVYRSession &session, std::string_view script, std::string_view name,
                                               const StringSet &taken, std::string *refusal)
{
    // The name is spliced into a Tcl command: only a plain file name of the
    // script folder gets that far.
    if (std::optional<std::string> reason = refuseScriptName(script)) {
        if (refusal)
            *refusal = std::move(*reason);
        return std::nullopt;
    }
    std::string result(name);
    IVYRFeature *feature = session.createFeature();
    IVYRString *value = session.createString();
    if (!feature || !value) {
        session.destroyString(value);
        session.destroyFeature(feature);
        return result;
    }
    const std::string path = installedScriptFolder() + std::string(script);
    // The limit holds for the whole resolution: a script that keeps giving a
    // taken name would otherwise run its passes for many times the limit.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(scriptSecondsLimit());
    for (int pass = 0; pass < kScriptPasses && std::chrono::steady_clock::now() < deadline; ++pass) {
        const std::string command
            = std::string("@TCL(catch {set LH_Clear ") + (pass == 0 ? "yes" : "no") + "; source {" + path + "}})";
        feature->setFeatureType(result.c_str());
        feature->performFunction(command.c_str(), *value);
        if (const std::string changed = feature->getFeatureType(); !changed.empty())
            result = changed;
        if (!taken.contains(result))
            break;
        result = MakeUniqueScriptName(result, taken);
    }
    feature->performFunction("@TCL(catch {unset LH_Clear})", *value);
    session.destroyString(value);
    session.destroyFeature(feature);
    return result;
}

std::string ResolveFeatureTypeName(const FTPropsFormatInfo &format, std::string_view proposed, const StringSet &taken,
                                   IVYRSession *session)
{
    while (!proposed.empty() && proposed.front() == ' ')
        proposed.remove_prefix(1);
    while (!proposed.empty() && proposed.back() == ' ')
        proposed.remove_suffix(1);
    const std::string name(proposed);

    const StringList allowed = format.getAllowedFeatTypes();
    if (!allowed.empty()) {
        if (std::find(allowed.begin(), allowed.end(), name) != allowed.end() && !taken.contains(name))
            return name;
        for (const std::string &candidate : allowed) {
            if (!taken.contains(candidate))
                return candidate;
        }
        return {};
    }
    const std::string script = format.getFeatTypeValidationScript();
    if (!script.empty()) {
        std::string refusal;
        // Without a session an allowed script cannot run, and the name
        // stands as proposed.
        if (!session) {
            const std::optional<std::string> reason = refuseScriptName(script);
            if (!reason)
                return name;
            refusal = *reason;
        } else if (std::optional<std::string> resolved = RunValidationScript(*session, script, name, taken, &refusal)) {
            return std::move(*resolved);
        }
        // The format's own rules apply instead, as if it named no script.
        std::fprintf(stderr, "vyr: the validation script \"%s\" of format %s is not run: %s\n", script.c_str(),
                     format.getFormatName().c_str(), refusal.c_str());
    }
    const int length = format.getFeatureTypeLength();
    return LegaliseName(name, format.getFeatureTypeInvalidChars(), format.getFeatureTypeCase(),
                        format.getFeatureTypeReservedWordSet(), taken, length > 0 ? static_cast<unsigned>(length) : 0,
                        format.featureTypeLengthIncludesPrefix(), '_');
}

AttributeNameSteps LegaliseAttributeNameSteps(const FTPropsFormatInfo &format, std::string_view name,
                                              const NameTakenTest &isTaken)
{
    static constexpr std::string_view kBracket = "{}";
    static constexpr std::string_view kStandIn = "___FAKE___BRACKET___";
    AttributeNameSteps steps;
    std::string result(name);
    for (std::size_t at = result.find(kBracket); at != std::string::npos; at = result.find(kBracket, at))
        result.replace(at, kBracket.size(), kStandIn);
    result = replaceInvalid(result, format.getAttrNameInvalidChars(), '_');
    for (std::size_t at = result.find(kStandIn); at != std::string::npos; at = result.find(kStandIn, at))
        result.replace(at, kStandIn.size(), kBracket);
    steps.replaced = result;
    steps.cased = ApplyNameCase(result, featureTypeCaseRule(format.getAttrCase()), 0);
    const int maxLength = format.getMaxAttrLength();
    steps.cut = maxLength > 0 ? truncateBytes(steps.cased, static_cast<std::size_t>(maxLength)) : steps.cased;
    // Illegal names match in any case, however the capability file spells them.
    StringSet illegal;
    for (const std::string &word : format.getDestIllegalAttrList())
        illegal.insert(upperAscii(word));
    // The attribute limit is in bytes, and so is the room left for a number.
    steps.reserved = illegal.contains(upperAscii(steps.cut));
    steps.unique = uniqueNumbered(steps.cut, maxLength > 0 ? static_cast<unsigned>(maxLength) : 0, isTaken, illegal,
                                  truncateBytes);
    return steps;
}

AttributeNameSteps LegaliseAttributeNameSteps(const FTPropsFormatInfo &format, std::string_view name,
                                              const StringSet &taken)
{
    return LegaliseAttributeNameSteps(format, name, takenIn(taken));
}

std::string LegaliseAttributeName(const FTPropsFormatInfo &format, std::string_view name, const StringSet &taken)
{
    return LegaliseAttributeNameSteps(format, name, takenIn(taken)).unique;
}

} // namespace vyr
