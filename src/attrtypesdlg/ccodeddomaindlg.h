// CCodedDomainDlg: a coded value domain - a list of codes, each with the
// description users see - or one given by its name alone.
//
// The list is the name, then the field type, then code and description
// pairs; a list of at least four shows them, a code without a description
// at its end is dropped. The codes are edited in a two-column grid with a
// blank row for a new pair. On OK at least one row needs a code (message
// 59523) and no code may be given twice (message 59525, naming the code,
// with the cursor on its second row); rows without a code are dropped.
#ifndef VYR_ATTRTYPESDLG_CCODEDDOMAINDLG_H
#define VYR_ATTRTYPESDLG_CCODEDDOMAINDLG_H

#include "attrtypesdlg/cdomaindlg.h"
#include "uikit/cvvyrgrid.h"

namespace vyr {

class CVVyrGrid;

class CCodedDomainDlg final : public CDomainDlg
{
    Q_OBJECT

public:
    static constexpr unsigned kTemplateId = 1139;
    static constexpr unsigned kIdCodeGrid = 1339;
    // Field types offered: every selectable one.
    static constexpr int kTypeMode = 2;

    CCodedDomainDlg(StringList domain, const DataTypeMappings *registry, bool editable, QWidget *parent = nullptr);

    CVVyrGrid *codeGrid() const { return m_codes; }

protected:
    void AttachDefinitionControls() override;
    void ShowDefinition(const DomainList &domain) override;
    void EnableDefinition(bool enable) override;
    bool CheckDefinition() override;
    void TakeDefinition(DomainList &domain) override;

private:
    QPointer<CVVyrGrid> m_codes;
};

} // namespace vyr

#endif // VYR_ATTRTYPESDLG_CCODEDDOMAINDLG_H
