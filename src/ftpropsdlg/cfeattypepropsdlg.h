// CFeatTypePropsDlg: the modal, tabbed dialog in which the user edits one
// feature type of a translation workspace.
//
// The dialog is a frame: a tab bar with one tab per page, and the pages as
// child dialogs that it shows one at a time. It is handed the schema record
// to edit, the format records it may be written in, the additional (schema
// source) formats, and optionally the schema records of the workspace's
// other feature types. On OK every page validates, then writes back into the
// schema record; properties the user chose with "Apply to Others" are then
// written into the chosen other feature types as well. Cancel writes nothing.
//
// Records are not owned and must outlive the dialog. Every other feature
// type's format id must name one of the formats.
#ifndef VYR_FTPROPSDLG_CFEATTYPEPROPSDLG_H
#define VYR_FTPROPSDLG_CFEATTYPEPROPSDLG_H

#include "ftprops/ftpropsformatinfo.h"
#include "ftprops/ftpropsschemainfo.h"
#include "ftprops/schemareview.h"
#include "ftpropsdlg/applypreview.h"
#include "ftpropsdlg/applyselection.h"
#include "ftpropsdlg/attributeorigins.h"
#include "ftpropsdlg/formatdictionary.h"
#include "uikit/cvyrdialog.h"

#include <QColor>
#include <QString>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class IGuiPrompter;
class IVYRSession;
class QTabBar;

namespace vyr {

class CFeatTypePropsAttrs;
class CFeatTypePropsExposableAttrs;
class CFeatTypePropsGeneral;
class CFeatTypePropsParms;

using SchemaRecordList = std::vector<FTPropsSchemaInfo *>;
using FormatRecordList = std::vector<const FTPropsFormatInfo *>;

class CFeatTypePropsDlg : public CVyrDialog
{
    Q_OBJECT

public:
    // Control IDs of the frame.
    static constexpr unsigned kIdTabControl = 1134;
    static constexpr unsigned kIdApplyToOthers = 1195;
    static constexpr unsigned kIdReviewChanges = 1196;
    static constexpr int kMargin = 3;
    static constexpr int kButtonGap = 4;

    CFeatTypePropsDlg(IVYRSession *session, FTPropsSchemaInfo *schema, const SchemaRecordList &others,
                      const FormatRecordList &formats, const FormatRecordList &additionalFormats, QWidget *parent);
    ~CFeatTypePropsDlg() override;

    // Replaces the current format: every page hears of it, and the tabs that
    // depend on the format come and go. Nothing happens for the same id.
    void SetFormat(const FTPropsFormatInfo *format);

    IVYRSession *session() const { return m_session; }
    // The engine's prompter for GUI definitions; may be null.
    IGuiPrompter *prompter() const { return m_prompter; }
    FTPropsSchemaInfo *schema() const { return m_schema; }
    const FTPropsFormatInfo *currentFormat() const { return m_currentFormat; }
    const SchemaRecordList &otherFeatureTypes() const { return m_others; }
    const FormatDictionary &formats() const { return m_formats; }
    const FormatDictionary &additionalFormats() const { return m_additionalFormats; }
    const FormatDictionary &formatsByLongName() const { return m_formatsByLongName; }
    // The names the feature types of `format` have, the edited one with the
    // name OK gives it, but `except` (a record or the scratch copy of one):
    // the names a new name for `except` must not take. While a preview
    // writes a scratch copy, the records written before it are read as
    // their copies hold them, as the apply will have left them.
    StringSet namesTakenIn(const FTPropsFormatInfo &format, const FTPropsSchemaInfo *except) const;
    bool hasParameters() const { return m_hasParameters; }
    bool hasUserAttributes() const { return m_hasUserAttributes; }

    CFeatTypePropsGeneral *generalPage() const { return m_general.get(); }
    CFeatTypePropsAttrs *attributesPage() const { return m_attributes.get(); }
    CFeatTypePropsExposableAttrs *formatAttributesPage() const { return m_formatAttributes.get(); }
    CFeatTypePropsParms *parametersPage() const { return m_parameters.get(); }
    // The names the attribute pages give (user attributes, then exposed
    // format attributes), for the fan-out list.
    StringList PageAttributeNames() const;
    QWidget *currentPage() const { return m_currentPage; }
    QTabBar *tabControl() const { return m_tabControl; }
    QSize minimumWindowSize() const { return m_minimumSize; }
    const ApplySelection &applySelection() const { return m_apply; }

    // Shows the page `step` tabs on (back when negative), wrapping round,
    // with the keyboard on its first control: Control+Tab, Control+Page
    // Down and their reverses.
    void TurnPage(int step);

    // The apply-to-others command: asks which properties go to which other
    // feature types; OK applies them. Offered only when there are others.
    void ApplyToOthers();

    // What applying `selection` will do in each feature type it names,
    // worked out on scratch copies written as the apply writes them, one
    // after another.
    std::vector<ApplyTargetPreview> ApplyPreviews(const ApplySelection &selection);

    // The review command (Control+Shift+R): validates the pages as OK does,
    // then shows what OK will write; OK there saves.
    void ReviewChanges();
    // What OK will write against what the feature type held when the dialog
    // opened, worked out by writing the pages into a scratch copy of the
    // record, as OK writes them into the record itself; nothing reaches the
    // record or the other feature types. Nothing when a page refused (the
    // user was told why) or no copy could be made.
    std::optional<std::vector<ReviewChange>> ReviewedChanges();
    // Which row of the User Attributes page each attribute the feature type
    // held at open became; nothing when the page writes no attributes.
    std::optional<AttributeRowIdentities> AttributeIdentities() const;
    // The names of the User Attributes page the format's rules made of
    // typed ones, with the rules; empty when the page writes no attributes.
    std::vector<NameLegalisation> AttributeLegalisations() const;
    // Whether `target` stands for the feature type being edited: the record
    // itself, or the scratch copy a review writes for it.
    bool IsEditedRecord(const FTPropsSchemaInfo &target) const { return &target == m_schema || &target == m_scratch; }

    // Turns to `page` (when it has a tab), for a page that refuses OK and
    // shows where.
    void ShowPage(QWidget *page);

    // An attribute of the User Attributes page was renamed (or, from an
    // empty name, added): the pages that name attributes (fan-out,
    // parameters) follow it.
    void AttributeRenamed(const std::string &before, const std::string &after);
    // The row of an attribute of the User Attributes page was deleted (the
    // attribute goes with it), or undo put it back (and the attribute).
    void AttributeDeleted(const std::string &name, bool loaded);
    void AttributeRestored(const std::string &name);
    // Whether the User Attributes page had an attribute of this name at some
    // time: a parameter naming one the page no longer has names a deleted
    // attribute.
    bool WasAttribute(const std::string &name) const;
    // Whether the feature type held a user attribute of this name at open.
    bool WasLoadedAttribute(const std::string &name) const;

    void OnOK() override;
    // Cancel, Escape and the close box: the feature type is left as the
    // dialog found it.
    void OnCancel() override;

protected:
    bool OnInitDialog() override;
    qintptr OnHelpRequest(qintptr wParam, qintptr lParam) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    // When a page has a tab, by the current format.
    enum class TabRule { Always, WithUserAttributes, WithParameters };

    struct PageEntry
    {
        CVyrDialog *page = nullptr;
        TabRule rule = TabRule::Always;
        QString title;
        unsigned bitmap = 0;
        QColor mask;
        int helpKind = 0;
        int creationIndex = 0;
        bool tabShown = false;
    };

    void AddPage(CVyrDialog *page, TabRule rule, unsigned titleId, unsigned bitmapId, QColor mask, int helpKind);
    void ShowPageTab(CVyrDialog *page, bool show);
    void SelectPage(CVyrDialog *page);
    void OnTabChanged(int index);
    // Gives the keyboard to the first control of the current page that
    // takes it.
    void FocusFirstField();
    // Tab goes through the page's fields, then the frame's buttons, then the
    // tabs.
    void ArrangeTabOrder();
    void LayoutControls();
    bool ValidatePages();
    // At OK, with properties to apply: shows what they will do in each
    // feature type, and answers what to write (nothing for No).
    std::optional<ApplySelection> ConfirmApply();
    // Writes every page into `target`: with `selection` only what the user
    // chose to apply, else everything.
    void WritePages(FTPropsSchemaInfo &target, const ApplySelection *selection);
    // The edited feature type as OK writes it, into a scratch copy of the
    // record; null when no copy could be made.
    ScratchSchema WrittenScratch();
    // What the previews of one preview window share: the edited feature
    // type written once, and the previews that still hold.
    struct ApplyPreviewSession
    {
        ScratchSchema written = NoScratchSchema();
        ApplyPreviewCache cache;
    };
    std::vector<ApplyTargetPreview> ApplyPreviews(const ApplySelection &selection, ApplyPreviewSession &session);
    unsigned GeneralBitmap() const;
    PageEntry *entryOf(const QWidget *page);
    void updateFormatFlags();
    bool tabWanted(TabRule rule) const;

    IVYRSession *m_session;
    IGuiPrompter *m_prompter = nullptr;
    FTPropsSchemaInfo *m_schema;
    SchemaRecordList m_others;
    FormatDictionary m_formats;
    FormatDictionary m_additionalFormats;
    FormatDictionary m_formatsByLongName;
    const FTPropsFormatInfo *m_currentFormat = nullptr;
    bool m_hasParameters = false;
    bool m_hasUserAttributes = false;

    std::unique_ptr<CFeatTypePropsGeneral> m_general;
    std::unique_ptr<CFeatTypePropsAttrs> m_attributes;
    std::unique_ptr<CFeatTypePropsExposableAttrs> m_formatAttributes;
    std::unique_ptr<CFeatTypePropsParms> m_parameters;
    std::vector<PageEntry> m_pages;
    QWidget *m_currentPage = nullptr;
    QTabBar *m_tabControl = nullptr;
    QRect m_pageFrame;
    bool m_initialised = false;
    QSize m_minimumSize;
    ApplySelection m_apply;
    StringSet m_attributesSeen;
    AttributeOrigins m_attributeOrigins;
    // The scratch copy a review is writing, while it does.
    const FTPropsSchemaInfo *m_scratch = nullptr;
    // The records a preview has written before the copy it is writing now
    // (and that one), by their copies, while it writes it.
    const ApplyStandIns *m_standIns = nullptr;
    // While the pages change format: the renames to pass on after.
    std::optional<std::vector<std::pair<std::string, std::string>>> m_movingRenames;
};

} // namespace vyr

#endif // VYR_FTPROPSDLG_CFEATTYPEPROPSDLG_H
