// What model code tells the user when a check refuses a value: a message of
// the resource library, by string ID, with "%1"-style inserts (narrow code
// page). The model never shows anything itself; the user interface installs
// the sink that does (a message box), and tools and tests install their own.
// Without a sink a notice is dropped.
#ifndef VYR_UTIL_USERNOTICE_H
#define VYR_UTIL_USERNOTICE_H

#include "util/listpacking.h"

namespace vyr {

class UserNoticeSink
{
public:
    virtual ~UserNoticeSink() = default;
    virtual void showNotice(unsigned messageId, const StringList &inserts) = 0;
};

// Installs `sink` (not owned; null removes it) and returns the previous one.
UserNoticeSink *setUserNoticeSink(UserNoticeSink *sink);
UserNoticeSink *userNoticeSink();

// Hands the notice to the installed sink, if any.
void notifyUser(unsigned messageId, const StringList &inserts);

} // namespace vyr

#endif // VYR_UTIL_USERNOTICE_H
