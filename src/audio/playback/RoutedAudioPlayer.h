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

/// Plays one audio file through a chosen output, independently of the system's default. If that output disappears
/// during playback, continues at the same position on the default output. Stops when a recording starts
/// (SharedMicrophone). Streams files instead of loading them. Main thread.
class RoutedAudioPlayer final : public QObject {
    Q_OBJECT
public:
    using Outcome = base::Result<void, RoutedAudioPlayerError>;

    explicit RoutedAudioPlayer(SoundServer &server, QObject *parent = nullptr);
    ~RoutedAudioPlayer() override;

    /// Called when playback has finished, or couldn't continue on the default output.
    void setCompletionHandler(std::function<void()> handler) { m_completionHandler = std::move(handler); }
    /// Called when playback fails. That includes failing to start: play() returns before the output has accepted the
    /// stream.
    void setFailureHandler(std::function<void(const RoutedAudioPlayerError &)> handler) {
        m_failureHandler = std::move(handler);
    }
    /// Called when a starting recording has stopped playback.
    void setInterruptionHandler(std::function<void()> handler) { m_interruptionHandler = std::move(handler); }

    /// The loaded file, or empty.
    [[nodiscard]] QUrl loadedURL() const { return m_file ? m_file->url : QUrl(); }
    /// Length of the loaded file in seconds, or 0.
    [[nodiscard]] double duration() const;
    /// The audible position, in seconds from the file's start.
    [[nodiscard]] double currentTime() const;
    [[nodiscard]] bool isPlaybackActive() const { return m_state != State::Stopped; }
    /// The chosen output, or nothing for the system's default.
    [[nodiscard]] std::optional<std::uint32_t> outputDeviceID() const { return m_outputDeviceID; }

    /// Stops, then opens a local file. After a failure nothing is loaded.
    Outcome load(const QUrl &url);
    /// Plays from the last seek position, or else from where the last play() started. At the end of the file, completes
    /// in the event loop's next iteration. Fails during a recording.
    Outcome play();
    /// Fades out immediately. Doesn't call the completion handler.
    void stop();
    /// Seeks to `fraction` of the file, clamped to 0 to 1. Keeps playing if it was.
    void seek(double fraction);
    /// Stops playback; the next play() uses this output. Nothing means the system's default.
    Outcome setOutputDeviceID(std::optional<std::uint32_t> deviceID);

private:
    /// Starting: no output has accepted this playback's stream yet.
    enum class State { Stopped, Starting, Playing };
    struct LoadedFile {
        QUrl url;
        /// Kept open, so that a deleted file keeps playing. During playback only the readers' thread may use it, hence
        /// the copies of its properties below.
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
    /// One thread, so that an earlier stream has finished reading before the next one starts.
    QThreadPool m_readers;
    std::optional<LoadedFile> m_file;
    std::unique_ptr<OutputStream> m_stream;
    std::optional<std::uint32_t> m_outputDeviceID;
    /// The output in use. Differs from the chosen one if binding failed.
    std::optional<std::uint32_t> m_appliedOutputDeviceID;
    qint64 m_scheduledStartFrame = 0;
    int m_scheduleGeneration = 0;
    State m_state = State::Stopped;
};

} // namespace orlenta::audio
