// Attribute data types as a format declares them, worked out independently
// of the library: type strings, the templates of a format's
// DATA_TYPE_MAPPINGS and the conversions between a format's own words, the
// generic words and another format's.
#ifndef VYR_TESTS_MODEL_ATTRIBUTETYPES_H
#define VYR_TESTS_MODEL_ATTRIBUTETYPES_H

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vyr::model {

using Strings = std::vector<std::string>;

// How argument values are packed: the stored form of schema features and
// capability strings (each value WWJD-encoded, joined with commas), or the
// form shown in dialogs (quoted where a value holds a comma, blank or quote).
enum class ListMode { Stored = 0, Shown = 1 };

// A type string's parts: `name(values),suffix`. No values means no
// parentheses; "name()" has one empty value.
struct TypeText
{
    std::string name;
    Strings values;
    std::string suffix;

    bool operator==(const TypeText &) const = default;
};

TypeText parseType(std::string_view text, ListMode mode);
std::string formatType(const TypeText &type, ListMode mode);

// What an argument position of a template takes, chosen by its keyword.
enum class ArgKind { Integer, IntWidth, BinIntWidth, StringSet, StringList, StringMap, RangeDomain, CodedDomain };

struct ArgTemplate
{
    std::string keyword;
    ArgKind kind = ArgKind::Integer;
    std::string fixed; // the number a keyword such as "1" in "char(1)" fixes
};

struct TypeTemplate
{
    std::string name;
    std::vector<ArgTemplate> args;

    // Offered in the attribute grid's type list (no argument fixed by a
    // number).
    bool isOffered() const;
    // What an argument holds when it is given `text` (empty: its default).
    std::string acceptedValue(std::size_t index, std::string_view text) const;
    // The type this template makes of argument values (missing or empty
    // ones take their defaults, extra ones are dropped).
    TypeText build(const Strings &values, std::string suffix) const;
    // Whether a shown type string is of this template (same name, as many
    // values as arguments).
    bool matches(std::string_view shownText) const;
};

bool isDomainKind(ArgKind kind);

// One format's templates, native and generic in pairs.
class TypeMappings
{
public:
    TypeMappings() = default;
    // `flat` holds native and generic template texts alternately, as
    // DATA_TYPE_MAPPINGS lists them.
    explicit TypeMappings(const Strings &flat);

    bool empty() const { return m_pairs.empty(); }
    // The type a text makes here: exact name and argument count first,
    // else an argumentless template of that name.
    std::optional<TypeText> create(std::string_view text, ListMode mode) const;
    std::optional<TypeText> toGeneric(const TypeText &native) const;
    std::optional<TypeText> toNative(const TypeText &generic) const;
    // A type of `from` in this format's words.
    std::optional<TypeText> convertFrom(const TypeMappings &from, const TypeText &type) const;
    // The type a new attribute falls back to: the first native template
    // without arguments, else the first one with its arguments' defaults.
    std::optional<TypeText> defaultType() const;
    // The first native template named `name`.
    const TypeTemplate *nativeTemplate(std::string_view name) const;
    // The names the type list offers, ascending, each once.
    Strings offeredNames() const;

private:
    std::vector<std::pair<TypeTemplate, TypeTemplate>> m_pairs;
};

} // namespace vyr::model

#endif // VYR_TESTS_MODEL_ATTRIBUTETYPES_H
