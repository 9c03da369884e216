#include <algorithm>
#include <cmath>

#include <QtCore/QFile>

#include "audio/playback/RoutedAudioPlayer.h"
#include "audio/SoundServerTest.h"
#include "support/Ramp.h"

namespace orlenta::audio {
namespace {

/// What a player's streams do at the server.
class OutputStreamTest : public SoundServerTest {
protected:
    [[nodiscard]] QStringList streams() {
        return session.pactl({QStringLiteral("list"), QStringLiteral("short"), QStringLiteral("sink-inputs")})
            .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }
    [[nodiscard]] bool waitUntilHeard(double seconds) {
        return QTest::qWaitFor([&] { return player.currentTime() >= seconds; }, deadline);
    }
    /// The largest step from one sample to the next on the left.
    [[nodiscard]] static float largestStep(const std::vector<float> &stereo) {
        float largest = 0.0F;
        for (std::size_t i = 2; i < stereo.size(); i += 2)
            largest = std::max(largest, std::abs(stereo[i] - stereo[i - 2]));
        return largest;
    }

    RoutedAudioPlayer player{server};
};

TEST_P(OutputStreamTest, AFileOfTheOutputsRateIsHeardSampleForSample) {
    const QUrl ramp = testing::Ramp::write(folder.filePath(QStringLiteral("ramp.wav")), testing::Ramp::rate);
    const QUrl silence = testing::writeTone(folder.filePath(QStringLiteral("silence.wav")), 0.3, 48000, 0.0);
    int completions = 0;
    player.setCompletionHandler([&] { ++completions; });
    const auto playToItsEnd = [&](const QUrl &url) {
        const int before = completions;
        return player.load(url) && player.play() &&
               QTest::qWaitFor([&] { return completions == before + 1; }, deadline);
    };
    int heard = 0;
    // On a busy machine a server may come too late for a deadline of its own, and then repeats or leaves out a little.
    for (int attempt = 0; attempt < 3 && heard < testing::Ramp::rate; ++attempt) {
        auto recording = session.record(QStringLiteral("spk_a"), 48000);
        ASSERT_TRUE(playToItsEnd(ramp));
        ASSERT_TRUE(playToItsEnd(silence)); // so that the recorder has got the end of the ramp
        const testing::Ramp::Stretch stretch = testing::Ramp::firstStretch(recording.stop());
        heard = stretch.first ? *stretch.last - *stretch.first + 1 : 0;
    }
    EXPECT_EQ(heard, testing::Ramp::rate);
}

TEST_P(OutputStreamTest, StopsAndSeeksDoNotClick) {
    // 440 Hz at half full scale moves by at most 0.029 from sample to sample at 48 kHz; a cut in it by up to 0.5.
    ASSERT_TRUE(player.load(tone(20.0)));
    auto heard = session.record(QStringLiteral("spk_a"), 48000);
    ASSERT_TRUE(player.play());
    ASSERT_TRUE(waitUntilHeard(0.3));
    for (const double place : {0.2, 0.4, 0.6}) {
        player.seek(place);
        ASSERT_TRUE(waitUntilHeard(place * 20.0 + 0.2));
    }
    player.stop();
    ASSERT_TRUE(QTest::qWaitFor([&] { return streams().isEmpty(); }, deadline));
    const std::vector<float> samples = heard.stop();
    ASSERT_GT(*std::max_element(samples.begin(), samples.end()), 0.4F);
    // Two streams fade into each other at a seek, so that their steps add up.
    EXPECT_LT(largestStep(samples), 0.065F);
}

TEST_P(OutputStreamTest, TheEndOfTheApplicationDoesNotClick) {
    auto heard = session.record(QStringLiteral("spk_a"), 48000);
    {
        SoundServer last(session.address());
        ASSERT_TRUE(QTest::qWaitFor([&] { return last.state() == SoundServer::State::Ready; }, deadline));
        RoutedAudioPlayer going(last);
        ASSERT_TRUE(going.load(tone(20.0)));
        ASSERT_TRUE(going.play());
        ASSERT_TRUE(QTest::qWaitFor([&] { return going.currentTime() >= 0.3; }, deadline));
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return streams().isEmpty(); }, deadline));
    const std::vector<float> samples = heard.stop();
    ASSERT_GT(*std::max_element(samples.begin(), samples.end()), 0.4F);
    EXPECT_LT(largestStep(samples), 0.035F);
}

TEST_P(OutputStreamTest, AStreamThatIsStoppedBeforeItHasBegunLeavesNothingAtTheServer) {
    ASSERT_TRUE(player.load(tone(5.0)));
    for (int i = 0; i < 30; ++i) {
        ASSERT_TRUE(player.play());
        if (i % 3 == 0)
            QCoreApplication::processEvents();
        player.seek(0.5);
        player.stop();
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return streams().isEmpty(); }, deadline));
    ASSERT_TRUE(player.play());
    EXPECT_TRUE(waitUntilHeard(0.1));
}

TEST_P(OutputStreamTest, ThePlaceThatIsHeardNeverGoesBack) {
    ASSERT_TRUE(player.load(tone(1.0)));
    ASSERT_TRUE(player.play());
    double last = 0.0;
    int stepsBack = 0;
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            const double now = player.currentTime();
            stepsBack += now < last ? 1 : 0;
            last = now;
            return now >= 0.95;
        },
        deadline));
    EXPECT_EQ(stepsBack, 0);
}

TEST_P(OutputStreamTest, AFileThatBreaksOffIsHeardUpToThere) {
    const QUrl url = tone(2.0);
    int failures = 0;
    player.setFailureHandler([&](const RoutedAudioPlayerError &) { ++failures; });
    int completions = 0;
    player.setCompletionHandler([&] { ++completions; });
    ASSERT_TRUE(player.load(url));
    QFile file(url.toLocalFile());
    ASSERT_TRUE(file.resize(44 + 48000)); // half a second is left of two
    ASSERT_TRUE(player.play());
    ASSERT_TRUE(waitUntilHeard(0.45));
    EXPECT_TRUE(QTest::qWaitFor([&] { return failures + completions == 1; }, deadline));
}

INSTANTIATE_TEST_SUITE_P(On, OutputStreamTest, bothServers(), serverName);

} // namespace
} // namespace orlenta::audio
