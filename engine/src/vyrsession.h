// The engine's session: the factory of strings, string arrays and features,
// the answers about formats, and the GUI prompter.
#ifndef VYR_ENGINE_VYRSESSION_H
#define VYR_ENGINE_VYRSESSION_H

#include "vyr/IVYRSession.h"

#include <memory>

namespace vyr::engine {

class FormatRegistry;

class VYRSession final : public IVYRSession
{
public:
    VYRSession();
    ~VYRSession() override;

    VYRSession(const VYRSession &) = delete;
    VYRSession &operator=(const VYRSession &) = delete;

    IVYRString *createString() override;
    void destroyString(IVYRString *&text) override;
    IVYRStringArray *createStringArray() override;
    void destroyStringArray(IVYRStringArray *&array) override;
    bool getProperties(const char *category, IVYRStringArray &query) override;
    IVYRFeature *createFeature() override;
    void destroyFeature(IVYRFeature *&feature) override;
    // The prompter library of the installation, loaded on first use; null
    // when it is missing.
    IGuiPrompter *getGuiPrompter() override;

private:
    // The formats of the installation, read on the first question.
    std::unique_ptr<FormatRegistry> m_formats;
    void *m_prompterLibrary = nullptr;
    IGuiPrompter *m_prompter = nullptr;
};

} // namespace vyr::engine

#endif // VYR_ENGINE_VYRSESSION_H
