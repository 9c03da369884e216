#include "controller/direction/DirectionAudio.h"

#include <gtest/gtest.h>
#include <qcoro/qcorotask.h>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QSignalSpy>

#include "audio/files/AudioImporter.h"
#include "base/files/PrivateFolders.h"
#include "controller/document/UndoManager.h"
#include "controller/script/LineEditing.h"
#include "controller/ScriptProject.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/LineWaveforms.h"
#include "controller/takes/MediaFiles.h"
#include "controller/takes/TakeEditing.h"
#include "support/TestTone.h"

namespace orlenta::controller {
namespace {

using test::ScriptProject;

class DirectionAudioTest : public ::testing::Test {
protected:
    ScriptProject project{{{QStringLiteral("Hello there"), QStringLiteral("b")}}, ScriptProject::Folder::OnDisk};
    UndoManager &undo = project->undoManager();
    QTemporaryDir elsewhere;

    [[nodiscard]] QString directionOf(qsizetype index) const {
        return project->runtime().state(project.id(index)).directionAudioURL.toLocalFile();
    }
    [[nodiscard]] QStringList recordings() const {
        QStringList files =
            QDir(project.folder() + QStringLiteral("/Audio Files/Recordings")).entryList(QDir::Files | QDir::Hidden);
        files.removeAll(QStringLiteral(".gitkeep"));
        return files;
    }
    [[nodiscard]] static QUrl recorded(double seconds) {
        return testing::writeTone(base::PrivateFolders::caches() +
                                      QStringLiteral("/direction_3F2504E0-4F89-11D3-9A0C-0305E82C3301.wav"),
                                  seconds, 44100);
    }
    void install(const QUrl &file, double seconds, const model::LineId &id) {
        QCoro::waitFor(project->directionAudio().installRecording(file, seconds, id));
    }
    void import(const QUrl &file, const model::LineId &id) {
        QCoro::waitFor(project->directionAudio().importDirectionAudio(file, id));
    }
};

} // namespace

TEST_F(DirectionAudioTest, ARecordingIsStoredAsItIsAndTheLineSpeaksFromIt) {
    const QUrl take = recorded(0.25);
    QFile original(take.toLocalFile());
    ASSERT_TRUE(original.open(QFile::ReadOnly));
    const QByteArray bytes = original.readAll();
    const model::ProjectLineSettings before = project->project().effectiveSettings(project.line(0));
    install(take, 0.25, project.id(0));

    const model::ProjectLine line = project.line(0);
    ASSERT_EQ(line.sourceRecordings.size(), 1);
    const model::SourceRecording &recording = line.sourceRecordings.first();
    EXPECT_EQ(line.activeSourceId, recording.id);
    EXPECT_EQ(recording.durationSeconds, 0.25);
    EXPECT_EQ(recordings(), QStringList{recording.filename});
    QFile stored(directionOf(0));
    ASSERT_TRUE(stored.open(QFile::ReadOnly));
    EXPECT_EQ(stored.readAll(), bytes);
    EXPECT_EQ(project->media().recordingURL(recording).toLocalFile(), directionOf(0));
    EXPECT_FALSE(QFile::exists(take.toLocalFile()));

    model::ProjectLineSettings spoken = before;
    spoken.directionMode = model::DirectionMode::Voice;
    EXPECT_EQ(line.settings, spoken);
    EXPECT_TRUE(project->hasUnsavedChanges());
    EXPECT_EQ(project->spotError(), QString());
}

TEST_F(DirectionAudioTest, ANewDirectionReplacesTheOldOneAndUndoRestoresIt) {
    install(recorded(0.1), 0.1, project.id(0));
    const QString first = directionOf(0);
    install(recorded(0.2), 0.2, project.id(0));
    const QString second = directionOf(0);
    EXPECT_NE(first, second);
    EXPECT_EQ(project.line(0).sourceRecordings.size(), 2);
    EXPECT_EQ(undo.undoActionName(), QStringLiteral("Import Direction Audio"));

    undo.undo();
    EXPECT_EQ(directionOf(0), first);
    EXPECT_EQ(project.line(0).sourceRecordings.size(), 1);
    EXPECT_TRUE(QFile::exists(second));
    undo.undo();
    EXPECT_EQ(directionOf(0), QString());
    EXPECT_EQ(project->project().effectiveSettings(project.line(0)).directionMode, model::DirectionMode::Text);
    undo.redo();
    undo.redo();
    EXPECT_EQ(directionOf(0), second);

    project->takes().deleteDirectionAudio(project.id(0));
    EXPECT_EQ(directionOf(0), QString());
    undo.undo();
    EXPECT_EQ(directionOf(0), second);
}

TEST_F(DirectionAudioTest, AnImportedFileIsStoredInTheStandardFormatUnderItsName) {
    const QUrl source = testing::writeTone(elsewhere.filePath(QStringLiteral("Take: one?.WAV")), 0.5, 44100);
    import(source, project.id(1));
    ASSERT_EQ(project.line(1).sourceRecordings.size(), 1);
    const model::SourceRecording recording = project.line(1).sourceRecordings.first();
    EXPECT_TRUE(recording.filename.startsWith(QStringLiteral("Take one - "))) << recording.filename.toStdString();
    EXPECT_NEAR(recording.durationSeconds, 0.5, 1e-6);
    EXPECT_TRUE(audio::AudioImporter::canCopyWithoutConversion(QUrl::fromLocalFile(directionOf(1))));
    EXPECT_EQ(undo.undoActionName(), QStringLiteral("Import Direction Audio"));
    EXPECT_TRUE(QFile::exists(source.toLocalFile()));

    import(source, project.id(1));
    EXPECT_EQ(recordings().size(), 2);
}

TEST_F(DirectionAudioTest, ADroppedFileMayGoAsSoonAsTheDropIsOver) {
    const QUrl source = testing::writeTone(elsewhere.filePath(QStringLiteral("lent.wav")), 0.5, 44100);
    auto importing = project->directionAudio().importDroppedFile(source, project.id(0));
    ASSERT_TRUE(QFile::remove(source.toLocalFile()));
    QCoro::waitFor(importing);
    EXPECT_EQ(project.line(0).sourceRecordings.size(), 1);
    EXPECT_TRUE(QDir(base::PrivateFolders::temporary())
                    .entryList({QStringLiteral("OrlentaDroppedAudio-*")}, QDir::Files)
                    .isEmpty());
}

TEST_F(DirectionAudioTest, AFailureIsReportedAndChangesNothing) {
    QFile text(elsewhere.filePath(QStringLiteral("notes.flac")));
    ASSERT_TRUE(text.open(QFile::WriteOnly));
    import(QUrl::fromLocalFile(text.fileName()), project.id(0));
    EXPECT_EQ(project->spotError(),
              QStringLiteral("Audio import failed: Couldn't import this file. Only WAV, MP3, M4A, and AIFF are "
                             "supported. (notes.flac)"));
    QCoro::waitFor(project->directionAudio().importDroppedFile(QUrl::fromLocalFile(text.fileName()), project.id(0)));
    EXPECT_TRUE(project->spotError().endsWith(QStringLiteral("supported. (notes.flac)")));
    project->setSpotError({});

    const QString missing = elsewhere.filePath(QStringLiteral("gone.wav"));
    install(QUrl::fromLocalFile(missing), 1.0, project.id(0));
    EXPECT_EQ(project->spotError(),
              QStringLiteral("Audio import failed: The audio file could not be found at %1.").arg(missing));

    const QString folder = project.folder() + QStringLiteral("/Audio Files/Recordings");
    ASSERT_TRUE(QDir(folder).removeRecursively());
    ASSERT_TRUE(QFile::link(elsewhere.path(), folder));
    const QUrl take = recorded(0.1);
    const QSignalSpy kept(&project->directionAudio(), &DirectionAudio::recordingKept);
    install(take, 0.1, project.id(0));
    ASSERT_EQ(kept.count(), 1);
    EXPECT_EQ(kept.first().at(0).toUrl(), take);
    EXPECT_TRUE(kept.first().at(3).toString().contains(QStringLiteral("is a link to a location outside the project")));
    EXPECT_TRUE(QFile::exists(take.toLocalFile()));

    EXPECT_TRUE(project.line(0).sourceRecordings.isEmpty());
    EXPECT_FALSE(project->hasUnsavedChanges());
    EXPECT_FALSE(undo.canUndo());
}

TEST_F(DirectionAudioTest, ALineDeletedMeanwhileEndsTheImportSilently) {
    const QUrl source = testing::writeTone(elsewhere.filePath(QStringLiteral("a.wav")), 0.2, 44100);
    const model::LineId id = project.id(0);
    auto importing = project->directionAudio().importDirectionAudio(source, id);
    project->lines().deleteLine(id);
    QCoro::waitFor(importing);
    EXPECT_EQ(project->spotError(), QString());
    EXPECT_EQ(undo.undoActionName(), QStringLiteral("Delete Line"));
    import(source, id);
    EXPECT_EQ(undo.undoActionName(), QStringLiteral("Delete Line"));
}

TEST_F(DirectionAudioTest, ATakeWhoseLineIsDeletedWhileItIsStoredIsHandedBack) {
    const QUrl take = recorded(0.5);
    const model::LineId id = project.id(0);
    QList<QUrl> handedBack;
    QObject::connect(&project->directionAudio(), &DirectionAudio::lineGone, &project->directionAudio(),
                     [&](const QUrl &file, double, const model::LineId &) { handedBack.append(file); });
    auto installing = project->directionAudio().installRecording(take, 0.5, id);
    project->lines().deleteLine(id);
    QCoro::waitFor(installing);
    EXPECT_EQ(handedBack, QList<QUrl>{take});
    EXPECT_TRUE(QFile::exists(take.toLocalFile()));
    EXPECT_TRUE(QDir(project.folder() + QStringLiteral("/Audio Files/Recordings")).entryList(QDir::Files).isEmpty());

    undo.undo();
    install(take, 0.5, id);
    EXPECT_EQ(project.line(0).sourceRecordings.size(), 1);
    EXPECT_FALSE(QFile::exists(take.toLocalFile()));
}

TEST_F(DirectionAudioTest, ImportingALeftoverRecordingDeletesIt) {
    const QUrl leftover = recorded(0.2);
    QFile file(leftover.toLocalFile());
    ASSERT_TRUE(file.open(QFile::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(-60), QFile::FileModificationTime));
    file.close();
    import(leftover, project.id(0));
    EXPECT_EQ(project.line(0).sourceRecordings.size(), 1);
    EXPECT_FALSE(QFile::exists(leftover.toLocalFile()));

    const QUrl users = testing::writeTone(elsewhere.filePath(QStringLiteral("mine.wav")), 0.2, 44100);
    import(users, project.id(0));
    EXPECT_EQ(project.line(0).sourceRecordings.size(), 2);
    EXPECT_TRUE(QFile::exists(users.toLocalFile()));
}

TEST_F(DirectionAudioTest, WithoutAProjectFolderTheRecordingStaysInTheCaches) {
    ScriptProject unsaved({{QStringLiteral("a")}});
    const QUrl take = recorded(0.1);
    QCoro::waitFor(unsaved->directionAudio().installRecording(take, 0.1, unsaved.id(0)));
    EXPECT_EQ(unsaved->runtime().state(unsaved.id(0)).directionAudioURL, take);
    EXPECT_TRUE(QFile::exists(take.toLocalFile()));
    EXPECT_EQ(unsaved.line(0).sourceRecordings.first().filename, take.fileName());
}

} // namespace orlenta::controller
