// The interface proxy/stub part of the server: the class object that makes
// proxies and stubs for the interfaces of the type library, and its
// registration. There is no cross-apartment marshalling on this platform, so
// the class object is served and counted but makes no proxies or stubs.
#ifndef VYR_FRAME_PROXYSTUB_H
#define VYR_FRAME_PROXYSTUB_H

#include "frame/comtypes.h"
#include "frame/typelibrary.h"
#include "util/registry.h"

#include <string>

namespace vyr::com::proxystub {

// The class of the proxy/stub's class object: by the usual convention the
// identifier of the first interface it serves.
Guid classId(const TypeLibrary &library);

// The class object for `clsid` asked for as `iid`; CLASS_E_CLASSNOTAVAILABLE
// for any other class, E_NOINTERFACE for an interface it does not offer.
HRESULT getClassObject(const Guid &clsid, const Guid &iid, void **object);

// S_FALSE while anybody holds the class object, else S_OK.
HRESULT canUnloadNow();

// Writes Interface\{IID} (name, NumMethods, ProxyStubClsid32) for each
// interface and CLSID\{class} with its InProcServer32 at `path`.
// E_ACCESSDENIED when a write fails.
HRESULT registerProxyStub(const TypeLibrary &library, const std::string &path, RegistryHive hive);
// Removes those values.
HRESULT unregisterProxyStub(const TypeLibrary &library, RegistryHive hive);

} // namespace vyr::com::proxystub

#endif // VYR_FRAME_PROXYSTUB_H
