// The IGuiPrompter of the prompter library: reads a GUI definition file,
// shows its form and writes the answers back into the same file.
#ifndef VYR_SERVICES_GUIDEFINITIONPROMPTER_H
#define VYR_SERVICES_GUIDEFINITIONPROMPTER_H

#include "vyr/IGuiPrompter.h"

#include <QPointer>
#include <QWidget>

namespace vyr::services {

class GuiDefinitionPrompter final : public IGuiPrompter
{
public:
    void setParentWindow(void *window) override;
    int run(const char *definitionPath) override;

private:
    QPointer<QWidget> m_parent;
};

} // namespace vyr::services

#endif // VYR_SERVICES_GUIDEFINITIONPROMPTER_H
