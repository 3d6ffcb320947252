// The user interface's sink for the model's notices: a message box with OK,
// its text the resource string with the notice's inserts.
#ifndef VYR_UIKIT_MESSAGEBOXNOTICES_H
#define VYR_UIKIT_MESSAGEBOXNOTICES_H

#include "util/usernotice.h"

namespace vyr {

class MessageBoxNotices final : public UserNoticeSink
{
public:
    void showNotice(unsigned messageId, const StringList &inserts) override;
};

} // namespace vyr

#endif // VYR_UIKIT_MESSAGEBOXNOTICES_H
