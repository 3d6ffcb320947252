// Building a format record from a large capability string: 500 format
// attributes, 200 data type mappings and 100 parameters at scale 1, and the
// same at scales 2 and 4 to show the cost grows linearly. The peer is
// splitting the same string into its elements, which the record must do.
#include "ratioreporter.h"

#include "ftprops/vyrobjftpropsformatinfo.h"

#include <string>

namespace {

std::string capabilities(int scale)
{
    vyr::StringList attrs, types, parms;
    for (int i = 0; i < 500 * scale; ++i) {
        attrs.push_back("format_attr_" + std::to_string(i));
        attrs.push_back(i % 2 ? "char(20)" : "number(10,0)");
    }
    for (int i = 0; i < 200 * scale; ++i) {
        types.push_back("type" + std::to_string(i) + (i % 3 ? "(width)" : ""));
        types.push_back(i % 3 ? "vyr_char" : "vyr_int32");
    }
    for (int i = 0; i < 100 * scale; ++i) {
        parms.push_back("GUI OPTIONAL CHOICE PARM_" + std::to_string(i) + " yes%no%\"maybe later\" Parameter "
                        + std::to_string(i));
        parms.push_back("yes");
    }
    const vyr::StringList pairs{"FORMAT",
                                "BENCH",
                                "SOURCE",
                                "no",
                                "FORMAT_ATTRS",
                                vyr::csvJoin(attrs, ','),
                                "DATA_TYPE_MAPPINGS",
                                vyr::csvJoin(types, ','),
                                "DEFLINE_PARMS",
                                vyr::csvJoin(parms, ','),
                                "GEOM_TYPE_MAPPINGS",
                                "point,vyr_point,line,vyr_line,area,vyr_area"};
    return vyr::csvJoin(pairs, ',');
}

void buildRecord(benchmark::State &state)
{
    const std::string text = capabilities(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        vyr::VYRObjFTPropsFormatInfo info(text, nullptr);
        benchmark::DoNotOptimize(info.getDataTypeMappings()->pairCount());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void splitOnly(benchmark::State &state)
{
    const std::string text = capabilities(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        std::size_t elements = 0;
        for (const std::string &value : vyr::csvSplit(text, ','))
            elements += vyr::csvSplit(value, ',').size();
        benchmark::DoNotOptimize(elements);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

} // namespace

BENCHMARK(buildRecord)->Arg(1)->Arg(2)->Arg(4)->Unit(benchmark::kMicrosecond);
BENCHMARK(splitOnly)->Arg(1)->Arg(2)->Arg(4)->Unit(benchmark::kMicrosecond);

int main(int argc, char **argv)
{
    return vyr::bench::runBenchmarks(argc, argv, {{"buildRecord/1", "splitOnly/1"}, {"buildRecord/4", "splitOnly/4"}});
}
