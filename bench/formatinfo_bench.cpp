// Building a format record from a large capability string: 500 format
// attributes, 200 data type mappings and 100 parameters at scale 1, and the
// same at scales 2 and 4 to show the cost grows linearly. The peer is
// splitting the same string into its elements, which the record must do.
//
// The growth rows ("growth/KEY/10", "growth/KEY/100") grow one capability
// key at a time to 10 and 100 times a base size, build the record and ask it
// everything; a guard fails the run when the larger input costs clearly more
// per unit than the smaller one.
#include "ratioreporter.h"

#include "ftprops/vyrobjftpropsformatinfo.h"

#include <string>
#include <vector>

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

// Every key the record reads, each grown on its own: a list key by its
// number of elements, a text, number or flag by its length. Names, numbers
// and lines are distinct, as a format's own are.
struct GrowingKey
{
    const char *name;
    std::string (*value)(int units);
};

std::string withKey(const char *key, const std::string &value)
{
    return vyr::csvJoin({"FORMAT", "BENCH", key, value}, ',');
}

std::string numbered(const char *stem, int i)
{
    return stem + std::to_string(i);
}

std::string listOf(int elements, std::string (*element)(int))
{
    vyr::StringList list;
    for (int i = 0; i < elements; ++i)
        list.push_back(element(i));
    return vyr::csvJoin(list, ',');
}

std::string repeated(std::string_view piece, int times)
{
    std::string text;
    for (int i = 0; i < times; ++i)
        text += piece;
    return text;
}

const GrowingKey kGrowingKeys[] = {
    {"FORMAT", [](int n) { return repeated("FORMAT_NAME_", n); }},
    {"SOURCE", [](int n) { return repeated("0", n) + "1"; }},
    {"ROLE", [](int n) { return repeated("SCHEMA_READER", n); }},
    {"HAS_DEFLINE_ATTRS", [](int n) { return repeated("0", n) + ",5D-3"; }},
    {"SUPPORTS_FEAT_TYPE_FANOUT", [](int n) { return repeated("1", n) + "-3"; }},
    {"SUPPORTS_MULTI_GEOM", [](int n) { return "yes" + repeated(" ", n); }},
    {"ATTR_CASE", [](int n) { return repeated("UPPER", n); }},
    {"MAX_ATTR_LENGTH", [](int n) { return repeated(" ", n) + repeated("9", n); }},
    {"ATTR_NAME_INVALID_CHARS", [](int n) { return repeated("!@#$%^&*()", n); }},
    {"FEATURE_TYPE_CASE", [](int n) { return repeated("LOWER", n); }},
    {"FEATURE_TYPE_LENGTH", [](int n) { return "-" + repeated("7", n); }},
    {"FEATURE_TYPE_LENGTH_INCLUDES_PREFIX", [](int n) { return repeated("0", n) + "." + repeated("0", n); }},
    {"FEATURE_TYPE_INVALID_CHARS", [](int n) { return repeated("\"<>|?*:/", n); }},
    {"FEAT_TYPE_VALIDATION_SCRIPT", [](int n) { return repeated("@TCL(string length $name) ", n); }},
    {"DEST_ILLEGAL_ATTR_LIST", [](int n) { return listOf(n, [](int i) { return numbered("illegal_", i); }); }},
    {"FEATURE_TYPE_RESERVED_WORDS", [](int n) { return listOf(n, [](int i) { return numbered("RESERVED_", i); }); }},
    {"ALLOWED_FEAT_TYPES", [](int n) { return listOf(n, [](int i) { return numbered("allowed type ", i); }); }},
    {"FORMAT_ATTRS",
     [](int n) {
         return listOf(2 * n, [](int i) { return i % 2 ? std::string("number(10,2)") : numbered("attr_", i); });
     }},
    {"DATA_TYPE_MAPPINGS",
     [](int n) {
         return listOf(2 * n, [](int i) { return i % 2 ? std::string("vyr_char") : numbered("type_", i) + "(width)"; });
     }},
    {"GEOM_TYPE_MAPPINGS",
     [](int n) {
         return listOf(2 * n, [](int i) { return i % 2 ? std::string("vyr_line") : numbered("geometry_", i); });
     }},
    {"DEFLINE_PARMS",
     [](int n) {
         return listOf(2 * n, [](int i) {
             return i % 2 ? std::string("yes") : "GUI OPTIONAL CHOICE " + numbered("PARM_", i) + " yes%no Prompt";
         });
     }},
    {"DEFLINE_PARM_HELP",
     [](int n) { return listOf(2 * n, [](int i) { return numbered(i % 2 ? "help, " : "PARM_", i); }); }},
};

// Whole capability strings that grow otherwise: one parameter line with many
// choices, many keys, and one key given again and again.
const GrowingKey kGrowingShapes[] = {
    {"DEFLINE_PARMS-choices",
     [](int n) {
         std::string choices;
         for (int i = 0; i < n; ++i)
             choices += numbered("choice", i) + "%";
         return withKey("DEFLINE_PARMS", vyr::csvJoin({"GUI CHOICE PARM " + choices + " Prompt", "choice0"}, ','));
     }},
    {"many-keys", [](int n) { return listOf(2 * n, [](int i) { return numbered("KEY_", i); }); }},
    {"repeated-key",
     [](int n) { return listOf(2 * n, [](int i) { return i % 2 ? numbered("name_", i) : std::string("FORMAT"); }); }},
};

// Everything a dialog asks of a record, so that no key's reading is left out.
std::size_t askEverything(const vyr::VYRObjFTPropsFormatInfo &info)
{
    std::size_t answers = info.getFormatName().size() + info.getFormatLongName().size() + info.isSource()
        + info.isSchemaReader() + info.hasDeflineAttrs() + info.supportsFeatTypeFanout() + info.supportsMultiGeom()
        + info.getAttrCase().size() + static_cast<std::size_t>(info.getMaxAttrLength())
        + info.getAttrNameInvalidChars().size() + info.getDestIllegalAttrList().size()
        + info.getDestIllegalAttrSet().size() + info.getFeatureTypeCase().size()
        + static_cast<std::size_t>(info.getFeatureTypeLength()) + info.featureTypeLengthIncludesPrefix()
        + info.getFeatureTypeInvalidChars().size() + info.getFeatureTypeReservedWords().size()
        + info.getFeatureTypeReservedWordSet().size() + info.getAllowedFeatTypes().size()
        + info.getFeatTypeValidationScript().size() + info.getDataTypeMappings()->pairCount()
        + info.getGeometryTypeMappings()->pairs().size()
        + info.getGeometryTypeMappings()->toNative("vyr_line", false).size();
    const vyr::StringList parameters = info.getDeflineParmNames();
    answers += parameters.size();
    if (!parameters.empty()) {
        answers += info.getDeflineParm(parameters.back()).size() + info.getDeflineParmDefault(parameters.back()).size()
            + info.getDeflineParmHelp(parameters.back()).size();
    }
    const vyr::StringList attributes = info.getFormatAttrNames();
    if (!attributes.empty())
        answers += info.getFormatAttrType(attributes.back()).size();
    return answers;
}

constexpr int kGrowthBase = 300;
constexpr int kGrowthScales[] = {10, 100};

// `isKey`: `key.value` is the value of the key it names, else the whole
// capability string.
void registerGrowth(const GrowingKey &key, bool isKey, std::vector<vyr::bench::GrowthGuard> &guards)
{
    std::string names[2];
    for (int i = 0; i < 2; ++i) {
        const int scale = kGrowthScales[i];
        names[i] = "growth/" + std::string(key.name) + "/" + std::to_string(scale);
        const std::string value = key.value(kGrowthBase * scale);
        const std::string text = isKey ? withKey(key.name, value) : value;
        benchmark::RegisterBenchmark(names[i].c_str(), [text](benchmark::State &state) {
            for (auto _ : state) {
                const vyr::VYRObjFTPropsFormatInfo info(text, nullptr);
                benchmark::DoNotOptimize(askEverything(info));
            }
            state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
        })->Unit(benchmark::kMicrosecond);
    }
    guards.push_back({names[0], names[1], static_cast<double>(kGrowthScales[1]) / kGrowthScales[0]});
}

} // namespace

BENCHMARK(buildRecord)->Arg(1)->Arg(2)->Arg(4)->Unit(benchmark::kMicrosecond);
BENCHMARK(splitOnly)->Arg(1)->Arg(2)->Arg(4)->Unit(benchmark::kMicrosecond);

int main(int argc, char **argv)
{
    std::vector<vyr::bench::GrowthGuard> guards;
    for (const GrowingKey &key : kGrowingKeys)
        registerGrowth(key, true, guards);
    for (const GrowingKey &shape : kGrowingShapes)
        registerGrowth(shape, false, guards);
    return vyr::bench::runBenchmarks(argc, argv, {{"buildRecord/1", "splitOnly/1"}, {"buildRecord/4", "splitOnly/4"}},
                                     std::move(guards));
}
