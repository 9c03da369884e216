#include "controller/takes/LineRuntime.h"

#include <gtest/gtest.h>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include "audio/files/WavHeader.h"
#include "controller/document/UndoManager.h"
#include "controller/script/LineEditing.h"
#include "controller/ScriptProject.h"
#include "controller/takes/LineWaveforms.h"
#include "controller/takes/MediaFiles.h"
#include "controller/takes/TakeEditing.h"

namespace orlenta::controller {
namespace {

using test::ScriptProject;

} // namespace

TEST(LineRuntime, OnlyTheChangedLinesSignalBumps) {
    const ScriptProject project({{QStringLiteral("a"), QStringLiteral("b")}});
    LineRuntimeSignal *first = project->runtime().signalFor(project.id(0));
    LineRuntimeSignal *second = project->runtime().signalFor(project.id(1));
    const QSignalSpy firstSpy(first, &LineRuntimeSignal::versionChanged);
    const QSignalSpy secondSpy(second, &LineRuntimeSignal::versionChanged);
    project->takes().setGenerating(GenerationState::Generating, project.id(0));
    project->takes().setGenerating(GenerationState::Generating, project.id(0));
    EXPECT_EQ(firstSpy.count(), 1);
    EXPECT_EQ(first->version(), 1);
    EXPECT_EQ(secondSpy.count(), 0);
}

TEST(LineRuntime, UndoNeitherEndsNorResurrectsAGeneration) {
    ScriptProject project({{QStringLiteral("a"), QStringLiteral("b")}});
    project->takes().setGenerating(GenerationState::Generating, project.id(0));
    project.addTake(0);
    project->takes().setGenerating(GenerationState::Idle, project.id(0));
    project->takes().setGenerating(GenerationState::Generating, project.id(1));
    project->undoManager().undo();
    EXPECT_TRUE(project.line(0).takes.isEmpty());
    EXPECT_FALSE(project->runtime().hasGeneratedAudio(project.id(0)));
    EXPECT_FALSE(project->runtime().state(project.id(0)).isGenerating);
    EXPECT_TRUE(project->runtime().state(project.id(1)).isGenerating);
}

TEST(LineWaveforms, ARequestedWaveformArrivesOnceAndGoesWithItsFile) {
    ScriptProject project({{QStringLiteral("a")}}, ScriptProject::Folder::OnDisk);
    project.addTake(0);
    const model::LineId id = project.id(0);
    QSignalSpy changed(project->runtime().signalFor(id), &LineRuntimeSignal::versionChanged);
    project->waveforms().request(id, WaveformKind::Generated);
    project->waveforms().request(id, WaveformKind::Generated);
    ASSERT_TRUE(changed.wait(20'000));
    EXPECT_EQ(project->runtime().state(id).waveformSamples.size(), 200);
    project->takes().deleteGeneratedAudio(id);
    EXPECT_TRUE(project->runtime().state(id).waveformSamples.isEmpty());
    EXPECT_EQ(changed.count(), 2);
}

TEST(LineWaveforms, TheLatestOrRepeatedRequestComesFirst) {
    ScriptProject project({{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("d")}},
                          ScriptProject::Folder::OnDisk);
    QList<qsizetype> arrived;
    for (const qsizetype index : {0, 1, 2, 3}) {
        project.addTake(index);
        QObject::connect(project->runtime().signalFor(project.id(index)), &LineRuntimeSignal::versionChanged,
                         [&arrived, index] { arrived.append(index); });
    }
    for (const qsizetype index : {0, 1, 2, 3, 1})
        project->waveforms().request(project.id(index), WaveformKind::Generated);
    ASSERT_TRUE(QTest::qWaitFor([&] { return arrived.size() == 4; }, 20'000));
    EXPECT_EQ(arrived, (QList<qsizetype>{0, 1, 3, 2}));
}

TEST(LineWaveforms, AClosingProjectDoesntWaitForALongFile) {
    QElapsedTimer closing;
    {
        ScriptProject project({{QStringLiteral("a")}}, ScriptProject::Folder::OnDisk);
        project.addTake(0);
        // A sparse file with hours of silence, which takes minutes to scan.
        QFile file(project->media().audioURL(project.line(0)).toLocalFile());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(audio::wavHeader(4'000'000'000U, 48000, 1, 16));
        ASSERT_TRUE(file.resize(audio::wavHeaderSize + 4'000'000'000LL));
        project->waveforms().request(project.id(0), WaveformKind::Generated);
        closing.start();
    }
    EXPECT_LT(closing.elapsed(), 10'000);
}

} // namespace orlenta::controller
