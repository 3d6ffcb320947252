// CFeatTypePropsGeneral: the General page of the feature type properties
// dialog - the feature type's name, geometry and database user, and the
// format help. The source and destination variants add what their role
// needs (merge settings; dataset, fan-out and dynamic schema).
//
// The page is a child dialog of CFeatTypePropsDlg, which asks it to
// validate, to write into a schema record (the edited one with every
// property, other ones with the properties the user chose to apply) and
// tells it when the format changes.
#ifndef VYR_FTPROPSDLG_CFEATTYPEPROPSGENERAL_H
#define VYR_FTPROPSDLG_CFEATTYPEPROPSGENERAL_H

#include "ftprops/ftpropsformatinfo.h"
#include "ftprops/ftpropsschemainfo.h"
#include "ftpropsdlg/formatdictionary.h"
#include "ftpropsdlg/formatforms.h"
#include "uikit/cvyrdialog.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include <string>

namespace vyr {

class CFeatTypePropsDlg;

class CFeatTypePropsGeneral : public CVyrDialog
{
    Q_OBJECT

public:
    static constexpr unsigned kIdName = 1183;
    static constexpr unsigned kIdGeometry = 1158;
    static constexpr unsigned kIdDataset = 1169;
    static constexpr unsigned kIdDatabaseUser = 1297;
    static constexpr unsigned kIdFormatHelp = 1414;

    ~CFeatTypePropsGeneral() override;

    // True when the page may be written; otherwise the user has been told
    // why. The name is resolved first, as leaving its field would, so that
    // what is checked is what is written.
    virtual bool ValidatePage();
    // Writes the groups of properties in `mask` (general:: bits).
    virtual void WriteToSchema(FTPropsSchemaInfo &target, unsigned mask);
    virtual void ChangeFormat(const FTPropsFormatInfo *format);
    // The dialog was cancelled: takes back what the page handed to the
    // schema record before OK. Base: nothing was handed over.
    virtual void TakeBackHandedOver() {}
    // Whether the page handed anything to the schema record before OK;
    // WriteAsOpened writes into `target` what the record held of it at open.
    virtual bool HandedOver() const { return false; }
    virtual void WriteAsOpened(FTPropsSchemaInfo &) const {}
    // Shows `geometry` for `format`.
    virtual void FillGeometry(const FTPropsFormatInfo *format, const std::string &geometry);
    // Folds the database user into the name for a format without database
    // users, or splits an owner prefix off the name for one with them.
    virtual void SetupDatabaseUser(const FTPropsFormatInfo *format);
    // "owner.table" gives prefix "owner" and name "table"; a name without a
    // full stop is left as it is, and so is the prefix.
    static void SplitOwnerPrefix(std::string &name, std::string &prefix);

    virtual bool isSource() const = 0;
    const FTPropsFormatInfo *format() const { return m_format; }
    // An attribute of the attribute pages was renamed: whatever the page
    // names it by follows. The base names none.
    virtual void RenameAttribute(const std::string &before, const std::string &after);
    // The geometry the page holds: the chosen one, or, where the list
    // stands for several, the ones the feature type has.
    std::string geometryValue() const;

protected:
    CFeatTypePropsGeneral(unsigned templateId, FTPropsSchemaInfo *schema, const FTPropsFormatInfo *format,
                          CFeatTypePropsDlg *dialog);

    bool OnInitDialog() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

    // The name `text` takes under `format`'s rules for `named` (the edited
    // feature type, another, or a scratch copy of either), among the names
    // the workspace's other feature types of that format have.
    std::string ResolveName(const std::string &text, const FTPropsFormatInfo &format,
                            const FTPropsSchemaInfo &named) const;
    // Shows the name (and for a database format the database user, the
    // name's owner part) as the format's rules make them, both resolved as
    // one "user.name".
    void ResolveNameField();
    // The name the fields give, with the database user in front.
    std::string qualifiedName() const;
    // Stops validation: turns to the page, puts the keyboard on `field` and
    // tells the user `message` (or string `messageId`).
    bool Refuse(const QString &message, QWidget *field);
    bool Refuse(unsigned messageId, QWidget *field);
    // The record the dialog holds for the target's format; the page's own
    // format when it has none.
    const FTPropsFormatInfo *FormatOf(const FTPropsSchemaInfo &target) const;

    std::string nameText() const;

    FTPropsSchemaInfo *m_schema;
    const FTPropsFormatInfo *m_format;
    CFeatTypePropsDlg *m_dialog;
    // The formats the feature type may be written in, by long name.
    FormatDictionary m_datasets;
    StringList m_extraFanoutNames;

    DialogControl<QLineEdit> m_name;
    DialogControl<QComboBox> m_geometry;
    DialogControl<QComboBox> m_dataset;
    DialogControl<QLineEdit> m_databaseUser;
    DialogControl<QPushButton> m_formatHelp;
    // The geometry behind a list that shows the mark of several geometries.
    std::string m_geometryValue;

private:
    void OnDatasetSelected();
    void OnFormatHelp();

    FormatForms m_nameForms;
    FormatForms m_geometryForms;
};

} // namespace vyr

#endif // VYR_FTPROPSDLG_CFEATTYPEPROPSGENERAL_H
