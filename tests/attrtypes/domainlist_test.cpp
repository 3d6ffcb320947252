#include <gtest/gtest.h>

#include "attrtypes/domainlist.h"

namespace vyr {
namespace {

TEST(DomainList, readsWhatTheDialogsShow)
{
    using Codes = std::vector<std::pair<std::string, std::string>>;
    const struct
    {
        const char *packed;
        DomainKind kind;
        DomainList domain;
    } cases[] = {
        {"speed:int:0:100", DomainKind::Range, {"speed", false, "int", "0", "100", {}}},
        {"speed", DomainKind::Range, {"speed", true, "", "", "", {}}},
        // A range needs exactly four texts; anything else is a name.
        {"speed:int:0", DomainKind::Range, {"speed", true, "", "", "", {}}},
        {"speed:int:0:1:2", DomainKind::Range, {"speed", true, "", "", "", {}}},
        {"", DomainKind::Range, {"", true, "", "", "", {}}},
        {"surface:int:1:Paved:2:Gravel", DomainKind::Coded,
         {"surface", false, "int", "", "", Codes{{"1", "Paved"}, {"2", "Gravel"}}}},
        // A code without its description at the end is dropped.
        {"surface:int:1:Paved:2", DomainKind::Coded, {"surface", false, "int", "", "", Codes{{"1", "Paved"}}}},
        {"surface:int:1", DomainKind::Coded, {"surface", true, "", "", "", {}}},
        {"s:\"char(1)\":\"a:b\":\"x y\"", DomainKind::Coded, {"s", false, "char(1)", "", "", Codes{{"a:b", "x y"}}}},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(unpackDomain(c.packed, c.kind), c.domain) << c.packed;
        // What a domain read from text writes reads back the same.
        EXPECT_EQ(unpackDomain(packDomain(c.domain, c.kind), c.kind), c.domain) << c.packed;
    }
    EXPECT_EQ(packDomain(unpackDomain("surface:int:1:Paved:2", DomainKind::Coded), DomainKind::Coded),
              "surface:int:1:Paved");
    EXPECT_EQ(writeDomainList({"n", true, "int", "0", "1", {}}, DomainKind::Range), StringList{"n"});
}

} // namespace
} // namespace vyr
