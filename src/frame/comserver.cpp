#include "frame/comserver.h"

#include "frame/proxystub.h"
#include "uikit/application.h"
#include "util/environment.h"

#include <QLoggingCategory>

#include <climits>
#include <cstdlib>
#include <dlfcn.h>
#include <locale.h>

#include <optional>

namespace vyr::com {

const char kClassesRoot[] = "SOFTWARE\\vyr\\Classes";

namespace {

Q_LOGGING_CATEGORY(lcRegistration, "vyr.frame.registration")

// Where earlier versions kept the class keys, at the top of the
// configuration folder; unregistering clears what they left there.
const char kEarlierClassesRoot[] = "SOFTWARE\\Classes";

// The directory part of the type library's help file, or nothing.
std::string helpDirectoryOf(const TypeLibrary &library)
{
    const std::size_t slash = library.helpFile.find_last_of('/');
    return slash == std::string::npos ? std::string() : library.helpFile.substr(0, slash);
}

RegistryEntries typeLibraryEntries(const TypeLibrary &library, const std::string &path,
                                   const std::string &helpDirectory)
{
    return [&library, path, helpDirectory](const std::string &root) {
        const std::string key = root + "\\TypeLib\\" + library.libid.toString() + "\\" + library.versionText();
        std::vector<RegistryEntry> entries{
            {key, kRegistryDefaultValue, library.helpString},
            {key + "\\FLAGS", kRegistryDefaultValue, "0"},
            {key + "\\" + std::to_string(library.lcid) + "\\linux", kRegistryDefaultValue, path},
        };
        if (!helpDirectory.empty())
            entries.push_back({key + "\\HELPDIR", kRegistryDefaultValue, helpDirectory});
        return entries;
    };
}

HRESULT failed(const std::string &reason, HRESULT failure)
{
    qCWarning(lcRegistration).noquote() << QString::fromStdString(reason);
    return failure;
}

} // namespace

HRESULT writeRegistryEntries(const RegistryEntries &entries, RegistryHive hive, HRESULT failure)
{
    std::string error;
    for (const RegistryEntry &entry : entries(kClassesRoot)) {
        if (!writeRegistryString(hive, entry.key, entry.name, entry.value, error))
            return failed(error, failure);
    }
    return S_OK;
}

HRESULT removeRegistryEntries(const RegistryEntries &entries, RegistryHive hive, HRESULT failure)
{
    std::string error;
    for (const RegistryEntry &entry : entries(kClassesRoot)) {
        if (!removeRegistryValue(hive, entry.key, entry.name, error))
            return failed(error, failure);
    }
    // The earlier place may belong to other software now (a link there is
    // its business): what cannot be cleared there is said, and the rest of
    // unregistering goes on.
    for (const RegistryEntry &entry : entries(kEarlierClassesRoot)) {
        if (!removeRegistryValue(hive, entry.key, entry.name, error)) {
            qCInfo(lcRegistration).noquote()
                << QString::fromStdString(error + " (the earlier place of the records, left as it is)");
            break;
        }
    }
    return S_OK;
}

CvyrguimfcModule::CvyrguimfcModule()
    : m_perUser(getEnvironment("VYR_REGISTER_PER_USER") == "1")
{}

CvyrguimfcModule &CvyrguimfcModule::instance()
{
    static CvyrguimfcModule module;
    return module;
}

std::string CvyrguimfcModule::modulePath() const
{
    Dl_info info{};
    if (::dladdr(reinterpret_cast<void *>(&registerServer), &info) == 0 || !info.dli_fname)
        return {};
    // A library opened by a relative name reports that name; the settings
    // must hold a path that works from anywhere.
    char resolved[PATH_MAX];
    return ::realpath(info.dli_fname, resolved) ? std::string(resolved) : std::string(info.dli_fname);
}

SystemLocaleScope::SystemLocaleScope()
    : m_previous(nullptr)
    , m_system(::newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr)))
{
    if (m_system)
        m_previous = ::uselocale(static_cast<locale_t>(m_system));
}

SystemLocaleScope::~SystemLocaleScope()
{
    if (!m_system)
        return;
    ::uselocale(static_cast<locale_t>(m_previous));
    ::freelocale(static_cast<locale_t>(m_system));
}

HRESULT registerTypeLibrary(const TypeLibrary &library, const std::string &path, const std::string &helpDirectory,
                            RegistryHive hive)
{
    return writeRegistryEntries(typeLibraryEntries(library, path, helpDirectory), hive, TYPE_E_REGISTRYACCESS);
}

HRESULT unregisterTypeLibrary(const TypeLibrary &library, RegistryHive hive)
{
    return removeRegistryEntries(typeLibraryEntries(library, {}, helpDirectoryOf(library)), hive,
                                 TYPE_E_REGISTRYACCESS);
}

HRESULT registerServer(CvyrguimfcModule &module)
{
    const std::optional<TypeLibrary> library = embeddedTypeLibrary();
    const std::string path = module.modulePath();
    HRESULT status = S_OK;
    {
        const SystemLocaleScope systemLocale;
        for (const ClassEntry &entry : module.classTable()) {
            if (!succeeded(status = entry.updateRegistry(true)))
                return status;
        }
        if (!library)
            return TYPE_E_CANTLOADLIBRARY;
        if (path.empty())
            return E_FAIL;
        if (!succeeded(status = registerTypeLibrary(*library, path, helpDirectoryOf(*library), module.hive())))
            return status;
        if (module.furtherRegistration() && !succeeded(status = module.furtherRegistration()()))
            return status;
    }
    return proxystub::registerProxyStub(*library, path, module.hive());
}

HRESULT unregisterServer(CvyrguimfcModule &module)
{
    const std::optional<TypeLibrary> library = embeddedTypeLibrary();
    HRESULT status = S_OK;
    {
        const SystemLocaleScope systemLocale;
        if (module.furtherUnregistration() && !succeeded(status = module.furtherUnregistration()()))
            return status;
        for (const ClassEntry &entry : module.classTable()) {
            if (!succeeded(status = entry.updateRegistry(false)))
                return status;
        }
        if (!library)
            return TYPE_E_CANTLOADLIBRARY;
        if (!succeeded(status = unregisterTypeLibrary(*library, module.hive())))
            return status;
    }
    // Removing writes nothing first: what goes is the set of values
    // registration writes, whatever an interrupted earlier run left behind.
    return proxystub::unregisterProxyStub(*library, module.hive());
}

HRESULT getClassObject(CvyrguimfcModule &module, const Guid &clsid, const Guid &iid, void **object)
{
    if (!object)
        return E_POINTER;
    if (succeeded(proxystub::getClassObject(clsid, iid, object)))
        return S_OK;
    *object = nullptr;
    for (const ClassEntry &entry : module.classTable()) {
        if (entry.clsid == clsid)
            return entry.getClassObject(iid, object);
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT canUnloadNow(const CvyrguimfcModule &module)
{
    const HRESULT proxyStatus = proxystub::canUnloadNow();
    if (proxyStatus != S_OK)
        return proxyStatus;
    return libraryObjectsInFramework() == 0 && module.lockCount() == 0 ? S_OK : S_FALSE;
}

} // namespace vyr::com
