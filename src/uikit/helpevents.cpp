#include "uikit/helpevents.h"

#include <QApplication>
#include <QWidget>

namespace vyr {

qintptr routeHelpRequest(QWidget *start)
{
    for (QWidget *widget = start; widget; widget = widget->parentWidget()) {
        HelpRequestEvent request;
        QCoreApplication::sendEvent(widget, &request);
        if (request.result() != 0)
            return request.result();
    }
    return 0;
}

qintptr requestHelp()
{
    return routeHelpRequest(QApplication::focusWidget());
}

} // namespace vyr
