#include "audio/files/AudioDurations.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <gtest/gtest.h>
#include <QtCore/QFile>

#include "audio/AudioTestFiles.h"

namespace orlenta::audio::test {
namespace {

using Durations = ScriptLineAudioDurationReader;

const QString asking = QStringLiteral("ScriptLineView.takeDuration");

void setModificationDate(const QString &path, time_t seconds) {
    const std::array<timespec, 2> times{timespec{seconds, 0}, timespec{seconds, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times.data(), 0), 0);
}

TEST(AudioDurations, AFileIsReadOnceUntilItsDateOrSizeChanges) {
    const AudioTestFolder folder;
    const QString path = folder.write(QStringLiteral("a.wav"), noise(44100, 16), {44100, 1, wav16});
    const QUrl url = QUrl::fromLocalFile(path);
    setModificationDate(path, 1000);
    EXPECT_EQ(Durations::duration(url, asking), std::chrono::duration<double>(1.0));

    // Same date, same size, other content: only a cache still answers with the old duration.
    const qint64 size = QFile(path).size();
    folder.writeBytes(QStringLiteral("a.wav"), QByteArray(size, 'x'));
    setModificationDate(path, 1000);
    EXPECT_EQ(Durations::duration(url, asking), std::chrono::duration<double>(1.0));
    setModificationDate(path, 1001);
    EXPECT_EQ(Durations::duration(url, asking), std::nullopt);

    folder.write(QStringLiteral("a.wav"), noise(22050, 16), {44100, 1, wav16});
    setModificationDate(path, 1000);
    EXPECT_EQ(Durations::duration(url, asking), std::chrono::duration<double>(0.5));
}

TEST(AudioDurations, PrintAsMinutesAndSeconds) {
    using Seconds = std::chrono::duration<double>;
    EXPECT_EQ(Durations::text(Seconds(0.9)), QStringLiteral("0:00"));
    EXPECT_EQ(Durations::text(Seconds(65.2)), QStringLiteral("1:05"));
    EXPECT_EQ(Durations::text(Seconds(3600)), QStringLiteral("60:00"));
    EXPECT_EQ(Durations::text(std::nullopt), QStringLiteral("--:--"));
}

} // namespace
} // namespace orlenta::audio::test
