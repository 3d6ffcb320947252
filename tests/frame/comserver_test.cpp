// The component server entry points: registration into scratch
// configuration folders and back, failing steps, the thread locale, and the
// class objects served.
#include <gtest/gtest.h>

#include "frame/comserver.h"
#include "frame/proxystub.h"
#include "frame/typelibrary.h"
#include "vyrguimfc/vyrguimfc.h"

#include "support/scopedenvironment.h"
#include "support/scratchdirectory.h"

#include <langinfo.h>
#include <locale.h>

#include <filesystem>
#include <map>
#include <string>

namespace vyr::com {
namespace {

using Snapshot = std::map<std::string, std::string>;

// Every file below `root` with its content, and every folder.
Snapshot snapshot(const test::ScratchDirectory &root)
{
    Snapshot files;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(root.path())) {
        const std::string relative = std::filesystem::relative(entry.path(), root.path()).string();
        files[relative] = entry.is_directory() ? std::string("<folder>") : root.read(relative);
    }
    return files;
}

std::string currentCodeset()
{
    return ::nl_langinfo_l(CODESET, ::uselocale(static_cast<locale_t>(nullptr)));
}

constexpr char kLibid[] = "{4EAA3CF3-CD07-49E2-B8F2-91FB4EDA8115}";
constexpr char kInterface[] = "{0A560DC4-1FD9-45F5-ACDF-E0D40BF61411}";

class ComServerTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_env.set("XDG_CONFIG_DIRS", m_machine.path() + ":/nonexistent");
        m_env.set("XDG_CONFIG_HOME", m_user.path());
        // Another server's keys share the files and must survive.
        m_machine.write("Classes/CLSID.conf", "[{11111111-2222-3333-4444-555555555555}]\n@=Other Server\n");
        m_module.setRegistersPerUser(false);
        m_module.setFurtherRegistration({});
        m_module.setFurtherUnregistration({});
    }
    void TearDown() override
    {
        m_module.setRegistersPerUser(false);
        m_module.setFurtherRegistration({});
        m_module.setFurtherUnregistration({});
    }

    std::string machineValue(const std::string &key, const char *name = "@")
    {
        return readWrittenRegistryString(RegistryHive::Machine, key, name).value_or("<none>");
    }

    CvyrguimfcModule &m_module = CvyrguimfcModule::instance();
    test::ScopedEnvironment m_env;
    test::ScratchDirectory m_machine;
    test::ScratchDirectory m_user;
};

TEST_F(ComServerTest, RegistrationWritesTheTypeLibraryThenTheProxyStubAndUnregistrationRemovesExactlyThat)
{
    const Snapshot machineBefore = snapshot(m_machine);
    const Snapshot userBefore = snapshot(m_user);
    ASSERT_EQ(DllRegisterServer(), S_OK);

    const std::string path = m_module.modulePath();
    ASSERT_FALSE(path.empty());
    const std::string typeLib = std::string(kClassesRoot) + "\\TypeLib\\" + kLibid + "\\1.0";
    EXPECT_EQ(machineValue(typeLib), "vyrguimfc 1.0 Type Library");
    EXPECT_EQ(machineValue(typeLib + "\\FLAGS"), "0");
    EXPECT_EQ(machineValue(typeLib + "\\0\\linux"), path);
    EXPECT_EQ(machineValue(typeLib + "\\HELPDIR"), "<none>");
    const std::string iface = std::string(kClassesRoot) + "\\Interface\\" + kInterface;
    EXPECT_EQ(machineValue(iface), "VVyrOlePropertyPage");
    EXPECT_EQ(machineValue(iface + "\\NumMethods"), "14");
    EXPECT_EQ(machineValue(iface + "\\ProxyStubClsid32"), kInterface);
    const std::string server = std::string(kClassesRoot) + "\\CLSID\\" + kInterface;
    EXPECT_EQ(machineValue(server), "PSFactoryBuffer");
    EXPECT_EQ(machineValue(server + "\\InProcServer32"), path);
    EXPECT_EQ(machineValue(server + "\\InProcServer32", "ThreadingModel"), "Both");
    // All in the system's own folder, none of it in the shared "Classes".
    EXPECT_TRUE(std::filesystem::is_regular_file(m_machine.path() + "/vyr/Classes.conf"));
    EXPECT_EQ(m_machine.read("Classes/CLSID.conf"), machineBefore.at("Classes/CLSID.conf"));
    EXPECT_EQ(snapshot(m_user), userBefore);

    // Registering twice changes nothing more.
    const Snapshot registered = snapshot(m_machine);
    ASSERT_EQ(DllRegisterServer(), S_OK);
    EXPECT_EQ(snapshot(m_machine), registered);

    ASSERT_EQ(DllUnregisterServer(), S_OK);
    EXPECT_EQ(snapshot(m_machine), machineBefore);
    EXPECT_EQ(snapshot(m_user), userBefore);
    // Unregistering what is not there is no failure.
    EXPECT_EQ(DllUnregisterServer(), S_OK);
    EXPECT_EQ(snapshot(m_machine), machineBefore);
}

TEST_F(ComServerTest, PerUserRegistrationStaysInTheUsersFolder)
{
    m_module.setRegistersPerUser(true);
    const Snapshot machineBefore = snapshot(m_machine);
    ASSERT_EQ(DllRegisterServer(), S_OK);
    EXPECT_EQ(snapshot(m_machine), machineBefore);
    EXPECT_EQ(readWrittenRegistryString(RegistryHive::User,
                                        std::string(kClassesRoot) + "\\TypeLib\\" + kLibid + "\\1.0", "@"),
              "vyrguimfc 1.0 Type Library");
    ASSERT_EQ(DllUnregisterServer(), S_OK);
    EXPECT_TRUE(std::filesystem::is_empty(m_user.path()));
}

TEST_F(ComServerTest, UnregisteringRemovesOnlyWhatRegistrationWrites)
{
    m_module.setRegistersPerUser(true);
    // The library has no help file, so a HELPDIR in its key is the user's.
    const std::string own = std::string("[TypeLib/") + kLibid + "/1.0/HELPDIR]\n@=/home/me/help\n";
    m_user.write("vyr/Classes.conf", own);
    // What an earlier version registered in the shared "Classes" folder goes
    // too; another server's key there stays.
    const std::string other = "[{11111111-2222-3333-4444-555555555555}]\n@=Other Server\n";
    m_user.write("Classes/CLSID.conf", other + "[" + kInterface + "]\n@=PSFactoryBuffer\n");
    m_user.write("Classes/TypeLib.conf", std::string("[") + kLibid + "/1.0]\n@=vyrguimfc 1.0 Type Library\n");
    ASSERT_EQ(DllRegisterServer(), S_OK);
    ASSERT_EQ(DllUnregisterServer(), S_OK);
    EXPECT_EQ(m_user.read("vyr/Classes.conf"), own);
    EXPECT_EQ(m_user.read("Classes/CLSID.conf"), other);
    EXPECT_FALSE(std::filesystem::exists(m_user.path() + "/Classes/TypeLib.conf"));
}

TEST_F(ComServerTest, FailingFurtherStepReturnsItsCodeSkipsTheProxyStubAndRestoresTheLocale)
{
    const locale_t own = ::newlocale(LC_ALL_MASK, "C.UTF-8", static_cast<locale_t>(nullptr));
    ASSERT_NE(own, static_cast<locale_t>(nullptr));
    const locale_t before = ::uselocale(own);
    std::string seen;
    m_module.setFurtherRegistration([&] {
        seen = currentCodeset();
        return E_ACCESSDENIED;
    });
    EXPECT_EQ(DllRegisterServer(), E_ACCESSDENIED);
    EXPECT_EQ(seen, "ANSI_X3.4-1968");
    EXPECT_EQ(::uselocale(static_cast<locale_t>(nullptr)), own);
    EXPECT_EQ(machineValue(std::string(kClassesRoot) + "\\Interface\\" + kInterface), "<none>");
    EXPECT_EQ(machineValue(std::string(kClassesRoot) + "\\TypeLib\\" + kLibid + "\\1.0"),
              "vyrguimfc 1.0 Type Library");

    m_module.setFurtherUnregistration([&] {
        seen = currentCodeset() + " again";
        return CLASS_E_NOAGGREGATION;
    });
    EXPECT_EQ(DllUnregisterServer(), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(seen, "ANSI_X3.4-1968 again");
    EXPECT_EQ(::uselocale(static_cast<locale_t>(nullptr)), own);
    EXPECT_NE(machineValue(std::string(kClassesRoot) + "\\TypeLib\\" + kLibid + "\\1.0"), "<none>");

    m_module.setFurtherUnregistration({});
    EXPECT_EQ(DllUnregisterServer(), S_OK);
    ::uselocale(before);
    ::freelocale(own);
}

TEST_F(ComServerTest, UnwritableRegistryFailsTheTypeLibraryStepFirst)
{
    m_machine.write("vyr", "a file where the folder belongs");
    bool furtherRan = false;
    m_module.setFurtherRegistration([&] {
        furtherRan = true;
        return S_OK;
    });
    const Snapshot before = snapshot(m_machine);
    const locale_t current = ::uselocale(static_cast<locale_t>(nullptr));
    EXPECT_EQ(DllRegisterServer(), TYPE_E_REGISTRYACCESS);
    EXPECT_FALSE(furtherRan);
    EXPECT_EQ(::uselocale(static_cast<locale_t>(nullptr)), current);
    EXPECT_EQ(snapshot(m_machine), before);
}

TEST(ComClassObjects, OnlyTheProxyStubsClassObjectIsServed)
{
    VYRGuid unknownClass{0x12345678, 0x1234, 0x5678, {1, 2, 3, 4, 5, 6, 7, 8}};
    VYRGuid unknownInterface = unknownClass;
    const auto asC = [](const Guid &guid) {
        VYRGuid c{guid.data1, guid.data2, guid.data3, {}};
        std::copy(guid.data4.begin(), guid.data4.end(), c.data4);
        return c;
    };
    const VYRGuid iunknown = asC(IID_IUnknown);
    const VYRGuid proxyClass = asC(*Guid::fromString(kInterface));

    void *object = &unknownClass;
    EXPECT_EQ(DllGetClassObject(&unknownClass, &iunknown, &object), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(object, nullptr);
    // The declared property pages are not made by this library.
    const VYRGuid generalPage = asC(*Guid::fromString("{7B10B9CE-C076-470B-A160-1DD904726D11}"));
    EXPECT_EQ(DllGetClassObject(&generalPage, &iunknown, &object), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(DllGetClassObject(&proxyClass, &iunknown, nullptr), E_POINTER);

    EXPECT_EQ(DllCanUnloadNow(), S_OK);
    ASSERT_EQ(DllGetClassObject(&proxyClass, &iunknown, &object), S_OK);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(DllCanUnloadNow(), S_FALSE);
    auto *factory = static_cast<IUnknown *>(object);
    void *buffer = nullptr;
    ASSERT_EQ(factory->QueryInterface(IID_IPSFactoryBuffer, &buffer), S_OK);
    static_cast<IUnknown *>(buffer)->Release();
    EXPECT_EQ(factory->QueryInterface(*Guid::fromString(kLibid), &buffer), E_NOINTERFACE);
    factory->Release();
    EXPECT_EQ(DllCanUnloadNow(), S_OK);
    // The proxy/stub part refuses the interface; the class table, asked
    // next, has no classes.
    EXPECT_EQ(DllGetClassObject(&proxyClass, &unknownInterface, &object), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(object, nullptr);

    CvyrguimfcModule::instance().lock();
    EXPECT_EQ(DllCanUnloadNow(), S_FALSE);
    CvyrguimfcModule::instance().unlock();
    EXPECT_EQ(DllCanUnloadNow(), S_OK);
}

TEST(ComTypeLibrary, EmbeddedLibraryDeclaresThePropertyPageInterfaceAndThreeClasses)
{
    const std::optional<TypeLibrary> library = embeddedTypeLibrary();
    ASSERT_TRUE(library);
    EXPECT_EQ(library->name, "vyrguimfcLib");
    EXPECT_EQ(library->helpString, "vyrguimfc 1.0 Type Library");
    EXPECT_EQ(library->versionText(), "1.0");
    ASSERT_EQ(library->interfaces.size(), 1u);
    EXPECT_EQ(library->interfaces[0].name, "VVyrOlePropertyPage");
    EXPECT_EQ(library->interfaces[0].methods,
              (std::vector<std::string>{"SetPageSite", "Activate", "Deactivate", "GetPageInfo", "SetObjects", "Show",
                                        "Move", "IsPageDirty", "Apply", "Help", "TranslateAccelerator"}));
    ASSERT_EQ(library->classes.size(), 3u);
    for (const TypeLibraryClass &declared : library->classes)
        EXPECT_EQ(declared.helpString, declared.name + " Class");
}

TEST(ComTypeLibrary, RefusesStoredFormsMissingWhatRegistrationNeeds)
{
    const char *refused[] = {
        "",
        "[]",
        R"({"library": {"uuid": "{4EAA3CF3-CD07-49E2-B8F2-91FB4EDA8115}", "version": "1.0"}})",
        R"({"library": {"name": "L", "uuid": "{4EAA3CF3-CD07-49E2-B8F2-91FB4EDA811}", "version": "1.0"}})",
        R"({"library": {"name": "L", "uuid": "{4EAA3CF3-CD07-49E2-B8F2-91FB4EDA8115}", "version": "one"}})",
        R"({"library": {"name": "L", "uuid": "{4EAA3CF3-CD07-49E2-B8F2-91FB4EDA8115}", "version": "1.0.2"}})",
        R"({"library": {"name": "L", "uuid": "{4EAA3CF3-CD07-49E2-B8F2-91FB4EDA8115}", "version": "1"},
            "interfaces": [{"name": "I", "uuid": "nope"}]})",
    };
    for (const char *stored : refused)
        EXPECT_FALSE(readTypeLibrary(QByteArray(stored))) << stored;
}

TEST(ComGuid, ReadsAndWritesTheRegistryForm)
{
    const std::optional<Guid> read = Guid::fromString("0a560dc4-1fd9-45f5-acdf-e0d40bf61411");
    ASSERT_TRUE(read);
    EXPECT_EQ(read->toString(), "{0A560DC4-1FD9-45F5-ACDF-E0D40BF61411}");
    EXPECT_EQ(Guid::fromString(read->toString()), read);
    for (const char *bad : {"", "{}", "0A560DC4-1FD9-45F5-ACDF-E0D40BF6141", "0A560DC4-1FD9-45F5-ACDF+E0D40BF61411",
                            "{0A560DC4-1FD9-45F5-ACDF-E0D40BF6141G}", "(0A560DC4-1FD9-45F5-ACDF-E0D40BF61411)"})
        EXPECT_FALSE(Guid::fromString(bad)) << bad;
}

} // namespace
} // namespace vyr::com
