#include "uikit/messageboxnotices.h"

#include "uikit/dialogutils.h"
#include "uikit/narrowtext.h"
#include "uikit/resourcelibrary.h"

namespace vyr {

void MessageBoxNotices::showNotice(unsigned messageId, const StringList &inserts)
{
    QStringList texts;
    for (const std::string &insert : inserts)
        texts.append(fromNarrow(insert));
    ShowMessageBox(nullptr, formatResourceString(messageId, texts), QString(), MbOk);
}

} // namespace vyr
