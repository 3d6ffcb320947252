// CRangeDomainDlg: a range domain - every number from a minimum to a
// maximum - or a range domain given by its name alone.
//
// The list is the name, then the field type, the minimum and the maximum;
// a list of exactly four shows all of them. On OK both bounds must be
// numbers within single precision (message 59524); a minimum above the
// maximum is taken as it is.
#ifndef VYR_ATTRTYPESDLG_CRANGEDOMAINDLG_H
#define VYR_ATTRTYPESDLG_CRANGEDOMAINDLG_H

#include "attrtypesdlg/cdomaindlg.h"

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
};

} // namespace vyr

#endif // VYR_ATTRTYPESDLG_CRANGEDOMAINDLG_H
