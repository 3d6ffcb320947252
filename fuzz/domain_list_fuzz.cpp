// The packed value of a domain argument, from a schema or a capability file:
// it unpacks to a domain of either kind without fail, its field type is
// read by a format's registry, and the domain packed again unpacks the same.
#include "attrtypes/datatypemappings.h"
#include "attrtypes/domainlist.h"
#include "attrtypes/typestring.h"

#include <cstdlib>
#include <memory>
#include <string_view>

namespace {

const vyr::DataTypeMappings &registry()
{
    static const auto mappings = [] {
        auto made = std::make_unique<vyr::DataTypeMappings>("FUZZ", false);
        made->addMapping("integer", "vyr_int32", vyr::kStoredListMode);
        made->addMapping("text(width)", "vyr_char", vyr::kStoredListMode);
        made->addMapping("real(width,decimal)", "vyr_decimal", vyr::kStoredListMode);
        made->addMapping("coded(coded_domain)", "vyr_int32", vyr::kStoredListMode);
        return made;
    }();
    return *mappings;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const std::string_view packed(reinterpret_cast<const char *>(data), size);
    for (const vyr::DomainKind kind : {vyr::DomainKind::Range, vyr::DomainKind::Coded}) {
        const vyr::DomainList domain = vyr::unpackDomain(packed, kind);
        if (!domain.byName) {
            if (const auto field = registry().createType(domain.fieldType, vyr::kDialogListMode))
                (void)vyr::formatType(*field, vyr::kDialogListMode);
        }
        if (vyr::unpackDomain(vyr::packDomain(domain, kind), kind) != domain)
            std::abort();
    }
    return 0;
}
