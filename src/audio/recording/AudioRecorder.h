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

/// Records one line's spoken direction from the chosen input into a file in the caches folder, of 44100 Hz, mono,
/// 16 bit. The chosen source is opened directly; only when the server won't have that does the system's default input
/// change for the length of the take. A take holds the application's one microphone (SharedMicrophone): to begin it
/// stops all playback and another recorder's take, and it ends when another one begins. Main thread.
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
    /// what was recorded until then. A take that somebody ended comes by recordingFinished() instead.
    void setOnSpontaneousFinish(std::function<void(double duration, const QUrl &url)> handler) {
        m_onSpontaneousFinish = std::move(handler);
    }

    [[nodiscard]] bool isRecording() const { return m_state == State::Recording; }
    /// A take has been begun whose microphone has not opened yet, possibly because microphone permission is still being
    /// asked for, or because the take before it is being completed.
    [[nodiscard]] bool isStarting() const;
    /// A take has been begun whose file is not complete yet: it is about to run, it runs, or its last samples are on
    /// their way.
    [[nodiscard]] bool hasUnfinishedTake() const { return m_state != State::Idle; }
    /// The finished file; empty before there is one.
    [[nodiscard]] const QUrl &recordedURL() const { return m_recordedURL; }
    /// Seconds.
    [[nodiscard]] double recordingDuration() const { return m_recordingDuration; }
    [[nodiscard]] bool permissionDenied() const { return m_permissionDenied; }
    /// For the user; none when there is nothing to tell.
    [[nodiscard]] const std::optional<QString> &errorMessage() const { return m_errorMessage; }
    /// Where errorMessage() is about a take that could not be written to its end: the file with what had been recorded
    /// by then. Empty otherwise.
    [[nodiscard]] const QUrl &keptRecording() const { return m_keptRecording; }

    /// The message has been read, or holds no longer.
    void dismissError() { setErrorMessage({}); }

    /// isRecordingChanged() or errorMessageChanged() tells what came of it. A take that has just been stopped is
    /// completed first.
    void startRecording();
    /// recordingFinished() follows when the last samples have come, about a tenth of a second later. A take whose
    /// microphone has not opened yet is called off without a word.
    void stopRecording();

Q_SIGNALS:
    void isRecordingChanged();
    void recordedURLChanged();
    void recordingDurationChanged();
    void permissionDeniedChanged();
    void errorMessageChanged();
    /// A take that somebody ended is complete, of that length in seconds.
    void recordingFinished(double duration, const QUrl &url);
    /// A take came to its end, well or not; follows what the end was.
    void takeEnded();
    /// The user has to allow the microphone in the desktop's settings.
    void microphoneSettingsWanted();

private:
    enum class State {
        Idle,
        AwaitingAccess,
        /// The chosen source is being opened by its name.
        Opening,
        /// The server has refused that; the source is being opened as the default input.
        OpeningDefault,
        Recording,
        /// The take has been stopped; its last samples are on their way.
        Finishing,
        /// The same, and another take begins afterwards.
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
    /// The take is over, whatever came of it; gives what it left to say.
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
    /// Of the take that is opened, runs or is finished.
    std::unique_ptr<FileRecorder, RecorderDeleter> m_audioRecorder;
    QTimer m_recordingTimer;
    std::optional<AppliedInputRoute> m_appliedInputRoute;
    /// Counts the times that microphone permission was asked for: only the last asking counts.
    int m_accessRequest = 0;
    bool m_permissionDenied = false;
    double m_recordingDuration = 0.0;
    QUrl m_recordedURL;
    std::optional<QString> m_errorMessage;
    QUrl m_keptRecording;
};

} // namespace orlenta::audio
