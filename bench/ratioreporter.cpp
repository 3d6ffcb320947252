#include "ratioreporter.h"

#include <cstdio>

namespace vyr::bench {

RatioReporter::RatioReporter(std::vector<PeerPair> pairs)
    : pairs_(std::move(pairs))
{}

void RatioReporter::ReportRuns(const std::vector<Run> &runs)
{
    ConsoleReporter::ReportRuns(runs);
    for (const Run &run : runs) {
        if (run.error_occurred || run.run_type != Run::RT_Iteration || run.iterations == 0)
            continue;
        secondsPerIteration_[run.benchmark_name()] = run.real_accumulated_time / static_cast<double>(run.iterations);
    }
}

void RatioReporter::Finalize()
{
    ConsoleReporter::Finalize();
    std::printf("\n%-48s %-40s %10s\n", "subject", "peer", "ratio");
    for (const PeerPair &pair : pairs_) {
        const auto subject = secondsPerIteration_.find(pair.subject);
        const auto peer = secondsPerIteration_.find(pair.peer);
        if (subject == secondsPerIteration_.end() || peer == secondsPerIteration_.end())
            continue;
        std::printf("%-48s %-40s %9.2fx\n", pair.subject.c_str(), pair.peer.c_str(), peer->second / subject->second);
    }
}

int runBenchmarks(int argc, char **argv, std::vector<PeerPair> pairs)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    RatioReporter reporter(std::move(pairs));
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}

} // namespace vyr::bench
