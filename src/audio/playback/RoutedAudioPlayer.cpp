#include "audio/playback/RoutedAudioPlayer.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <pulse/def.h>

#include "audio/devices/AudioDebugLogger.h"
#include "audio/devices/AudioDeviceEnumerator.h"
#include "audio/devices/SoundServer.h"
#include "audio/files/AudioFileReader.h"
#include "audio/playback/OutputStream.h"

namespace orlenta::audio {

namespace {

QString deviceText(std::optional<std::uint32_t> deviceID) {
    return deviceID ? QString::number(*deviceID) : QStringLiteral("system default");
}

} // namespace

RoutedAudioPlayer::RoutedAudioPlayer(SoundServer &server, QObject *parent) : QObject(parent), m_server(server) {
    m_readers.setMaxThreadCount(1);
}

RoutedAudioPlayer::~RoutedAudioPlayer() = default;

double RoutedAudioPlayer::duration() const {
    return m_sampleRate > 0.0 ? static_cast<double>(m_length) / m_sampleRate : 0.0;
}

double RoutedAudioPlayer::currentTime() const {
    if (m_loadedURL.isEmpty() || m_sampleRate <= 0.0)
        return 0.0;
    const qint64 frame = m_stream ? m_stream->currentFrame().value_or(m_scheduledStartFrame) : m_scheduledStartFrame;
    return std::min(static_cast<double>(frame) / m_sampleRate, duration());
}

RoutedAudioPlayer::Outcome RoutedAudioPlayer::load(const QUrl &url) {
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer.load url=%1").arg(url.fileName()));
    stop();
    m_audioFile.reset();
    m_loadedURL.clear();
    m_length = 0;
    m_sampleRate = 0.0;
    auto reader = AudioFileReader::open(url.toLocalFile());
    if (!reader) {
        const QString why = reader.error().description();
        AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer ERROR: load failed %1").arg(why));
        return base::fail(RoutedAudioPlayerError::fileUnreadable(why));
    }
    m_audioFile = std::make_shared<AudioFileReader>(std::move(reader).value());
    m_loadedURL = url;
    m_length = m_audioFile->frames();
    m_sampleRate = m_audioFile->sampleRate();
    m_channelCount = m_audioFile->channelCount();
    m_scheduledStartFrame = 0;
    AudioDebugLogger::log(
        QStringLiteral("RoutedAudioPlayer.load complete frames=%1, sampleRate=%2").arg(m_length).arg(m_sampleRate));
    return {};
}

RoutedAudioPlayer::Outcome RoutedAudioPlayer::play() {
    if (m_loadedURL.isEmpty()) {
        const RoutedAudioPlayerError error{RoutedAudioPlayerError::Kind::NoFileLoaded, 0, 0, {}};
        AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer ERROR: ") + error.description());
        return base::fail(error);
    }
    if (m_outputDeviceID && m_appliedOutputDeviceID != m_outputDeviceID) {
        if (auto bound = bindOutputDevice(*m_outputDeviceID); !bound)
            return bound;
        m_appliedOutputDeviceID = m_outputDeviceID;
    }
    if (!m_isEngineRunning)
        if (auto started = startEngine(); !started)
            return started;
    if (auto scheduled = schedulePlayback(m_scheduledStartFrame); !scheduled)
        return scheduled;
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer play called"));
    m_isNodePlaying = true;
    m_isPlaybackActive = true;
    return {};
}

RoutedAudioPlayer::Outcome RoutedAudioPlayer::startEngine() {
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer engine starting"));
    if (m_server.state() != SoundServer::State::Ready) {
        const auto error = RoutedAudioPlayerError::soundServerUnavailable({});
        AudioDebugLogger::log(
            QStringLiteral("RoutedAudioPlayer ERROR: engine start failed %1").arg(error.description()));
        return base::fail(error);
    }
    m_isEngineRunning = true;
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer engine started"));
    return {};
}

RoutedAudioPlayer::Outcome RoutedAudioPlayer::schedulePlayback(qint64 startingFrame) {
    const qint64 start = std::clamp<qint64>(startingFrame, 0, m_length);
    const qint64 remaining = m_length - start;
    const int generation = ++m_scheduleGeneration;
    AudioDebugLogger::log(
        QStringLiteral("RoutedAudioPlayer scheduling file frames=%1 at=%2").arg(remaining).arg(start));
    if (remaining < 1) {
        QMetaObject::invokeMethod(
            this, [this, generation] { handlePlaybackCompleted(generation); }, Qt::QueuedConnection);
        return {};
    }
    m_scheduledStartFrame = start;
    stopNode();
    OutputStream::Events events;
    events.receiver = this;
    events.finished = [this, generation] { handlePlaybackCompleted(generation); };
    events.lost = [this, generation](OutputStream::Loss why, qint64 frame) {
        handleStreamLost(generation, why, frame);
    };
    events.broken = [this, generation](const QString &why) {
        handleStreamBroken(generation, RoutedAudioPlayerError::fileUnreadable(why));
    };
    auto stream = OutputStream::open(m_server, m_appliedOutputDeviceID, m_readers,
                                     {m_audioFile, m_sampleRate, m_channelCount, start}, std::move(events));
    if (!stream)
        return base::fail(stream.error());
    m_stream = std::move(stream).value();
    return {};
}

void RoutedAudioPlayer::stopNode() {
    m_stream.reset();
    m_isNodePlaying = false;
}

void RoutedAudioPlayer::handlePlaybackCompleted(int generation) {
    if (generation != m_scheduleGeneration)
        return;
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer completion fired"));
    m_isPlaybackActive = false;
    stopNode();
    if (!m_loadedURL.isEmpty())
        m_scheduledStartFrame = m_length;
    if (m_completionHandler)
        m_completionHandler();
}

void RoutedAudioPlayer::stop() {
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer stop called"));
    m_isPlaybackActive = false;
    ++m_scheduleGeneration;
    stopNode();
    m_isEngineRunning = false;
}

void RoutedAudioPlayer::seek(double fraction) {
    if (m_loadedURL.isEmpty())
        return;
    const bool wasPlaying = m_isNodePlaying;
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer seek requested fraction=%1, wasPlaying=%2")
                              .arg(fraction)
                              .arg(wasPlaying ? QStringLiteral("true") : QStringLiteral("false")));
    ++m_scheduleGeneration;
    stopNode();
    const double share = std::isnan(fraction) ? 0.0 : std::clamp(fraction, 0.0, 1.0);
    m_scheduledStartFrame = m_length < 1 ? 0 : static_cast<qint64>(std::floor(share * static_cast<double>(m_length)));
    if (!wasPlaying)
        return;
    Outcome going = m_isEngineRunning ? Outcome() : startEngine();
    if (going)
        going = schedulePlayback(m_scheduledStartFrame);
    if (!going) {
        AudioDebugLogger::log(
            QStringLiteral("RoutedAudioPlayer ERROR: seek reschedule failed %1").arg(going.error().description()));
        recoverFromFailedSeek(going.error());
        return;
    }
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer play called after seek"));
    m_isNodePlaying = true;
    m_isPlaybackActive = true;
}

/// The stream that was to tell of the loss has been ended by the seek, so nobody else will.
void RoutedAudioPlayer::recoverFromFailedSeek(const RoutedAudioPlayerError &error) {
    // Another seek may come before that, and has to go on playing as well.
    m_isNodePlaying = true;
    QMetaObject::invokeMethod(
        this,
        [this, error, generation = m_scheduleGeneration] {
            if (m_appliedOutputDeviceID)
                handleStreamLost(generation, OutputStream::Loss::Output, m_scheduledStartFrame);
            else
                handleStreamBroken(generation, error);
        },
        Qt::QueuedConnection);
}

RoutedAudioPlayer::Outcome RoutedAudioPlayer::setOutputDeviceID(std::optional<std::uint32_t> deviceID) {
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer.setOutputDeviceID requested=%1").arg(deviceText(deviceID)));
    const bool wasRunning = m_isEngineRunning;
    if (wasRunning) {
        AudioDebugLogger::log(
            QStringLiteral("RoutedAudioPlayer.setOutputDeviceID stopping running engine before rebind"));
        m_isEngineRunning = false;
        stopNode();
    }
    m_outputDeviceID = deviceID;
    if (!deviceID) {
        if (m_appliedOutputDeviceID) {
            AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer rebuilding engine for system default output"));
            ++m_scheduleGeneration;
            stopNode();
        }
        m_appliedOutputDeviceID.reset();
        AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer.setOutputDeviceID applied deviceID=system default"));
        return wasRunning ? startEngine() : Outcome();
    }
    Outcome applied = bindOutputDevice(*deviceID);
    if (applied) {
        m_appliedOutputDeviceID = deviceID;
        if (wasRunning)
            applied = startEngine();
    }
    if (!applied)
        AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer ERROR: %1").arg(applied.error().description()));
    return applied;
}

RoutedAudioPlayer::Outcome RoutedAudioPlayer::bindOutputDevice(std::uint32_t deviceID) {
    AudioDebugLogger::log(
        QStringLiteral("RoutedAudioPlayer.setOutputDeviceID requested=%1 using path=setDeviceID").arg(deviceID));
    if (!AudioDeviceEnumerator(m_server).isDeviceAlive(deviceID) || !m_server.devices().findOutput(deviceID)) {
        return base::fail(RoutedAudioPlayerError{
            RoutedAudioPlayerError::Kind::AudioUnitSetPropertyFailed, deviceID, PA_ERR_NOENTITY, {}});
    }
    AudioDebugLogger::log(
        QStringLiteral("RoutedAudioPlayer.setOutputDeviceID applied deviceID=%1 using path=setDeviceID").arg(deviceID));
    return {};
}

void RoutedAudioPlayer::handleStreamLost(int generation, OutputStream::Loss why, qint64 frame) {
    if (generation != m_scheduleGeneration)
        return;
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer engine configuration changed"));
    if (!m_appliedOutputDeviceID) {
        handleStreamBroken(generation, why == OutputStream::Loss::Output
                                           ? RoutedAudioPlayerError{RoutedAudioPlayerError::Kind::NoOutput, 0, 0, {}}
                                           : RoutedAudioPlayerError::soundServerUnavailable({}));
        return;
    }
    const double time = static_cast<double>(frame) / m_sampleRate;
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer bound output disappeared; falling back to system default "
                                         "and resuming at %1s, deviceID=%2")
                              .arg(time)
                              .arg(*m_appliedOutputDeviceID));
    if (const Outcome resumed = fallbackToSystemDefaultAndResume(time); !resumed) {
        AudioDebugLogger::log(
            QStringLiteral("RoutedAudioPlayer ERROR: fallback to system default after configuration change failed %1")
                .arg(resumed.error().description()));
        stop();
        if (m_completionHandler)
            m_completionHandler();
    }
}

void RoutedAudioPlayer::handleStreamBroken(int generation, const RoutedAudioPlayerError &error) {
    if (generation != m_scheduleGeneration)
        return;
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer ERROR: %1").arg(error.description()));
    stop();
    if (m_failureHandler)
        m_failureHandler(error);
}

RoutedAudioPlayer::Outcome RoutedAudioPlayer::fallbackToSystemDefaultAndResume(double time) {
    if (m_loadedURL.isEmpty())
        return {};
    m_outputDeviceID.reset();
    m_appliedOutputDeviceID.reset();
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer rebuilding engine for system default output"));
    ++m_scheduleGeneration;
    m_isEngineRunning = false;
    stopNode();
    m_scheduledStartFrame =
        m_length < 1 || m_sampleRate <= 0.0
            ? 0
            : std::min(static_cast<qint64>(std::floor(m_sampleRate * std::clamp(time, 0.0, duration()))), m_length);
    if (auto started = startEngine(); !started)
        return started;
    if (auto scheduled = schedulePlayback(m_scheduledStartFrame); !scheduled)
        return scheduled;
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer play called after output-device fallback"));
    m_isNodePlaying = true;
    m_isPlaybackActive = true;
    return {};
}

} // namespace orlenta::audio
