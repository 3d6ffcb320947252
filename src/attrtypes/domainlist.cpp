#include "attrtypes/domainlist.h"

namespace vyr {

DomainList readDomainList(const StringList &list, DomainKind kind)
{
    DomainList domain;
    if (!list.empty())
        domain.name = list.front();
    const bool defined = kind == DomainKind::Range ? list.size() == 4 : list.size() >= 4;
    if (!defined)
        return domain;
    domain.byName = false;
    domain.fieldType = list[1];
    if (kind == DomainKind::Range) {
        domain.minimum = list[2];
        domain.maximum = list[3];
        return domain;
    }
    for (std::size_t at = 2; at + 1 < list.size(); at += 2)
        domain.codes.emplace_back(list[at], list[at + 1]);
    return domain;
}

StringList writeDomainList(const DomainList &domain, DomainKind kind)
{
    StringList list{domain.name};
    if (domain.byName)
        return list;
    list.push_back(domain.fieldType);
    if (kind == DomainKind::Range) {
        list.push_back(domain.minimum);
        list.push_back(domain.maximum);
        return list;
    }
    for (const auto &[code, description] : domain.codes) {
        list.push_back(code);
        list.push_back(description);
    }
    return list;
}

DomainList unpackDomain(std::string_view packed, DomainKind kind)
{
    return readDomainList(csvSplit(packed, ':'), kind);
}

std::string packDomain(const DomainList &domain, DomainKind kind)
{
    return csvJoin(writeDomainList(domain, kind), ':');
}

} // namespace vyr
