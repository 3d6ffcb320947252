// FormatCapabilities: the KEY,VALUE pairs of a format capability string, as
// the format record reads them - a later value of a key replaces an earlier
// one and a key without a value is ignored - with the readers of a value as
// text, yes/no answer, integer and list. Reading them costs one pass over
// the string: a host that needs only the format's name and role reads this,
// not the whole record.
#ifndef VYR_FTPROPS_FORMATCAPABILITIES_H
#define VYR_FTPROPS_FORMATCAPABILITIES_H

#include "util/listpacking.h"

#include <string>
#include <string_view>
#include <unordered_map>

namespace vyr {

class FormatCapabilities
{
public:
    explicit FormatCapabilities(std::string_view capabilities);

    // The value of `key`; empty when absent.
    std::string text(const std::string &key) const;
    // The value as a yes/no answer (util/capabilityvalues.h), `fallback`
    // when it reads as neither.
    bool flag(const std::string &key, bool fallback) const;
    // The leading digits of the value; 0 without them.
    int integer(const std::string &key) const;
    // The value as a quoted list.
    StringList list(const std::string &key) const;

    // FORMAT, and SOURCE (true unless it says no).
    std::string formatName() const { return text("FORMAT"); }
    bool isSource() const { return flag("SOURCE", true); }

private:
    std::unordered_map<std::string, std::string> m_values;
};

} // namespace vyr

#endif // VYR_FTPROPS_FORMATCAPABILITIES_H
