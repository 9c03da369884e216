#include "audio/files/AudioDurations.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <gtest/gtest.h>
#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtTest/QTest>

#include "audio/AudioTestFiles.h"
#include "audio/files/AudioFileReader.h"
#include "support/KeptLog.h"

namespace orlenta::audio::test {
namespace {

using Durations = ScriptLineAudioDurationReader;

const QString asking = QStringLiteral("ScriptLineView.takeDuration");

void setModificationDate(const QString &path, time_t seconds) {
    const std::array<timespec, 2> times{timespec{seconds, 0}, timespec{seconds, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times.data(), 0), 0);
}

/// Asks as a row does: again once it is told that the file has been read.
class Asker final {
public:
    std::optional<Durations::Seconds> ask(const QString &path) {
        return Durations::duration(QUrl::fromLocalFile(path), asking, &m_object, [this] { ++m_told; });
    }
    std::optional<Durations::Seconds> read(const QString &path) {
        const int before = m_told;
        EXPECT_EQ(ask(path), std::nullopt);
        EXPECT_TRUE(QTest::qWaitFor([&] { return m_told > before; }, 20'000));
        return ask(path);
    }
    /// How often a file was read.
    [[nodiscard]] int told() const { return m_told; }

private:
    QObject m_object;
    int m_told = 0;
};

TEST(AudioDurations, AFileIsReadOnceUntilItsDateOrSizeChanges) {
    const AudioTestFolder folder;
    Asker asker;
    const QString path = folder.write(QStringLiteral("a.wav"), noise(44100, 16), {44100, 1, wav16});
    setModificationDate(path, 1000);
    EXPECT_EQ(asker.read(path), Durations::Seconds(1.0));

    // Same date, same size, other content: only a cache still answers with the old duration.
    const qint64 size = QFile(path).size();
    folder.writeBytes(QStringLiteral("a.wav"), QByteArray(size, 'x'));
    setModificationDate(path, 1000);
    QCoreApplication::processEvents();
    EXPECT_EQ(asker.ask(path), Durations::Seconds(1.0));
    setModificationDate(path, 1001);
    QCoreApplication::processEvents();
    EXPECT_EQ(asker.read(path), std::nullopt);

    folder.write(QStringLiteral("a.wav"), noise(22050, 16), {44100, 1, wav16});
    setModificationDate(path, 1000);
    QCoreApplication::processEvents();
    EXPECT_EQ(asker.read(path), Durations::Seconds(0.5));
    EXPECT_EQ(asker.told(), 3);
}

TEST(AudioDurations, WhatIsReadAndWhatIsKnownStandsInTheLogByDefault) {
    const AudioTestFolder folder;
    const testing::KeptLog log;
    Asker asker;
    asker.read(folder.write(QStringLiteral("a.wav"), noise(441, 16), {44100, 1, wav16}));
    asker.read(folder.path(QStringLiteral("gone.wav")));
    for (const char *line :
         {"ScriptLineView.takeDuration AVAudioFile duration read file=a.wav",
          "ScriptLineView.takeDuration duration cache hit file=a.wav",
          "ScriptLineView.takeDuration AVAudioFile duration ERROR: “gone.wav” could not be opened: No such file"}) {
        const QStringList found = log.lines(QString::fromUtf8(line));
        ASSERT_EQ(found.size(), 1) << line;
        EXPECT_TRUE(found.constFirst().startsWith(QStringLiteral("[TCCTrace] "))) << line;
        EXPECT_TRUE(found.constFirst().contains(QStringLiteral(" | AudioDurations:"))) << line;
    }
}

TEST(AudioDurations, AFileThatCantBeReadIsTriedOnce) {
    const AudioTestFolder folder;
    Asker asker;
    const QString gone = folder.path(QStringLiteral("gone.wav"));
    const QString broken = folder.writeBytes(QStringLiteral("broken.wav"), QByteArray(1000, 'x'));
    for (const QString &path : {gone, broken})
        EXPECT_EQ(asker.read(path), std::nullopt);
    for (const QString &path : {gone, broken, gone, broken}) {
        QCoreApplication::processEvents();
        EXPECT_EQ(asker.ask(path), std::nullopt);
    }
    // Files are read one after another, so what had been asked for before would have been told by now.
    EXPECT_EQ(asker.read(folder.write(QStringLiteral("a.wav"), noise(441, 16), {44100, 1, wav16})),
              Durations::Seconds(0.01));
    EXPECT_EQ(asker.told(), 3);
}

TEST(AudioDurations, ALengthThatOnlyDecodingTellsIsCountedInTheBackground) {
    const AudioTestFolder folder;
    folder.write(QStringLiteral("in.wav"), noise(10 * 44100, 16), {44100, 1, wav16});
    folder.run(QStringLiteral("ffmpeg"), QStringLiteral("-i in.wav -write_xing 0 -y out.mp3"));
    const QString path = folder.path(QStringLiteral("out.mp3"));
    Asker asker;
    const auto read = asker.read(path);
    ASSERT_TRUE(read);
    auto reader = AudioFileReader::open(path);
    ASSERT_TRUE(reader);
    EXPECT_EQ(reader->toldFrames(), std::nullopt);
    EXPECT_DOUBLE_EQ(read->count(), static_cast<double>(reader.value().frames()) / 44100.0);
}

TEST(AudioDurations, WhoHasGoneIsNotToldAndWhoAsksTwiceIsToldOnce) {
    const AudioTestFolder folder;
    const QString path = folder.write(QStringLiteral("a.wav"), noise(44100, 16), {44100, 1, wav16});
    Asker stays;
    {
        const QObject goes;
        EXPECT_EQ(Durations::duration(QUrl::fromLocalFile(path), asking, &goes,
                                      [] { ADD_FAILURE() << "told after its end"; }),
                  std::nullopt);
    }
    EXPECT_EQ(stays.ask(path), std::nullopt);
    EXPECT_EQ(stays.read(path), Durations::Seconds(1.0));
    EXPECT_EQ(stays.told(), 1);
}

TEST(AudioDurations, PrintAsMinutesAndSeconds) {
    using Seconds = Durations::Seconds;
    EXPECT_EQ(Durations::text(Seconds(0.9)), QStringLiteral("0:00"));
    EXPECT_EQ(Durations::text(Seconds(65.2)), QStringLiteral("1:05"));
    EXPECT_EQ(Durations::text(Seconds(3600)), QStringLiteral("60:00"));
    EXPECT_EQ(Durations::text(std::nullopt), QStringLiteral("--:--"));
}

TEST(AudioDurations, TheirWordsTellTenths) {
    using Seconds = Durations::Seconds;
    EXPECT_EQ(Durations::exactText(Seconds(0.97)), QStringLiteral("0.9 seconds"));
    EXPECT_EQ(Durations::exactText(Seconds(65.25)), QStringLiteral("1 minute 5.2 seconds"));
    EXPECT_EQ(Durations::exactText(Seconds(3600)), QStringLiteral("60 minutes 0.0 seconds"));
    EXPECT_EQ(Durations::exactText(std::nullopt), QString());
}

} // namespace
} // namespace orlenta::audio::test
