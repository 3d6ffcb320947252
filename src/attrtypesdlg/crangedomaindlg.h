// CRangeDomainDlg: a range domain - every number from a minimum to a
// maximum - or a range domain given by its name alone.
//
// The list is the name, then the field type, the minimum and the maximum;
// a list of exactly four shows all of them. On OK both bounds must be
// numbers within single precision (message 59524) and the minimum may not
// be above the maximum (message 59533, the cursor on the minimum). A bound
// is kept in the form a reader of plain decimals reads: as typed when it is
// one ("2.50" stays), else as the number the check read ("1,5" becomes
// "1.5"; util/numbertext.h, plainNumberText).
#ifndef VYR_ATTRTYPESDLG_CRANGEDOMAINDLG_H
#define VYR_ATTRTYPESDLG_CRANGEDOMAINDLG_H

#include "attrtypesdlg/cdomaindlg.h"

#include <string>

namespace vyr {

class CRangeDomainDlg final : public CDomainDlg
{
    Q_OBJECT

public:
    static constexpr unsigned kTemplateId = 575;
    static constexpr unsigned kIdMinimum = 1297;
    static constexpr unsigned kIdMaximum = 1310;
    // Field types offered: no "char", no "boolean".
    static constexpr int kTypeMode = 1;

    CRangeDomainDlg(StringList domain, const DataTypeMappings *registry, bool editable, QWidget *parent = nullptr);

protected:
    void AttachDefinitionControls() override;
    void ShowDefinition(const DomainList &domain) override;
    void EnableDefinition(bool enable) override;
    bool CheckDefinition() override;
    void TakeDefinition(DomainList &domain) override;

private:
    DialogControl<QLineEdit> m_minimum;
    DialogControl<QLineEdit> m_maximum;
    // The bounds as the last check that passed read them.
    std::string m_checkedBounds[2];
};

} // namespace vyr

#endif // VYR_ATTRTYPESDLG_CRANGEDOMAINDLG_H
