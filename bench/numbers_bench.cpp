// parseDouble against the strtod it builds on, over 1,000,000 numbers.
#include "ratioreporter.h"

#include "util/numbertext.h"

#include <cstdlib>
#include <random>

namespace {

constexpr std::size_t kNumbers = 1000000;

const std::vector<std::string> &numbers()
{
    static const std::vector<std::string> texts = [] {
        std::mt19937 random(9);
        std::uniform_real_distribution<double> value(-1e6, 1e6);
        std::vector<std::string> made;
        made.reserve(kNumbers);
        char buffer[64];
        for (std::size_t i = 0; i < kNumbers; ++i) {
            switch (random() % 4) {
            case 0: std::snprintf(buffer, sizeof buffer, "%.17g", value(random)); break;
            case 1: std::snprintf(buffer, sizeof buffer, "%.3f", value(random)); break;
            case 2: std::snprintf(buffer, sizeof buffer, "%d", static_cast<int>(random() % 100000)); break;
            default: std::snprintf(buffer, sizeof buffer, "%.6e", value(random)); break;
            }
            made.emplace_back(buffer);
        }
        return made;
    }();
    return texts;
}

void parseDoubleNumbers(benchmark::State &state)
{
    for (auto _ : state) {
        double sum = 0;
        for (const std::string &text : numbers()) {
            double value = 0;
            vyr::parseDouble(text, value);
            sum += value;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * kNumbers));
}

void strtodNumbers(benchmark::State &state)
{
    for (auto _ : state) {
        double sum = 0;
        for (const std::string &text : numbers())
            sum += std::strtod(text.c_str(), nullptr);
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * kNumbers));
}

} // namespace

BENCHMARK(parseDoubleNumbers)->Unit(benchmark::kMillisecond);
BENCHMARK(strtodNumbers)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    return vyr::bench::runBenchmarks(argc, argv, {{"parseDoubleNumbers", "strtodNumbers"}});
}
