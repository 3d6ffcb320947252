#include "uikit/unattendedrun.h"

#include "uikit/cvyrdialog.h"

#include <QDialog>

namespace vyr {

namespace {

// The live run; runs nest, the innermost keeps the texts.
UnattendedRun *liveRun = nullptr;

} // namespace

UnattendedRun::UnattendedRun()
    : m_previous(liveRun)
{
    liveRun = this;
}

UnattendedRun::~UnattendedRun()
{
    liveRun = m_previous;
}

bool UnattendedRun::isActive()
{
    return liveRun != nullptr;
}

void UnattendedRun::noteMessage(const QString &text)
{
    if (liveRun)
        liveRun->m_messages.append(text);
}

bool UnattendedRun::accept(QDialog &dialog)
{
    dialog.accept();
    if (!dialog.isVisible())
        return true;
    // Past the dialog's own Cancel, which may hold on to an edit under way.
    dialog.done(kEndCancel);
    return false;
}

} // namespace vyr
