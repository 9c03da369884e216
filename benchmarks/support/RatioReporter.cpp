#include "support/RatioReporter.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace orlenta::benchmarks {

RatioReporter::RatioReporter(std::vector<RatioTarget> ratios, std::vector<TimeTarget> times)
    : m_ratios(std::move(ratios)), m_times(std::move(times)) {}

void RatioReporter::ReportRuns(const std::vector<Run> &runs) {
    ConsoleReporter::ReportRuns(runs);
    for (const Run &run : runs) {
        if (run.run_type != Run::RT_Iteration || run.error_occurred)
            continue;
        const double seconds = run.real_accumulated_time / static_cast<double>(run.iterations);
        const auto known = m_fastest.try_emplace(run.run_name.function_name, seconds).first;
        known->second = std::min(known->second, seconds);
    }
}

bool RatioReporter::reportTargets() const {
    bool areMet = true;
    for (const RatioTarget &target : m_ratios) {
        const double ratio = fastest(target.subject) / fastest(target.peer);
        const bool isMet = ratio <= target.limit;
        areMet = areMet && isMet;
        std::printf("%-4s %s / %s = %.2f (at most %.2f)\n", isMet ? "OK" : "OVER", target.subject.c_str(),
                    target.peer.c_str(), ratio, target.limit);
    }
    for (const TimeTarget &target : m_times) {
        const double milliseconds = fastest(target.subject) * 1000.0;
        const bool isMet = milliseconds <= target.milliseconds;
        areMet = areMet && isMet;
        std::printf("%-4s %s = %.3f ms (at most %.3f)\n", isMet ? "OK" : "OVER", target.subject.c_str(), milliseconds,
                    target.milliseconds);
    }
    return areMet;
}

double RatioReporter::fastest(const std::string &name) const {
    const auto known = m_fastest.find(name);
    return known != m_fastest.end() ? known->second : std::numeric_limits<double>::quiet_NaN();
}

int runWithTargets(int argc, char **argv, std::vector<RatioTarget> ratios, std::vector<TimeTarget> times) {
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter(std::move(ratios), std::move(times));
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return reporter.reportTargets() ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace orlenta::benchmarks
