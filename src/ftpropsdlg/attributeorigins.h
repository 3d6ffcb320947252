// AttributeOrigins: which user attribute the feature type held when the
// dialog opened each row of the User Attributes page stands for, so that a
// review tells a renamed attribute from one removed and another added.
//
// A row the user has not touched shows its loaded attribute and says so
// itself. A touched row is known by its name: the page reports every name a
// row takes (typed, pasted, undone, redone, made legal by a move to another
// format), and a name followed back through those steps to a loaded name is
// that attribute. A row under a loaded name that no rename took away is that
// attribute too; any other row is a new one. A deleted row takes its
// attribute with it, so that a new row given its name is new; undo putting
// the row back gives the attribute back.
#ifndef VYR_FTPROPSDLG_ATTRIBUTEORIGINS_H
#define VYR_FTPROPSDLG_ATTRIBUTEORIGINS_H

#include "ftprops/schemareview.h"
#include "util/listpacking.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace vyr {

class AttributeOrigins
{
public:
    // A row's name went from `before` to `after`; an empty `before` is a new
    // row. `wasLoaded` tells the names the feature type held at open.
    void renamed(const std::string &before, const std::string &after,
                 const std::function<bool(const std::string &)> &wasLoaded);

    // A row named `name` was deleted, which undo may put back; `loaded`: it
    // showed its loaded attribute untouched.
    void deleted(const std::string &name, bool loaded, const std::function<bool(const std::string &)> &wasLoaded);
    // Undo put back the row named `name` deleted last.
    void restored(const std::string &name);

    struct Row
    {
        std::string name;
        // The row shows its loaded attribute untouched.
        bool loaded = false;
    };
    // For every name of `loadedNames`, what the rows (in order) made of it.
    AttributeRowIdentities identities(const std::vector<Row> &rows, const StringList &loadedNames) const;

private:
    // The loaded attribute the row named `name` stands for, no longer
    // remembered under that name; empty for a new row.
    std::string takeOrigin(const std::string &name, const std::function<bool(const std::string &)> &wasLoaded);

    // A row's name now -> the loaded attribute it stands for, where they
    // differ.
    std::map<std::string, std::string> m_originOf;
    // The loaded names a rename took away from their row.
    StringSet m_movedAway;
    // Names new rows took while another row stood for an attribute under
    // them, with how many such rows hold each.
    std::map<std::string, std::size_t> m_newHolders;
    // By name, the loaded attribute of each deleted row (empty: a new row),
    // the last deleted last: undo puts rows back in the reverse order.
    std::map<std::string, std::vector<std::string>> m_deleted;
};

} // namespace vyr

#endif // VYR_FTPROPSDLG_ATTRIBUTEORIGINS_H
