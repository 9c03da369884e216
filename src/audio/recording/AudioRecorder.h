#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <QtCore/QUrl>

#include "audio/recording/AudioInputRouteManager.h"
#include "audio/recording/FileRecorder.h"

namespace orlenta::audio {

class MicrophonePermission;
class RoutedAudioPlayer;

/// Records one line's spoken direction from the chosen input into a file in the caches folder, of 44100 Hz, mono,
/// 16 bit. The chosen source is opened directly; only when the server won't have that does the system's default input
/// change for the length of the take. Main thread.
class AudioRecorder final : public QObject {
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds durationInterval{100};

    /// What the application has one of each.
    struct Parts {
        SoundServer &server;
        base::UserDefaults &defaults;
        AudioInputRouteManager &routes;
        MicrophonePermission &permission;
    };

    explicit AudioRecorder(const Parts &parts, QObject *parent = nullptr);
    /// Ends a running take, whose file stays in the caches folder, and restores the default input.
    ~AudioRecorder() override;

    /// Called with the length in seconds and the file when a take ends by itself, as when its microphone is unplugged:
    /// what was recorded until then. A take that the user ended comes by recordingFinished() instead.
    void setOnSpontaneousFinish(std::function<void(double duration, const QUrl &url)> handler) {
        m_onSpontaneousFinish = std::move(handler);
    }

    [[nodiscard]] bool isRecording() const { return m_isRecording; }
    /// A take has been begun whose microphone has not opened yet, be it that leave to listen is still being asked for.
    [[nodiscard]] bool isStarting() const {
        return m_isAwaitingAccess || (m_audioRecorder && !m_isRecording && !m_isUserInitiatedStop);
    }
    /// A take has been begun whose file is not complete yet: it is about to run, it runs, or its last samples are on
    /// their way.
    [[nodiscard]] bool hasUnfinishedTake() const { return m_audioRecorder || m_isAwaitingAccess; }
    /// The finished file; empty before there is one.
    [[nodiscard]] const QUrl &recordedURL() const { return m_recordedURL; }
    /// A preview of the take is running.
    [[nodiscard]] bool isPlaying() const { return m_isPlaying; }
    /// Seconds.
    [[nodiscard]] double recordingDuration() const { return m_recordingDuration; }
    [[nodiscard]] bool permissionDenied() const { return m_permissionDenied; }
    /// For the user; none when there is nothing to tell.
    [[nodiscard]] const std::optional<QString> &errorMessage() const { return m_errorMessage; }

    /// The message has been read, or holds no longer.
    void dismissError() { setErrorMessage({}); }

    /// isRecordingChanged() or errorMessageChanged() tells what came of it.
    void startRecording();
    /// recordingFinished() follows when the last samples have come, about a tenth of a second later. A take whose
    /// microphone has not opened yet is called off without a word.
    void stopRecording();
    /// Plays the finished take through the chosen output. Does nothing while recording or without a take.
    void startPlayback();
    void stopPlayback();

Q_SIGNALS:
    void isRecordingChanged();
    void recordedURLChanged();
    void isPlayingChanged();
    void recordingDurationChanged();
    void permissionDeniedChanged();
    void errorMessageChanged();
    /// A take that the user ended is complete, of that length in seconds.
    void recordingFinished(double duration, const QUrl &url);
    /// A take came to its end, well or not; follows what the end was.
    void takeEnded();
    /// The user has to allow the microphone in the desktop's settings.
    void microphoneSettingsWanted();

private:
    struct RecorderDeleter {
        void operator()(FileRecorder *recorder) const;
    };

    void deny(const QString &message);
    void requestAccess();
    void callOff();
    void beginRecording();
    [[nodiscard]] InputStream::Source chosenSource() const;
    [[nodiscard]] InputStream::Source defaultSource() const;
    void record(const InputStream::Source &source);
    void handleStarted();
    void handleRefused(FileRecorder::Refusal why, const QString &reason);
    void failToStart(const QString &message, const QString &logLine, const QString &context);
    void handleRecordingFinished(const QUrl &url, bool isSuccessful, const QString &context);
    void handleEncodeError(const QString &description);
    void logSavedFile(const QUrl &url) const;
    void pollState() const;
    void clearRecorder();
    void restoreRoute(const QString &context);

    void setRecording(bool isRecording);
    void setPlaying(bool isPlaying);
    void setRecordedURL(const QUrl &url);
    void setRecordingDuration(double seconds);
    void setPermissionDenied(bool isDenied);
    void setErrorMessage(const std::optional<QString> &message);

    Parts m_parts;
    std::function<void(double, const QUrl &)> m_onSpontaneousFinish;
    std::unique_ptr<FileRecorder, RecorderDeleter> m_audioRecorder;
    std::unique_ptr<RoutedAudioPlayer> m_previewPlayer;
    QTimer m_recordingTimer;
    std::optional<AppliedInputRoute> m_appliedInputRoute;
    /// The server has refused the chosen source once, so that the take goes through the default input.
    bool m_isThroughDefault = false;
    bool m_isUserInitiatedStop = false;
    bool m_isAwaitingAccess = false;
    /// Counts the times that leave to listen was asked for: only the last asking counts.
    int m_accessRequest = 0;
    bool m_isRecording = false;
    bool m_isPlaying = false;
    bool m_permissionDenied = false;
    double m_recordingDuration = 0.0;
    QUrl m_recordedURL;
    std::optional<QString> m_errorMessage;
};

} // namespace orlenta::audio
