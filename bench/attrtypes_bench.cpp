// Reading attribute types as a schema with many attributes does: createType,
// toGeneric and formatType on 100,000 type strings against a 40-pair mapping
// table. The peer is the type string parser alone, which all three use.
#include "ratioreporter.h"

#include "attrtypes/datatypemappings.h"
#include "attrtypes/typestring.h"

#include <random>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kTypes = 100000;

std::unique_ptr<vyr::DataTypeMappings> makeTable()
{
    auto mappings = std::make_unique<vyr::DataTypeMappings>("BENCH", false);
    // 40 pairs: 32 plain names with increasing argument counts, and the
    // usual character, decimal, integer and enumeration kinds.
    for (int i = 0; i < 32; ++i) {
        std::string native = "type" + std::to_string(i);
        if (i % 3 == 1)
            native += "(width)";
        else if (i % 3 == 2)
            native += "(width,decimal)";
        mappings->addMapping(native, "vyr_generic" + std::to_string(i) + (i % 3 == 0 ? "" : "(width)"),
                             vyr::kStoredListMode);
    }
    const char *const common[]
        = {"char(width)", "vyr_char",    "varchar(width)",  "vyr_varchar",   "number(width,decimal)",
           "vyr_decimal", "int(width)",  "vyr_int32",       "smallint",      "vyr_int16",
           "boolean",     "vyr_boolean", "enum(stringset)", "vyr_char(200)", "timestamp,local",
           "vyr_datetime"};
    for (std::size_t i = 0; i + 1 < std::size(common); i += 2)
        mappings->addMapping(common[i], common[i + 1], vyr::kStoredListMode);
    return mappings;
}

const std::vector<std::string> &typeStrings()
{
    static const std::vector<std::string> texts = [] {
        const char *const shapes[]
            = {"char(%)",           "varchar(%)", "number(%,2)", "int(%)",      "smallint",  "boolean",
               "enum(\"a b\",c,%)", "type7(%)",   "type31",      "type29(%,3)", "timestamp", "date,local"};
        std::mt19937 random(17);
        std::vector<std::string> made;
        made.reserve(kTypes);
        for (std::size_t i = 0; i < kTypes; ++i) {
            std::string text = shapes[random() % std::size(shapes)];
            if (const auto at = text.find('%'); at != std::string::npos)
                text.replace(at, 1, std::to_string(1 + random() % 254));
            made.push_back(std::move(text));
        }
        return made;
    }();
    return texts;
}

void createToGenericFormat(benchmark::State &state)
{
    const auto mappings = makeTable();
    for (auto _ : state) {
        std::size_t length = 0;
        for (const std::string &text : typeStrings()) {
            const auto type = mappings->createType(text, vyr::kDialogListMode);
            if (!type)
                continue;
            if (const auto generic = mappings->toGeneric(*type))
                length += vyr::formatType(*generic, vyr::kDialogListMode).size();
        }
        benchmark::DoNotOptimize(length);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * kTypes));
}

void parseOnly(benchmark::State &state)
{
    for (auto _ : state) {
        std::size_t values = 0;
        for (const std::string &text : typeStrings())
            values += vyr::parseType(text, vyr::kDialogListMode).values.size();
        benchmark::DoNotOptimize(values);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * kTypes));
}

} // namespace

BENCHMARK(createToGenericFormat)->Unit(benchmark::kMillisecond);
BENCHMARK(parseOnly)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    return vyr::bench::runBenchmarks(argc, argv, {{"createToGenericFormat", "parseOnly"}});
}
