// What an undo step costs in a project of 10,000 lines and 30,000 takes: the time of an operation with its snapshot, of
// an undo, of a key press, and the memory that 100 steps hold on to. To stay below: 1 ms for an operation on one line,
// 64 MB for 100 such steps. Operations that move lines renumber those behind them, so they cost and hold more.

#include <malloc.h>

#include <benchmark/benchmark.h>

#include "controller/casting/PresetEditing.h"
#include "controller/document/TypingSession.h"
#include "controller/document/UndoManager.h"
#include "controller/ProjectController.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "controller/takes/TakeEditing.h"
#include "support/ProjectGenerator.h"

namespace orlenta::benchmarks {
namespace {

constexpr int lineCount = 10'000;
constexpr int takesPerLine = 3;
constexpr int stepCount = 100;
constexpr double bytesPerMegabyte = 1024.0 * 1024.0;

/// A controller on the generated project, with an audio file in use on every line.
class BusyProject final {
public:
    BusyProject() : m_controller(generateProject(lineCount, takesPerLine), QUrl()) {
        for (const model::LineId &id : lines())
            m_controller.takes().setGenerating(controller::GenerationState::Generating, id);
    }

    [[nodiscard]] controller::ProjectController &controller() { return m_controller; }
    [[nodiscard]] QList<model::LineId> lines() const { return m_controller.scriptLineIds(); }
    [[nodiscard]] model::LineId someLine() {
        const QList<model::LineId> &ids = m_controller.scriptLineIds();
        return ids.at((m_next += 617) % ids.size());
    }

    void changeSettings() {
        model::ProjectLineSettings settings = model::ProjectLineSettings::newLineDefaults();
        settings.style = static_cast<double>(++m_edits % 1000) / 1000;
        m_controller.presets().updateSettings(someLine(), settings);
    }
    void installTake() {
        const model::LineId id = someLine();
        const model::ProjectLine line = *m_controller.lines().find(id);
        m_controller.takes().installGeneratedAudio(QStringLiteral("/take.wav"), id,
                                                   m_controller.takes().generationContext(line));
    }
    void deleteFirstLine() { m_controller.lines().deleteLine(m_controller.scriptLineIds().first()); }

private:
    controller::ProjectController m_controller;
    qsizetype m_next = 0;
    int m_edits = 0;
};

using Operation = void (BusyProject::*)();

void operationWithSnapshot(benchmark::State &state, Operation operation) {
    BusyProject project;
    for (auto _ : state)
        (project.*operation)();
}

void undoAndRedo(benchmark::State &state, Operation operation) {
    BusyProject project;
    for (int i = 0; i < stepCount; ++i)
        (project.*operation)();
    for (auto _ : state) {
        project.controller().undoManager().undo();
        project.controller().undoManager().redo();
    }
}

void keyPress(benchmark::State &state) {
    BusyProject project;
    const model::LineId id = project.someLine();
    project.controller().typing().beginEditing(id);
    QString text;
    for (auto _ : state) {
        text = text.size() > 200 ? QString() : text + u'x';
        project.controller().typing().type(id, text);
    }
}

void selectAnotherLine(benchmark::State &state) {
    BusyProject project;
    for (auto _ : state)
        project.controller().selection().selectAlone(project.someLine());
}

void memoryOfSteps(benchmark::State &state, Operation operation) {
    double megabytes = 0;
    for (auto _ : state) {
        BusyProject project;
        (project.*operation)();
        const size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
        for (int i = 0; i < stepCount; ++i)
            (project.*operation)();
        megabytes = static_cast<double>(mallinfo2().uordblks + mallinfo2().hblkhd - before) / bytesPerMegabyte;
    }
    state.counters["MB_per_100_steps"] = megabytes;
}

BENCHMARK_CAPTURE(operationWithSnapshot, changeSettings, &BusyProject::changeSettings)
    ->Iterations(stepCount)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(operationWithSnapshot, installTake, &BusyProject::installTake)
    ->Iterations(stepCount)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(operationWithSnapshot, deleteFirstLine, &BusyProject::deleteFirstLine)
    ->Iterations(stepCount)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(undoAndRedo, changeSettings, &BusyProject::changeSettings)
    ->Iterations(stepCount)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(keyPress)->Unit(benchmark::kMicrosecond);
BENCHMARK(selectAnotherLine)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(memoryOfSteps, changeSettings, &BusyProject::changeSettings)->Iterations(1);
BENCHMARK_CAPTURE(memoryOfSteps, installTake, &BusyProject::installTake)->Iterations(1);
BENCHMARK_CAPTURE(memoryOfSteps, deleteFirstLine, &BusyProject::deleteFirstLine)->Iterations(1);

} // namespace
} // namespace orlenta::benchmarks

BENCHMARK_MAIN();
