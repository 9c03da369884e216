#include "audio/playback/RoutedAudioPlayer.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QThread>

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

INSTANTIATE_TEST_SUITE_P(On, RoutedAudioPlayerTest, bothServers(), serverName);

} // namespace
} // namespace orlenta::audio
