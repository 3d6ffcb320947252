// The integer argument kinds: a plain integer (a width, a number of
// decimals), an integer width of 1 to 16 digits, and a binary integer width
// of 2 or 4 bytes.
#ifndef VYR_ATTRTYPES_ATTRTYPEARGINT_H
#define VYR_ATTRTYPES_ATTRTYPEARGINT_H

#include "attrtypes/attrtypearg.h"

namespace vyr {

// Keeps any integer text. Otherwise the value falls back to the fixed value,
// which a template sets by writing a number as its keyword ("char(1)"), or
// else to "10" at index 1 (decimals) and "20" elsewhere (a width). A type
// with a fixed argument is never offered in a type list.
class AttrTypeArgInt final : public AttrTypeArg
{
public:
    explicit AttrTypeArgInt(std::string_view keyword);

    void setValue(std::string_view text) override;
    void setDefault(std::string_view text) override;
    bool isSelectable(int mode) const override;
    std::unique_ptr<AttrTypeArg> createNew() const override;
    void accept(AttrTypeArgVisitor &visitor) const override { visitor.visit(*this); }

    const std::string &fixedValue() const { return m_fixedValue; }

private:
    std::string m_fixedValue;
};

// Keeps an unsigned integer from 1 to 16; otherwise "11".
class AttrTypeArgIntWidth final : public AttrTypeArg
{
public:
    AttrTypeArgIntWidth() = default;

    void setValue(std::string_view text) override;
    void setDefault(std::string_view text) override;
    std::unique_ptr<AttrTypeArg> createNew() const override;
    void accept(AttrTypeArgVisitor &visitor) const override { visitor.visit(*this); }
};

// Keeps exactly "2" or "4"; otherwise "4".
class AttrTypeArgBinIntWidth final : public AttrTypeArg
{
public:
    AttrTypeArgBinIntWidth() = default;

    void setValue(std::string_view text) override;
    void setDefault(std::string_view text) override;
    std::unique_ptr<AttrTypeArg> createNew() const override;
    void accept(AttrTypeArgVisitor &visitor) const override { visitor.visit(*this); }
};

} // namespace vyr

#endif // VYR_ATTRTYPES_ATTRTYPEARGINT_H
