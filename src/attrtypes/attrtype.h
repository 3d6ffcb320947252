// AttrType: one attribute data type, parsed; AttrTypeTemplate: a format's
// pattern for types, whose arguments are keywords.
//
// Attributes of a type:
//   name     - the type name ("vyr_decimal", "char")
//   args     - one owned argument per argument position, in order
//   suffix   - the text after the argument list; empty when absent
//   registry - the data type mappings that made the type (not owned, may be
//              null); a type must not outlive it
#ifndef VYR_ATTRTYPES_ATTRTYPE_H
#define VYR_ATTRTYPES_ATTRTYPE_H

#include "attrtypes/attrtypearg.h"
#include "util/listpacking.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vyr {

class AttrTypeTemplate;
class DataTypeMappings;
struct ParsedType;

using AttrTypeArgs = std::vector<std::unique_ptr<AttrTypeArg>>;

class AttrType
{
public:
    AttrType();
    // Takes over `args`, which already know their places.
    AttrType(std::string name, AttrTypeArgs args, std::string suffix);
    // A type of `typeTemplate`: one argument per template keyword, taking
    // value i when it is given and not empty, else the argument's default.
    // Values beyond the template's arguments are ignored.
    AttrType(const AttrTypeTemplate &typeTemplate, const StringList &values, std::string suffix,
             const DataTypeMappings *registry);
    // As above with the values and suffix read from `typeString` (dialog
    // list mode).
    AttrType(const AttrTypeTemplate &typeTemplate, std::string_view typeString, const DataTypeMappings *registry);
    virtual ~AttrType();

    AttrType(const AttrType &) = delete;
    AttrType &operator=(const AttrType &) = delete;

    // A copy with the same name, suffix and argument values, and no
    // registry; null for a template.
    virtual std::unique_ptr<AttrType> clone() const;
    // Whether the type may be offered in a type list: not when an argument
    // is fixed by its template, and in mode 1 not for "char" and "boolean".
    virtual bool isSelectable(int mode) const;

    const std::string &name() const { return m_name; }
    std::size_t argCount() const { return m_args.size(); }
    // Null past the end.
    AttrTypeArg *arg(std::size_t index) const { return index < m_args.size() ? m_args[index].get() : nullptr; }
    const std::string &suffix() const { return m_suffix; }
    void setSuffix(std::string suffix) { m_suffix = std::move(suffix); }
    const DataTypeMappings *registry() const { return m_registry; }
    // Whether the registry belongs to a reader format; false without one.
    bool isSource() const;

private:
    AttrType(const AttrTypeTemplate &typeTemplate, ParsedType parsed, const DataTypeMappings *registry);

protected:
    std::string m_name;
    AttrTypeArgs m_args;
    std::string m_suffix;
    const DataTypeMappings *m_registry = nullptr;
};

class AttrTypeTemplate final : public AttrType
{
public:
    // Reads `text` in `listMode`: each value becomes a keyword; a suffix is
    // dropped.
    AttrTypeTemplate(std::string_view text, const DataTypeMappings *registry, int listMode);

    std::unique_ptr<AttrType> clone() const override;
};

// Whether `typeString` (dialog list mode) has the template's name and as many
// values as it has arguments ("()" counts as one value).
bool matchesTemplate(const AttrTypeTemplate &typeTemplate, std::string_view typeString);

} // namespace vyr

#endif // VYR_ATTRTYPES_ATTRTYPE_H
