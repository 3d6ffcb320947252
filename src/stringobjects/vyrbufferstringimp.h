// An IVYRString that keeps its text in a buffer of its own, reused from one
// text to the next: for reading thousands of texts from the engine one
// after another without making an object of each.
#ifndef VYR_STRINGOBJECTS_VYRBUFFERSTRINGIMP_H
#define VYR_STRINGOBJECTS_VYRBUFFERSTRINGIMP_H

#include <string>
#include <string_view>

#include "vyr/IVYRString.h"

class VYRBufferStringImp final : public IVYRString
{
public:
    VYRBufferStringImp() = default;
    ~VYRBufferStringImp() override;

    void assign(const char *text) override;
    const char *data() const override { return m_text.c_str(); }
    void assign(const char *bytes, std::size_t length) override;
    const char *c_str() const override { return m_text.c_str(); }
    std::size_t length() const override { return m_text.size(); }
    void encodeWWJDInPlace() override;
    void decodeWWJDInPlace() override;

    std::string_view view() const { return m_text; }

private:
    std::string m_text;
};

#endif // VYR_STRINGOBJECTS_VYRBUFFERSTRINGIMP_H
