#include "audio/playback/PlaybackController.h"

#include <QtCore/QFile>

#include "audio/AudioTestFiles.h"
#include "audio/SoundServerTest.h"

namespace orlenta::audio {
namespace {

PlaybackLineId newLineId() {
    return base::TypedId<struct AnyRecord>::create();
}

class PlaybackControllerTest : public SoundServerTest {
protected:
    [[nodiscard]] PlaybackLine line(double seconds, const QString &name) {
        return {newLineId(), tone(seconds, name + QStringLiteral(".wav"))};
    }
    [[nodiscard]] bool waitUntilSilent() {
        return QTest::qWaitFor([&] { return !playback.isPlaying(); }, deadline);
    }

    AudioDeviceMonitor monitor{server, defaults};
    OutputRoutingDiagnostics diagnostics;
    PlaybackController playback{server, defaults, monitor, diagnostics};
    QSignalSpy failed{&playback, &PlaybackController::playbackFailed};
};

TEST_P(PlaybackControllerTest, ASingleLinePlaysToItsEndAndLeavesNoPlayhead) {
    const PlaybackLine spoken = line(0.3, QStringLiteral("spoken"));
    QSignalSpy progress(&playback, &PlaybackController::playbackProgressChanged);
    playback.playLine(spoken);

    EXPECT_TRUE(playback.isPlaying());
    EXPECT_TRUE(playback.isCurrentGenerated(spoken.id));
    EXPECT_FALSE(playback.isPlayingSource(spoken.id));
    ASSERT_TRUE(waitUntilSilent());
    EXPECT_GT(progress.count(), 2);
    EXPECT_FALSE(playback.currentlyPlayingLineID().has_value());
    EXPECT_EQ(playback.playbackProgress(), 0.0);
    EXPECT_EQ(failed.count(), 0);
}

TEST_P(PlaybackControllerTest, ASequencePlaysWhatExistsAndReturnsToItsFirstLine) {
    const PlaybackLine first = line(0.2, QStringLiteral("first"));
    const PlaybackLine second = line(0.2, QStringLiteral("second"));
    const PlaybackLine missing{newLineId(), QUrl::fromLocalFile(folder.filePath(QStringLiteral("no.wav")))};
    QList<PlaybackLineId> heard;
    QObject::connect(&playback, &PlaybackController::currentlyPlayingLineIDChanged, &playback, [&] {
        if (playback.currentlyPlayingLineID())
            heard.append(*playback.currentlyPlayingLineID());
    });
    playback.playAll({missing, first, second});
    EXPECT_TRUE(playback.isPlayingSequence());
    ASSERT_TRUE(waitUntilSilent());

    EXPECT_EQ(heard, (QList<PlaybackLineId>{first.id, second.id, first.id}));
    EXPECT_FALSE(playback.isPlayingSequence());
    EXPECT_EQ(playback.currentlyPlayingLineID(), first.id);

    playback.playLine(second);
    playback.playAll({missing});
    EXPECT_TRUE(playback.isCurrentGenerated(second.id));
}

TEST_P(PlaybackControllerTest, AFileThatVanishesBeforeItsTurnEndsTheSequenceWithAReason) {
    const PlaybackLine first = line(0.3, QStringLiteral("first"));
    const PlaybackLine second = line(0.2, QStringLiteral("second"));
    playback.playAll({first, second, first});
    QFile::remove(second.url.toLocalFile());
    ASSERT_TRUE(QTest::qWaitFor([&] { return failed.count() == 1; }, deadline));

    EXPECT_TRUE(failed.constFirst().constFirst().toString().contains(QStringLiteral("second.wav")));
    EXPECT_FALSE(playback.isPlaying());
    EXPECT_FALSE(playback.currentlyPlayingLineID().has_value());
}

TEST_P(PlaybackControllerTest, AClickInAWaveformPlaysFromThere) {
    const PlaybackLine spoken = line(2.0, QStringLiteral("spoken"));
    playback.seek(spoken, 0.5);
    EXPECT_TRUE(playback.isPlaying());
    EXPECT_GE(playback.playbackProgress(), 0.5);

    // The same file by another way is still the same place.
    const QString link = folder.filePath(QStringLiteral("link.wav"));
    ASSERT_TRUE(QFile::link(spoken.url.toLocalFile(), link));
    playback.seek({spoken.id, QUrl::fromLocalFile(link)}, 0.1);
    EXPECT_EQ(playback.playbackProgress(), 0.1);

    playback.playSource(spoken);
    EXPECT_TRUE(playback.isPlayingSource(spoken.id));
    playback.seek(spoken, 0.2);
    EXPECT_TRUE(playback.isCurrentGenerated(spoken.id));

    playback.seek(spoken, 1.5);
    ASSERT_TRUE(waitUntilSilent());
    EXPECT_EQ(failed.count(), 0);
}

TEST_P(PlaybackControllerTest, AStopMayKeepThePlace) {
    const PlaybackLine spoken = line(2.0, QStringLiteral("spoken"));
    playback.seek(spoken, 0.5);
    playback.stop(PlayheadReset::KeepPlace);
    EXPECT_FALSE(playback.isPlaying());
    EXPECT_EQ(playback.currentlyPlayingLineID(), spoken.id);
    EXPECT_GE(playback.playbackProgress(), 0.5);
    playback.stop(PlayheadReset::Reset);
    EXPECT_EQ(playback.playbackProgress(), 0.0);
}

TEST_P(PlaybackControllerTest, AChosenOutputThatIsMissingMeansTheDefaultWithoutAnError) {
    const PlaybackLine spoken = line(0.2, QStringLiteral("spoken"));
    diagnostics.recordRoutingFailure(QStringLiteral("an old failure"), QStringLiteral("test"));
    defaults.setOutputDeviceUID(QStringLiteral("unplugged"));
    playback.playLine(spoken);

    EXPECT_TRUE(playback.isPlaying());
    EXPECT_FALSE(diagnostics.lastRoutingErrorMessage().has_value());
    EXPECT_EQ(defaults.outputDeviceUID(), QStringLiteral("unplugged"));
    ASSERT_TRUE(waitUntilSilent());
    EXPECT_EQ(failed.count(), 0);
}

TEST_P(PlaybackControllerTest, TwoWindowsPlayAtOnceEachItsOwn) {
    PlaybackController other(server, defaults, monitor, diagnostics);
    const PlaybackLine here = line(0.3, QStringLiteral("here"));
    const PlaybackLine there = line(0.3, QStringLiteral("there"));
    playback.playLine(here);
    other.playLine(there);
    EXPECT_TRUE(playback.isCurrentGenerated(here.id));
    EXPECT_TRUE(other.isCurrentGenerated(there.id));
    other.stop(PlayheadReset::Reset);
    EXPECT_TRUE(playback.isPlaying());
    ASSERT_TRUE(waitUntilSilent());
}

TEST_P(PlaybackControllerTest, WithoutASoundServerPlayingSaysWhatIsWrong) {
    const PlaybackLine spoken = line(0.2, QStringLiteral("spoken"));
    session.kill();
    ASSERT_TRUE(QTest::qWaitFor([&] { return server.state() != SoundServer::State::Ready; }, deadline));
    playback.playLine(spoken);

    ASSERT_EQ(failed.count(), 1);
    EXPECT_EQ(failed.constFirst().constFirst().toString(), QStringLiteral("The sound server is not available."));
    EXPECT_EQ(diagnostics.lastRoutingErrorMessage(), QStringLiteral("The sound server is not available."));
    EXPECT_FALSE(playback.isPlaying());
}

TEST_P(PlaybackControllerTest, AFileDamagedInItsMiddleIsToldButIsNoFaultOfTheOutput) {
    const test::AudioTestFolder files;
    files.write(QStringLiteral("in.wav"), test::noise(48000, 16), {48000, 1, test::wav16});
    files.run(QStringLiteral("ffmpeg"), QStringLiteral("-i in.wav -c:a alac -y damaged.m4a"));
    QByteArray bytes = test::bytesOf(files.path(QStringLiteral("damaged.m4a")));
    bytes.replace(bytes.size() / 2, 8192, QByteArray(8192, '\0'));
    const QUrl url = QUrl::fromLocalFile(files.writeBytes(QStringLiteral("damaged.m4a"), bytes));
    playback.playLine({newLineId(), url});
    ASSERT_TRUE(QTest::qWaitFor([&] { return failed.count() == 1; }, deadline));

    EXPECT_TRUE(failed.constFirst().constFirst().toString().contains(QStringLiteral("damaged.m4a")));
    EXPECT_FALSE(playback.isPlaying());
    EXPECT_FALSE(diagnostics.lastRoutingErrorMessage().has_value());
}

TEST_P(PlaybackControllerTest, TheChosenOutputIsTheOneThatPlaysAlsoAfterASeekFromAStop) {
    const auto playsTo = [&](const QString &output) {
        const QString index = session.pactl({QStringLiteral("list"), QStringLiteral("short"), QStringLiteral("sinks")})
                                  .split(QLatin1Char('\n'))
                                  .filter(QLatin1Char('\t') + output + QLatin1Char('\t'))
                                  .value(0)
                                  .section(QLatin1Char('\t'), 0, 0);
        return QTest::qWaitFor(
            [&] {
                const QString stream =
                    session.pactl({QStringLiteral("list"), QStringLiteral("short"), QStringLiteral("sink-inputs")});
                return !stream.contains(QLatin1Char('\n')) && stream.section(QLatin1Char('\t'), 1, 1) == index;
            },
            deadline);
    };
    const PlaybackLine spoken = line(20.0, QStringLiteral("spoken"));
    defaults.setOutputDeviceUID(QStringLiteral("spk_b"));
    playback.playLine(spoken);
    EXPECT_TRUE(playsTo(QStringLiteral("spk_b")));
    playback.stop(PlayheadReset::KeepPlace);
    defaults.setOutputDeviceUID(QStringLiteral("mic_feed"));
    playback.seek(spoken, 0.5);
    EXPECT_TRUE(playsTo(QStringLiteral("mic_feed")));
    playback.stop(PlayheadReset::KeepPlace);
    defaults.setOutputDeviceUID(QStringLiteral("unplugged"));
    playback.seek(spoken, 0.5);
    EXPECT_TRUE(playsTo(QStringLiteral("spk_a")));
    EXPECT_EQ(failed.count(), 0);
}

INSTANTIATE_TEST_SUITE_P(On, PlaybackControllerTest, bothServers(), serverName);

} // namespace
} // namespace orlenta::audio
