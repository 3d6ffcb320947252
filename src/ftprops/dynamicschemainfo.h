// The dynamic schema settings of a destination feature type: three options
// and three texts whose meaning belongs to the dynamic schema dialog, the
// only component that sets them. Everything else stores, copies and passes
// them unchanged, and asks only whether they are the default (all three
// options 0).
#ifndef VYR_FTPROPS_DYNAMICSCHEMAINFO_H
#define VYR_FTPROPS_DYNAMICSCHEMAINFO_H

#include "vyr/IVYRString.h"

#include <cstdint>
#include <string>

namespace vyr {

// What the dynamic schema dialog reads and fills. Never deleted through this
// interface.
class IDynamicSchemaInfo
{
public:
    virtual std::int32_t getOption1() const = 0;
    virtual void setOption1(std::int32_t option) = 0;
    virtual void getText1(IVYRString &text) const = 0;
    virtual void setText1(const IVYRString &text) = 0;
    virtual std::int32_t getOption2() const = 0;
    virtual void setOption2(std::int32_t option) = 0;
    virtual void getText2(IVYRString &text) const = 0;
    virtual void setText2(const IVYRString &text) = 0;
    virtual std::int32_t getOption3() const = 0;
    virtual void setOption3(std::int32_t option) = 0;
    virtual void getText3(IVYRString &text) const = 0;
    virtual void setText3(const IVYRString &text) = 0;
    virtual bool isDefault() const = 0;

protected:
    IDynamicSchemaInfo() = default;
    IDynamicSchemaInfo(const IDynamicSchemaInfo &) = default;
    IDynamicSchemaInfo &operator=(const IDynamicSchemaInfo &) = default;
    ~IDynamicSchemaInfo() = default;
};

// The settings as a value: copied whole. The texts are handed out with their
// byte length and taken in up to their first NUL byte.
class DynamicSchemaInfo final : public IDynamicSchemaInfo
{
public:
    DynamicSchemaInfo() = default;
    DynamicSchemaInfo(const DynamicSchemaInfo &) = default;
    DynamicSchemaInfo &operator=(const DynamicSchemaInfo &) = default;
    ~DynamicSchemaInfo() = default;

    // Copies all six fields of any implementation.
    void assignFrom(const IDynamicSchemaInfo &other);

    std::int32_t getOption1() const override { return m_option1; }
    void setOption1(std::int32_t option) override { m_option1 = option; }
    void getText1(IVYRString &text) const override { text.assign(m_text1.data(), m_text1.size()); }
    void setText1(const IVYRString &text) override { m_text1 = text.c_str(); }
    std::int32_t getOption2() const override { return m_option2; }
    void setOption2(std::int32_t option) override { m_option2 = option; }
    void getText2(IVYRString &text) const override { text.assign(m_text2.data(), m_text2.size()); }
    void setText2(const IVYRString &text) override { m_text2 = text.c_str(); }
    std::int32_t getOption3() const override { return m_option3; }
    void setOption3(std::int32_t option) override { m_option3 = option; }
    void getText3(IVYRString &text) const override { text.assign(m_text3.data(), m_text3.size()); }
    void setText3(const IVYRString &text) override { m_text3 = text.c_str(); }
    bool isDefault() const override { return m_option1 == 0 && m_option2 == 0 && m_option3 == 0; }

    bool operator==(const DynamicSchemaInfo &other) const
    {
        return m_option1 == other.m_option1 && m_text1 == other.m_text1 && m_option2 == other.m_option2
            && m_text2 == other.m_text2 && m_option3 == other.m_option3 && m_text3 == other.m_text3;
    }

private:
    std::int32_t m_option1 = 0;
    std::string m_text1;
    std::int32_t m_option2 = 0;
    std::string m_text2;
    std::int32_t m_option3 = 0;
    std::string m_text3;
};

} // namespace vyr

#endif // VYR_FTPROPS_DYNAMICSCHEMAINFO_H
