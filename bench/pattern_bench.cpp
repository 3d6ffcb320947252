// The pattern matcher against std::regex on the patterns the system uses,
// and its growth on a pattern that makes backtracking matchers explode.
#include "ratioreporter.h"

#include "util/pattern.h"

#include <random>
#include <regex>

namespace {

constexpr std::size_t kTexts = 10000;

struct SystemPattern
{
    const char *label;
    const char *pattern;
    const char *ecmaScript; // the same pattern in std::regex syntax
};

constexpr SystemPattern kPatterns[] = {
    {"lastArgument", ",[^,()]*$", ",[^,()]*$"},
    {"typeWithArguments", "^[^(]+(.*)$", "^[^(]+\\(.*\\)$"},
    {"geometryType", "^\\*?vyr_geometry{.*}$", "^\\*?vyr_geometry\\{.*\\}$"},
    {"numberedName", "_[0-9]+$", "_[0-9]+$"},
    {"bareExponent", "[0-9][-+][0-9]+$", "[0-9][-+][0-9]+$"},
};

// Names, type strings, geometry names and numbers as they come by in
// schemas and format records.
const std::vector<std::string> &corpus()
{
    static const std::vector<std::string> texts = [] {
        std::mt19937 random(5);
        auto number = [&](unsigned below) { return std::to_string(random() % below); };
        std::vector<std::string> made;
        for (std::size_t i = 0; i < kTexts; ++i) {
            switch (random() % 8) {
            case 0: made.push_back("road_segment_name_" + number(500)); break;
            case 1: made.push_back("vyr_char(" + number(255) + ")"); break;
            case 2: made.push_back("vyr_decimal(" + number(20) + "," + number(8) + ")"); break;
            case 3: made.push_back((random() % 2 ? "*" : "") + std::string("vyr_geometry{vyr_polygon}")); break;
            case 4: made.push_back(number(100) + "." + number(1000) + (random() % 2 ? "-" : "+") + number(30)); break;
            case 5: made.push_back("building_footprint_outline_with_holes"); break;
            case 6: made.push_back("fn(a,b),c_" + number(50)); break;
            default: made.push_back("Attribute Name With Blanks " + number(9999)); break;
            }
        }
        return made;
    }();
    return texts;
}

void registerSystemPatterns(std::vector<vyr::bench::PeerPair> &pairs)
{
    for (const SystemPattern &p : kPatterns) {
        const std::string subject = std::string("Pattern/") + p.label;
        const std::string peer = std::string("peer:std::regex/") + p.label;
        benchmark::RegisterBenchmark(subject.c_str(), [p](benchmark::State &state) {
            const vyr::Pattern pattern(p.pattern);
            const std::regex regex(p.ecmaScript, std::regex::ECMAScript | std::regex::optimize);
            std::size_t found = 0, expected = 0;
            for (const std::string &text : corpus()) {
                found += pattern.foundIn(text);
                expected += std::regex_search(text, regex);
            }
            if (found != expected)
                state.SkipWithError("the matcher and std::regex disagree");
            for (auto _ : state) {
                std::size_t hits = 0;
                for (const std::string &text : corpus())
                    hits += pattern.foundIn(text);
                benchmark::DoNotOptimize(hits);
            }
            state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * kTexts));
        })->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(peer.c_str(), [p](benchmark::State &state) {
            const std::regex regex(p.ecmaScript, std::regex::ECMAScript | std::regex::optimize);
            for (auto _ : state) {
                std::size_t hits = 0;
                for (const std::string &text : corpus())
                    hits += std::regex_search(text, regex);
                benchmark::DoNotOptimize(hits);
            }
            state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * kTexts));
        })->Unit(benchmark::kMicrosecond);
        pairs.push_back({subject, peer});
    }
}

std::string nestedOptionals(std::size_t n)
{
    std::string source;
    for (std::size_t i = 0; i < n; ++i)
        source += "a?";
    return source + std::string(n, 'a');
}

// Pattern length and text length both grow with n, so linear time in their
// product shows as a straight line in n^2.
void nestedOptionalsAgainstMatchingText(benchmark::State &state)
{
    const auto n = static_cast<std::size_t>(state.range(0));
    const vyr::Pattern pattern(nestedOptionals(n));
    const std::string text(n, 'a');
    for (auto _ : state)
        benchmark::DoNotOptimize(pattern.find(text));
    state.SetComplexityN(static_cast<std::int64_t>(n * n));
}

// What a backtracking matcher makes of the same inputs.
void nestedOptionalsWithStdRegex(benchmark::State &state)
{
    const auto n = static_cast<std::size_t>(state.range(0));
    const std::regex regex(nestedOptionals(n));
    const std::string text(n, 'a');
    for (auto _ : state)
        benchmark::DoNotOptimize(std::regex_search(text, regex));
}

} // namespace

BENCHMARK(nestedOptionalsAgainstMatchingText)
    ->Arg(10)
    ->Arg(14)
    ->Arg(18)
    ->Arg(22)
    ->Arg(50)
    ->Arg(100)
    ->Arg(200)
    ->Arg(500)
    ->Arg(1000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(nestedOptionalsWithStdRegex)->DenseRange(10, 22, 4)->Unit(benchmark::kMicrosecond);

int main(int argc, char **argv)
{
    std::vector<vyr::bench::PeerPair> pairs;
    registerSystemPatterns(pairs);
    for (int n : {10, 14, 18, 22}) {
        pairs.push_back({"nestedOptionalsAgainstMatchingText/" + std::to_string(n),
                         "nestedOptionalsWithStdRegex/" + std::to_string(n)});
    }
    return vyr::bench::runBenchmarks(argc, argv, std::move(pairs));
}
