#include "frame/proxystub.h"

#include "frame/comserver.h"

#include <atomic>
#include <optional>

namespace vyr::com::proxystub {

namespace {

class FactoryBuffer final : public IPSFactoryBuffer
{
public:
    HRESULT QueryInterface(const Guid &iid, void **object) override
    {
        if (!object)
            return E_POINTER;
        if (iid == IID_IUnknown || iid == IID_IPSFactoryBuffer) {
            *object = static_cast<IPSFactoryBuffer *>(this);
            AddRef();
            return S_OK;
        }
        *object = nullptr;
        return E_NOINTERFACE;
    }
    std::uint32_t AddRef() override { return ++m_references; }
    std::uint32_t Release() override { return --m_references; }

    HRESULT CreateProxy(IUnknown *, const Guid &, void **proxy, void **object) override
    {
        if (proxy)
            *proxy = nullptr;
        if (object)
            *object = nullptr;
        return E_NOTIMPL;
    }
    HRESULT CreateStub(const Guid &, IUnknown *, void **stub) override
    {
        if (stub)
            *stub = nullptr;
        return E_NOTIMPL;
    }

    std::uint32_t references() const { return m_references; }

private:
    // A class object lives as long as the library; the count only tells
    // whether somebody still holds it.
    std::atomic<std::uint32_t> m_references{0};
};

FactoryBuffer &factoryBuffer()
{
    static FactoryBuffer buffer;
    return buffer;
}

// Interface\{IID} (name, NumMethods, ProxyStubClsid32) for each interface
// and CLSID\{class} with its InProcServer32 at `path`.
RegistryEntries proxyStubEntries(const TypeLibrary &library, const std::string &path)
{
    return [&library, path](const std::string &root) {
        const std::string server = root + "\\CLSID\\" + classId(library).toString();
        std::vector<RegistryEntry> entries;
        for (const TypeLibraryInterface &declared : library.interfaces) {
            const std::string key = root + "\\Interface\\" + declared.iid.toString();
            entries.push_back({key, kRegistryDefaultValue, declared.name});
            entries.push_back(
                {key + "\\NumMethods", kRegistryDefaultValue, std::to_string(3 + declared.methods.size())});
            entries.push_back({key + "\\ProxyStubClsid32", kRegistryDefaultValue, classId(library).toString()});
        }
        entries.push_back({server, kRegistryDefaultValue, "PSFactoryBuffer"});
        entries.push_back({server + "\\InProcServer32", kRegistryDefaultValue, path});
        entries.push_back({server + "\\InProcServer32", "ThreadingModel", "Both"});
        return entries;
    };
}

} // namespace

Guid classId(const TypeLibrary &library)
{
    return library.interfaces.empty() ? library.libid : library.interfaces.front().iid;
}

HRESULT getClassObject(const Guid &clsid, const Guid &iid, void **object)
{
    if (!object)
        return E_POINTER;
    *object = nullptr;
    const std::optional<TypeLibrary> library = embeddedTypeLibrary();
    if (!library || library->interfaces.empty() || clsid != classId(*library))
        return CLASS_E_CLASSNOTAVAILABLE;
    return factoryBuffer().QueryInterface(iid, object);
}

HRESULT canUnloadNow()
{
    return factoryBuffer().references() == 0 ? S_OK : S_FALSE;
}

HRESULT registerProxyStub(const TypeLibrary &library, const std::string &path, RegistryHive hive)
{
    if (library.interfaces.empty())
        return S_OK;
    return writeRegistryEntries(proxyStubEntries(library, path), hive, E_ACCESSDENIED);
}

HRESULT unregisterProxyStub(const TypeLibrary &library, RegistryHive hive)
{
    if (library.interfaces.empty())
        return S_OK;
    return removeRegistryEntries(proxyStubEntries(library, {}), hive, E_ACCESSDENIED);
}

} // namespace vyr::com::proxystub
