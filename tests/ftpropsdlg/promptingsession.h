// A counting session whose prompter is the installed one, as the dialog's
// Apply to Others and parameter prompts need.
#ifndef VYR_TESTS_FTPROPSDLG_PROMPTINGSESSION_H
#define VYR_TESTS_FTPROPSDLG_PROMPTINGSESSION_H

#include "support/countingsession.h"
#include "uikit/outsideservices.h"

namespace vyr::test {

class PromptingSession : public CountingSession
{
public:
    PromptingSession()
        : m_prompter(createGuiPrompter())
    {
    }
    ~PromptingSession() override { releaseGuiPrompter(m_prompter); }
    PromptingSession(const PromptingSession &) = delete;
    PromptingSession &operator=(const PromptingSession &) = delete;
    IGuiPrompter *getGuiPrompter() override { return m_prompter; }

private:
    IGuiPrompter *m_prompter;
};

} // namespace vyr::test

#endif // VYR_TESTS_FTPROPSDLG_PROMPTINGSESSION_H
