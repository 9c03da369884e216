#include "audio/recording/AudioRecorder.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>

#include "audio/files/AudioFileReader.h"
#include "audio/files/WavHeader.h"
#include "audio/recording/MicrophonePermission.h"
#include "audio/recording/RecordingWriter.h"
#include "audio/RecordingTest.h"
#include "audio/ToneMeasurement.h"
#include "base/files/PrivateFolders.h"
#include "base/files/RegularFile.h"
#include "support/FileSizeLimit.h"
#include "support/KeptLog.h"

namespace orlenta::audio {
namespace {

class AudioRecorderTest : public RecordingTest {
protected:
    void SetUp() override {
        RecordingTest::SetUp();
        recorder.setOnSpontaneousFinish([this](double duration, const QUrl &url) {
            partialTakes.append(url);
            partialDuration = duration;
        });
    }
    [[nodiscard]] bool start() {
        recorder.startRecording();
        return QTest::qWaitFor([&] { return recorder.isRecording(); }, deadline);
    }
    [[nodiscard]] bool waitForSeconds(double seconds) {
        return QTest::qWaitFor([&] { return recorder.recordingDuration() >= seconds; }, deadline);
    }
    [[nodiscard]] bool stopAndWait() {
        recorder.stopRecording();
        return QTest::qWaitFor([&] { return finished.count() == 1; }, deadline);
    }
    [[nodiscard]] bool waitForError(const QString &message) {
        return QTest::qWaitFor([&] { return recorder.errorMessage() == message; }, deadline);
    }
    /// How many listen to inputs, as the server tells it.
    [[nodiscard]] qsizetype listeners() {
        return session.pactl({QStringLiteral("list"), QStringLiteral("short"), QStringLiteral("source-outputs")})
            .split(QLatin1Char('\n'), Qt::SkipEmptyParts)
            .size();
    }
    [[nodiscard]] std::vector<double> recorded() const { return test::readAll(recorder.recordedURL().toLocalFile()); }

    AudioInputRouteManager routes{server, defaults};
    MicrophonePermission permission{server};
    AudioRecorder recorder{AudioRecorder::Parts{server, defaults, routes, permission}};
    QSignalSpy finished{&recorder, &AudioRecorder::recordingFinished};
    QList<QUrl> partialTakes;
    double partialDuration = 0.0;
};

/// What only PulseAudio has: inputs of 44100 Hz, where PipeWire runs them at 48000 Hz and no file of 44100 Hz can hold
/// that sample for sample; and a limit to the streams of one source.
class PulseAudioRecorderTest : public AudioRecorderTest {};

TEST_P(PulseAudioRecorderTest, WhatTheMicrophoneHearsIsInTheFileSampleForSample) {
    addMicrophone(QStringLiteral("mic_b"));
    defaults.setInputDeviceUID(QStringLiteral("mic_b"));
    const std::vector<double> words = test::noise(44100 * 2, 16);
    const test::AudioTestFolder files;
    const QUrl spoken = QUrl::fromLocalFile(files.write(QStringLiteral("words.wav"), words, {44100, 1, test::wav16}));
    // On a machine this busy the player itself may run dry once.
    MatchedStretch match;
    for (int attempt = 0; attempt < 4 && match.length < 22050; ++attempt) {
        finished.clear();
        ASSERT_TRUE(start());
        ASSERT_TRUE(speak(spoken));
        ASSERT_TRUE(QTest::qWaitFor([&] { return speaker.currentTime() > 1.0; }, deadline));
        const double heardAtStop = speaker.currentTime();
        ASSERT_TRUE(stopAndWait());
        speaker.stop();
        match = longestMatch(words, recorded());
        RecordProperty(
            "endAfterStop_ms",
            std::to_string(1000 * (static_cast<double>(match.inOriginal + match.length) / 44100.0 - heardAtStop)));
    }
    EXPECT_GE(match.length, 22050U);

    auto reader = AudioFileReader::open(recorder.recordedURL().toLocalFile());
    ASSERT_TRUE(reader);
    EXPECT_EQ(reader->format().sampleRate, 44100.0);
    EXPECT_EQ(reader->format().channelCount, 1);
    EXPECT_EQ(reader->format().bitDepth, 16);
    const double seconds = static_cast<double>(reader.value().frames()) / 44100.0;
    EXPECT_DOUBLE_EQ(finished.constFirst().at(0).toDouble(), seconds);
    EXPECT_EQ(finished.constFirst().at(1).toUrl(), recorder.recordedURL());
    EXPECT_DOUBLE_EQ(recorder.recordingDuration(), seconds);
    EXPECT_TRUE(partialTakes.isEmpty());
    EXPECT_EQ(defaultInput(), QStringLiteral("mic_a"));
    EXPECT_EQ(recorder.recordedURL().toLocalFile().section(u'/', 0, -2), base::PrivateFolders::caches());
}

TEST_P(PulseAudioRecorderTest, ASourceThatCanNotBeOpenedEitherWayLeavesTheDefaultInputAsItWas) {
    addMicrophone(QStringLiteral("mic_b"));
    makeDefaultInput(QStringLiteral("mic_a"));
    defaults.setInputDeviceUID(QStringLiteral("mic_b"));
    constexpr int mostStreamsOfASource = 256;
    auto writer =
        RecordingWriter::create(folder.filePath(QStringLiteral("busy.wav")), 44100, {&recorder, [](qint64) {}, {}});
    ASSERT_TRUE(writer);
    std::vector<std::unique_ptr<InputStream>> listeners;
    int listening = 0;
    for (int i = 0; i < mostStreamsOfASource; ++i) {
        auto stream = InputStream::open(server, {"mic_b", 44100}, *writer.value(),
                                        {&recorder, [&] { ++listening; }, [](InputStream::End, const QString &) {}});
        ASSERT_TRUE(stream);
        listeners.push_back(std::move(stream).value());
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return listening == mostStreamsOfASource; }, deadline));
    const testing::KeptLog log;
    recorder.startRecording();
    EXPECT_TRUE(waitForError(QStringLiteral("Couldn't start recording. Check your microphone and try again.")));
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_EQ(log.lines(QStringLiteral("AudioRecorder applying input device: uid=mic_b")).size(), 1);
    EXPECT_EQ(defaultInput(), QStringLiteral("mic_a"));
    EXPECT_EQ(defaults.pendingInputRouteRestoreDeviceUID(), QString());

    listeners.clear();
    ASSERT_TRUE(start());
    EXPECT_FALSE(recorder.errorMessage().has_value());
}

TEST_P(AudioRecorderTest, ATakeLastsUntilTheStopAndNotJustUntilTheLastDelivery) {
    ASSERT_TRUE(start());
    QElapsedTimer recording;
    recording.start();
    ASSERT_TRUE(waitForSeconds(0.5));
    const double atStop = static_cast<double>(recording.elapsed()) / 1000.0;
    QElapsedTimer stopping;
    stopping.start();
    ASSERT_TRUE(stopAndWait());
    RecordProperty("takeMinusClock_ms", std::to_string(1000 * (recorder.recordingDuration() - atStop)));
    RecordProperty("stopToFile_ms", std::to_string(stopping.elapsed()));

    EXPECT_NEAR(recorder.recordingDuration(), atStop, 0.08);
    EXPECT_FALSE(recorder.isRecording());
}

TEST_P(AudioRecorderTest, AMicrophoneOfAnotherRateIsConvertedFaithfully) {
    session.addOutput(QStringLiteral("studio"), 48000);
    addMicrophone(QStringLiteral("studio_mic"), QStringLiteral("studio"), 48000);
    defaults.setInputDeviceUID(QStringLiteral("studio_mic"));
    const QUrl spoken = testing::writeTone(folder.filePath(QStringLiteral("a.wav")), 3.0, 48000, 997.0);
    test::ToneMeasurement measured;
    for (int attempt = 0; attempt < 4 && measured.sinad < 80.0; ++attempt) {
        finished.clear();
        ASSERT_TRUE(speak(spoken, QStringLiteral("studio")));
        ASSERT_TRUE(start());
        ASSERT_TRUE(waitForSeconds(0.8));
        ASSERT_TRUE(stopAndWait());
        const std::vector<double> samples = recorded();
        ASSERT_GT(samples.size(), 30000U);
        measured = test::measureTone(std::span(samples).subspan(8820, 17640), 997.0, 44100.0);
    }
    RecordProperty("sinad_dB", std::to_string(measured.sinad));
    EXPECT_NEAR(measured.peak, 0.5, 0.001);
    EXPECT_GE(measured.sinad, 80.0);
}

TEST_P(AudioRecorderTest, AnUnpluggedMicrophoneGivesThePartialTake) {
    const QString module = addMicrophone(QStringLiteral("mic_b"));
    defaults.setInputDeviceUID(QStringLiteral("mic_b"));
    ASSERT_TRUE(start());
    ASSERT_TRUE(waitForSeconds(0.3));
    unplug(QStringLiteral("mic_b"), module);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !partialTakes.isEmpty(); }, deadline));

    EXPECT_FALSE(recorder.isRecording());
    EXPECT_FALSE(recorder.errorMessage().has_value());
    EXPECT_EQ(partialTakes, QList<QUrl>{recorder.recordedURL()});
    EXPECT_EQ(finished.count(), 0);
    EXPECT_GE(partialDuration, 0.3);
    EXPECT_DOUBLE_EQ(static_cast<double>(recorded().size()) / 44100.0, partialDuration);

    // The choice stands, and meanwhile the system's default serves.
    ASSERT_TRUE(start());
    ASSERT_TRUE(waitForSeconds(0.1));
    ASSERT_TRUE(stopAndWait());
    EXPECT_FALSE(recorder.errorMessage().has_value());
    EXPECT_EQ(defaults.inputDeviceUID(), QStringLiteral("mic_b"));
}

TEST_P(AudioRecorderTest, AServerThatDiesGivesThePartialTake) {
    ASSERT_TRUE(start());
    ASSERT_TRUE(waitForSeconds(0.2));
    session.kill();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !partialTakes.isEmpty(); }, deadline));
    EXPECT_GE(recorded().size(), 8820U);

    recorder.startRecording();
    ASSERT_TRUE(waitForError(QStringLiteral("Couldn't start recording. The sound server is not available.")));
    EXPECT_FALSE(recorder.permissionDenied());
    EXPECT_FALSE(recorder.isRecording());
}

TEST_P(AudioRecorderTest, ASecondStartIsRefusedAndLeavesTheTakeAlone) {
    recorder.stopRecording();
    recorder.startRecording();
    recorder.startRecording();
    EXPECT_EQ(recorder.errorMessage(), QStringLiteral("Recording is already in progress."));
    ASSERT_TRUE(QTest::qWaitFor([&] { return recorder.isRecording(); }, deadline));
    ASSERT_TRUE(waitForSeconds(0.1));
    ASSERT_TRUE(stopAndWait());
    recorder.startRecording();
    EXPECT_FALSE(recorder.errorMessage().has_value());
}

TEST_P(AudioRecorderTest, ATakeBegunRightAfterAStopWaitsUntilTheLastOneIsComplete) {
    ASSERT_TRUE(start());
    ASSERT_TRUE(waitForSeconds(0.3));
    recorder.stopRecording();
    recorder.startRecording(); // the last samples are still on their way
    EXPECT_FALSE(recorder.errorMessage().has_value());
    EXPECT_TRUE(recorder.isStarting());
    ASSERT_TRUE(QTest::qWaitFor([&] { return finished.count() == 1; }, deadline));
    EXPECT_GE(finished.constFirst().at(0).toDouble(), 0.3);
    const QUrl first = recorder.recordedURL();
    ASSERT_TRUE(QTest::qWaitFor([&] { return recorder.isRecording(); }, deadline));
    ASSERT_TRUE(waitForSeconds(0.1));
    recorder.stopRecording();
    recorder.startRecording();
    recorder.stopRecording(); // which calls only the second one off
    ASSERT_TRUE(QTest::qWaitFor([&] { return finished.count() == 2; }, deadline));
    EXPECT_NE(recorder.recordedURL(), first);
    EXPECT_FALSE(recorder.hasUnfinishedTake());
    EXPECT_FALSE(recorder.errorMessage().has_value());
}

TEST_P(AudioRecorderTest, ATakeTakesTheMicrophoneFromAnotherAndStopsWhatPlays) {
    RoutedAudioPlayer player(server);
    ASSERT_TRUE(player.load(tone(60.0)));
    ASSERT_TRUE(player.play());
    ASSERT_TRUE(start());
    EXPECT_FALSE(player.isPlaybackActive());
    EXPECT_TRUE(server.microphone().isInUse());
    EXPECT_FALSE(player.play());
    ASSERT_TRUE(waitForSeconds(0.2));

    AudioRecorder other({server, defaults, routes, permission});
    other.startRecording();
    EXPECT_FALSE(recorder.isRecording());
    ASSERT_TRUE(QTest::qWaitFor([&] { return finished.count() == 1 && other.isRecording(); }, deadline));
    EXPECT_GE(finished.constFirst().at(0).toDouble(), 0.2);
    EXPECT_TRUE(partialTakes.isEmpty());
    other.stopRecording();
    EXPECT_FALSE(server.microphone().isInUse());
    EXPECT_TRUE(player.play());
}

TEST_P(AudioRecorderTest, AServerThatNoLongerAnswersGivesThePartialTakeAndSaysWhy) {
    ASSERT_TRUE(start());
    ASSERT_TRUE(waitForSeconds(0.2));
    session.suspend();
    ASSERT_TRUE(waitForError(QStringLiteral("The sound server has stopped responding.")));
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_EQ(partialTakes, QList<QUrl>{recorder.recordedURL()});
    EXPECT_GE(partialDuration, 0.2);
    EXPECT_FALSE(server.microphone().isInUse());

    // Nor does it open a microphone, by whichever name.
    recorder.startRecording();
    ASSERT_TRUE(waitForError(QStringLiteral("Couldn't start recording. The sound server has stopped responding.")));
    EXPECT_FALSE(recorder.hasUnfinishedTake());
    session.resume();
    EXPECT_TRUE(start());
}

TEST_P(AudioRecorderTest, ATakeStoppedBeforeItsMicrophoneOpensIsCalledOffWithoutATrace) {
    const QDir caches(base::PrivateFolders::caches());
    const QStringList before = caches.entryList(QDir::Files);
    const qsizetype listenersBefore = listeners();
    QSignalSpy ended(&recorder, &AudioRecorder::takeEnded);
    recorder.startRecording();
    EXPECT_TRUE(recorder.isStarting());
    recorder.stopRecording();
    EXPECT_FALSE(recorder.hasUnfinishedTake());
    ASSERT_TRUE(QTest::qWaitFor([&] { return ended.count() == 1; }, deadline));
    EXPECT_EQ(caches.entryList(QDir::Files), before);
    EXPECT_FALSE(recorder.errorMessage().has_value());
    EXPECT_TRUE(QTest::qWaitFor([&] { return listeners() == listenersBefore; }, deadline));

    ASSERT_TRUE(start());
    ASSERT_TRUE(waitForSeconds(0.1));
    ASSERT_TRUE(stopAndWait());
    EXPECT_EQ(finished.count(), 1);
}

TEST_P(AudioRecorderTest, WithoutAnyInputTheReasonIsTold) {
    session.pactl({QStringLiteral("unload-module"), QStringLiteral("module-remap-source")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return server.devices().inputs.isEmpty(); }, deadline));
    recorder.startRecording();
    EXPECT_EQ(recorder.errorMessage(),
              QStringLiteral("Microphone status unavailable. Check System Settings > Privacy > Microphone"));
}

TEST_P(AudioRecorderTest, ARefusedMicrophoneIsTriedAgainOnceTheUserHasBeenTold) {
    permission.noteRefusal();
    recorder.startRecording();
    EXPECT_EQ(recorder.errorMessage(),
              QStringLiteral("Microphone blocked. Enable it in System Settings > Privacy > Microphone"));
    ASSERT_TRUE(start());
    EXPECT_FALSE(recorder.permissionDenied());
}

TEST_P(AudioRecorderTest, ATakeBegunWhileTheServerIsBeingReachedWaitsForIt) {
    SoundServer fresh(session.address());
    MicrophonePermission asked(fresh);
    AudioRecorder early({fresh, defaults, routes, asked});
    EXPECT_EQ(asked.authorizationStatus(), MicrophoneAuthorization::NotDetermined);
    early.startRecording();
    ASSERT_TRUE(QTest::qWaitFor([&] { return early.isRecording(); }, deadline));
    EXPECT_EQ(asked.authorizationStatus(), MicrophoneAuthorization::Authorized);
}

TEST_P(AudioRecorderTest, ATakeBegunWhileTheServerIsBeingReachedGivesUpOnOneThatNeverAnswers) {
    session.suspend();
    SoundServer silent(session.address());
    MicrophonePermission asked(silent);
    AudioRecorder early({silent, defaults, routes, asked});
    early.startRecording();
    EXPECT_TRUE(early.isStarting());
    ASSERT_TRUE(QTest::qWaitFor([&] { return early.errorMessage().has_value(); }, deadline));
    EXPECT_EQ(early.errorMessage(), QStringLiteral("Couldn't start recording. The sound server is not available."));
    EXPECT_FALSE(early.hasUnfinishedTake());
    session.resume();
    EXPECT_TRUE(QTest::qWaitFor([&] { return silent.state() == SoundServer::State::Ready; }, deadline));
}

TEST_P(AudioRecorderTest, ATakeThatIsCalledOffWhileTheServerIsBeingReachedDoesNotBegin) {
    SoundServer fresh(session.address());
    MicrophonePermission asked(fresh);
    AudioRecorder early({fresh, defaults, routes, asked});
    early.startRecording();
    EXPECT_TRUE(early.isStarting());
    early.stopRecording();
    EXPECT_FALSE(early.hasUnfinishedTake());
    bool isAnswered = false;
    asked.requestAccess(&early, [&](bool) { isAnswered = true; }); // answered after the recorder's own
    ASSERT_TRUE(QTest::qWaitFor([&] { return isAnswered; }, deadline));
    EXPECT_FALSE(early.hasUnfinishedTake());

    early.startRecording();
    EXPECT_TRUE(QTest::qWaitFor([&] { return early.isRecording(); }, deadline));
}

TEST_P(AudioRecorderTest, AFullDiskIsToldAndWhatWasRecordedStaysReadable) {
    const QDir caches(base::PrivateFolders::caches());
    const QStringList before = caches.entryList(QDir::Files);
    ASSERT_TRUE(start());
    {
        const testing::FileSizeLimit limit(30000);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !recorder.isRecording(); }, deadline));
    }
    ASSERT_TRUE(recorder.errorMessage().has_value());
    EXPECT_TRUE(recorder.errorMessage()->startsWith(QStringLiteral("Recording error: ")))
        << qPrintable(*recorder.errorMessage());
    EXPECT_FALSE(recorder.errorMessage()->contains(QStringLiteral("direction_")));
    EXPECT_TRUE(recorder.recordedURL().isEmpty());
    EXPECT_TRUE(partialTakes.isEmpty());
    QStringList left = caches.entryList(QDir::Files);
    left.removeIf([&](const QString &name) { return before.contains(name); });
    ASSERT_EQ(left.size(), 1);
    EXPECT_EQ(recorder.keptRecording(), QUrl::fromLocalFile(caches.filePath(left.constFirst())));
    EXPECT_GT(test::readAll(recorder.keptRecording().toLocalFile()).size(), 10000U);
    const auto kept = base::openRegularFile(recorder.keptRecording().toLocalFile());
    ASSERT_TRUE(kept);
    EXPECT_TRUE(WavLayout::read(kept->descriptor.get(), kept->size)) << "a header that tells the length";
    recorder.dismissError();
    EXPECT_TRUE(recorder.keptRecording().isEmpty());
}

TEST_P(AudioRecorderTest, AKilledProcessWouldLeaveAReadableFile) {
    ASSERT_TRUE(start());
    ASSERT_TRUE(waitForSeconds(0.3));
    QStringList files = QDir(base::PrivateFolders::caches()).entryList(QDir::Files, QDir::Time);
    ASSERT_FALSE(files.isEmpty());
    const QString copy = folder.filePath(QStringLiteral("asTheCrashLeftIt.wav"));
    ASSERT_TRUE(QFile::copy(base::PrivateFolders::caches() + u'/' + files.constFirst(), copy));
    EXPECT_GE(test::readAll(copy).size(), 4410U);
    ASSERT_TRUE(stopAndWait());
}

INSTANTIATE_TEST_SUITE_P(On, PulseAudioRecorderTest, ::testing::Values(testing::SoundServerSession::Kind::PulseAudio),
                         serverName);
INSTANTIATE_TEST_SUITE_P(On, AudioRecorderTest, bothServers(), serverName);

} // namespace
} // namespace orlenta::audio
