#include "ftpropsdlg/formatforms.h"

namespace vyr {

QStringList FormatForms::move(const std::string &from, const std::string &to, const QStringList &item,
                              const Convert &convert)
{
    std::shared_ptr<History> &known = m_histories[Key(from, item)];
    if (!known)
        known = std::make_shared<History>(History{{from, item}});
    const std::shared_ptr<History> history = known;
    const auto there = history->find(to);
    const QStringList form = there != history->end() ? there->second : convert(item);
    (*history)[to] = form;
    m_histories[Key(to, form)] = history;
    return form;
}

} // namespace vyr
