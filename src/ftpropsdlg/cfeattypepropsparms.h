// CFeatTypePropsParms: the parameters page of the feature type properties
// dialog - the format's per-feature-type parameters in a CDefParmsGrid,
// read from the schema record's values (a parameter without one shows the
// format's default), and a filter field above the grid: typing narrows the
// rows to the prompts that contain the text, Escape clears it. The values of
// rows the filter hides are kept and written like the others.
//
// The page is shown for formats with parameters. OK writes every parameter
// the target's format defines; applied to another feature type, only the
// chosen ones. A change of format keeps the values of the parameters both
// formats have, by name; new ones start at their defaults.
#ifndef VYR_FTPROPSDLG_CFEATTYPEPROPSPARMS_H
#define VYR_FTPROPSDLG_CFEATTYPEPROPSPARMS_H

#include "ftprops/ftpropsformatinfo.h"
#include "ftprops/ftpropsschemainfo.h"
#include "uikit/cvyrdialog.h"

#include <map>
#include <set>
#include <string>

class QLineEdit;

namespace vyr {

class CDefParmsGrid;
class CFeatTypePropsDlg;

class CFeatTypePropsParms : public CVyrDialog
{
    Q_OBJECT

public:
    static constexpr unsigned kTemplateId = 343;
    static constexpr unsigned kIdGrid = 1187;
    static constexpr unsigned kIdFilter = 1188;

    CFeatTypePropsParms(FTPropsSchemaInfo *schema, const FTPropsFormatInfo *format, CFeatTypePropsDlg *dialog);
    ~CFeatTypePropsParms() override;

    // Ends an edit under way; the page always may be written.
    bool ValidatePage();
    // `names` null: every parameter, else only those named; in either case
    // only parameters the target's format defines.
    void WriteToSchema(FTPropsSchemaInfo &target, const std::set<std::string> *names);
    virtual void ChangeFormat(const FTPropsFormatInfo *format);

    // The stored value of every parameter, shown or filtered out, by name.
    std::map<std::string, std::string> ParameterValues();
    // Shows only the rows whose localised prompt contains `text` (any case);
    // empty shows all.
    void SetFilter(const QString &text);

    CDefParmsGrid *grid() const { return m_grid; }
    QLineEdit *filterField() const { return m_filter; }
    const StringList &parameterNames() const { return m_names; }

protected:
    bool OnInitDialog() override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // Takes the values of the shown rows into m_values.
    void collectShownValues();
    // The rows again, from the format's parameters and m_values.
    void showRows();
    // The format's parameters with `values`, a missing one at its default.
    void fillRows(const FTPropsFormatInfo *format, const std::map<std::string, std::string> &values);

    FTPropsSchemaInfo *m_schema;
    const FTPropsFormatInfo *m_format;
    CFeatTypePropsDlg *m_dialog;
    CDefParmsGrid *m_grid = nullptr;
    QLineEdit *m_filter = nullptr;
    StringList m_names;
    // Every parameter's stored value; the shown rows' are newer.
    std::map<std::string, std::string> m_values;
    QString m_filterText;
    bool m_initialised = false;
};

} // namespace vyr

#endif // VYR_FTPROPSDLG_CFEATTYPEPROPSPARMS_H
