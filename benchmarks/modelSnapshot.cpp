// The cost of one edit in a large project: an undo snapshot, then a changed line.

#include "support/ProjectGenerator.h"
#include "support/RatioReporter.h"

namespace orlenta::benchmarks {
namespace {

constexpr int lineCount = 10'000;
constexpr int takesPerLine = 3;

void snapshotAndEdit(benchmark::State &state) {
    model::Project project = generateProject(lineCount, takesPerLine);
    const model::LineId edited = project.linesInOrder().at(lineCount / 2)->lineId;
    for (auto _ : state) {
        const model::Project snapshot = project;
        project.lines.update(edited, [](model::ProjectLine &line) {
            line.text += u'x';
            if (line.text.size() > 300)
                line.text.truncate(100);
        });
        benchmark::DoNotOptimize(snapshot);
    }
}

void insertInTheMiddle(benchmark::State &state) {
    const model::Project original = generateProject(lineCount, takesPerLine);
    for (auto _ : state) {
        model::Project project = original;
        const model::ProjectLine line = model::ProjectLine::makeNew();
        project.lines.insert(line);
        model::LineIdList &ids = project.tabs[project.tabs.size() / 2].lineIds;
        ids.insert(ids.size() / 2, line.lineId);
        benchmark::DoNotOptimize(project);
    }
}

void compareWithSnapshot(benchmark::State &state) {
    const model::Project project = generateProject(lineCount, takesPerLine);
    model::Project other = project;
    other.lines.update(other.tabs.last().lineIds.last(), [](model::ProjectLine &line) { line.text += u'x'; });
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
