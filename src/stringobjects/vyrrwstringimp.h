// The library's own IVYRString: what it hands to outside dialogs and reads
// their answers from.
#ifndef VYR_STRINGOBJECTS_VYRRWSTRINGIMP_H
#define VYR_STRINGOBJECTS_VYRRWSTRINGIMP_H

#include <memory>
#include <string>
#include <string_view>

#include "vyr/IVYRString.h"

// A byte string with a length. Copies are cheap: the bytes are shared until
// one side changes its text, and every change replaces the whole text, so a
// pointer from data() stays valid until this object itself changes.
class VYRRWStringImp final : public IVYRString
{
public:
    VYRRWStringImp() = default;
    VYRRWStringImp(const VYRRWStringImp &other) = default;
    VYRRWStringImp &operator=(const VYRRWStringImp &other) = default;
    explicit VYRRWStringImp(const char *text);
    VYRRWStringImp(const char *bytes, std::size_t length);
    ~VYRRWStringImp() override;

    void assign(const char *text) override;
    const char *data() const override;
    void assign(const char *bytes, std::size_t length) override;
    const char *c_str() const override;
    std::size_t length() const override;
    void encodeWWJDInPlace() override;
    void decodeWWJDInPlace() override;

    std::string_view view() const { return {data(), length()}; }

private:
    void replace(std::string text);

    std::shared_ptr<const std::string> text_;
};

#endif // VYR_STRINGOBJECTS_VYRRWSTRINGIMP_H
