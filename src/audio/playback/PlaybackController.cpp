#include "audio/playback/PlaybackController.h"

#include <algorithm>
#include <cmath>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include "audio/devices/AudioDebugLogger.h"
#include "audio/devices/AudioDeviceMonitor.h"
#include "audio/devices/OutputRoutingDiagnostics.h"
#include "base/UserDefaults.h"

namespace orlenta::audio {

namespace {

QString sourceName(PlaybackController::AudioSource source) {
    switch (source) {
    case PlaybackController::AudioSource::Generated:
        return QStringLiteral("generated");
    case PlaybackController::AudioSource::SourceRecording:
        return QStringLiteral("sourceRecording");
    case PlaybackController::AudioSource::Preview:
        return QStringLiteral("preview");
    }
    Q_UNREACHABLE();
}

/// The canonical path, so that two paths to the same file compare equal.
QString resolvedPath(const QUrl &url) {
    const QFileInfo info(url.toLocalFile());
    const QString canonical = info.canonicalFilePath();
    return canonical.isEmpty() ? QDir::cleanPath(info.absoluteFilePath()) : canonical;
}

bool isSameFile(const QUrl &a, const QUrl &b) {
    return a.isEmpty() || b.isEmpty() ? a.isEmpty() && b.isEmpty() : resolvedPath(a) == resolvedPath(b);
}

QString uidText(const QString &uid) {
    return uid.isEmpty() ? QStringLiteral("system default") : uid;
}

} // namespace

PlaybackController::PlaybackController(SoundServer &server, base::UserDefaults &defaults, AudioDeviceMonitor &monitor,
                                       OutputRoutingDiagnostics &diagnostics, QObject *parent)
    : QObject(parent), m_defaults(defaults), m_monitor(monitor), m_diagnostics(diagnostics), m_player(server) {
    m_player.setCompletionHandler([this] { complete(); });
    m_player.setFailureHandler([this](const RoutedAudioPlayerError &error) {
        failToRoute(error, QStringLiteral("PlaybackController.startPlayback play"));
    });
    m_player.setInterruptionHandler([this] { stop(PlayheadReset::Reset); });
    m_progressTimer.setInterval(progressInterval);
    m_progressTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_progressTimer, &QTimer::timeout, this, &PlaybackController::updateProgress);
}

bool PlaybackController::isCurrentGenerated(const PlaybackLineId &line) const {
    return m_lineID == line && m_source == AudioSource::Generated;
}

bool PlaybackController::isCurrentSource(const PlaybackLineId &line) const {
    return m_lineID == line && m_source == AudioSource::SourceRecording;
}

bool PlaybackController::isPlayingSource(const PlaybackLineId &line) const {
    return isCurrentSource(line) && m_isPlaying;
}

void PlaybackController::logRequest(const QString &operation, const PlaybackLine &line) const {
    AudioDebugLogger::log(QStringLiteral("PlaybackController.%1 requested url=%2, outputUID=%3")
                              .arg(operation, line.url.fileName(), uidText(m_defaults.outputDeviceUID())));
}

void PlaybackController::playLine(const PlaybackLine &line) {
    AudioDebugLogger::log(QStringLiteral("Generated playback requested for line %1").arg(line.id.text()));
    logRequest(QStringLiteral("playLine"), line);
    stop(PlayheadReset::Reset);
    startPlayback(line, AudioSource::Generated, 0.0);
}

void PlaybackController::playSource(const PlaybackLine &line) {
    AudioDebugLogger::log(QStringLiteral("Source recording playback requested for line %1").arg(line.id.text()));
    logRequest(QStringLiteral("playSource"), line);
    stop(PlayheadReset::Reset);
    startPlayback(line, AudioSource::SourceRecording, 0.0);
}

void PlaybackController::playAll(const QList<PlaybackLine> &lines) {
    AudioDebugLogger::log(QStringLiteral("Play All requested for %1 candidate lines").arg(lines.size()));
    QList<PlaybackLine> existing;
    std::copy_if(lines.cbegin(), lines.cend(), std::back_inserter(existing),
                 [](const PlaybackLine &line) { return QFileInfo::exists(line.url.toLocalFile()); });
    if (existing.isEmpty())
        return;
    stop(PlayheadReset::Reset);
    m_sequence = Sequence{existing};
    startPlayback(existing.constFirst(), AudioSource::Generated, 0.0);
}

void PlaybackController::seek(const PlaybackLine &line, double fraction) {
    seek(line, AudioSource::Generated, fraction);
}

void PlaybackController::seekSource(const PlaybackLine &line, double fraction) {
    seek(line, AudioSource::SourceRecording, fraction);
}

void PlaybackController::seek(const PlaybackLine &line, AudioSource source, double fraction) {
    const double share = std::isnan(fraction) ? 0.0 : std::clamp(fraction, 0.0, 1.0);
    if (m_lineID != line.id || m_source != source || !isSameFile(m_player.loadedURL(), line.url)) {
        stop(PlayheadReset::Reset);
        startPlayback(line, source, share);
        return;
    }
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer.seek from PlaybackController.seek fraction=%1").arg(share));
    m_player.seek(share);
    setProgress(share);
    if (m_isPlaying)
        return;
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer.play from PlaybackController.seek"));
    // The user may have chosen another output, or the chosen one may have a new id after reconnecting.
    if (!route() || !play(QStringLiteral("PlaybackController.seek play")))
        return;
    setPlaying(true, m_sequence);
    m_progressTimer.start();
}

void PlaybackController::stop(PlayheadReset reset) {
    m_progressTimer.stop();
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer.stop from PlaybackController.stop"));
    m_player.stop();
    setPlaying(false, {});
    if (reset == PlayheadReset::Reset) {
        setLine({}, {});
        setProgress(0.0);
    }
}

void PlaybackController::startPlayback(const PlaybackLine &line, AudioSource source, double fraction) {
    const QString sourceText = sourceName(source);
    const QString file = line.url.fileName();
    AudioDebugLogger::log(
        QStringLiteral("Starting RoutedAudioPlayer playback source=%1 file=%2").arg(sourceText, file));
    AudioDebugLogger::log(
        QStringLiteral("RoutedAudioPlayer.load from PlaybackController.startPlayback source=%1 file=%2")
            .arg(sourceText, file));
    if (const RoutedAudioPlayer::Outcome loaded = m_player.load(line.url); !loaded) {
        AudioDebugLogger::log(QStringLiteral("PlaybackController ERROR: RoutedAudioPlayer load failed %1")
                                  .arg(loaded.error().description()));
        fail(loaded.error());
        return;
    }
    if (!route())
        return;
    if (fraction > 0.0) {
        AudioDebugLogger::log(
            QStringLiteral("RoutedAudioPlayer.seek before PlaybackController.startPlayback play fraction=%1")
                .arg(fraction));
        m_player.seek(fraction);
    }
    setProgress(fraction);
    setLine(source == AudioSource::Preview ? std::nullopt : std::optional(line.id), source);
    AudioDebugLogger::log(
        QStringLiteral("RoutedAudioPlayer.play from PlaybackController.startPlayback source=%1").arg(sourceText));
    if (!play(QStringLiteral("PlaybackController.startPlayback play")))
        return;
    setPlaying(true, m_sequence);
    m_progressTimer.start();
}

bool PlaybackController::route() {
    const RoutedAudioPlayer::Outcome routed = applyPersistedOutputDevice();
    if (!routed) {
        AudioDebugLogger::log(QStringLiteral("PlaybackController ERROR: RoutedAudioPlayer output routing failed %1")
                                  .arg(routed.error().description()));
        failToRoute(routed.error(), QStringLiteral("PlaybackController.applyPersistedOutputDevice"));
    }
    return routed.hasValue();
}

bool PlaybackController::play(const QString &context) {
    const RoutedAudioPlayer::Outcome played = m_player.play();
    if (!played) {
        AudioDebugLogger::log(
            QStringLiteral("PlaybackController ERROR: RoutedAudioPlayer failed %1").arg(played.error().description()));
        failToRoute(played.error(), context);
    }
    return played.hasValue();
}

RoutedAudioPlayer::Outcome PlaybackController::applyPersistedOutputDevice() {
    const QString uid = m_defaults.outputDeviceUID();
    std::optional<std::uint32_t> deviceID;
    QString context;
    if (uid.isEmpty()) {
        AudioDebugLogger::log(
            QStringLiteral("PlaybackController output device: no persisted output UID; using system default"));
        context = QStringLiteral("PlaybackController system default output routing");
    } else if (deviceID = m_monitor.deviceID(uid); !deviceID) {
        AudioDebugLogger::log(
            QStringLiteral("PlaybackController falling back to system default; persisted UID %1 unavailable").arg(uid));
        context = QStringLiteral("PlaybackController unavailable output fallback");
    } else {
        AudioDebugLogger::log(
            QStringLiteral("PlaybackController output device resolved uid=%1, deviceID=%2").arg(uid).arg(*deviceID));
        context = QStringLiteral("PlaybackController output routing");
    }
    RoutedAudioPlayer::Outcome applied = m_player.setOutputDeviceID(deviceID);
    if (applied)
        m_diagnostics.clearRoutingFailure(context);
    return applied;
}

void PlaybackController::updateProgress() {
    const double duration = m_player.duration();
    if (duration <= 0.0)
        setProgress(0.0);
    else if (m_isPlaying)
        setProgress(std::clamp(m_player.currentTime() / duration, 0.0, 1.0));
}

void PlaybackController::complete() {
    m_progressTimer.stop();
    if (!m_sequence) {
        stop(PlayheadReset::Reset);
        return;
    }
    if (m_sequence->index + 1 < m_sequence->lines.size()) {
        const PlaybackLine next = m_sequence->lines.at(++m_sequence->index);
        startPlayback(next, AudioSource::Generated, 0.0);
        return;
    }
    const PlaybackLineId first = m_sequence->lines.constFirst().id;
    m_player.stop();
    setPlaying(false, {});
    // The playhead returns to the first line, where the next Play All would start.
    setLine(first, AudioSource::Generated);
    setProgress(0.0);
}

void PlaybackController::failToRoute(const RoutedAudioPlayerError &error, const QString &context) {
    if (error.concernsRouting())
        m_diagnostics.recordRoutingFailure(error.description(), context);
    fail(error);
}

void PlaybackController::fail(const RoutedAudioPlayerError &error) {
    const QString description = error.description();
    stop(PlayheadReset::Reset);
    Q_EMIT playbackFailed(description);
}

void PlaybackController::setLine(const std::optional<PlaybackLineId> &line, std::optional<AudioSource> source) {
    const bool lineDiffers = m_lineID != line;
    const bool sourceDiffers = m_source != source;
    m_lineID = line;
    m_source = source;
    if (lineDiffers)
        Q_EMIT currentlyPlayingLineIDChanged();
    if (sourceDiffers)
        Q_EMIT currentAudioSourceChanged();
}

void PlaybackController::setPlaying(bool isPlaying, std::optional<Sequence> sequence) {
    const bool wasPlaying = m_isPlaying;
    const bool wasPlayingSequence = isPlayingSequence();
    m_isPlaying = isPlaying;
    m_sequence = std::move(sequence);
    if (wasPlaying != m_isPlaying)
        Q_EMIT isPlayingChanged();
    if (wasPlayingSequence != isPlayingSequence())
        Q_EMIT isPlayingSequenceChanged();
}

void PlaybackController::setProgress(double progress) {
    if (m_progress != progress) {
        m_progress = progress;
        Q_EMIT playbackProgressChanged();
    }
}

} // namespace orlenta::audio
