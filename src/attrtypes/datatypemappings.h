// DataTypeMappings: the attribute data types one format knows, as pairs of
// templates - one in the format's own (native) vocabulary, one in the
// generic vocabulary all formats share - and the conversions between them.
//
// Attributes:
//   pairs      - (native, generic) templates in the order they were added
//   formatName - the format's name
//   isSource   - whether the format is read (a reader) rather than written
//
// A bare generic name that the generic vocabulary gives arguments to stands
// for its full template: "vyr_char" for "vyr_char(width)", "vyr_varchar" for
// "vyr_varchar(width)", "vyr_decimal" for "vyr_decimal(width,decimal)".
// Types it makes belong to the caller and must not outlive the mappings.
#ifndef VYR_ATTRTYPES_DATATYPEMAPPINGS_H
#define VYR_ATTRTYPES_DATATYPEMAPPINGS_H

#include "attrtypes/attrtype.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vyr {

class DataTypeMappings
{
public:
    DataTypeMappings(std::string formatName, bool isSource);
    ~DataTypeMappings();

    DataTypeMappings(const DataTypeMappings &) = delete;
    DataTypeMappings &operator=(const DataTypeMappings &) = delete;

    const std::string &formatName() const { return m_formatName; }
    bool isSource() const { return m_isSource; }
    std::size_t pairCount() const { return m_pairs.size(); }
    const AttrTypeTemplate &nativeTemplate(std::size_t pair) const { return *m_pairs[pair].first; }
    const AttrTypeTemplate &genericTemplate(std::size_t pair) const { return *m_pairs[pair].second; }

    // Adds the pair of template texts read in `listMode`, unless the same
    // pair is there already.
    void addMapping(std::string_view nativeText, std::string_view genericText, int listMode);

    // The type of `text`: built from the first template (native, then
    // generic, pair by pair) with the same name and number of arguments, else
    // from the first argument-less template of the same name (dropping the
    // values); null when none fits.
    std::unique_ptr<AttrType> createType(std::string_view text, int listMode) const;
    // The generic type of a native type (its values kept by position); null
    // when no native template fits it.
    std::unique_ptr<AttrType> toGeneric(const AttrType &type) const;
    // The native type of a generic type, without a suffix; null when no
    // generic template fits it.
    std::unique_ptr<AttrType> toNative(const AttrType &type) const;
    // The generic type string of a native type string read in `listMode`,
    // written as the generic vocabulary writes it (kDialogListMode); empty
    // when no native template fits it.
    std::string genericText(std::string_view nativeText, int listMode) const;
    // A type of the format of `source` as a type of the format of `target`:
    // directly when a native template of the target fits it, else through
    // the generic vocabulary. Null when there is no way (or no type).
    static std::unique_ptr<AttrType> convertType(const DataTypeMappings &source, const AttrType *type,
                                                 const DataTypeMappings &target);
    // The first argument-less native type, else the first native type with
    // its default arguments; null without pairs.
    std::unique_ptr<AttrType> defaultType() const;

private:
    using TemplatePair = std::pair<std::unique_ptr<AttrTypeTemplate>, std::unique_ptr<AttrTypeTemplate>>;

    // The first pair whose template on the native (else generic) side has
    // the parsed name and number of values.
    std::optional<std::size_t> findPair(const ParsedType &parsed, bool nativeSide) const;
    // A type of the pair's native template, without a suffix.
    std::unique_ptr<AttrType> buildNative(std::size_t pair, const ParsedType &parsed) const;

    std::string m_formatName;
    bool m_isSource;
    std::vector<TemplatePair> m_pairs;
    // The type strings of every pair, so a pair given again is known at once.
    std::set<std::pair<std::string, std::string>> m_pairTexts;
};

} // namespace vyr

#endif // VYR_ATTRTYPES_DATATYPEMAPPINGS_H
