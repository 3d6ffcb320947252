// IGuiPrompter: the engine's prompter for GUI definition files.
//
// The engine session hands one out; the dialogs use it to ask the user for a
// set of values described by a GUI definition file (see the prompter's
// documentation for the line forms).
#ifndef VYR_IGUIPROMPTER_H
#define VYR_IGUIPROMPTER_H

class IGuiPrompter
{
public:
    // The window the prompter's form is shown over; null for none. The
    // value is a QWidget pointer.
    virtual void setParentWindow(void *window) = 0;
    // Shows the definition in the file at `definitionPath` (NUL-terminated,
    // narrow code page). Returns non-zero when the user accepted; the file
    // then holds the answers. Returns 0 on cancel and when the file cannot be
    // read, leaving the file as it was.
    virtual int run(const char *definitionPath) = 0;
    virtual ~IGuiPrompter() = default;

protected:
    IGuiPrompter() = default;
    IGuiPrompter(const IGuiPrompter &) = default;
    IGuiPrompter &operator=(const IGuiPrompter &) = default;
};

#endif // VYR_IGUIPROMPTER_H
