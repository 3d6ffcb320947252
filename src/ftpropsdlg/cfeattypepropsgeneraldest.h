// The General page of a feature type that is written: besides the shared
// properties, the dataset (format) it goes to, fan-out on the values of an
// attribute, and dynamic schema taken from schema sources with the settings
// of the dynamic schema dialog.
#ifndef VYR_FTPROPSDLG_CFEATTYPEPROPSGENERALDEST_H
#define VYR_FTPROPSDLG_CFEATTYPEPROPSGENERALDEST_H

#include "ftprops/dynamicschemainfo.h"
#include "ftpropsdlg/cfeattypepropsgeneral.h"

#include <QCheckBox>

namespace vyr {

class DropDownComboBox;
class NameListModel;

class CFeatTypePropsGeneralDest final : public CFeatTypePropsGeneral
{
    Q_OBJECT

public:
    static constexpr unsigned kTemplateId = 514;
    static constexpr unsigned kIdFanout = 1286;
    static constexpr unsigned kIdFanoutAttribute = 1289;
    static constexpr unsigned kIdDynamic = 1145;
    static constexpr unsigned kIdSchemaSources = 1271;
    static constexpr unsigned kIdChooseSchemaSources = 1409;
    static constexpr unsigned kIdDynamicSummary = 1272;
    static constexpr unsigned kIdDynamicSettings = 1410;

    CFeatTypePropsGeneralDest(FTPropsSchemaInfo *schema, const FTPropsFormatInfo *format, CFeatTypePropsDlg *dialog);

    bool ValidatePage() override;
    // The chosen fan-out attribute is one no page has any longer (deleted,
    // renamed away or no longer exposed).
    bool FanoutAttributeGone() const;
    void WriteToSchema(FTPropsSchemaInfo &target, unsigned mask) override;
    void ChangeFormat(const FTPropsFormatInfo *format) override;
    void FillGeometry(const FTPropsFormatInfo *format, const std::string &geometry) override;
    bool isSource() const override { return false; }
    // The fan-out attribute follows a renamed attribute.
    void RenameAttribute(const std::string &before, const std::string &after) override;

    void UpdateFanoutControls(const FTPropsFormatInfo *format);
    // Adds the extra fan-out names and `names` to the fan-out choices, each
    // once; `distinct`: `names` hold each name once already.
    void FillFanoutChoices(const StringList &names, bool distinct = false);

    // The commands behind the page's buttons.
    void OnDynamicToggled();
    void ChooseSchemaSources();
    void EditDynamicSettings();

    const StringList &schemaSources() const { return m_schemaSources; }
    // Schema sources chosen go to the schema record at once; a cancelled
    // dialog puts back those it found.
    void TakeBackHandedOver() override;
    bool HandedOver() const override { return m_schemaSourcesHandedOver; }
    void WriteAsOpened(FTPropsSchemaInfo &target) const override;
    const DynamicSchemaInfo &dynamicSettings() const { return m_dynamicSettings; }

protected:
    bool OnInitDialog() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void UpdateDynamicControls();
    void ShowSchemaSources(const StringList &longNames);
    void ShowDynamicSummary();
    void RefillFanoutChoices();
    // The list holds the chosen attribute alone until it is first wanted
    // (dropped down, stepped through, handed to the dynamic settings): a
    // schema of 100,000 attributes opens without listing them. Then it
    // holds what it would have held from the start.
    void EnsureFanoutChoices();
    // The additional formats in the order the page offers them.
    std::vector<const FTPropsFormatInfo *> SchemaSourceFormats() const;

    DialogControl<QCheckBox> m_fanout;
    DialogControl<QComboBox> m_fanoutAttribute;
    // The fan-out choices: all the attributes' names, shown when needed.
    NameListModel *m_fanoutChoices = nullptr;
    bool m_fanoutChoicesMade = false;
    DialogControl<QCheckBox> m_dynamic;
    DialogControl<QLineEdit> m_schemaSourcesDisplay;
    DialogControl<QPushButton> m_chooseSchemaSources;
    DialogControl<QLineEdit> m_dynamicSummary;
    DialogControl<QPushButton> m_dynamicSettingsButton;

    // Fan-out as the person chose it, whatever the format allows.
    bool m_fanoutWanted = false;
    StringList m_schemaSources;
    StringList m_initialSchemaSources;
    bool m_schemaSourcesHandedOver = false;
    DynamicSchemaInfo m_dynamicSettings;
    StringList m_additionalNames;
};

} // namespace vyr

#endif // VYR_FTPROPSDLG_CFEATTYPEPROPSGENERALDEST_H
