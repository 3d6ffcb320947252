// The component server entry points.
#include "vyrguimfc/vyrguimfc.h"

#include "frame/comserver.h"

#include <cstring>

namespace {

static_assert(sizeof(VYRGuid) == sizeof(vyr::com::Guid));

vyr::com::Guid guidOf(const VYRGuid *id)
{
    vyr::com::Guid guid;
    guid.data1 = id->data1;
    guid.data2 = id->data2;
    guid.data3 = id->data3;
    std::memcpy(guid.data4.data(), id->data4, sizeof id->data4);
    return guid;
}

} // namespace

extern "C" {

int32_t DllGetClassObject(const VYRGuid *classId, const VYRGuid *interfaceId, void **object)
{
    if (!object)
        return vyr::com::E_POINTER;
    *object = nullptr;
    if (!classId || !interfaceId)
        return vyr::com::E_INVALIDARG;
    try {
        return vyr::com::getClassObject(vyr::com::CvyrguimfcModule::instance(), guidOf(classId), guidOf(interfaceId),
                                        object);
    } catch (...) {
        return vyr::com::E_OUTOFMEMORY;
    }
}

int32_t DllCanUnloadNow(void)
{
    // Nothing may escape into the host; when the answer cannot be found out,
    // staying loaded is the safe one.
    try {
        return vyr::com::canUnloadNow(vyr::com::CvyrguimfcModule::instance());
    } catch (...) {
        return vyr::com::S_FALSE;
    }
}

int32_t DllRegisterServer(void)
{
    try {
        return vyr::com::registerServer(vyr::com::CvyrguimfcModule::instance());
    } catch (...) {
        return vyr::com::E_OUTOFMEMORY;
    }
}

int32_t DllUnregisterServer(void)
{
    try {
        return vyr::com::unregisterServer(vyr::com::CvyrguimfcModule::instance());
    } catch (...) {
        return vyr::com::E_OUTOFMEMORY;
    }
}

} // extern "C"
