#pragma once

#include <algorithm>
#include <optional>
#include <vector>

#include "audio/AudioTestFiles.h"
#include "audio/playback/RoutedAudioPlayer.h"
#include "audio/SoundServerTest.h"

namespace orlenta::audio {

/// A sound server with microphones that hear what the test plays.
class RecordingTest : public SoundServerTest {
protected:
    /// Adds a microphone that hears what is played to `output`, as the server wants it; gives what unplugs it.
    QString addMicrophone(const QString &name, const QString &output = QStringLiteral("mic_feed"), int rate = 44100) {
        const QString module = session.pactl(
            {QStringLiteral("load-module"), QStringLiteral("module-remap-source"),
             QStringLiteral("source_name=") + name, QStringLiteral("master=%1.monitor").arg(output),
             QStringLiteral("channels=1"), QStringLiteral("channel_map=mono"),
             QStringLiteral("master_channel_map=") +
                 (output == QStringLiteral("mic_feed") ? QStringLiteral("mono") : QStringLiteral("front-left")),
             QStringLiteral("rate=%1").arg(rate), QStringLiteral("remix=no"),
             QStringLiteral("source_properties=device.description=") + name});
        (void)QTest::qWaitFor([&] { return hasInput(name); }, deadline);
        return module;
    }
    void unplug(const QString &name, const QString &module) {
        session.remove(module);
        (void)QTest::qWaitFor([&] { return !hasInput(name); }, deadline);
    }
    [[nodiscard]] bool hasInput(const QString &name) const { return server.devices().findInput(name) != nullptr; }
    [[nodiscard]] QString defaultInput() { return session.pactl({QStringLiteral("get-default-source")}); }
    void makeDefaultInput(const QString &name) {
        session.pactl({QStringLiteral("set-default-source"), name});
        (void)QTest::qWaitFor([&] { return server.devices().defaultInputUID == name; }, deadline);
    }
    /// Plays a file to where the microphones hear it.
    [[nodiscard]] bool speak(const QUrl &url, const QString &output = QStringLiteral("mic_feed")) {
        (void)QTest::qWaitFor([&] { return room.devices().findOutput(output) != nullptr; }, deadline);
        return speaker.load(url) && speaker.setOutputDeviceID(outputID(output)) && speaker.play() &&
               QTest::qWaitFor([&] { return speaker.currentTime() > 0.0; }, deadline);
    }

    /// What sounds in the room, which is another program's doing.
    SoundServer room{session.address()};
    RoutedAudioPlayer speaker{room};
};

/// A stretch of a recording that is the original, sample for sample.
struct MatchedStretch {
    size_t inOriginal = 0;
    size_t inRecording = 0;
    size_t length = 0;
};

/// The longest such stretch, looked for from places all over the original; a sample may be one 16-bit step off.
[[nodiscard]] inline MatchedStretch longestMatch(const std::vector<double> &original,
                                                 const std::vector<double> &recording) {
    constexpr size_t keyLength = 32;
    constexpr double oneStep = 1.01 / 32768.0;
    const auto equal = [](double a, double b) { return std::abs(a - b) <= oneStep; };
    MatchedStretch best;
    for (size_t at = 0; at + keyLength <= original.size(); at += original.size() / 20) {
        const auto key = original.begin() + static_cast<std::ptrdiff_t>(at);
        const auto found = std::search(recording.begin(), recording.end(), key, key + keyLength, equal);
        if (found == recording.end())
            continue;
        MatchedStretch match{at, static_cast<size_t>(found - recording.begin()), keyLength};
        for (; match.inOriginal > 0 && match.inRecording > 0 &&
               equal(original[match.inOriginal - 1], recording[match.inRecording - 1]);
             ++match.length)
            --match.inOriginal, --match.inRecording;
        while (match.inOriginal + match.length < original.size() &&
               match.inRecording + match.length < recording.size() &&
               equal(original[match.inOriginal + match.length], recording[match.inRecording + match.length]))
            ++match.length;
        if (match.length > best.length)
            best = match;
    }
    return best;
}

} // namespace orlenta::audio
