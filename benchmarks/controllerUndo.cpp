// The cost of an undo step in a project of 10,000 lines and 30,000 takes: the time for an operation with its snapshot,
// for an undo and for a keystroke, and the memory that a step holds. Targets: 0.3 ms and 50 KB for an operation,
// wherever in the tab it is.

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
constexpr double bytesPerKilobyte = 1024.0;

/// A controller on the generated project, with an audio file in use on every line.
class BusyProject final {
public:
    BusyProject() : m_controller(generateProject(lineCount, takesPerLine), QUrl()) {
        for (const model::LineId &id : lines())
            m_controller.takes().setGenerating(controller::GenerationState::Generating, id);
    }

    [[nodiscard]] controller::ProjectController &controller() { return m_controller; }
    [[nodiscard]] const model::LineIdList &lines() const { return m_controller.scriptLineIds(); }
    [[nodiscard]] model::LineId someLine() {
        const model::LineIdList &ids = lines();
        return ids.at((m_next += 617) % ids.size());
    }

    void changeSettings() {
        model::ProjectLineSettings settings = model::ProjectLineSettings::newLineDefaults();
        settings.style = static_cast<double>(++m_edits % 1000) / 1000;
        m_controller.presets().updateSettings(someLine(), settings);
    }
    void switchTake() {
        const model::LineId id = someLine();
        const model::ProjectLine &line = *m_controller.lines().find(id);
        const qsizetype inUse = m_controller.takes().indexInUse(line);
        m_controller.takes().switchTake(id, line.takes.at((inUse + 1) % line.takes.size()).id);
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
    double kilobytes = 0;
    for (auto _ : state) {
        BusyProject project;
        (project.*operation)();
        const size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
        for (int i = 0; i < stepCount; ++i)
            (project.*operation)();
        const size_t held = mallinfo2().uordblks + mallinfo2().hblkhd - before;
        kilobytes = static_cast<double>(held) / bytesPerKilobyte / stepCount;
    }
    state.counters["KB_per_step"] = kilobytes;
}

BENCHMARK_CAPTURE(operationWithSnapshot, changeSettings, &BusyProject::changeSettings)
    ->Iterations(stepCount)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(operationWithSnapshot, switchTake, &BusyProject::switchTake)
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
BENCHMARK_CAPTURE(memoryOfSteps, switchTake, &BusyProject::switchTake)->Iterations(1);
BENCHMARK_CAPTURE(memoryOfSteps, deleteFirstLine, &BusyProject::deleteFirstLine)->Iterations(1);

} // namespace
} // namespace orlenta::benchmarks

BENCHMARK_MAIN();
