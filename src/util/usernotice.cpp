#include "util/usernotice.h"

namespace vyr {

namespace {

UserNoticeSink *installedSink = nullptr;

} // namespace

UserNoticeSink *setUserNoticeSink(UserNoticeSink *sink)
{
    UserNoticeSink *previous = installedSink;
    installedSink = sink;
    return previous;
}

UserNoticeSink *userNoticeSink()
{
    return installedSink;
}

void notifyUser(unsigned messageId, const StringList &inserts)
{
    if (installedSink)
        installedSink->showNotice(messageId, inserts);
}

} // namespace vyr
