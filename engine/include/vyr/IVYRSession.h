// IVYRSession: the engine session a host hands to the dialog library.
//
// Strings, string arrays and features made through a session are destroyed
// through the same session; the destroy operations clear the caller's
// pointer.
#ifndef VYR_IVYRSESSION_H
#define VYR_IVYRSESSION_H

#include "vyr/IGuiPrompter.h"
#include "vyr/IVYRString.h"
#include "vyr/IVYRStringArray.h"

class IVYRFeature;

// The property category that describes a format: ask with the format's name
// as the only element; the answer holds alternating names and values, among
// them "FORMAT_TYPE" (for instance "DATABASE" or "FILE").
inline constexpr char kVyrSessionPropFormatInfo[] = "vyr_session_prop_format_info";

class IVYRSession
{
public:
    virtual IVYRString *createString() = 0;
    virtual void destroyString(IVYRString *&text) = 0;
    virtual IVYRStringArray *createStringArray() = 0;
    virtual void destroyStringArray(IVYRStringArray *&array) = 0;
    // Replaces the contents of `query` (what is asked about) with the answer
    // of `category` as alternating names and values; false when the session
    // cannot answer, leaving `query` empty.
    virtual bool getProperties(const char *category, IVYRStringArray &query) = 0;
    virtual IVYRFeature *createFeature() = 0;
    virtual void destroyFeature(IVYRFeature *&feature) = 0;
    // The session's prompter for GUI definition files; owned by the session.
    virtual IGuiPrompter *getGuiPrompter() = 0;
    virtual ~IVYRSession() = default;

protected:
    IVYRSession() = default;
    IVYRSession(const IVYRSession &) = default;
    IVYRSession &operator=(const IVYRSession &) = default;
};

#endif // VYR_IVYRSESSION_H
