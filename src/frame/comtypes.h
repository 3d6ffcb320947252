// The small part of the component object model the library's server
// entry points need: status codes, identifiers and the base interfaces.
// There is no component runtime on this platform; these keep the values and
// calling conventions hosts of the original design expect.
#ifndef VYR_FRAME_COMTYPES_H
#define VYR_FRAME_COMTYPES_H

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vyr::com {

using HRESULT = std::int32_t;

constexpr HRESULT makeCode(std::uint32_t bits)
{
    return static_cast<HRESULT>(bits);
}

constexpr bool succeeded(HRESULT status)
{
    return status >= 0;
}

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOTIMPL = makeCode(0x80004001);
inline constexpr HRESULT E_NOINTERFACE = makeCode(0x80004002);
inline constexpr HRESULT E_POINTER = makeCode(0x80004003);
inline constexpr HRESULT E_FAIL = makeCode(0x80004005);
inline constexpr HRESULT E_ACCESSDENIED = makeCode(0x80070005);
inline constexpr HRESULT E_OUTOFMEMORY = makeCode(0x8007000E);
inline constexpr HRESULT E_INVALIDARG = makeCode(0x80070057);
inline constexpr HRESULT CLASS_E_NOAGGREGATION = makeCode(0x80040110);
inline constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = makeCode(0x80040111);
inline constexpr HRESULT REGDB_E_CLASSNOTREG = makeCode(0x80040154);
inline constexpr HRESULT TYPE_E_REGISTRYACCESS = makeCode(0x8002801C);
inline constexpr HRESULT TYPE_E_CANTLOADLIBRARY = makeCode(0x80029C4A);

// A 128-bit class, interface or library identifier.
struct Guid
{
    std::uint32_t data1 = 0;
    std::uint16_t data2 = 0;
    std::uint16_t data3 = 0;
    std::array<std::uint8_t, 8> data4{};

    friend bool operator==(const Guid &, const Guid &) = default;

    // "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}", upper case, as the registry
    // keeps them.
    std::string toString() const;
    // Reads that form, braces optional, either letter case; nothing for any
    // other text.
    static std::optional<Guid> fromString(std::string_view text);
};

inline constexpr Guid IID_IUnknown{0x00000000, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr Guid IID_IClassFactory{0x00000001, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr Guid IID_IPSFactoryBuffer{
    0xD5F569D0, 0x593B, 0x101A, {0xB5, 0x69, 0x08, 0x00, 0x2B, 0x2D, 0xBF, 0x7A}};

// The base of every interface: reference counting and interface queries.
class IUnknown
{
public:
    virtual HRESULT QueryInterface(const Guid &iid, void **object) = 0;
    virtual std::uint32_t AddRef() = 0;
    virtual std::uint32_t Release() = 0;

protected:
    ~IUnknown() = default;
};

// The class object of a proxy/stub: makes the proxies and stubs that carry
// an interface's calls between apartments.
class IPSFactoryBuffer : public IUnknown
{
public:
    virtual HRESULT CreateProxy(IUnknown *outer, const Guid &iid, void **proxy, void **object) = 0;
    virtual HRESULT CreateStub(const Guid &iid, IUnknown *server, void **stub) = 0;

protected:
    ~IPSFactoryBuffer() = default;
};

} // namespace vyr::com

#endif // VYR_FRAME_COMTYPES_H
