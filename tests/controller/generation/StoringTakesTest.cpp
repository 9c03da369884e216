#include <filesystem>

#include <gtest/gtest.h>
#include <QtCore/QFile>
#include <QtTest/QSignalSpy>

#include "controller/generation/GenerationTest.h"
#include "controller/generation/TakeStorage.h"
#include "controller/takes/MediaFiles.h"

namespace orlenta::controller {
namespace {

/// Makes the project's folders unavailable and available again.
class StoringTakesTest : public test::GenerationTest {
protected:
    void hideFolder() { std::filesystem::rename(path(), path() + ".away"); }
    void returnFolder() { std::filesystem::rename(path() + ".away", path()); }
    /// Puts a file in place of the folder for takes.
    void blockAudioFolder() {
        QDir(project.folder() + QStringLiteral("/Audio Files/Generated")).removeRecursively();
        QDir().mkpath(project.folder() + QStringLiteral("/Audio Files"));
        QFile file(blocker());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    void unblockAudioFolder() const { QFile::remove(blocker()); }

private:
    [[nodiscard]] std::string path() const { return project.folder().toStdString(); }
    [[nodiscard]] QString blocker() const { return project.folder() + QStringLiteral("/Audio Files/Generated"); }
};

} // namespace

TEST_F(StoringTakesTest, NothingIsRequestedIfTheTakesCouldNotBeStored) {
    const QSignalSpy errors(&generator, &LineGenerator::generateErrorChanged);
    hideFolder();
    enqueueBatch();
    ASSERT_TRUE(queueEnds());
    EXPECT_EQ(errors.count(), 1);
    EXPECT_EQ(generator.generateError(),
              QStringLiteral("2 lines weren't generated: the project's folder can't be found."));
    returnFolder();
    blockAudioFolder();
    generate(0);
    EXPECT_EQ(generator.generateError(),
              QStringLiteral("1 line wasn't generated: the project's folder isn't writable."));
    EXPECT_TRUE(server.requests().isEmpty());
    EXPECT_FALSE(isGenerating(project.id(0)));
    unblockAudioFolder();
    generate(0);
    EXPECT_EQ(takeCount(0), 1);
}

TEST(TakeStorage, ADiskWithTooLittleRoomIsReported) {
    const QTemporaryDir folder;
    EXPECT_EQ(takeStorageProblem(folder.path(), 1024), std::nullopt);
    EXPECT_EQ(takeStorageProblem(folder.path(), qint64{1} << 60), SkipReason::NoRoom);
    EXPECT_EQ(takeStorageProblem({}, qint64{1} << 60), SkipReason::NoRoom);
    EXPECT_FALSE(QFile::exists(folder.filePath(QStringLiteral("Audio Files")))) << "the check makes nothing";
}

TEST_F(StoringTakesTest, WhatCouldNotBeStoredIsKeptByNameAndCanBeStoredLater) {
    const QStringList cached = cachedFiles();
    duringLine(1, [this] { blockAudioFolder(); });
    generate(0);
    EXPECT_EQ(takeCount(0), 0);
    const QList<UnstoredTakes::Entry> &entries = generator.unstoredTakes().entries();
    ASSERT_EQ(entries.size(), 1);
    const QString kept = entries.first().path;
    EXPECT_TRUE(kept.startsWith(UnstoredTakes::folder() + QStringLiteral("/Ana - Hi sighs gif.01 - ")))
        << kept.toStdString();
    EXPECT_GT(QFile(kept).size(), 8820);
    EXPECT_FALSE(entries.first().reason.isEmpty());
    EXPECT_EQ(cachedFiles(), cached);

    QCoro::waitFor(generator.unstoredTakes().storeAgain());
    EXPECT_EQ(entries.size(), 1) << "still no place";
    EXPECT_TRUE(QFile::exists(kept));
    unblockAudioFolder();
    const QSignalSpy changed(&generator.unstoredTakes(), &UnstoredTakes::changed);
    QCoro::waitFor(generator.unstoredTakes().storeAgain());
    EXPECT_EQ(changed.count(), 1);
    EXPECT_TRUE(entries.isEmpty());
    ASSERT_EQ(takeCount(0), 1);
    EXPECT_EQ(project.line(0).takes.first().characterCount, 14);
    EXPECT_TRUE(QFile::exists(project->media().audioURL(project.line(0)).toLocalFile()));
    EXPECT_FALSE(QFile::exists(kept));
}

TEST_F(StoringTakesTest, ADestroyedGeneratorLeavesNoAudioBehind) {
    const QStringList cached = cachedFiles();
    auto leaving = std::make_unique<LineGenerator>(*project, service);
    duringLine(1, [&leaving] { leaving.reset(); });
    leaving->enqueue({project.id(0)}, speech::LineGenerationQueue::Priority::Normal);
    ASSERT_TRUE(QTest::qWaitFor([&leaving] { return leaving == nullptr; }, test::patienceMs));
    EXPECT_TRUE(QTest::qWaitFor([&cached] { return cachedFiles() == cached; }, test::patienceMs));
}

} // namespace orlenta::controller
