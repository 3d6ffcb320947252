// The editor behind the button of a list-valued argument's cell: the grid
// edit dialog for sets, lists and maps of strings, the domain dialogs for
// range and coded value domains.
//
// The value is packed as the argument keeps it: the list's elements joined
// with colons, quoted where needed (csvJoin), in the narrow code page. A
// string map is its keys and values alternately; a domain is its name, then
// its field type and bounds or codes. A value whose elements come back
// unchanged is given back as it was packed, so that quoting the packing
// would write differently ("a b" unquoted, quotes nothing needs) stays.
#ifndef VYR_ATTRTYPESDLG_ARGUMENTEDITOR_H
#define VYR_ATTRTYPESDLG_ARGUMENTEDITOR_H

#include "util/listpacking.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

class QWidget;

namespace vyr {

class CVyrDialog;
class DataTypeMappings;

class ArgumentEditor
{
public:
    enum class Kind { StringSet, StringList, StringMap, RangeDomain, CodedDomain };

    // `registry` gives the domain dialogs their field types; the string
    // editors do without. A read-only editor shows the value and changes
    // nothing. `parent` keeps the dialog above the window it came from.
    ArgumentEditor(Kind kind, std::string_view packed, const DataTypeMappings *registry, bool editable,
                   QWidget *parent = nullptr);
    ~ArgumentEditor();
    ArgumentEditor(const ArgumentEditor &) = delete;
    ArgumentEditor &operator=(const ArgumentEditor &) = delete;

    Kind kind() const { return m_kind; }
    // The dialog, made but not yet run.
    CVyrDialog &dialog() const { return *m_dialog; }
    // After OK: the new packed value.
    std::string packedResult() const;
    // Runs the dialog: the new packed value after OK, nothing after Cancel.
    std::optional<std::string> run();

private:
    Kind m_kind;
    std::string m_packed;
    StringList m_elements;
    std::unique_ptr<CVyrDialog> m_dialog;
};

} // namespace vyr

#endif // VYR_ATTRTYPESDLG_ARGUMENTEDITOR_H
