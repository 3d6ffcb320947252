// Console output of Google Benchmark plus, at the end, how each benchmark
// compares with the peer it names: "ratio = peer time / subject time", so a
// ratio above 1 means the subject is faster. Growth guards compare one
// benchmark with itself on a larger input and make the run fail when the
// cost grows faster than the input.
#ifndef VYR_BENCH_RATIOREPORTER_H
#define VYR_BENCH_RATIOREPORTER_H

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace vyr::bench {

struct PeerPair
{
    std::string subject;
    std::string peer;
};

// `large` works on `sizeRatio` times the input of `small`. Its processor
// time per unit of input may be at most `limit` times that of `small`: a
// cost that grows with the square of the input is `sizeRatio` times, while
// caches that the larger input outgrows cost well under the limit. Processor
// time, not elapsed time: other work on the machine barely moves it.
struct GrowthGuard
{
    std::string small;
    std::string large;
    double sizeRatio;
    double limit = 3.0;
};

class RatioReporter : public benchmark::ConsoleReporter
{
public:
    RatioReporter(std::vector<PeerPair> pairs, std::vector<GrowthGuard> guards);
    void ReportRuns(const std::vector<Run> &runs) override;
    void Finalize() override;

    // Whether every guard whose two benchmarks ran held.
    bool guardsHeld() const { return guardsHeld_; }

private:
    std::vector<PeerPair> pairs_;
    std::vector<GrowthGuard> guards_;
    // The fastest repetition of each benchmark: the others were slowed by
    // whatever else the machine was doing.
    std::map<std::string, double> secondsPerIteration_;
    std::map<std::string, double> cpuSecondsPerIteration_;
    bool guardsHeld_ = true;
};

// Runs every registered benchmark with the ratio table at the end; non-zero
// when the arguments are wrong or a growth guard failed.
int runBenchmarks(int argc, char **argv, std::vector<PeerPair> pairs, std::vector<GrowthGuard> guards = {});

} // namespace vyr::bench

#endif // VYR_BENCH_RATIOREPORTER_H
