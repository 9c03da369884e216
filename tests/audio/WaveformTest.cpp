#include "audio/files/Waveform.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "audio/AudioTestFiles.h"

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

} // namespace
} // namespace orlenta::audio::test
