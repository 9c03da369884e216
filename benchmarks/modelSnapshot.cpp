// What one edit of a large project costs: a snapshot for undo, and then a changed line.

#include "support/ProjectGenerator.h"
#include "support/RatioReporter.h"

namespace orlenta::benchmarks {
namespace {

constexpr int lineCount = 10'000;
constexpr int takesPerLine = 3;

void snapshotAndEdit(benchmark::State &state) {
    model::Project project = generateProject(lineCount, takesPerLine);
    const model::LineId edited = project.lines.at(lineCount / 2).lineId;
    for (auto _ : state) {
        const model::Project snapshot = project;
        const qsizetype index = project.lines.indexOf(edited);
        model::ProjectLine line = project.lines.at(index);
        line.text += u'x';
        if (line.text.size() > 300)
            line.text.truncate(100);
        project.lines.replace(index, std::move(line));
        benchmark::DoNotOptimize(snapshot);
    }
}

void insertInTheMiddle(benchmark::State &state) {
    const model::Project original = generateProject(lineCount, takesPerLine);
    std::vector<qsizetype> positions;
    for (qsizetype i = 0; i < lineCount; ++i) {
        if (i == lineCount / 2)
            positions.push_back(lineCount);
        positions.push_back(i);
    }
    for (auto _ : state) {
        model::Project project = original;
        project.lines.append(model::ProjectLine::makeNew());
        project.lines.rearrange(positions);
        benchmark::DoNotOptimize(project);
    }
}

void compareWithSnapshot(benchmark::State &state) {
    const model::Project project = generateProject(lineCount, takesPerLine);
    model::Project other = project;
    other.lines.replace(lineCount - 1, model::ProjectLine::makeNew());
    for (auto _ : state)
        benchmark::DoNotOptimize(project == other);
}

BENCHMARK(snapshotAndEdit)->Unit(benchmark::kMicrosecond);
BENCHMARK(insertInTheMiddle)->Unit(benchmark::kMicrosecond);
BENCHMARK(compareWithSnapshot)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace orlenta::benchmarks

int main(int argc, char **argv) {
    return orlenta::benchmarks::runWithTargets(argc, argv, {}, {{"snapshotAndEdit", 1.0}});
}
