#include "controller/takes/TakeEditing.h"

#include <gtest/gtest.h>
#include <qcoro/qcorotask.h>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

#include "base/files/PrivateFolders.h"
#include "controller/casting/VoiceCasting.h"
#include "controller/document/UndoManager.h"
#include "controller/script/LineEditing.h"
#include "controller/ScriptProject.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/MediaFiles.h"
#include "support/TestTone.h"

namespace orlenta::controller {
namespace {

using test::ScriptProject;

class TakeEditingTest : public ::testing::Test {
protected:
    ScriptProject project{{{QStringLiteral("[calm] Hello there, e\u0301lan"), QStringLiteral("b")}},
                          ScriptProject::Folder::OnDisk};
    TakeEditing &takes = project->takes();
    LineRuntime &runtime = project->runtime();
    UndoManager &undo = project->undoManager();

    [[nodiscard]] QString playing(qsizetype index) const {
        return runtime.state(project.id(index)).generatedAudioURL.toLocalFile();
    }
    [[nodiscard]] QStringList generatedFiles() const {
        const QDir folder(project.folder() + QStringLiteral("/Audio Files/Generated"));
        QStringList files = folder.entryList(QDir::Files | QDir::Hidden);
        files.removeAll(QStringLiteral(".gitkeep"));
        return files;
    }
};

} // namespace

TEST_F(TakeEditingTest, ATakeRecordsWhatItsGenerationStartedWith) {
    project->voices().assignVoice({project.id(0)}, {QStringLiteral("ana-id"), QStringLiteral("Ana")});
    const auto context = takes.generationContext(project.line(0));
    ASSERT_TRUE(context);
    project->voices().assignVoice({project.id(0)}, {QStringLiteral("ben-id"), QStringLiteral("Ben")});
    const QString source = base::PrivateFolders::caches() + QStringLiteral("/tts_a.wav");
    testing::writeTone(source, 0.05);
    QCoro::waitFor(takes.installGeneratedAudio(source, project.id(0), context));
    const model::ProjectLine line = project.line(0);
    ASSERT_EQ(line.takes.size(), 1);
    const model::Take &take = line.takes.first();
    EXPECT_EQ(line.activeTakeId, take.id);
    EXPECT_EQ(take.voiceId, context->voiceId);
    EXPECT_EQ(take.settingsSnapshot, *line.settings);
    EXPECT_EQ(take.characterCount, 24);
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^Ana - calm Hello there .*\\.01 - take 1 - [0-9a-f]{4}\\.wav$"))
                    .match(take.filename)
                    .hasMatch())
        << take.filename.toStdString();
    EXPECT_EQ(generatedFiles(), QStringList{take.filename});
    EXPECT_FALSE(QFile::exists(source));
    EXPECT_TRUE(playing(0).endsWith(take.filename));
}

TEST_F(TakeEditingTest, TheFirstTakeIsUndoneAsGenerateAndTheSecondAsRegenerate) {
    project.addTake(0);
    const QString first = playing(0);
    EXPECT_EQ(undo.undoActionName(), QStringLiteral("Generate"));
    project.addTake(0);
    const QString second = playing(0);
    EXPECT_EQ(undo.undoActionName(), QStringLiteral("Regenerate"));
    EXPECT_NE(first, second);
    undo.undo();
    EXPECT_EQ(playing(0), first);
    EXPECT_EQ(project.line(0).takes.size(), 1);
    EXPECT_TRUE(QFile::exists(second));
    undo.redo();
    EXPECT_EQ(playing(0), second);
}

TEST_F(TakeEditingTest, SwitchingAndDeletingTakesKeepsFilesSoThatUndoPlaysThemAgain) {
    const model::TakeId first = project.addTake(0);
    const QString firstFile = playing(0);
    const model::TakeId second = project.addTake(0);
    takes.switchTake(project.id(0), second);
    takes.switchTake(project.id(0), model::TakeId::create());
    EXPECT_EQ(undo.undoActionName(), QStringLiteral("Regenerate"));
    takes.switchTake(project.id(0), first);
    EXPECT_EQ(undo.undoActionName(), QStringLiteral("Switch Take"));
    EXPECT_EQ(playing(0), firstFile);
    takes.deleteGeneratedAudio(project.id(0));
    EXPECT_EQ(project.line(0).takes.size(), 1);
    EXPECT_EQ(project.line(0).takes.first().id, second);
    EXPECT_EQ(project.line(0).activeTakeId, std::nullopt);
    EXPECT_EQ(playing(0), QString());
    EXPECT_TRUE(QFile::exists(firstFile));
    undo.undo();
    EXPECT_EQ(playing(0), firstFile);
    EXPECT_EQ(project.line(0).activeTakeId, first);
}

TEST_F(TakeEditingTest, AFailedCopyTellsTheUserAndAddsNothing) {
    QCoro::waitFor(takes.installGeneratedAudio(QStringLiteral("/nowhere/tts.wav"), project.id(0), std::nullopt));
    EXPECT_EQ(project->spotError(),
              QStringLiteral("Audio import failed: The audio file could not be found at /nowhere/tts.wav."));
    EXPECT_TRUE(project.line(0).takes.isEmpty());
    EXPECT_FALSE(undo.canUndo());

    const QString generated = project.folder() + QStringLiteral("/Audio Files/Generated");
    QDir(generated).removeRecursively();
    QFile::link(QDir::tempPath(), generated);
    const QString source = base::PrivateFolders::caches() + QStringLiteral("/tts_b.wav");
    testing::writeTone(source, 0.05);
    QCoro::waitFor(takes.installGeneratedAudio(source, project.id(0), std::nullopt));
    EXPECT_EQ(project->spotError(),
              QStringLiteral("Audio import failed: The project's \"Generated\" folder is a link to a location outside "
                             "the project, so audio can't be stored there. Replace it with a real folder and try "
                             "again."));
    EXPECT_TRUE(project.line(0).takes.isEmpty());
    EXPECT_TRUE(QFile::exists(source));
    QFile::remove(source);
}

TEST_F(TakeEditingTest, ADeletedLineGetsNoTake) {
    const model::LineId gone = project.id(0);
    project->lines().deleteLine(gone);
    QCoro::waitFor(takes.installGeneratedAudio(QStringLiteral("/nowhere/tts.wav"), gone, std::nullopt));
    EXPECT_EQ(project->spotError(), QString());
    EXPECT_EQ(undo.undoActionName(), QStringLiteral("Delete Line"));
}

TEST_F(TakeEditingTest, DeletedDirectionAudioStaysDeletedUntilItIsUndone) {
    model::Project records = test::scriptProject({{QStringLiteral("a")}});
    records.lines.update(records.tabs.first().lineIds.first(), [](model::ProjectLine &line) {
        line.sourceRecordings = {{model::RecordingId::create(), QStringLiteral("older.wav"), {}, 1.0},
                                 {model::RecordingId::create(), QStringLiteral("d.wav"), {}, 1.0}};
        line.activeSourceId = line.sourceRecordings.last().id;
    });
    ScriptProject directed(records, ScriptProject::Folder::OnDisk);
    for (const QString &name : {QStringLiteral("older.wav"), QStringLiteral("d.wav")})
        testing::writeTone(directed.folder() + QStringLiteral("/Audio Files/Recordings/") + name, 0.05);
    ASSERT_TRUE(directed->save());
    directed.reopen();
    const model::LineId id = directed.id(0);
    EXPECT_FALSE(directed->runtime().state(id).directionAudioURL.isEmpty());
    directed->takes().deleteDirectionAudio(id);
    directed->takes().deleteDirectionAudio(id);
    EXPECT_TRUE(directed->runtime().state(id).directionAudioURL.isEmpty());
    EXPECT_EQ(directed.line(0).activeSourceId, std::nullopt);
    EXPECT_EQ(directed->undoManager().undoActionName(), QStringLiteral("Delete Direction Audio"));
    directed->undoManager().undo();
    EXPECT_TRUE(directed->runtime().state(id).directionAudioURL.path().endsWith(QStringLiteral("/d.wav")));
    EXPECT_EQ(directed.line(0).sourceRecordings.size(), 2);
    EXPECT_FALSE(directed->undoManager().canUndo());

    directed->undoManager().redo();
    ASSERT_TRUE(directed->save());
    directed.reopen();
    EXPECT_TRUE(directed->runtime().state(id).directionAudioURL.isEmpty());
    EXPECT_EQ(directed.line(0).activeRecording(), nullptr);
    EXPECT_TRUE(QFile::exists(directed.folder() + QStringLiteral("/Audio Files/Recordings/d.wav")));
}

TEST(TakeEditing, WithoutAFolderTheFileStaysWhereItIs) {
    ScriptProject project({{QStringLiteral("a")}});
    project.addTake(0);
    EXPECT_EQ(project.line(0).takes.first().filename, QStringLiteral("tts_take.wav"));
    EXPECT_EQ(project->runtime().state(project.id(0)).generatedAudioURL.toLocalFile(),
              base::PrivateFolders::caches() + QStringLiteral("/tts_take.wav"));
    EXPECT_TRUE(QFile::exists(base::PrivateFolders::caches() + QStringLiteral("/tts_take.wav")));
}

} // namespace orlenta::controller
