// CFeatTypePropsParms: the parameters page of the feature type properties
// dialog - the format's per-feature-type parameters in a CDefParmsGrid,
// read from the schema record's values (a parameter without one shows the
// format's default), and a filter field above the grid: typing narrows the
// rows to the prompts that contain the text, Escape clears it. Rows the
// filter hides keep their values, are written like the others and still
// take part in the disable rule and the undo history.
//
// The page is shown for formats with parameters. OK writes the parameters
// whose values differ from what the feature type has (a value left as it
// was is not written, so defaults stay unstored); applied to another
// feature type, only the chosen ones - in either case only parameters the
// target's format defines. A change of format keeps the values of the
// parameters both formats have, by name; the others show what they had when
// the page last showed that format, else their defaults.
//
// A DISABLE switch is never stored: it shows Yes when one of the rows it
// enables (DISABLED_ONLY) holds a value, and OK refuses Yes with all of them
// empty, which could not be read back as Yes. Parameters that name
// attributes follow a renamed attribute, and OK refuses one that names an
// attribute the feature type no longer has.
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

    // Ends an edit under way; refuses a switch that would not read back and
    // a parameter naming an attribute that is gone, with its row current.
    bool ValidatePage();
    // An attribute was renamed: the parameters naming it follow.
    void RenameAttribute(const std::string &before, const std::string &after);
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
    // Shows the rows the filter lets through, hides the others.
    void showRows();
    // The format's parameters with `values`, a missing one at its default.
    void fillRows(const FTPropsFormatInfo *format, const std::map<std::string, std::string> &values);
    // Each DISABLE switch of the format as the stored values show it.
    static void deriveSwitches(const FTPropsFormatInfo &format, std::map<std::string, std::string> &values);
    // Makes the named parameter's row current (shown, whatever the filter)
    // and tells the user `message`.
    bool Refuse(const std::string &name, const QString &message);

    FTPropsSchemaInfo *m_schema;
    const FTPropsFormatInfo *m_format;
    CFeatTypePropsDlg *m_dialog;
    CDefParmsGrid *m_grid = nullptr;
    QLineEdit *m_filter = nullptr;
    StringList m_names;
    // The values the page held for each format it showed, by format id.
    std::map<std::string, std::map<std::string, std::string>> m_valuesByFormat;
    QString m_filterText;
    bool m_initialised = false;
};

} // namespace vyr

#endif // VYR_FTPROPSDLG_CFEATTYPEPROPSPARMS_H
