// FormatForms: what an item of a page (a name, a geometry, an attribute's
// row) was in each format the page showed it in, so that moving back to a
// format shows the item as it was there - unless the person changed it
// since it moved. An item is known by its texts: what a person did not
// change still reads as it arrived, wherever sorting or moving took it.
#ifndef VYR_FTPROPSDLG_FORMATFORMS_H
#define VYR_FTPROPSDLG_FORMATFORMS_H

#include <QStringList>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

namespace vyr {

class FormatForms
{
public:
    using Convert = std::function<QStringList(const QStringList &)>;

    // The form `item`, shown in format `from`, takes in format `to`: the one
    // it had there when it is unchanged since it came from `to` (however
    // many formats it passed through), else `convert` of it.
    QStringList move(const std::string &from, const std::string &to, const QStringList &item, const Convert &convert);

private:
    // The forms one item had, by format id.
    using History = std::map<std::string, QStringList>;
    using Key = std::pair<std::string, QStringList>;
    std::map<Key, std::shared_ptr<History>> m_histories;
};

} // namespace vyr

#endif // VYR_FTPROPSDLG_FORMATFORMS_H
