#include "audio/recording/AudioRecorder.h"

#include <utility>

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QUuid>

#include "audio/devices/AudioDebugLogger.h"
#include "audio/devices/SoundServer.h"
#include "audio/recording/MicrophonePermission.h"
#include "audio/recording/RecordingWriter.h"
#include "base/files/PrivateFolders.h"
#include "base/UserDefaults.h"

namespace orlenta::audio {

namespace {

constexpr int statePollCount = 8;
constexpr auto statePollStep = std::chrono::milliseconds(250);

QString inWords(bool value) {
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

QString newRecordingPath() {
    return QStringLiteral("%1/direction_%2.wav")
        .arg(base::PrivateFolders::caches(), QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper());
}

} // namespace

void AudioRecorder::RecorderDeleter::operator()(FileRecorder *recorder) const {
    // May run inside the recorder's own signal: delete later.
    recorder->disconnect();
    recorder->deleteLater();
}

AudioRecorder::AudioRecorder(const Parts &parts, QObject *parent) : QObject(parent), m_parts(parts) {
    m_recordingTimer.setInterval(durationInterval);
    connect(&m_recordingTimer, &QTimer::timeout, this, [this] {
        if (m_audioRecorder)
            setRecordingDuration(m_audioRecorder->currentTime());
    });
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
            [this] { restoreRoute(QStringLiteral("NSApplication.willTerminateNotification")); });
}

AudioRecorder::~AudioRecorder() {
    AudioDebugLogger::log(QStringLiteral("AudioRecorder.deinit"));
    if (m_audioRecorder) {
        AudioDebugLogger::log(QStringLiteral("AVAudioRecorder.stop from AudioRecorder.deinit"));
        delete m_audioRecorder.release();
    }
    restoreRoute(QStringLiteral("AudioRecorder.deinit"));
}

bool AudioRecorder::isStarting() const {
    return m_state == State::AwaitingAccess || m_state == State::Opening || m_state == State::OpeningDefault ||
           m_state == State::FinishingBeforeNext;
}

void AudioRecorder::startRecording() {
    const MicrophoneAuthorization status = m_parts.permission.authorizationStatus();
    AudioDebugLogger::log(QStringLiteral("AudioRecorder microphone authorization before recording: %1")
                              .arg(AudioDebugLogger::microphoneAuthorizationDescription(status)));
    if (m_state == State::Finishing) {
        setErrorMessage({});
        setState(State::FinishingBeforeNext);
        stopPlayback();
        return;
    }
    if (m_state != State::Idle) {
        refuseReentry();
        return;
    }
    switch (status) {
    case MicrophoneAuthorization::Restricted:
    case MicrophoneAuthorization::Denied:
        deny(QStringLiteral("Microphone blocked. Enable it in System Settings > Privacy > Microphone"));
        m_parts.permission.forgetRefusal();
        Q_EMIT microphoneSettingsWanted();
        break;
    case MicrophoneAuthorization::NotDetermined:
        requestAccess();
        break;
    case MicrophoneAuthorization::Authorized:
        beginRecording();
        break;
    case MicrophoneAuthorization::Unknown:
        deny(QStringLiteral("Microphone status unavailable. Check System Settings > Privacy > Microphone"));
        break;
    }
}

void AudioRecorder::requestAccess() {
    setState(State::AwaitingAccess);
    m_parts.permission.requestAccess(this, [this, request = ++m_accessRequest](bool isGranted) {
        if (request != m_accessRequest || m_state != State::AwaitingAccess)
            return;
        setState(State::Idle);
        if (isGranted)
            beginRecording();
        else if (m_parts.server.state() == SoundServer::State::Unavailable)
            setErrorMessage(QStringLiteral("Couldn't start recording. The sound server is not available."));
        else
            deny(QStringLiteral("Microphone permission denied. Check System Settings > Privacy > Microphone"));
        if (m_state == State::Idle)
            Q_EMIT takeEnded();
    });
}

void AudioRecorder::deny(const QString &message) {
    setPermissionDenied(true);
    setErrorMessage(message);
}

void AudioRecorder::refuseReentry() {
    setErrorMessage(QStringLiteral("Recording is already in progress."));
    AudioDebugLogger::log(
        QStringLiteral(
            "AudioRecorder beginRecording refused re-entry: isRecording=%1, hasRecorder=%2, hasAppliedRoute=%3")
            .arg(inWords(isRecording()), inWords(m_audioRecorder != nullptr),
                 inWords(m_appliedInputRoute.has_value())));
}

void AudioRecorder::beginRecording() {
    setErrorMessage({});
    setPermissionDenied(false);
    m_parts.routes.logSelectedInputDevice(QStringLiteral("AudioRecorder.beginRecording"));
    setRecordingDuration(0.0);
    setState(State::Opening);
    stopPlayback();
    record(chosenSource());
}

/// The microphone would pick up playback, so stop it by taking the microphone.
void AudioRecorder::stopPlayback() {
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer.stop from AudioRecorder.stopPlayback"));
    m_parts.server.microphone().take(this, [this] { stopRecording(); });
}

InputStream::Source AudioRecorder::chosenSource() const {
    const QString uid = m_parts.defaults.inputDeviceUID();
    if (uid.isEmpty()) {
        AudioDebugLogger::log(QStringLiteral("AudioRecorder using system default input - no UID persisted"));
        return defaultSource();
    }
    const SoundDeviceTable table = m_parts.server.devices();
    if (const SoundDevice *device = table.findInput(uid))
        return {uid.toUtf8(), device->sampleRate};
    AudioDebugLogger::log(QStringLiteral("AudioRecorder chosen input device not found in current device list, falling "
                                         "back to system default: uid=%1")
                              .arg(uid));
    return defaultSource();
}

InputStream::Source AudioRecorder::defaultSource() const {
    const SoundDeviceTable table = m_parts.server.devices();
    // Use the default's real name: the server would move a stream on "the default" if that changed during the take.
    const SoundDevice *device = table.findInput(table.defaultInputUID);
    return {table.defaultInputUID.toUtf8(), device ? device->sampleRate : RecordingWriter::format.sampleRate};
}

void AudioRecorder::record(const InputStream::Source &source) {
    auto made = FileRecorder::create(m_parts.server, source, newRecordingPath());
    if (!made) {
        const QString why = made.error().withoutName().description();
        failToStart(QStringLiteral("Recording error: %1").arg(why),
                    QStringLiteral("AudioRecorder ERROR: AVAudioRecorder init threw error=%1").arg(why),
                    QStringLiteral("AVAudioRecorder init threw"));
        return;
    }
    m_audioRecorder.reset(std::move(made).value().release());
    FileRecorder *recorder = m_audioRecorder.get();
    connect(recorder, &FileRecorder::started, this, &AudioRecorder::handleStarted);
    connect(recorder, &FileRecorder::refused, this, &AudioRecorder::handleRefused);
    connect(recorder, &FileRecorder::finished, this, [this](bool isSuccessful) {
        handleRecordingFinished(
            isSuccessful, QStringLiteral("audioRecorderDidFinishRecording successfully=%1").arg(inWords(isSuccessful)));
    });
    connect(recorder, &FileRecorder::encodeErrorOccurred, this, &AudioRecorder::handleEncodeError);
    if (const auto recording = recorder->record(); !recording)
        handleRefused(FileRecorder::Refusal::Unavailable, recording.error());
}

void AudioRecorder::handleStarted() {
    if (m_state != State::Opening && m_state != State::OpeningDefault)
        return;
    setErrorMessage({});
    setState(State::Recording);
    m_recordingTimer.start();
    for (int poll = 1; poll <= statePollCount; ++poll)
        QTimer::singleShot(poll * statePollStep, this, &AudioRecorder::pollState);
}

void AudioRecorder::pollState() const {
    AudioDebugLogger::log(m_audioRecorder ? QStringLiteral("AudioRecorder state poll: isRecording=%1, currentTime=%2")
                                                .arg(inWords(m_audioRecorder->isRecording()))
                                                .arg(m_audioRecorder->currentTime())
                                          : QStringLiteral("AudioRecorder state poll: no active recorder"));
}

void AudioRecorder::handleRefused(FileRecorder::Refusal why, const QString &reason) {
    switch (why) {
    case FileRecorder::Refusal::Forbidden:
        m_parts.permission.noteRefusal();
        setPermissionDenied(true);
        failToStart(QStringLiteral("Microphone blocked. Check Privacy & Security in System Settings."),
                    QStringLiteral("AudioRecorder ERROR: record returned false, error=%1").arg(reason),
                    QStringLiteral("record returned false"));
        return;
    case FileRecorder::Refusal::Unanswered:
        failToStart(QStringLiteral("Couldn't start recording. The sound server has stopped responding."),
                    QStringLiteral("AudioRecorder ERROR: prepare returned false, error=%1").arg(reason),
                    QStringLiteral("prepareToRecord failed"));
        return;
    case FileRecorder::Refusal::Unavailable:
        break;
    }
    if (m_state == State::Opening) {
        recordThroughDefault();
        return;
    }
    failToStart(QStringLiteral("Couldn't start recording. Check your microphone and try again."),
                QStringLiteral("AudioRecorder ERROR: prepare returned false, error=%1").arg(reason),
                QStringLiteral("prepareToRecord failed"));
}

// The server may open as its default input what it refuses to open by name. And if the chosen input has just
// disappeared, record from the default without an error.
void AudioRecorder::recordThroughDefault() {
    setState(State::OpeningDefault);
    m_appliedInputRoute = m_parts.routes.applySelectedInputDeviceForRecording();
    const SoundDeviceTable table = m_parts.server.devices();
    const SoundDevice *target =
        table.findInput(m_appliedInputRoute ? m_appliedInputRoute->targetDeviceUID : table.defaultInputUID);
    record({"@DEFAULT_SOURCE@", target ? target->sampleRate : RecordingWriter::format.sampleRate});
}

void AudioRecorder::failToStart(const QString &message, const QString &logLine, const QString &context) {
    endTake();
    setErrorMessage(message);
    AudioDebugLogger::log(logLine);
    restoreRoute(context);
}

void AudioRecorder::callOff() {
    if (m_audioRecorder)
        m_audioRecorder->discard();
    endTake();
    restoreRoute(QStringLiteral("AudioRecorder.stopRecording"));
}

void AudioRecorder::stopRecording() {
    m_recordingTimer.stop();
    switch (m_state) {
    case State::Idle:
        AudioDebugLogger::log(QStringLiteral("AudioRecorder: stopRecording called but no audioRecorder exists"));
        restoreRoute(QStringLiteral("stopRecording without recorder"));
        return;
    case State::AwaitingAccess:
        callOff();
        return;
    case State::Finishing:
    case State::FinishingBeforeNext:
        setState(State::Finishing);
        return;
    case State::Opening:
    case State::OpeningDefault:
        // If audio has arrived, recording has started; `started` is still queued.
        if (m_audioRecorder->currentTime() == 0.0) {
            callOff();
            return;
        }
        break;
    case State::Recording:
        break;
    }
    setRecordingDuration(m_audioRecorder->currentTime());
    m_audioRecorder->stop();
    setState(State::Finishing);
    restoreRoute(QStringLiteral("AudioRecorder.stopRecording"));
}

void AudioRecorder::handleRecordingFinished(bool isSuccessful, const QString &context) {
    const bool isEndedBySomebody = m_state == State::Finishing || m_state == State::FinishingBeforeNext;
    const bool isNextWanted = m_state == State::FinishingBeforeNext;
    const QUrl url = m_audioRecorder->url();
    const double duration = m_audioRecorder->currentTime();
    setRecordingDuration(duration);
    const QString complaint = endTake();
    setRecordedURL(isSuccessful ? url : QUrl());
    restoreRoute(context);
    if (isEndedBySomebody)
        logSavedFile(url);
    if (!isSuccessful) {
        setErrorMessage(complaint.isEmpty() ? QStringLiteral("Recording failed before the audio file could be saved.")
                                            : complaint);
        AudioDebugLogger::log(
            QStringLiteral("AudioRecorder ERROR: AVAudioRecorder finished unsuccessfully; not publishing URL=%1")
                .arg(url.fileName()));
    } else if (isEndedBySomebody) {
        Q_EMIT recordingFinished(duration, url);
    } else {
        deliver(duration, url, complaint);
    }
    if (isNextWanted)
        startRecording();
}

void AudioRecorder::deliver(double duration, const QUrl &url, const QString &complaint) {
    AudioDebugLogger::log(
        QStringLiteral("AudioRecorder recording ended spontaneously; delivering partial take via onSpontaneousFinish"));
    if (m_onSpontaneousFinish)
        m_onSpontaneousFinish(duration, url);
    if (!complaint.isEmpty())
        setErrorMessage(complaint);
}

void AudioRecorder::logSavedFile(const QUrl &url) const {
    const QFileInfo file(url.toLocalFile());
    AudioDebugLogger::log(file.exists()
                              ? QStringLiteral("AudioRecorder: Saved recording to %1, size: %2 bytes, "
                                               "duration: %3")
                                    .arg(file.filePath())
                                    .arg(file.size())
                                    .arg(m_recordingDuration)
                              : QStringLiteral("AudioRecorder: File does not exist at %1").arg(file.filePath()));
}

void AudioRecorder::handleEncodeError(const QString &description) {
    const QString why = description.isEmpty() ? QStringLiteral("unknown") : description;
    const QUrl kept = m_audioRecorder->currentTime() > 0.0 ? m_audioRecorder->url() : QUrl();
    AudioDebugLogger::log(QStringLiteral("AudioRecorder ERROR: encode error occurred=%1").arg(why));
    endTake();
    setErrorMessage(QStringLiteral("Recording error: %1").arg(why), kept);
    restoreRoute(QStringLiteral("audioRecorderEncodeErrorDidOccur"));
}

QString AudioRecorder::endTake() {
    m_recordingTimer.stop();
    const QString complaint = m_audioRecorder ? m_audioRecorder->complaint() : QString();
    m_audioRecorder.reset();
    setState(State::Idle);
    QMetaObject::invokeMethod(this, &AudioRecorder::takeEnded, Qt::QueuedConnection);
    return complaint;
}

void AudioRecorder::restoreRoute(const QString &context) {
    if (const auto route = std::exchange(m_appliedInputRoute, std::nullopt))
        m_parts.routes.restoreAppliedInputRoute(*route, context);
}

void AudioRecorder::setState(State state) {
    const bool wasRecording = isRecording();
    m_state = state;
    if (state == State::Idle || state == State::Finishing)
        m_parts.server.microphone().giveBack(this);
    if (wasRecording != isRecording())
        Q_EMIT isRecordingChanged();
}

void AudioRecorder::setRecordedURL(const QUrl &url) {
    if (std::exchange(m_recordedURL, url) != url)
        Q_EMIT recordedURLChanged();
}

void AudioRecorder::setRecordingDuration(double seconds) {
    if (std::exchange(m_recordingDuration, seconds) != seconds)
        Q_EMIT recordingDurationChanged();
}

void AudioRecorder::setPermissionDenied(bool isDenied) {
    if (std::exchange(m_permissionDenied, isDenied) != isDenied)
        Q_EMIT permissionDeniedChanged();
}

void AudioRecorder::setErrorMessage(const std::optional<QString> &message, const QUrl &keptRecording) {
    m_keptRecording = keptRecording;
    if (std::exchange(m_errorMessage, message) != message)
        Q_EMIT errorMessageChanged();
}

} // namespace orlenta::audio
