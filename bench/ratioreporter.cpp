#include "ratioreporter.h"

#include <algorithm>
#include <cstdio>

namespace vyr::bench {

RatioReporter::RatioReporter(std::vector<PeerPair> pairs, std::vector<GrowthGuard> guards)
    : pairs_(std::move(pairs))
    , guards_(std::move(guards))
{}

void RatioReporter::ReportRuns(const std::vector<Run> &runs)
{
    ConsoleReporter::ReportRuns(runs);
    for (const Run &run : runs) {
        if (run.error_occurred || run.run_type != Run::RT_Iteration || run.iterations == 0)
            continue;
        const auto keepFastest = [&run](std::map<std::string, double> &times, double accumulated) {
            const double seconds = accumulated / static_cast<double>(run.iterations);
            const auto [known, added] = times.try_emplace(run.benchmark_name(), seconds);
            if (!added)
                known->second = std::min(known->second, seconds);
        };
        keepFastest(secondsPerIteration_, run.real_accumulated_time);
        keepFastest(cpuSecondsPerIteration_, run.cpu_accumulated_time);
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
        std::printf("%-48s %-40s %9.3gx\n", pair.subject.c_str(), pair.peer.c_str(), peer->second / subject->second);
    }
    if (guards_.empty())
        return;
    std::printf("\n%-48s %-40s %10s %8s\n", "larger input", "smaller input", "per unit", "limit");
    for (const GrowthGuard &guard : guards_) {
        const auto small = cpuSecondsPerIteration_.find(guard.small);
        const auto large = cpuSecondsPerIteration_.find(guard.large);
        if (small == cpuSecondsPerIteration_.end() || large == cpuSecondsPerIteration_.end())
            continue;
        const double growth = large->second / small->second / guard.sizeRatio;
        const bool held = growth <= guard.limit;
        guardsHeld_ = guardsHeld_ && held;
        std::printf("%-48s %-40s %9.2fx %7.1fx%s\n", guard.large.c_str(), guard.small.c_str(), growth, guard.limit,
                    held ? "" : "  SUPERLINEAR");
    }
}

int runBenchmarks(int argc, char **argv, std::vector<PeerPair> pairs, std::vector<GrowthGuard> guards)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    RatioReporter reporter(std::move(pairs), std::move(guards));
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return reporter.guardsHeld() ? 0 : 1;
}

} // namespace vyr::bench
