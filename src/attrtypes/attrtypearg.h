// AttrTypeArg: one argument position of an attribute data type.
//
// The kind of an argument is chosen by the keyword that the format's
// template gives for its position ("width", "stringset", "range_domain" ...).
// The kind decides which value texts are kept, what the value falls back to,
// and what is checked before a value is accepted.
//
// Attributes of every argument:
//   value   - the current value text (for a template argument: its keyword)
//   index   - the position in the type's argument list, from 0
//   keyword - the keyword it was created for; empty in a clone
//   type    - the type that holds it (not owned), through which it reaches
//             the type's data type mappings
#ifndef VYR_ATTRTYPES_ATTRTYPEARG_H
#define VYR_ATTRTYPES_ATTRTYPEARG_H

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace vyr {

class AttrType;
class AttrTypeArgBinIntWidth;
class AttrTypeArgCodedDomain;
class AttrTypeArgInt;
class AttrTypeArgIntWidth;
class AttrTypeArgRangeDomain;
class AttrTypeArgStringList;
class AttrTypeArgStringMap;
class AttrTypeArgStringSet;
class AttrTypeArgTemplate;

// One operation per argument kind, for code outside the model that treats
// the kinds differently (the grid cells that edit them): a new kind cannot
// be added without every such piece of code being told.
class AttrTypeArgVisitor
{
public:
    virtual ~AttrTypeArgVisitor() = default;
    virtual void visit(const AttrTypeArgInt &arg) = 0;
    virtual void visit(const AttrTypeArgIntWidth &arg) = 0;
    virtual void visit(const AttrTypeArgBinIntWidth &arg) = 0;
    virtual void visit(const AttrTypeArgStringSet &arg) = 0;
    virtual void visit(const AttrTypeArgStringList &arg) = 0;
    virtual void visit(const AttrTypeArgStringMap &arg) = 0;
    virtual void visit(const AttrTypeArgRangeDomain &arg) = 0;
    virtual void visit(const AttrTypeArgCodedDomain &arg) = 0;
    virtual void visit(const AttrTypeArgTemplate &arg) = 0;
};

class AttrTypeArg
{
public:
    virtual ~AttrTypeArg();

    AttrTypeArg(const AttrTypeArg &) = delete;
    AttrTypeArg &operator=(const AttrTypeArg &) = delete;

    virtual std::string value() const;
    // Stores `text`, or the kind's fallback when the kind refuses it.
    virtual void setValue(std::string_view text) = 0;
    // Resets to the kind's default; callers pass an empty text.
    virtual void setDefault(std::string_view text) = 0;
    // A new argument of the same kind with the same value, index and type
    // (no keyword); null for a template argument.
    virtual std::unique_ptr<AttrTypeArg> clone() const;
    // Whether a type holding this argument may be offered in a type list.
    virtual bool isSelectable(int mode) const;
    // Whether `value` may be accepted for the attribute named `label`; a
    // refusal tells the user why (util/usernotice.h).
    virtual bool validate(std::string_view value, std::string_view label) const;
    // A fresh, empty argument of the same kind; null for a template argument.
    virtual std::unique_ptr<AttrTypeArg> createNew() const = 0;
    // Calls the visitor's operation for this argument's kind.
    virtual void accept(AttrTypeArgVisitor &visitor) const = 0;

    std::uint32_t index() const { return m_index; }
    const std::string &keyword() const { return m_keyword; }
    const AttrType *type() const { return m_type; }

    // Where the argument stands: set by createArg and clone.
    void place(std::uint32_t index, std::string keyword, const AttrType *type);

protected:
    AttrTypeArg() = default;

    std::string m_value;

private:
    std::uint32_t m_index = 0;
    std::string m_keyword;
    const AttrType *m_type = nullptr;
};

// The argument for `keyword` at `index` of `type` (which may be null).
// Keywords, compared exactly: "stringset", "stringlist", "stringmap",
// "binint-width" or "byte-size", "range_domain", "coded_domain", "width" of a
// type named "int"; anything else is an integer argument for the keyword.
std::unique_ptr<AttrTypeArg> createArg(std::string_view keyword, std::uint32_t index, const AttrType *type);

} // namespace vyr

#endif // VYR_ATTRTYPES_ATTRTYPEARG_H
