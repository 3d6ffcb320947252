// Console output of Google Benchmark plus, at the end, how each benchmark
// compares with the peer it names: "ratio = peer time / subject time", so a
// ratio above 1 means the subject is faster.
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

class RatioReporter : public benchmark::ConsoleReporter
{
public:
    explicit RatioReporter(std::vector<PeerPair> pairs);
    void ReportRuns(const std::vector<Run> &runs) override;
    void Finalize() override;

private:
    std::vector<PeerPair> pairs_;
    std::map<std::string, double> secondsPerIteration_;
};

// Runs every registered benchmark with the ratio table at the end.
int runBenchmarks(int argc, char **argv, std::vector<PeerPair> pairs);

} // namespace vyr::bench

#endif // VYR_BENCH_RATIOREPORTER_H
