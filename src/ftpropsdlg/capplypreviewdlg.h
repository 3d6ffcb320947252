// CApplyPreviewDlg: what "Apply to Others" will write into each feature type
// it applies to, asked before it writes. One checkable entry per feature
// type, marked when something will not apply there as it is, with its
// changes and conflicts under it; and the chosen properties, each checkable.
// Unticking either works the previews out again. Yes (the default) applies
// the ticked properties to the ticked feature types, No and Escape nothing.
#ifndef VYR_FTPROPSDLG_CAPPLYPREVIEWDLG_H
#define VYR_FTPROPSDLG_CAPPLYPREVIEWDLG_H

#include "ftpropsdlg/applypreview.h"
#include "uikit/cvyrdialog.h"

#include <QListWidget>
#include <QTreeWidget>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vyr {

// The conflicts' words in the user's language, from the resource library.
ApplyConflictTexts ApplyConflictTextsFromResources();

class CApplyPreviewDlg : public CVyrDialog
{
    Q_OBJECT

public:
    static constexpr unsigned kIdTargets = 1001;
    static constexpr unsigned kIdProperties = 1003;
    // F1 opens the section of the feature type properties help about this
    // window.
    static constexpr char kHelpTopic[] = "Editing_Feature_Type_Properties.htm#apply-preview";

    // Works out the previews of a selection.
    using Previewer = std::function<std::vector<ApplyTargetPreview>(const ApplySelection &)>;

    // `parameterPrompt` gives a parameter's prompt as the user reads it.
    CApplyPreviewDlg(const ApplySelection &selection, Previewer previewer,
                     std::function<std::string(const std::string &)> parameterPrompt, QWidget *parent);

    // The ticked properties for the ticked feature types.
    ApplySelection chosen() const;
    // The previews shown now, of the ticked feature types.
    const std::vector<ApplyTargetPreview> &previews() const { return m_previews; }
    QTreeWidget *targetTree() const { return m_targets.get(); }
    QListWidget *propertyList() const { return m_properties.get(); }

protected:
    bool OnInitDialog() override;
    qintptr OnHelpRequest(qintptr wParam, qintptr lParam) override;

private:
    // Works the previews out for what is ticked and shows them.
    void Refresh();
    QString ItemLabel(const ApplyItem &item) const;

    ApplySelection m_selection;
    std::vector<ApplyItem> m_items;
    Previewer m_previewer;
    std::function<std::string(const std::string &)> m_parameterPrompt;
    // The words of the previews, read once for every tick.
    const ReviewTexts m_reviewTexts;
    const ApplyConflictTexts m_conflictTexts;
    std::vector<ApplyTargetPreview> m_previews;
    // The selection m_previews were worked out for.
    std::optional<ApplySelection> m_shown;
    DialogControl<QTreeWidget> m_targets;
    DialogControl<QListWidget> m_properties;
};

} // namespace vyr

#endif // VYR_FTPROPSDLG_CAPPLYPREVIEWDLG_H
