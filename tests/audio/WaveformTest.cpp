#include "audio/files/Waveform.h"

#include <algorithm>
#include <thread>

#include <gtest/gtest.h>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include "audio/AudioTestFiles.h"
#include "audio/files/AudioFileReader.h"
#include "audio/files/FrameCount.h"
#include "audio/files/WavHeader.h"

namespace orlenta::audio::test {
namespace {

// The rule in its plainest form, over a file that is held whole.
QList<float> plainPeaks(const std::vector<double> &samples, size_t barCount) {
    const size_t perBar = std::max<size_t>(1, samples.size() / barCount);
    QList<float> bars;
    for (size_t bar = 0; bar < barCount && bar * perBar < samples.size(); ++bar) {
        double peak = 0;
        for (size_t i = bar * perBar; i < std::min((bar + 1) * perBar, samples.size()); ++i)
            peak = std::max(peak, std::abs(samples[i]));
        bars.append(static_cast<float>(peak));
    }
    const float loudest = *std::ranges::max_element(bars);
    for (float &bar : bars)
        bar /= loudest > 0 ? loudest : 1.0F;
    return bars;
}

/// How far this process has read a file that it has open; 0 while it hasn't.
qint64 placeInOpenFile(const QString &path) {
    const QDir open(QStringLiteral("/proc/self/fd"));
    const QStringList descriptors = open.entryList(QDir::Files | QDir::System);
    for (const QString &descriptor : descriptors) {
        if (QFileInfo(open.filePath(descriptor)).symLinkTarget() != path)
            continue;
        QFile info(QStringLiteral("/proc/self/fdinfo/%1").arg(descriptor));
        if (info.open(QIODevice::ReadOnly))
            return info.readLine().mid(qstrlen("pos:")).trimmed().toLongLong();
    }
    return 0;
}

TEST(Waveform, BarsArePeaksOfEqualStretchesWhateverTheBlocks) {
    const AudioTestFolder folder;
    for (const size_t frames : {1U, 150U, 199U, 200U, 399U, 1000U, 1001U, 16384U, 100003U}) {
        const auto samples = noise(frames, 16, static_cast<unsigned>(frames));
        const QString path = folder.write(QStringLiteral("a.wav"), samples, {44100, 1, wav16});
        const auto bars = extractWaveform(QUrl::fromLocalFile(path));
        EXPECT_EQ(bars.size(), static_cast<qsizetype>(std::min<size_t>(frames, 200)));
        EXPECT_EQ(bars, plainPeaks(samples, 200)) << frames;
    }
}

TEST(Waveform, TheLastFrameOf1001AndTheSecondChannelDontCount) {
    const AudioTestFolder folder;
    std::vector<double> samples(2 * 1001, 0.0);
    samples[2 * 500] = 0.25;
    samples[2 * 400 + 1] = 1.0;
    samples[2 * 1000] = 1.0;
    const QString path = folder.write(QStringLiteral("a.wav"), samples, {44100, 2, wav16});
    const auto bars = extractWaveform(QUrl::fromLocalFile(path));
    ASSERT_EQ(bars.size(), 200);
    EXPECT_EQ(bars[100], 1.0F);
    EXPECT_EQ(std::ranges::count(bars, 0.0F), 199);
}

TEST(Waveform, SilenceGivesZerosAndWhatCantBeReadGivesNothing) {
    const AudioTestFolder folder;
    const QString silent = folder.write(QStringLiteral("silent.wav"), std::vector<double>(5000), {44100, 1, wav16});
    EXPECT_EQ(extractWaveform(QUrl::fromLocalFile(silent)), QList<float>(200, 0.0F));
    const QString empty = folder.write(QStringLiteral("empty.wav"), {}, {44100, 1, wav16});
    for (const QString &path : {empty, folder.path(QStringLiteral("gone.wav"))})
        EXPECT_TRUE(extractWaveform(QUrl::fromLocalFile(path)).isEmpty());
}

TEST(Waveform, AStopEndsAnExtractionInMidFile) {
    const AudioTestFolder folder;
    // A hole of hours of silence, which takes minutes to look through.
    const QString path = folder.writeBytes(QStringLiteral("long.wav"), wavHeader(4'000'000'000U, 48000, 1, 16));
    ASSERT_TRUE(QFile::resize(path, wavHeaderSize + 4'000'000'000LL));
    QList<float> bars{1.0F};
    std::jthread extraction([&](const std::stop_token &stop) {
        bars = extractWaveform(QUrl::fromLocalFile(path), waveformBarCount, stop);
    });
    const QDeadlineTimer deadline(20'000);
    while (placeInOpenFile(path) < 1'000'000 && !deadline.hasExpired())
        std::this_thread::yield();
    EXPECT_GE(placeInOpenFile(path), 1'000'000);
    extraction.request_stop();
    extraction.join();
    EXPECT_TRUE(bars.isEmpty());
}

TEST(Waveform, AStopEndsTheCountOfAFileThatDoesntTellItsLength) {
    const AudioTestFolder folder;
    folder.write(QStringLiteral("in.wav"), noise(44100, 16), {44100, 1, wav16});
    folder.run(QStringLiteral("ffmpeg"), QStringLiteral("-i in.wav -write_xing 0 -y out.mp3"));
    const QString path = folder.path(QStringLiteral("out.mp3"));
    EXPECT_EQ(extractWaveform(QUrl::fromLocalFile(path)).size(), 200);
    auto reader = AudioFileReader::open(path);
    ASSERT_TRUE(reader);
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(countFrames(reader.value(), stop.get_token()), std::nullopt);
    EXPECT_EQ(countFrames(reader.value(), {}), reader.value().frames());
}

} // namespace
} // namespace orlenta::audio::test
