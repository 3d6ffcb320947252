// Packing and unpacking 100,000 fields with csvJoin/csvSplit.
#include "ratioreporter.h"

#include "util/listpacking.h"

#include <random>

namespace {

constexpr std::size_t kFields = 100000;

// Attribute-type arguments as formats write them: mostly plain words and
// numbers, some with blanks or quotes that need quoting.
vyr::StringList fields(char separator)
{
    std::mt19937 random(3);
    vyr::StringList list;
    for (std::size_t i = 0; i < kFields; ++i) {
        switch (random() % 10) {
        case 0: list.push_back("two words"); break;
        case 1: list.push_back("say \"hi\""); break;
        case 2: list.push_back(std::string("a") + separator + "b"); break;
        case 3: list.emplace_back(); break;
        default: list.push_back("field_" + std::to_string(random() % 100000)); break;
        }
    }
    return list;
}

void csvJoinFields(benchmark::State &state)
{
    const vyr::StringList list = fields(',');
    std::size_t bytes = 0;
    for (auto _ : state) {
        const std::string packed = vyr::csvJoin(list, ',');
        bytes += packed.size();
        benchmark::DoNotOptimize(packed.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes));
}

void csvSplitFields(benchmark::State &state)
{
    const std::string packed = vyr::csvJoin(fields(':'), ':');
    for (auto _ : state)
        benchmark::DoNotOptimize(vyr::csvSplit(packed, ':'));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * packed.size()));
}

// The plain split of the same number of fields, none of them quoted.
void splitListFields(benchmark::State &state)
{
    vyr::StringList list = fields(',');
    for (std::string &field : list)
        field = "field_" + std::to_string(field.size());
    const std::string packed = vyr::joinList(list, ',');
    for (auto _ : state)
        benchmark::DoNotOptimize(vyr::splitList(packed, ','));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * packed.size()));
}

} // namespace

BENCHMARK(csvJoinFields)->Unit(benchmark::kMillisecond);
BENCHMARK(csvSplitFields)->Unit(benchmark::kMillisecond);
BENCHMARK(splitListFields)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    return vyr::bench::runBenchmarks(argc, argv, {});
}
