// The value of a domain argument, unpacked: the list of texts the domain
// dialogs show and give back.
//
//   position   range domain        coded value domain
//   0          name                name
//   1          field type          field type
//   2, 3       minimum, maximum    a code and its description
//   4, 5, ...  -                   further codes and descriptions
//
// A list holding only the name (or, for a range, anything but exactly four
// texts; for a coded domain fewer than four) is a domain given by name
// alone. The argument keeps the list packed with csvJoin at colons.
#ifndef VYR_ATTRTYPES_DOMAINLIST_H
#define VYR_ATTRTYPES_DOMAINLIST_H

#include "util/listpacking.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vyr {

enum class DomainKind { Range, Coded };

struct DomainList
{
    std::string name;
    // Given by name alone: nothing below counts.
    bool byName = true;
    // A type string of the format, in the dialogs' list mode.
    std::string fieldType;
    std::string minimum;
    std::string maximum;
    // Code and description pairs, in order.
    std::vector<std::pair<std::string, std::string>> codes;

    bool operator==(const DomainList &) const = default;
};

// The domain a list describes; a code at the end without its description
// is dropped.
DomainList readDomainList(const StringList &list, DomainKind kind);
// The list of a domain: the name alone when it is given by name.
StringList writeDomainList(const DomainList &domain, DomainKind kind);

// The same through the packed form an argument keeps.
DomainList unpackDomain(std::string_view packed, DomainKind kind);
std::string packDomain(const DomainList &domain, DomainKind kind);

} // namespace vyr

#endif // VYR_ATTRTYPES_DOMAINLIST_H
