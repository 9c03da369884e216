#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include <QtCore/QObject>
#include <QtCore/QThreadPool>
#include <QtCore/QUrl>

#include "audio/playback/OutputStream.h"
#include "audio/playback/RoutedAudioPlayerError.h"
#include "base/Result.h"

namespace orlenta::audio {

class AudioFileReader;
class SoundServer;

/// Plays one audio file through one output, whatever the system's default is. When the chosen output vanishes in
/// mid-playback it goes on at the default one, at the same place. A take that begins (SharedMicrophone) stops it. Main
/// thread; files are streamed, not loaded.
class RoutedAudioPlayer final : public QObject {
    Q_OBJECT
public:
    using Outcome = base::Result<void, RoutedAudioPlayerError>;

    explicit RoutedAudioPlayer(SoundServer &server, QObject *parent = nullptr);
    ~RoutedAudioPlayer() override;

    /// Called when playback has come to its natural end, or could not be taken to the default output.
    void setCompletionHandler(std::function<void()> handler) { m_completionHandler = std::move(handler); }
    /// Called when a playback ends for any other reason than its natural end or a call: play() succeeds before the
    /// output has accepted the stream, so that this can also be its failure.
    void setFailureHandler(std::function<void(const RoutedAudioPlayerError &)> handler) {
        m_failureHandler = std::move(handler);
    }
    /// Called when a take that begins has stopped the playback.
    void setInterruptionHandler(std::function<void()> handler) { m_interruptionHandler = std::move(handler); }

    /// The file that is loaded; empty for none.
    [[nodiscard]] QUrl loadedURL() const { return m_file ? m_file->url : QUrl(); }
    /// Length of the loaded file in seconds, 0 without one.
    [[nodiscard]] double duration() const;
    /// The place that is heard, in seconds from the file's start.
    [[nodiscard]] double currentTime() const;
    [[nodiscard]] bool isPlaybackActive() const { return m_state != State::Stopped; }
    /// The wanted output; nothing for the system's default.
    [[nodiscard]] std::optional<std::uint32_t> outputDeviceID() const { return m_outputDeviceID; }

    /// Stops, and opens a local file. A failure leaves nothing loaded.
    Outcome load(const QUrl &url);
    /// Plays from the place of the last seek, or else from where the last play began. At the end of the file it
    /// completes at once, a turn later. Fails while somebody records.
    Outcome play();
    /// The sound falls away at once; the completion handler isn't called.
    void stop();
    /// `fraction` of the file, 0 to 1; others are clamped. Goes on playing when it was.
    void seek(double fraction);
    /// What is playing stops; the next play goes there. Nothing means the system's default.
    Outcome setOutputDeviceID(std::optional<std::uint32_t> deviceID);

private:
    /// Starting: no output has accepted a stream of this playback yet.
    enum class State { Stopped, Starting, Playing };
    struct LoadedFile {
        QUrl url;
        /// Kept open, so that a file that is deleted meanwhile still plays. Read on the readers' thread alone while it
        /// plays; what else is asked for is noted here.
        std::shared_ptr<AudioFileReader> reader;
        qint64 length = 0;
        double sampleRate = 0.0;
        int channelCount = 0;

        [[nodiscard]] double seconds(qint64 frame) const { return static_cast<double>(frame) / sampleRate; }
    };

    Outcome bindOutputDevice(std::uint32_t deviceID);
    Outcome startEngine();
    Outcome schedulePlayback(qint64 startingFrame);
    void endStream(State state);
    void handlePlaybackCompleted(int generation);
    void handleStreamLost(int generation, qint64 frame);
    void handleStreamFailed(int generation, const RoutedAudioPlayerError &error);
    void handleTaken();
    Outcome fallbackToSystemDefaultAndResume(qint64 frame);

    SoundServer &m_server;
    std::function<void()> m_completionHandler;
    std::function<void(const RoutedAudioPlayerError &)> m_failureHandler;
    std::function<void()> m_interruptionHandler;
    /// One thread, so that what an earlier stream still reads is over before the next one's first read.
    QThreadPool m_readers;
    std::optional<LoadedFile> m_file;
    std::unique_ptr<OutputStream> m_stream;
    std::optional<std::uint32_t> m_outputDeviceID;
    /// The output that the playback goes to: binding the wanted one can fail.
    std::optional<std::uint32_t> m_appliedOutputDeviceID;
    qint64 m_scheduledStartFrame = 0;
    int m_scheduleGeneration = 0;
    State m_state = State::Stopped;
};

} // namespace orlenta::audio
