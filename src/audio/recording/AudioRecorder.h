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

/// Records one line's spoken direction from the chosen input to a file in the caches folder (44100 Hz, mono, 16 bit).
/// Opens the chosen source directly; only if the server refuses does it change the system's default input for the
/// duration of the take. Only one take runs at a time (SharedMicrophone): starting one stops all playback and any other
/// recorder's take. Main thread.
class AudioRecorder final : public QObject {
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds durationInterval{100};

    /// Shared services.
    struct Parts {
        SoundServer &server;
        base::UserDefaults &defaults;
        AudioInputRouteManager &routes;
        MicrophonePermission &permission;
    };

    explicit AudioRecorder(const Parts &parts, QObject *parent = nullptr);
    /// Ends a running take, keeping its file in the caches folder, and restores the default input.
    ~AudioRecorder() override;

    /// Called with the length in seconds and the partial file when a take ends by itself, for example because the
    /// microphone was unplugged. For a take that was stopped, recordingFinished() is emitted instead.
    void setOnSpontaneousFinish(std::function<void(double duration, const QUrl &url)> handler) {
        m_onSpontaneousFinish = std::move(handler);
    }

    [[nodiscard]] bool isRecording() const { return m_state == State::Recording; }
    /// A take is starting but its microphone isn't open yet. It may be waiting for microphone permission, or for the
    /// previous take to be completed.
    [[nodiscard]] bool isStarting() const;
    /// A take is starting, running, or waiting for its final samples.
    [[nodiscard]] bool hasUnfinishedTake() const { return m_state != State::Idle; }
    /// The last finished file, or empty.
    [[nodiscard]] const QUrl &recordedURL() const { return m_recordedURL; }
    /// Seconds.
    [[nodiscard]] double recordingDuration() const { return m_recordingDuration; }
    [[nodiscard]] bool permissionDenied() const { return m_permissionDenied; }
    /// The message for the user, if any.
    [[nodiscard]] const std::optional<QString> &errorMessage() const { return m_errorMessage; }
    /// If errorMessage() reports a take that couldn't be written completely, the file with what was recorded until
    /// then. Otherwise empty. Changes together with errorMessage().
    [[nodiscard]] const QUrl &keptRecording() const { return m_keptRecording; }

    /// Clears the message once it has been read or is obsolete.
    void dismissError() { setErrorMessage({}); }

    /// isRecordingChanged() or errorMessageChanged() reports the outcome. If a stopped take is still being completed,
    /// waits for it.
    void startRecording();
    /// recordingFinished() follows about 0.1 s later, when the final samples have arrived. Silently cancels a take
    /// whose microphone isn't open yet.
    void stopRecording();

Q_SIGNALS:
    void isRecordingChanged();
    void recordedURLChanged();
    void recordingDurationChanged();
    void permissionDeniedChanged();
    void errorMessageChanged();
    /// A stopped take is complete; `duration` in seconds.
    void recordingFinished(double duration, const QUrl &url);
    /// A take has ended, successfully or not. Emitted after the outcome.
    void takeEnded();
    /// The user must allow microphone access in the desktop's settings.
    void microphoneSettingsWanted();

private:
    enum class State {
        Idle,
        AwaitingAccess,
        /// Opening the chosen source by name.
        Opening,
        /// The server refused; opening it as the default input.
        OpeningDefault,
        Recording,
        /// Stopped; waiting for the final samples.
        Finishing,
        /// The same, and another take starts afterwards.
        FinishingBeforeNext,
    };
    struct RecorderDeleter {
        void operator()(FileRecorder *recorder) const;
    };

    void deny(const QString &message);
    void requestAccess();
    void callOff();
    void refuseReentry();
    void beginRecording();
    void stopPlayback();
    [[nodiscard]] InputStream::Source chosenSource() const;
    [[nodiscard]] InputStream::Source defaultSource() const;
    void record(const InputStream::Source &source);
    void recordThroughDefault();
    void handleStarted();
    void handleRefused(FileRecorder::Refusal why, const QString &reason);
    void failToStart(const QString &message, const QString &logLine, const QString &context);
    void handleRecordingFinished(bool isSuccessful, const QString &context);
    void deliver(double duration, const QUrl &url, const QString &complaint);
    void handleEncodeError(const QString &description);
    void logSavedFile(const QUrl &url) const;
    void pollState() const;
    /// Ends the take, successful or not. Returns the recorder's complaint, if any.
    QString endTake();
    void restoreRoute(const QString &context);

    void setState(State state);
    void setRecordedURL(const QUrl &url);
    void setRecordingDuration(double seconds);
    void setPermissionDenied(bool isDenied);
    void setErrorMessage(const std::optional<QString> &message, const QUrl &keptRecording = {});

    Parts m_parts;
    std::function<void(double, const QUrl &)> m_onSpontaneousFinish;
    State m_state = State::Idle;
    /// Set while a take is opening, running or finishing.
    std::unique_ptr<FileRecorder, RecorderDeleter> m_audioRecorder;
    QTimer m_recordingTimer;
    std::optional<AppliedInputRoute> m_appliedInputRoute;
    /// Numbers the permission requests; only the answer to the last one counts.
    int m_accessRequest = 0;
    bool m_permissionDenied = false;
    double m_recordingDuration = 0.0;
    QUrl m_recordedURL;
    std::optional<QString> m_errorMessage;
    QUrl m_keptRecording;
};

} // namespace orlenta::audio
