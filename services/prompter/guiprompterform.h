// The form a GUI definition shows: one row per prompt, OK, Cancel and, when
// the definition names a help reference, Help.
//
// Prompt widgets are named after their keys ("prompt_FEAT_TYPES"), so the
// form can be driven by tests and assistive tools alike.
#ifndef VYR_SERVICES_GUIPROMPTERFORM_H
#define VYR_SERVICES_GUIPROMPTERFORM_H

#include "guidefinition.h"

#include <QDialog>

#include <functional>
#include <map>

namespace vyr::services {

class GuiPrompterForm : public QDialog
{
    Q_OBJECT

public:
    explicit GuiPrompterForm(GuiDefinition definition, QWidget *parent = nullptr);

    const GuiDefinition &definition() const { return m_definition; }
    // The current values of every prompt, by key (without quotes).
    std::map<std::string, StringList> answers() const;

private:
    QWidget *makeEditor(const GuiPrompt &prompt);
    void showHelp();

    GuiDefinition m_definition;
    std::map<std::string, std::function<StringList()>> m_readers;
};

} // namespace vyr::services

#endif // VYR_SERVICES_GUIPROMPTERFORM_H
