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
/// mid-playback it goes on at the default one, at the same place. Main thread; files are streamed, not loaded.
class RoutedAudioPlayer final : public QObject {
    Q_OBJECT
public:
    using Outcome = base::Result<void, RoutedAudioPlayerError>;

    explicit RoutedAudioPlayer(SoundServer &server, QObject *parent = nullptr);
    ~RoutedAudioPlayer() override;

    /// Called when playback has come to its natural end, or could not be taken to the default output.
    void setCompletionHandler(std::function<void()> handler) { m_completionHandler = std::move(handler); }
    /// Called when a playback that had begun ended for want of a sound server or a readable file.
    void setFailureHandler(std::function<void(const RoutedAudioPlayerError &)> handler) {
        m_failureHandler = std::move(handler);
    }

    /// The file that is loaded; empty for none.
    [[nodiscard]] const QUrl &loadedURL() const { return m_loadedURL; }
    /// Length of the loaded file in seconds, 0 without one.
    [[nodiscard]] double duration() const;
    /// The place that is heard, in seconds from the file's start.
    [[nodiscard]] double currentTime() const;
    [[nodiscard]] bool isPlaybackActive() const { return m_isPlaybackActive; }
    /// The wanted output; nothing for the system's default.
    [[nodiscard]] std::optional<std::uint32_t> outputDeviceID() const { return m_outputDeviceID; }

    /// Stops, and opens a local file. A failure leaves nothing loaded.
    Outcome load(const QUrl &url);
    /// Plays from the place of the last seek, or else from where the last play began. At the end of the file it
    /// completes at once, a turn later.
    Outcome play();
    /// The sound falls away at once; the completion handler isn't called.
    void stop();
    /// `fraction` of the file, 0 to 1; others are clamped. Goes on playing when it was.
    void seek(double fraction);
    /// What is playing stops; the next play goes there. Nothing means the system's default.
    Outcome setOutputDeviceID(std::optional<std::uint32_t> deviceID);

private:
    Outcome bindOutputDevice(std::uint32_t deviceID);
    Outcome startEngine();
    Outcome schedulePlayback(qint64 startingFrame);
    void stopNode();
    void handlePlaybackCompleted(int generation);
    void handleStreamLost(int generation, OutputStream::Loss why, qint64 frame);
    void recoverFromFailedSeek(const RoutedAudioPlayerError &error);
    void handleStreamBroken(int generation, const RoutedAudioPlayerError &error);
    Outcome fallbackToSystemDefaultAndResume(double time);

    SoundServer &m_server;
    std::function<void()> m_completionHandler;
    std::function<void(const RoutedAudioPlayerError &)> m_failureHandler;
    QUrl m_loadedURL;
    /// One thread, so that what an earlier stream still reads is over before the next one's first read.
    QThreadPool m_readers;
    /// Kept open, so that a file that is deleted meanwhile still plays. Read on that thread alone while it plays.
    std::shared_ptr<AudioFileReader> m_audioFile;
    qint64 m_length = 0;
    double m_sampleRate = 0.0;
    int m_channelCount = 0;
    std::unique_ptr<OutputStream> m_stream;
    std::optional<std::uint32_t> m_outputDeviceID;
    std::optional<std::uint32_t> m_appliedOutputDeviceID;
    qint64 m_scheduledStartFrame = 0;
    int m_scheduleGeneration = 0;
    bool m_isEngineRunning = false;
    /// Set to play, be it that nothing is left to play and the completion is on its way.
    bool m_isNodePlaying = false;
    bool m_isPlaybackActive = false;
};

} // namespace orlenta::audio
