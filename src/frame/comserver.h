// The library as an in-process component server: the module object with its
// class table, lock count and registration settings, and the steps behind
// DllRegisterServer, DllUnregisterServer, DllGetClassObject and
// DllCanUnloadNow.
//
// The registry is the settings files of util/registry.h, in the machine's
// configuration folder, or the user's when the module registers per user
// (VYR_REGISTER_PER_USER=1 in the environment when the module is first
// used). Keys of the classes root live under "SOFTWARE\vyr\Classes": the
// file "vyr/Classes.conf", in a folder of the system's own rather than a
// top-level "Classes" that other software may claim.
#ifndef VYR_FRAME_COMSERVER_H
#define VYR_FRAME_COMSERVER_H

#include "frame/comtypes.h"
#include "frame/typelibrary.h"
#include "util/registry.h"

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace vyr::com {

// The root of the class keys: "SOFTWARE\vyr\Classes".
extern const char kClassesRoot[];

// A value that registration writes: key, value name, value.
struct RegistryEntry
{
    std::string key;
    std::string name;
    std::string value;
};
// The entries a registration step writes with its class keys under `root`.
using RegistryEntries = std::function<std::vector<RegistryEntry>(const std::string &root)>;

// Writes the entries under kClassesRoot in order. On the first failure
// logs the reason (category "vyr.frame.registration": the exports can only
// return a status) and returns `failure`.
HRESULT writeRegistryEntries(const RegistryEntries &entries, RegistryHive hive, HRESULT failure);
// Removes exactly those values, whatever they hold, under kClassesRoot and
// under "SOFTWARE\Classes", where earlier versions wrote them; what is not
// there is no failure, and values registration does not write stay. Fails
// as writeRegistryEntries does.
HRESULT removeRegistryEntries(const RegistryEntries &entries, RegistryHive hive, HRESULT failure);

// One class of the server: how its class object is made and how it is
// registered.
struct ClassEntry
{
    Guid clsid;
    HRESULT (*getClassObject)(const Guid &iid, void **object);
    HRESULT (*updateRegistry)(bool registering);
};

class CvyrguimfcModule
{
public:
    static CvyrguimfcModule &instance();

    bool registersPerUser() const { return m_perUser; }
    void setRegistersPerUser(bool perUser) { m_perUser = perUser; }
    RegistryHive hive() const { return m_perUser ? RegistryHive::User : RegistryHive::Machine; }

    // The classes the module makes itself: none. The declared property
    // pages of the type library are not implemented here.
    std::span<const ClassEntry> classTable() const { return {}; }

    long lockCount() const { return m_locks; }
    long lock() { return ++m_locks; }
    long unlock() { return --m_locks; }

    // A further step run after the type library is registered, and one run
    // first when unregistering; none by default.
    using Step = std::function<HRESULT()>;
    void setFurtherRegistration(Step step) { m_furtherRegistration = std::move(step); }
    void setFurtherUnregistration(Step step) { m_furtherUnregistration = std::move(step); }
    const Step &furtherRegistration() const { return m_furtherRegistration; }
    const Step &furtherUnregistration() const { return m_furtherUnregistration; }

    // The file the server lives in, as the registry names it.
    std::string modulePath() const;

private:
    CvyrguimfcModule();

    bool m_perUser = false;
    long m_locks = 0;
    Step m_furtherRegistration;
    Step m_furtherUnregistration;
};

// Switches the calling thread to the system's own locale (the C locale,
// which no user setting changes) and back when it ends.
class SystemLocaleScope
{
public:
    SystemLocaleScope();
    ~SystemLocaleScope();
    SystemLocaleScope(const SystemLocaleScope &) = delete;
    SystemLocaleScope &operator=(const SystemLocaleScope &) = delete;

private:
    void *m_previous;
    void *m_system;
};

// Writes the type library's keys under TypeLib\{LIBID}\<version>: its help
// string, FLAGS, the file under "<lcid>\linux", and HELPDIR when
// `helpDirectory` is not empty. TYPE_E_REGISTRYACCESS when a write fails.
HRESULT registerTypeLibrary(const TypeLibrary &library, const std::string &path, const std::string &helpDirectory,
                            RegistryHive hive);
// Removes those values of that version of the type library (HELPDIR only
// when the library has a help file, as registerServer writes it).
HRESULT unregisterTypeLibrary(const TypeLibrary &library, RegistryHive hive);

HRESULT registerServer(CvyrguimfcModule &module);
HRESULT unregisterServer(CvyrguimfcModule &module);
HRESULT getClassObject(CvyrguimfcModule &module, const Guid &clsid, const Guid &iid, void **object);
HRESULT canUnloadNow(const CvyrguimfcModule &module);

} // namespace vyr::com

#endif // VYR_FRAME_COMSERVER_H
