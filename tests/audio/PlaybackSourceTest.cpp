#include "audio/playback/PlaybackSource.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "audio/AudioTestFiles.h"

namespace orlenta::audio::test {
namespace {

constexpr std::size_t frameCount = 4800;

class PlaybackSourceTest : public ::testing::Test {
protected:
    /// What a device of that rate gets, asked for in blocks of an odd size.
    [[nodiscard]] std::vector<float> played(qint64 startFrame, double deviceRate) {
        PlaybackSource source({reader, reader->sampleRate(), reader->channelCount(), startFrame}, deviceRate);
        std::vector<float> all;
        std::vector<float> block(2 * 37);
        for (auto frames = source.read(block); frames && *frames > 0; frames = source.read(block))
            all.insert(all.end(), block.begin(), block.begin() + 2 * static_cast<std::ptrdiff_t>(*frames));
        return all;
    }

    const AudioTestFolder folder;
    const std::vector<double> samples = std::vector<double>(2 * frameCount, 0.5);
    const QString path = folder.write(QStringLiteral("level.wav"), samples, {48000, 2, wav24});
    std::shared_ptr<AudioFileReader> reader =
        std::make_shared<AudioFileReader>(std::move(AudioFileReader::open(path)).value());
};

TEST_F(PlaybackSourceTest, FromTheStartEverySampleIsTheFilesOwn) {
    const std::vector<float> whole(samples.begin(), samples.end());
    EXPECT_EQ(played(0, 48000), whole);
    EXPECT_EQ(played(0, 48000), whole) << "the reader stands at its end";
}

TEST_F(PlaybackSourceTest, AStartInsideTheFileRisesFromSilenceWithoutAJump) {
    for (const double rate : {48000.0, 44100.0}) {
        const std::vector<float> heard = played(1000, rate);
        const auto fade = static_cast<std::size_t>(rate * 0.005);
        ASSERT_GT(heard.size(), 4 * fade);
        EXPECT_EQ(heard.front(), 0.0F);
        float steepest = 0.0F;
        for (std::size_t i = 2; i < 2 * fade; ++i)
            steepest = std::max(steepest, std::abs(heard[i] - heard[i - 2]));
        EXPECT_LT(steepest, 0.02F) << rate;
    }
    const std::vector<float> heard = played(1000, 48000);
    EXPECT_EQ(heard.size(), 2 * (frameCount - 1000));
    EXPECT_TRUE(std::all_of(heard.begin() + 2 * 240, heard.end(), [](float sample) { return sample == 0.5F; }));
}

} // namespace
} // namespace orlenta::audio::test
