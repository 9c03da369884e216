#include "audio/playback/RoutedAudioPlayer.h"

#include <pulse/pulseaudio.h>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QThread>
#include <QtCore/QThreadPool>

#include "audio/files/AudioFileReader.h"
#include "audio/SoundServerTest.h"

namespace orlenta::audio {
namespace {

class RoutedAudioPlayerTest : public SoundServerTest {
protected:
    void SetUp() override {
        SoundServerTest::SetUp();
        player.setCompletionHandler([this] { ++completions; });
        player.setFailureHandler([this](const RoutedAudioPlayerError &error) { failures.append(error.description()); });
    }
    [[nodiscard]] bool waitForCompletions(int count) {
        return QTest::qWaitFor([&] { return completions >= count; }, deadline);
    }
    [[nodiscard]] bool waitUntilHeard(double seconds) {
        return QTest::qWaitFor([&] { return player.currentTime() >= seconds; }, deadline);
    }

    /// Ends all playback at the server, as a user can do in some mixers.
    void killStreams() {
        const QStringList streams =
            session.pactl({QStringLiteral("list"), QStringLiteral("short"), QStringLiteral("sink-inputs")})
                .split(u'\n', Qt::SkipEmptyParts);
        const SoundServerLock lock(server.mainloop());
        for (const QString &stream : streams)
            pa_operation_unref(
                pa_context_kill_sink_input(server.context(), stream.section(u'\t', 0, 0).toUInt(), nullptr, nullptr));
    }

    RoutedAudioPlayer player{server};
    int completions = 0;
    QStringList failures;
};

TEST_P(RoutedAudioPlayerTest, CompletesOnceWhenTheLastSampleHasBeenHeard) {
    ASSERT_TRUE(player.load(tone(0.4)));
    QElapsedTimer playing;
    playing.start();
    ASSERT_TRUE(player.play());
    ASSERT_TRUE(waitForCompletions(1));

    EXPECT_GE(playing.elapsed(), 380);
    EXPECT_FALSE(player.isPlaybackActive());
    EXPECT_DOUBLE_EQ(player.currentTime(), 0.4);

    // From the end it completes again without a sound, a turn later.
    ASSERT_TRUE(player.play());
    EXPECT_EQ(completions, 1);
    ASSERT_TRUE(waitForCompletions(2));
    EXPECT_TRUE(failures.isEmpty());
}

TEST_P(RoutedAudioPlayerTest, WhatWasAskedForEarlierNeverEndsWhatPlaysNow) {
    ASSERT_TRUE(player.load(tone(0.3)));
    ASSERT_TRUE(player.play());
    player.seek(1.0); // its completion is on its way
    player.stop();
    player.seek(0.0);
    ASSERT_TRUE(player.play());
    ASSERT_TRUE(player.play());
    ASSERT_TRUE(waitForCompletions(1));
    QCoreApplication::processEvents();
    EXPECT_EQ(completions, 1);
}

TEST_P(RoutedAudioPlayerTest, SeeksAreClampedAndWaitForThePlay) {
    player.seek(0.5);
    EXPECT_EQ(player.currentTime(), 0.0);
    ASSERT_TRUE(player.load(tone(2.0)));
    player.seek(-0.5);
    EXPECT_EQ(player.currentTime(), 0.0);
    player.seek(2.0);
    EXPECT_DOUBLE_EQ(player.currentTime(), 2.0);
    player.seek(0.25);
    EXPECT_DOUBLE_EQ(player.currentTime(), 0.5);

    ASSERT_TRUE(player.play());
    ASSERT_TRUE(waitUntilHeard(0.6));
    player.seek(0.9);
    EXPECT_TRUE(player.isPlaybackActive());
    EXPECT_GE(player.currentTime(), 1.8);
    ASSERT_TRUE(waitForCompletions(1));
}

TEST_P(RoutedAudioPlayerTest, ASeekAwayFromTheEndBeforeItIsToldGoesOnPlaying) {
    ASSERT_TRUE(player.load(tone(0.4)));
    ASSERT_TRUE(player.play());
    player.seek(1.0);
    player.seek(0.5);
    EXPECT_EQ(completions, 0);
    ASSERT_TRUE(waitForCompletions(1));
    EXPECT_DOUBLE_EQ(player.currentTime(), 0.4);
    EXPECT_FALSE(player.isPlaybackActive());
}

TEST_P(RoutedAudioPlayerTest, AFileThatIsDeletedWhileItPlaysCanStillBeSoughtIn) {
    const QUrl url = tone(3.0);
    ASSERT_TRUE(player.load(url));
    ASSERT_TRUE(player.play());
    ASSERT_TRUE(waitUntilHeard(0.1));
    ASSERT_TRUE(QFile::remove(url.toLocalFile()));
    player.seek(0.9);
    ASSERT_TRUE(waitForCompletions(1));
    EXPECT_TRUE(failures.isEmpty());
}

TEST_P(RoutedAudioPlayerTest, ALostOutputGoesOnAtTheDefaultFromTheSamePlace) {
    const QString module = session.addOutput(QStringLiteral("usb"));
    ASSERT_TRUE(player.load(tone(1.5)));
    ASSERT_TRUE(player.setOutputDeviceID(outputID(QStringLiteral("usb"))));
    ASSERT_TRUE(player.play());
    ASSERT_TRUE(waitUntilHeard(0.3));
    const double before = player.currentTime();
    session.remove(module);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !player.outputDeviceID().has_value(); }, deadline));

    EXPECT_TRUE(player.isPlaybackActive());
    EXPECT_GE(player.currentTime(), before - 0.05);
    EXPECT_LT(player.currentTime(), 1.5);
    ASSERT_TRUE(waitForCompletions(1));
    EXPECT_EQ(completions, 1);
    EXPECT_TRUE(failures.isEmpty());
}

TEST_P(RoutedAudioPlayerTest, ASeekAtTheMomentTheOutputVanishesGoesOnAtTheDefault) {
    const QString module = session.addOutput(QStringLiteral("usb"));
    const std::uint32_t id = outputID(QStringLiteral("usb"));
    ASSERT_TRUE(player.load(tone(2.0)));
    ASSERT_TRUE(player.setOutputDeviceID(id));
    ASSERT_TRUE(player.play());
    ASSERT_TRUE(waitUntilHeard(0.1));
    session.remove(module);
    // Without a turn of the event loop, so that the player has not been told.
    while (server.devices().findOutput(id))
        QThread::yieldCurrentThread();
    player.seek(0.5);
    player.seek(0.75);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !player.outputDeviceID().has_value(); }, deadline));
    EXPECT_TRUE(player.isPlaybackActive());
    ASSERT_TRUE(waitForCompletions(1));
    EXPECT_TRUE(failures.isEmpty());
}

TEST_P(RoutedAudioPlayerTest, WithTheLastOutputThePlaybackEndsAndSaysSo) {
    ASSERT_TRUE(player.load(tone(5.0)));
    ASSERT_TRUE(player.play());
    ASSERT_TRUE(waitUntilHeard(0.1));
    session.pactl({QStringLiteral("unload-module"), QStringLiteral("module-remap-source")});
    session.pactl({QStringLiteral("unload-module"), QStringLiteral("module-null-sink")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return !failures.isEmpty(); }, deadline));
    EXPECT_EQ(failures, QStringList{QStringLiteral("There is no sound output to play through.")});
    EXPECT_FALSE(player.isPlaybackActive());

    ASSERT_TRUE(QTest::qWaitFor([&] { return server.devices().outputs.isEmpty(); }, deadline));
    const auto played = player.play();
    ASSERT_FALSE(played);
    EXPECT_EQ(played.error().description(), failures.constFirst());
}

TEST_P(RoutedAudioPlayerTest, ADeviceThatIsGoneCanNotBeBound) {
    const QString module = session.addOutput(QStringLiteral("usb"));
    const std::uint32_t id = outputID(QStringLiteral("usb"));
    ASSERT_TRUE(player.load(tone(0.2)));
    ASSERT_TRUE(player.setOutputDeviceID(id));
    session.remove(module);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !server.devices().findOutput(id); }, deadline));

    const auto bound = player.setOutputDeviceID(id);
    ASSERT_FALSE(bound);
    EXPECT_EQ(bound.error().description(),
              QStringLiteral("Could not bind output device %1 with AudioUnitSetProperty. OSStatus: 5").arg(id));
    ASSERT_TRUE(player.setOutputDeviceID({}));
    ASSERT_TRUE(player.play());
    ASSERT_TRUE(waitForCompletions(1));
}

TEST_P(RoutedAudioPlayerTest, AFailedLoadLeavesNothingLoaded) {
    ASSERT_TRUE(player.load(tone(0.2)));
    EXPECT_FALSE(player.load(QUrl::fromLocalFile(folder.filePath(QStringLiteral("missing.wav")))));
    const auto played = player.play();
    ASSERT_FALSE(played);
    EXPECT_EQ(played.error().description(), QStringLiteral("No audio file is loaded."));
}

TEST_P(RoutedAudioPlayerTest, AServerThatDiesEndsThePlaybackWithAReason) {
    ASSERT_TRUE(player.load(tone(5.0)));
    ASSERT_TRUE(player.play());
    ASSERT_TRUE(waitUntilHeard(0.1));
    session.kill();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !failures.isEmpty(); }, deadline));
    EXPECT_FALSE(player.isPlaybackActive());
    EXPECT_EQ(completions, 0);

    const auto played = player.play();
    ASSERT_FALSE(played);
    EXPECT_EQ(played.error().description(), QStringLiteral("The sound server is not available."));
}

TEST_P(RoutedAudioPlayerTest, AServerThatNoLongerAnswersEndsThePlaybackWithAReason) {
    const QString silent = QStringLiteral("The sound server has stopped responding.");
    ASSERT_TRUE(player.load(tone(60.0)));
    ASSERT_TRUE(player.play());
    ASSERT_TRUE(waitUntilHeard(0.1));
    session.suspend();
    EXPECT_TRUE(QTest::qWaitFor([&] { return failures == QStringList{silent}; }, deadline));
    EXPECT_FALSE(player.isPlaybackActive());

    // Nor does it say anything to a new playback, whichever output that is for.
    ASSERT_TRUE(player.setOutputDeviceID(outputID(QStringLiteral("spk_b"))));
    ASSERT_TRUE(player.play());
    EXPECT_TRUE(QTest::qWaitFor([&] { return failures == QStringList({silent, silent}); }, deadline));
    session.resume();
    ASSERT_TRUE(player.play());
    EXPECT_TRUE(waitUntilHeard(0.2));
    EXPECT_EQ(completions, 0);
}

TEST_P(RoutedAudioPlayerTest, AStreamThatSomebodyEndsDoesNotGoOnAtAnotherOutput) {
    ASSERT_TRUE(player.load(tone(60.0)));
    for (const QString &output : {QStringLiteral("spk_b"), QString()}) {
        failures.clear();
        ASSERT_TRUE(player.setOutputDeviceID(output.isEmpty() ? std::nullopt : std::optional(outputID(output))));
        ASSERT_TRUE(player.play());
        ASSERT_TRUE(waitUntilHeard(0.1));
        killStreams();
        ASSERT_TRUE(QTest::qWaitFor([&] { return !failures.isEmpty(); }, deadline));
        EXPECT_EQ(failures, QStringList{QStringLiteral("The sound server ended the playback.")});
        EXPECT_FALSE(player.isPlaybackActive());
    }
}

TEST_P(RoutedAudioPlayerTest, ATakeThatBeginsStopsWhatPlaysAndNothingPlaysDuringIt) {
    RoutedAudioPlayer other(server);
    int interruptions = 0;
    for (RoutedAudioPlayer *each : {&player, &other}) {
        each->setInterruptionHandler([&] { ++interruptions; });
        ASSERT_TRUE(each->load(tone(60.0)));
    }
    ASSERT_TRUE(player.play());
    ASSERT_TRUE(waitUntilHeard(0.1));
    {
        QObject take;
        server.microphone().take(&take, [] {});
        EXPECT_TRUE(server.microphone().isInUse());
        EXPECT_FALSE(player.isPlaybackActive());
        EXPECT_EQ(interruptions, 1);
        for (RoutedAudioPlayer *each : {&player, &other}) {
            const auto played = each->play();
            ASSERT_FALSE(played);
            EXPECT_EQ(played.error().description(), QStringLiteral("Playback isn't possible during a recording."));
        }
    }
    EXPECT_FALSE(server.microphone().isInUse());
    EXPECT_TRUE(player.play());
    EXPECT_EQ(completions, 0);
    EXPECT_TRUE(failures.isEmpty());
}

/// What only PulseAudio has: a limit to the streams of an output, and outputs that can be suspended while they play.
class PulseAudioPlayerTest : public RoutedAudioPlayerTest {};

TEST_P(PulseAudioPlayerTest, AnOutputThatRefusesTheStreamIsAFailureAndTheDefaultStaysSilent) {
    constexpr int mostStreamsOfAnOutput = 256;
    const std::uint32_t id = outputID(QStringLiteral("spk_b"));
    QThreadPool readers;
    readers.setMaxThreadCount(1);
    const auto reader = std::make_shared<AudioFileReader>(
        std::move(AudioFileReader::open(tone(1.0, QStringLiteral("busy.wav")).toLocalFile())).value());
    std::vector<std::unique_ptr<OutputStream>> busy;
    int started = 0;
    const auto ignore = [](const auto &...) {};
    for (int i = 0; i < mostStreamsOfAnOutput; ++i) {
        auto stream = OutputStream::open(server, id, readers, {reader, 48000.0, 1, 0},
                                         {&player, [&] { ++started; }, ignore, ignore, ignore});
        ASSERT_TRUE(stream);
        busy.push_back(std::move(stream).value());
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return started == mostStreamsOfAnOutput; }, deadline));

    ASSERT_TRUE(player.load(tone(5.0)));
    ASSERT_TRUE(player.setOutputDeviceID(id));
    ASSERT_TRUE(player.play());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !failures.isEmpty(); }, deadline));
    EXPECT_TRUE(failures.constFirst().startsWith(
        QStringLiteral("Could not bind output device %1 with AudioUnitSetProperty. OSStatus: ").arg(id)));
    EXPECT_FALSE(player.isPlaybackActive());
    EXPECT_EQ(player.outputDeviceID(), id);
    EXPECT_EQ(completions, 0);
}

TEST_P(PulseAudioPlayerTest, AnOutputThatStandsStillEndsThePlaybackWithAReason) {
    ASSERT_TRUE(player.load(tone(60.0)));
    ASSERT_TRUE(player.play());
    ASSERT_TRUE(waitUntilHeard(0.1));
    session.pactl({QStringLiteral("suspend-sink"), QStringLiteral("spk_a"), QStringLiteral("1")});
    EXPECT_TRUE(QTest::qWaitFor([&] { return !failures.isEmpty(); }, deadline));
    EXPECT_EQ(failures, QStringList{QStringLiteral("The sound output has stopped responding.")});
    EXPECT_FALSE(player.isPlaybackActive());
}

INSTANTIATE_TEST_SUITE_P(On, RoutedAudioPlayerTest, bothServers(), serverName);
INSTANTIATE_TEST_SUITE_P(On, PulseAudioPlayerTest, ::testing::Values(testing::SoundServerSession::Kind::PulseAudio),
                         serverName);

} // namespace
} // namespace orlenta::audio
