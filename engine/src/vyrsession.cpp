#include "vyrsession.h"

#include "formatregistry.h"
#include "vyrfeature.h"

#include "stringobjects/vyrrwstringarrayimp.h"
#include "stringobjects/vyrrwstringimp.h"
#include "util/installdir.h"
#include "vyr/vyr_session.h"

#include <dlfcn.h>

namespace vyr::engine {

VYRSession::VYRSession() = default;

VYRSession::~VYRSession()
{
    if (m_prompter) {
        using Destroy = void(IGuiPrompter *);
        if (auto *destroy = reinterpret_cast<Destroy *>(::dlsym(m_prompterLibrary, "vyrprompter_destroyGuiPrompter")))
            destroy(m_prompter);
    }
    // The prompter library stays loaded: its windows' code may still be
    // referenced by Qt until the application ends.
}

IVYRString *VYRSession::createString()
{
    return new VYRRWStringImp;
}

void VYRSession::destroyString(IVYRString *&text)
{
    delete text;
    text = nullptr;
}

IVYRStringArray *VYRSession::createStringArray()
{
    return new VYRRWStringArrayImp;
}

void VYRSession::destroyStringArray(IVYRStringArray *&array)
{
    delete array;
    array = nullptr;
}

bool VYRSession::getProperties(const char *category, IVYRStringArray &query)
{
    const std::string format = query.entries() == 1 ? query.elementAt(0) : "";
    query.clear();
    if (!category || std::string_view(category) != kVyrSessionPropFormatInfo)
        return false;
    if (!m_formats)
        m_formats = std::make_unique<FormatRegistry>(getInstallDirectory() + "formats");
    const FormatEntry *entry = m_formats->find(format);
    if (!entry)
        return false;
    for (const std::string &text : m_formats->properties(*entry))
        query.append(text.c_str());
    return true;
}

IVYRFeature *VYRSession::createFeature()
{
    return new VYRFeature;
}

void VYRSession::destroyFeature(IVYRFeature *&feature)
{
    delete feature;
    feature = nullptr;
}

IGuiPrompter *VYRSession::getGuiPrompter()
{
    if (m_prompter)
        return m_prompter;
    if (!m_prompterLibrary) {
        const std::string path = getInstallDirectory() + "libvyrprompter.so";
        m_prompterLibrary = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    }
    using Create = IGuiPrompter *();
    auto *create = m_prompterLibrary
        ? reinterpret_cast<Create *>(::dlsym(m_prompterLibrary, "vyrprompter_createGuiPrompter"))
        : nullptr;
    m_prompter = create ? create() : nullptr;
    return m_prompter;
}

} // namespace vyr::engine

extern "C" IVYRSession *VYR_SessionCreate(void)
{
    return new vyr::engine::VYRSession;
}

extern "C" void VYR_SessionDestroy(IVYRSession *session)
{
    delete session;
}
