#pragma once

#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace orlenta::benchmarks {

/// A benchmark that must take at most a multiple of another's time.
struct RatioTarget {
    std::string subject;
    std::string peer;
    double limit = 1.0;
};

/// A benchmark that must take at most a given time.
struct TimeTarget {
    std::string subject;
    double milliseconds = 1.0;
};

/// Google Benchmark's console output, followed by how each target was met. Compares the fastest runs, which a loaded
/// machine disturbs least, so run with repetitions.
class RatioReporter final : public benchmark::ConsoleReporter {
public:
    RatioReporter(std::vector<RatioTarget> ratios, std::vector<TimeTarget> times = {});

    void ReportRuns(const std::vector<Run> &runs) override;
    /// Prints the verdicts. Returns whether all targets were met.
    [[nodiscard]] bool reportTargets() const;

private:
    [[nodiscard]] double fastest(const std::string &name) const;

    std::vector<RatioTarget> m_ratios;
    std::vector<TimeTarget> m_times;
    std::map<std::string, double> m_fastest;
};

/// The main function of a benchmark program with targets. Returns 0 if all were met.
int runWithTargets(int argc, char **argv, std::vector<RatioTarget> ratios, std::vector<TimeTarget> times = {});

} // namespace orlenta::benchmarks
