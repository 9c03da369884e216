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

/// Where the file really lies, so that two ways to the same file compare equal.
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
        // A file that can't be read on says nothing about the output.
        if (error.kind != RoutedAudioPlayerError::Kind::FileUnreadable)
            m_diagnostics.recordRoutingFailure(error.description(),
                                               QStringLiteral("PlaybackController.startPlayback play"));
        fail(error);
    });
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

void PlaybackController::playLine(const PlaybackLine &line) {
    AudioDebugLogger::log(QStringLiteral("Generated playback requested for line %1").arg(line.id.text()));
    AudioDebugLogger::log(QStringLiteral("PlaybackController.playLine requested url=%1, outputUID=%2")
                              .arg(line.url.fileName(), uidText(m_defaults.outputDeviceUID())));
    stop(PlayheadReset::Reset);
    startPlayback(line, {AudioSource::Generated, {}, 0.0});
}

void PlaybackController::playSource(const PlaybackLine &line) {
    AudioDebugLogger::log(QStringLiteral("Source recording playback requested for line %1").arg(line.id.text()));
    AudioDebugLogger::log(QStringLiteral("PlaybackController.playSource requested url=%1, outputUID=%2")
                              .arg(line.url.fileName(), uidText(m_defaults.outputDeviceUID())));
    stop(PlayheadReset::Reset);
    startPlayback(line, {AudioSource::SourceRecording, {}, 0.0});
}

void PlaybackController::playAll(const QList<PlaybackLine> &lines) {
    AudioDebugLogger::log(QStringLiteral("Play All requested for %1 candidate lines").arg(lines.size()));
    QList<PlaybackLine> existing;
    std::copy_if(lines.cbegin(), lines.cend(), std::back_inserter(existing),
                 [](const PlaybackLine &line) { return QFileInfo::exists(line.url.toLocalFile()); });
    if (existing.isEmpty())
        return;
    stop(PlayheadReset::Reset);
    m_sequenceLines = existing;
    m_sequenceIndex = 0;
    startPlayback(existing.constFirst(), {AudioSource::Generated, existing, 0.0});
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
        startPlayback(line, {source, {}, share});
        return;
    }
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer.seek from PlaybackController.seek fraction=%1").arg(share));
    m_player.seek(share);
    setProgress(share);
    if (m_isPlaying)
        return;
    // Another output may have been chosen, or the chosen one have come back under another number.
    if (const RoutedAudioPlayer::Outcome routed = applyPersistedOutputDevice(); !routed) {
        m_diagnostics.recordRoutingFailure(routed.error().description(),
                                           QStringLiteral("PlaybackController.applyPersistedOutputDevice"));
        fail(routed.error());
        return;
    }
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer.play from PlaybackController.seek"));
    if (const RoutedAudioPlayer::Outcome played = m_player.play(); !played) {
        m_diagnostics.recordRoutingFailure(played.error().description(),
                                           QStringLiteral("PlaybackController.seek play"));
        fail(played.error());
        return;
    }
    setPlaying(true);
    m_progressTimer.start();
}

void PlaybackController::stop(PlayheadReset reset) {
    m_progressTimer.stop();
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer.stop from PlaybackController.stop"));
    m_player.stop();
    m_sequenceLines.clear();
    m_sequenceIndex = 0;
    setPlaying(false);
    setPlayingSequence(false);
    if (reset == PlayheadReset::Reset) {
        setLine({}, {});
        setProgress(0.0);
    }
}

void PlaybackController::startPlayback(const PlaybackLine &line, const Start &start) {
    const QString source = sourceName(start.source);
    const QString file = line.url.fileName();
    AudioDebugLogger::log(QStringLiteral("Starting RoutedAudioPlayer playback source=%1 file=%2").arg(source, file));
    AudioDebugLogger::log(
        QStringLiteral("RoutedAudioPlayer.load from PlaybackController.startPlayback source=%1 file=%2")
            .arg(source, file));
    if (const RoutedAudioPlayer::Outcome loaded = m_player.load(line.url); !loaded) {
        AudioDebugLogger::log(QStringLiteral("PlaybackController ERROR: RoutedAudioPlayer load failed %1")
                                  .arg(loaded.error().description()));
        fail(loaded.error());
        return;
    }
    if (const RoutedAudioPlayer::Outcome routed = applyPersistedOutputDevice(); !routed) {
        AudioDebugLogger::log(QStringLiteral("PlaybackController ERROR: RoutedAudioPlayer output routing failed %1")
                                  .arg(routed.error().description()));
        m_diagnostics.recordRoutingFailure(routed.error().description(),
                                           QStringLiteral("PlaybackController.applyPersistedOutputDevice"));
        fail(routed.error());
        return;
    }
    if (start.fraction > 0.0) {
        AudioDebugLogger::log(
            QStringLiteral("RoutedAudioPlayer.seek before PlaybackController.startPlayback play fraction=%1")
                .arg(start.fraction));
        m_player.seek(start.fraction);
    }
    setProgress(start.fraction);
    setLine(start.source == AudioSource::Preview ? std::nullopt : std::optional(line.id), start.source);
    AudioDebugLogger::log(
        QStringLiteral("RoutedAudioPlayer.play from PlaybackController.startPlayback source=%1").arg(source));
    if (const RoutedAudioPlayer::Outcome played = m_player.play(); !played) {
        AudioDebugLogger::log(
            QStringLiteral("PlaybackController ERROR: RoutedAudioPlayer failed %1").arg(played.error().description()));
        m_diagnostics.recordRoutingFailure(played.error().description(),
                                           QStringLiteral("PlaybackController.startPlayback play"));
        fail(played.error());
        return;
    }
    setPlaying(true);
    if (!start.sequence.isEmpty()) {
        m_sequenceLines = start.sequence;
        setPlayingSequence(true);
    }
    m_progressTimer.start();
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
    if (!m_isPlayingSequence) {
        stop(PlayheadReset::Reset);
        return;
    }
    if (m_sequenceIndex + 1 < m_sequenceLines.size()) {
        ++m_sequenceIndex;
        const PlaybackLine next = m_sequenceLines.at(m_sequenceIndex);
        startPlayback(next, {AudioSource::Generated, m_sequenceLines, 0.0});
        return;
    }
    const auto first = m_sequenceLines.isEmpty() ? std::nullopt : std::optional(m_sequenceLines.constFirst().id);
    m_player.stop();
    m_sequenceLines.clear();
    m_sequenceIndex = 0;
    setPlaying(false);
    setPlayingSequence(false);
    // The playhead goes back to where the sequence began, where the next one would start.
    setLine(first, AudioSource::Generated);
    setProgress(0.0);
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

void PlaybackController::setPlaying(bool isPlaying) {
    if (m_isPlaying != isPlaying) {
        m_isPlaying = isPlaying;
        Q_EMIT isPlayingChanged();
    }
}

void PlaybackController::setPlayingSequence(bool isPlayingSequence) {
    if (m_isPlayingSequence != isPlayingSequence) {
        m_isPlayingSequence = isPlayingSequence;
        Q_EMIT isPlayingSequenceChanged();
    }
}

void PlaybackController::setProgress(double progress) {
    if (m_progress != progress) {
        m_progress = progress;
        Q_EMIT playbackProgressChanged();
    }
}

} // namespace orlenta::audio
