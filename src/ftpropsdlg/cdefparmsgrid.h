// CDefParmsGrid: a format's per-feature-type parameters, one row each - the
// localised prompt (read-only) and the value, edited as the parameter's GUI
// type asks:
//
//   INTEGER                      up to ten digits
//   CHOICE                       a drop list of the localised choices, with
//                                an empty entry when the parameter is
//                                optional
//   DISABLE                      a drop list of the localised Yes and No;
//                                its value enables or disables the others
//   ATTR                         a drop list of the user attributes page's
//                                names, asked for when it opens
//   ATTRLIST, ATTRLIST_COMMAS    a button: a selection box of those names,
//                                the chosen ones joined with commas
//   ICONPICK                     a button: the prompter's icon picker
//   COLOR_PICK                   a button: the colour dialog
//   anything else                plain text
//
// A localised choice is shown and stored untranslated (GetParameterValue).
//
// The disable rule: while the DISABLE parameter says No (in either
// language) every other value is enabled; otherwise they are disabled,
// except that DISABLED_ONLY parameters take the opposite state and
// ALWAYS_ENABLED ones stay enabled, whether the DISABLE row is shown or
// hidden by a filter. Turning the switch off empties the DISABLED_ONLY
// rows, whose values are what shows it on when the page opens again.
#ifndef VYR_FTPROPSDLG_CDEFPARMSGRID_H
#define VYR_FTPROPSDLG_CDEFPARMSGRID_H

#include "ftprops/ftpropsformatinfo.h"
#include "ftprops/guiparameterline.h"
#include "uikit/cvvyrgrid.h"

#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace vyr {

class CFeatTypePropsDlg;

// Whether a parameter's value may be edited, by the disable rule: `ruleOn`
// is whether the DISABLE parameter's value says anything but No.
bool ParameterEnabledByRule(const GuiParameterLine &parameter, bool ruleOn);
// Whether a parameter is one a DISABLE switch turns on (DISABLED_ONLY):
// its value is what tells, when the page opens, where the switch stood.
bool TurnedOnBySwitch(const GuiParameterLine &parameter);

class CDefParmsGrid : public CVVyrGrid, public CellActionHandler
{
    Q_OBJECT

public:
    static constexpr int kPromptColumn = 0;
    static constexpr int kValueColumn = 1;
    static constexpr long kNoDisableRow = -999;

    // `dialog` gives the attribute names and the prompter; it may be null
    // (then there are none).
    CDefParmsGrid(const FTPropsFormatInfo *format, CFeatTypePropsDlg *dialog, QWidget *parent = nullptr);

    // The prompt column then fits the new format's prompts alone.
    void SetFormat(const FTPropsFormatInfo *format)
    {
        m_format = format;
        m_promptWidth = 0;
        m_unmeasured.clear();
    }
    const FTPropsFormatInfo *format() const { return m_format; }

    // Removes every row and forgets what they were; the prompt column keeps
    // its width, so that it stays put while a filter narrows the rows.
    void RemoveAllRows();
    // Appends a row for the parameter `line` defines, showing the stored
    // `value`; its index.
    long AddParameterRow(const std::string &line, const std::string &value);
    // Appends a row for each named parameter of the format, showing its
    // value in `values` (else its default), as AddParameterRow would - each
    // made when shown or touched.
    void LoadParameters(const StringList &names, const std::map<std::string, std::string> &values);
    // The row's value as it is stored: a localised choice untranslated.
    std::string GetParameterValue(long row);
    // The parameter a row shows; empty past the rows.
    std::string ParameterNameOf(long row) const;
    // The row of the named parameter, or -1.
    long RowOf(const std::string &name) const;
    // The parsed line of a parameter with a row, or null.
    const GuiParameterLine *ParameterOf(const std::string &name) const;
    long disableRow() const { return m_disableRow; }

    // Shows or hides a row (a filter); a hidden row keeps its value.
    void ShowRow(long row, bool shown);
    bool IsRowShown(long row) const { return row >= 0 && GetRowHeight(row) != 0; }
    // Enables and disables the value cells by the disable rule.
    void ApplyDisableRule();

    // The localised prompt and help text of a parameter.
    static QString LocalizedPrompt(const GuiParameterLine &parameter);
    // The drop list of a CHOICE or DISABLE parameter as shown: its choices
    // localised, and an empty entry for an optional CHOICE.
    static QStringList ChoiceEntries(const GuiParameterLine &parameter);
    QString HelpTextOf(long row) const;

    // ATTR: the user attributes page's names, and an empty entry for an
    // optional parameter.
    void OnGetChoices(CVVyrGrid &grid, int column, long row, CUGCell &cell, QStringList &choices) override;
    // The cell handler's browse hook, named like the grid's.
    using CellActionHandler::OnBrowse;
    QString OnCellDescription(int column, long row) override;

protected:
    // The grid's choices hook, named like the cell handler's.
    using CVVyrGrid::OnGetChoices;
    void OnGridInit() override;
    void OnCellChange(int column, long row, ug::TextSource source) override;
    // An INTEGER holds a whole number, a CHOICE or DISABLE one of its
    // entries, an ATTR the name of an attribute on the attributes page (or
    // nothing, when it is optional).
    QString OnCheckText(int column, long row, const QString &text) override;
    // ATTRLIST, ATTRLIST_COMMAS and ICONPICK.
    int OnBrowse(int column, long row) override;
    int OnCellTipText(int column, long row, int section, QString &text) override;
    // Every cell may be current; only enabled values take edits.
    int OnAllowCellMove(int oldColumn, long oldRow, int newColumn, long newRow) override;
    void OnLayoutComponents(Layout &layout) override;
    // Rows loaded while the grid was out of sight: the columns are laid
    // out again with their prompts measured.
    bool OnLayoutStale() override { return !m_unmeasured.empty(); }

    QString LoadedText(std::size_t record, int column) override;
    bool IsLoadedCellEnabled(std::size_t record, int column) override;
    void MakeLoadedRow(long row, std::size_t record) override;

private:
    // The value cell's type, list and mask for a parameter.
    CUGCell ValueCellOf(const GuiParameterLine &parameter);
    // What the value cell shows for a stored value.
    static QString ShownValue(const GuiParameterLine &parameter, const std::string &value);
    // A choice parameter's stored choices by their shown text, where the
    // two differ; null when none does.
    const std::map<QString, std::string> *StoredChoicesOf(const std::string &name);
    // The cells of a parameter's row, as an added row and a loaded one
    // made both have them (the disable rule aside).
    void writeParameterRow(long row, const GuiParameterLine &parameter, const QString &prompt, const QString &shown);
    // Notes the parameter a row shows; the row.
    long rememberParameter(long row, const GuiParameterLine &parameter);
    // The prompt column is as wide as the widest prompt shown since the
    // format was set; a loaded row's prompt counts once it can be seen.
    void measurePrompt(const QString &prompt);
    void measureLoadedPrompts();
    // Whether the disable rule is on now.
    std::optional<bool> disableRuleOn();
    void applyRuleTo(long row, bool ruleOn);
    StringList attributeNames() const;

    const FTPropsFormatInfo *m_format;
    CFeatTypePropsDlg *m_dialog;
    std::unordered_map<std::string, GuiParameterLine> m_parameters;
    // Per choice parameter: shown (localised) choice text to the stored
    // one, for the choices whose translation differs; made when first asked.
    std::unordered_map<std::string, std::map<QString, std::string>> m_storedChoices;
    // The rows LoadParameters loaded, by record, with their texts once made.
    struct LoadedParameter
    {
        std::string name;
        std::string value;
        std::optional<QString> prompt;
        std::optional<QString> shown;
    };
    std::vector<LoadedParameter> m_loaded;
    std::vector<std::string> m_rowNames;
    long m_disableRow = kNoDisableRow;
    // What the longest prompt shown since the format was set needs, in
    // pixels.
    int m_promptWidth = 0;
    // Loaded rows (records) whose prompts are not measured yet.
    std::vector<std::size_t> m_unmeasured;
};

} // namespace vyr

#endif // VYR_FTPROPSDLG_CDEFPARMSGRID_H
