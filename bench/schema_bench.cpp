// The schema record and the name rules at the sizes large schemas reach:
// setAttributes with 10,000 attributes, getAttributeNames over 10,000,
// parameters set one by one (each call rewrites the stored lists, so the
// page sets them in one call) and in one call, with distinct names, and a
// feature type name resolved against 10,000
// taken names. Each at two sizes, to show how the cost grows. Also a
// feature file of 10,000 and 100,000 attributes read and written; the read,
// which makes the feature, is compared with nlohmann's parse of the same
// text alone (the ratio printed at the end: above 1, the read is faster).
#include "ratioreporter.h"

#include "ftprops/namerules.h"
#include "ftprops/vyrobjftpropsformatinfo.h"
#include "ftprops/vyrobjftpropsschemainfo.h"

#include "stringobjects/vyrrwstringimp.h"
#include "vyr/IVYRFeature.h"
#include "vyr/vyr_featurefile.h"
#include "vyr/vyr_session.h"

#include <nlohmann/json.hpp>

#include <string>
#include <utility>
#include <vector>

namespace {

const char *const kFormat = "FORMAT,BENCH,SOURCE,no,FEATURE_TYPE_LENGTH,31,"
                            "DATA_TYPE_MAPPINGS,\"char(width),vyr_char,\"\"number(width,decimal)\"\",vyr_decimal\"";

struct Fixture
{
    Fixture()
        : session(VYR_SessionCreate())
        , feature(session->createFeature())
        , format(kFormat, session)
        , schema(*session, *feature, format)
    {}
    ~Fixture()
    {
        session->destroyFeature(feature);
        VYR_SessionDestroy(session);
    }
    IVYRSession *session;
    IVYRFeature *feature;
    vyr::VYRObjFTPropsFormatInfo format;
    vyr::VYRObjFTPropsSchemaInfo schema;
};

vyr::StringList attributes(std::int64_t count)
{
    vyr::StringList namesAndTypes;
    for (std::int64_t i = 0; i < count; ++i) {
        namesAndTypes.push_back("attribute_" + std::to_string(i));
        namesAndTypes.push_back(i % 2 ? "char(40)" : "number(10,2)");
    }
    return namesAndTypes;
}

void setAttributes(benchmark::State &state)
{
    Fixture fixture;
    const vyr::StringList namesAndTypes = attributes(state.range(0));
    for (auto _ : state)
        fixture.schema.setAttributes(namesAndTypes);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void getAttributeNames(benchmark::State &state)
{
    Fixture fixture;
    fixture.schema.setAttributes(attributes(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(fixture.schema.getAttributeNames(true, true));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void setParameterOneByOne(benchmark::State &state)
{
    for (auto _ : state) {
        Fixture fixture;
        for (std::int64_t i = 0; i < state.range(0); ++i)
            fixture.schema.setParameter("PARM_" + std::to_string(i), std::to_string(i));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// Every parameter stored already and set again, as OK on the page does.
void setParametersInOneCall(benchmark::State &state)
{
    std::vector<std::pair<std::string, std::string>> values;
    for (std::int64_t i = 0; i < state.range(0); ++i)
        values.emplace_back("PARM_" + std::to_string(i), std::to_string(i));
    Fixture fixture;
    fixture.schema.setParameters(values);
    for (auto _ : state)
        fixture.schema.setParameters(values);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void resolveName(benchmark::State &state)
{
    const vyr::VYRObjFTPropsFormatInfo format(kFormat, nullptr);
    vyr::StringSet taken;
    taken.insert("Roads");
    for (std::int64_t i = 0; i < state.range(0); ++i)
        taken.insert("Roads" + std::string(i < 10 ? "0" : "") + std::to_string(i));
    for (auto _ : state)
        benchmark::DoNotOptimize(vyr::ResolveFeatureTypeName(format, "Roads", taken, nullptr));
}

// The text of a feature file of `count` attributes, each with its type.
std::string featureText(std::int64_t count)
{
    Fixture fixture;
    fixture.schema.setAttributes(attributes(count));
    VYRRWStringImp text;
    VYR_FeatureWriteJson(fixture.feature, &text);
    return std::string(text.data(), text.length());
}

void readFeatureFile(benchmark::State &state)
{
    const std::string text = featureText(state.range(0));
    Fixture fixture;
    for (auto _ : state) {
        if (!VYR_FeatureReadJson(fixture.feature, text.data(), text.size(), "bench", nullptr))
            state.SkipWithError("the feature file was not read");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void readFeatureFilePeer(benchmark::State &state)
{
    const std::string text = featureText(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(nlohmann::json::parse(text));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void writeFeatureFile(benchmark::State &state)
{
    Fixture fixture;
    fixture.schema.setAttributes(attributes(state.range(0)));
    for (auto _ : state) {
        VYRRWStringImp text;
        VYR_FeatureWriteJson(fixture.feature, &text);
        benchmark::DoNotOptimize(text.length());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

} // namespace

BENCHMARK(readFeatureFile)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(readFeatureFilePeer)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(writeFeatureFile)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(setAttributes)->Arg(5000)->Arg(10000)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(getAttributeNames)->Arg(5000)->Arg(10000)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(setParameterOneByOne)->Arg(500)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(setParametersInOneCall)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(resolveName)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    return vyr::bench::runBenchmarks(argc, argv,
                                     {{"readFeatureFile/10000", "readFeatureFilePeer/10000"},
                                      {"readFeatureFile/100000", "readFeatureFilePeer/100000"}});
}
