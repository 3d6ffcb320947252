// CDomainDlg: what the range and coded value domain dialogs share.
//
// A domain is a list of texts: its name, then - unless it is given by name
// alone - its field type (a type string of the format) and its definition:
// a minimum and a maximum, or code and description pairs. The dialog shows
// the name, a "name only" check box, the field type in a one-row type grid,
// and the definition controls of its kind; the field type and the
// definition are enabled only while the domain is editable (a writer's
// format) and not given by name alone. On OK the dialog checks what it
// shows, tells the user what is wrong in a message box and stays open, or
// rebuilds the list and closes.
#ifndef VYR_ATTRTYPESDLG_CDOMAINDLG_H
#define VYR_ATTRTYPESDLG_CDOMAINDLG_H

#include "attrtypes/domainlist.h"
#include "attrtypesdlg/cattrtypegrid.h"
#include "uikit/cvyrdialog.h"
#include "util/listpacking.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPointer>

#include <memory>

namespace vyr {

class AttrType;
class CAttrTypeGrid;
class DataTypeMappings;

class CDomainDlg : public CVyrDialog
{
    Q_OBJECT

public:
    static constexpr unsigned kIdName = 1271;
    static constexpr unsigned kIdNameOnly = 1145;
    static constexpr unsigned kIdTypeGrid = 1338;
    static constexpr char kHelpTopic[] = "editing_geodatabase_domains_and_subtypes.htm";

    ~CDomainDlg() override;

    // The domain: as given, and after OK as the user left it.
    const StringList &domainList() const { return m_domain; }
    bool isEditable() const { return m_editable; }
    CAttrTypeGrid *typeGrid() const { return m_typeGrid; }

    void OnOK() override;

protected:
    // `registry` may be null: then no field type can be chosen.
    CDomainDlg(unsigned templateId, DomainKind kind, StringList domain, const DataTypeMappings *registry,
               bool editable, int typeGridMode, QWidget *parent);

    bool OnInitDialog() override;
    qintptr OnHelpRequest(qintptr wParam, qintptr lParam) override;

    // Sets up the kind's own controls (before the list is shown).
    virtual void AttachDefinitionControls() = 0;
    // Shows the bounds or codes of a domain that is not given by name.
    virtual void ShowDefinition(const DomainList &domain) = 0;
    // Enables or disables the kind's own definition controls.
    virtual void EnableDefinition(bool enable) = 0;
    // Whether the definition may be taken; otherwise the user was told why.
    virtual bool CheckDefinition() = 0;
    // Puts the bounds or codes shown into `domain`.
    virtual void TakeDefinition(DomainList &domain) = 0;
    // Tells the user string `messageId`, or `message`, and answers false.
    bool Refuse(unsigned messageId);
    bool Refuse(const QString &message);
    bool isNameOnly() const;
    const DataTypeMappings *registry() const { return m_registry; }

private:
    void ApplyEnablingRule();

    DomainKind m_kind;
    StringList m_domain;
    // Without a format's registry the type grid offers nothing.
    std::unique_ptr<DataTypeMappings> m_noTypes;
    const DataTypeMappings *m_registry;
    bool m_editable;
    int m_typeGridMode;
    QPointer<CAttrTypeGrid> m_typeGrid;
    DialogControl<QLineEdit> m_name;
    DialogControl<QCheckBox> m_nameOnly;
};

} // namespace vyr

#endif // VYR_ATTRTYPESDLG_CDOMAINDLG_H
