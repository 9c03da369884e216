#include "audio/recording/LeftoverRecordings.h"

#include <gtest/gtest.h>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include "audio/recording/RecordingWriter.h"
#include "support/TestTone.h"

namespace orlenta::audio {
namespace {

using std::chrono::system_clock;

class LeftoverRecordingsTest : public ::testing::Test {
protected:
    [[nodiscard]] QString path(int number) const {
        return folder.filePath(
            QStringLiteral("direction_3F2504E0-4F89-11D3-9A0C-0305E82C330%1.wav").arg(number, 0, 16));
    }
    [[nodiscard]] QStringList find(system_clock::time_point now = system_clock::now() + std::chrono::minutes(1)) const {
        return LeftoverRecordings::find(folder.path(), now);
    }
    [[nodiscard]] static WavFileWriter begin(const QString &path) {
        return WavFileWriter::create(path, RecordingWriter::format, WavFileWriter::Placement::InPlace).value();
    }

    QTemporaryDir folder;
};

TEST_F(LeftoverRecordingsTest, WhatHoldsSoundIsFoundAndStaysAndWhatHoldsNoneGoes) {
    (void)testing::writeTone(path(1), 0.1);
    {
        // As a process that was killed leaves them.
        WavFileWriter killed = begin(path(2));
        ASSERT_TRUE(killed.writeFrames(std::vector<float>(100, 0.25F)));
        const WavFileWriter silent = begin(path(3));
    }
    QFile empty(path(4));
    ASSERT_TRUE(empty.open(QFile::WriteOnly));
    empty.close();
    EXPECT_EQ(find(), (QStringList{path(1), path(2)}));
    EXPECT_EQ(find(), (QStringList{path(1), path(2)}));
    EXPECT_FALSE(QFile::exists(path(3)) || QFile::exists(path(4)));
}

TEST_F(LeftoverRecordingsTest, ARecordingThatIsBeingMadeOrOnItsWayIsNoneAndKeepsItsFile) {
    {
        WavFileWriter running = begin(path(1));
        EXPECT_EQ(find(), QStringList());
        ASSERT_TRUE(QFile::exists(path(1)));
        ASSERT_TRUE(running.writeFrames(std::vector<float>(100, 0.25F)));
        EXPECT_EQ(find(), QStringList());
        ASSERT_TRUE(running.finish());
    }
    EXPECT_EQ(find(system_clock::now()), QStringList());
    EXPECT_EQ(find(), QStringList{path(1)});
}

TEST_F(LeftoverRecordingsTest, OnlyRecordingsCount) {
    for (const char *name : {"direction_.wav", "direction_notes.wav", "tts_3F2504E0-4F89-11D3-9A0C-0305E82C3301.wav",
                             "direction_3F2504E0-4F89-11D3-9A0C-0305E82C3301.wav.txt"}) {
        QFile other(folder.filePath(QString::fromLatin1(name)));
        ASSERT_TRUE(other.open(QFile::WriteOnly));
    }
    ASSERT_TRUE(QDir(folder.path()).mkdir(QFileInfo(path(1)).fileName()));
    ASSERT_TRUE(QFile::link(folder.filePath(QStringLiteral("direction_notes.wav")), path(2)));
    EXPECT_EQ(find(), QStringList());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 6);
    EXPECT_EQ(LeftoverRecordings::find(folder.filePath(QStringLiteral("none")), system_clock::now()), QStringList());
}

} // namespace
} // namespace orlenta::audio
