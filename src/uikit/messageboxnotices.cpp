#include "uikit/messageboxnotices.h"

#include "uikit/dialogutils.h"
#include "uikit/resourcelibrary.h"
#include "util/stringconverter.h"

namespace vyr {

void MessageBoxNotices::showNotice(unsigned messageId, const StringList &inserts)
{
    QStringList texts;
    for (const std::string &insert : inserts)
        texts.append(QString::fromStdString(ansiToUtf8(insert)));
    ShowMessageBox(nullptr, formatResourceString(messageId, texts), QString(), MbOk);
}

} // namespace vyr
