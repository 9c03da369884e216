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
    connect(&server.microphone(), &SharedMicrophone::taken, this, &RoutedAudioPlayer::handleTaken);
}

RoutedAudioPlayer::~RoutedAudioPlayer() = default;

double RoutedAudioPlayer::duration() const {
    return m_file ? m_file->seconds(m_file->length) : 0.0;
}

double RoutedAudioPlayer::currentTime() const {
    if (!m_file)
        return 0.0;
    const qint64 frame = m_stream ? m_stream->currentFrame().value_or(m_scheduledStartFrame) : m_scheduledStartFrame;
    return std::min(m_file->seconds(frame), duration());
}

RoutedAudioPlayer::Outcome RoutedAudioPlayer::load(const QUrl &url) {
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer.load url=%1").arg(url.fileName()));
    stop();
    m_file.reset();
    auto opened = AudioFileReader::open(url.toLocalFile());
    if (!opened) {
        const QString why = opened.error().description();
        AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer ERROR: load failed %1").arg(why));
        return base::fail(RoutedAudioPlayerError::fileUnreadable(why));
    }
    const auto reader = std::make_shared<AudioFileReader>(std::move(opened).value());
    m_file = LoadedFile{url, reader, reader->frames(), reader->sampleRate(), reader->channelCount()};
    m_scheduledStartFrame = 0;
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer.load complete frames=%1, sampleRate=%2")
                              .arg(m_file->length)
                              .arg(m_file->sampleRate));
    return {};
}

RoutedAudioPlayer::Outcome RoutedAudioPlayer::play() {
    if (!m_file) {
        const RoutedAudioPlayerError error{RoutedAudioPlayerError::Kind::NoFileLoaded, 0, 0, {}};
        AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer ERROR: ") + error.description());
        return base::fail(error);
    }
    if (m_server.microphone().isInUse())
        return base::fail(RoutedAudioPlayerError{RoutedAudioPlayerError::Kind::RecordingRuns, 0, 0, {}});
    if (m_outputDeviceID && m_appliedOutputDeviceID != m_outputDeviceID) {
        if (auto bound = bindOutputDevice(*m_outputDeviceID); !bound)
            return bound;
        m_appliedOutputDeviceID = m_outputDeviceID;
    }
    if (m_state == State::Stopped)
        if (auto started = startEngine(); !started)
            return started;
    endStream(State::Stopped);
    if (auto scheduled = schedulePlayback(m_scheduledStartFrame); !scheduled)
        return scheduled;
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer play called"));
    m_state = State::Starting;
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
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer engine started"));
    return {};
}

RoutedAudioPlayer::Outcome RoutedAudioPlayer::schedulePlayback(qint64 startingFrame) {
    const qint64 start = std::clamp<qint64>(startingFrame, 0, m_file->length);
    const qint64 remaining = m_file->length - start;
    const int generation = ++m_scheduleGeneration;
    AudioDebugLogger::log(
        QStringLiteral("RoutedAudioPlayer scheduling file frames=%1 at=%2").arg(remaining).arg(start));
    if (remaining < 1) {
        QMetaObject::invokeMethod(
            this, [this, generation] { handlePlaybackCompleted(generation); }, Qt::QueuedConnection);
        return {};
    }
    m_scheduledStartFrame = start;
    OutputStream::Events events;
    events.receiver = this;
    events.started = [this, generation] {
        if (generation == m_scheduleGeneration)
            m_state = State::Playing;
    };
    events.finished = [this, generation] { handlePlaybackCompleted(generation); };
    events.lost = [this, generation](qint64 frame) { handleStreamLost(generation, frame); };
    events.failed = [this, generation](const RoutedAudioPlayerError &error) { handleStreamFailed(generation, error); };
    auto stream =
        OutputStream::open(m_server, m_appliedOutputDeviceID, m_readers,
                           {m_file->reader, m_file->sampleRate, m_file->channelCount, start}, std::move(events));
    if (!stream)
        return base::fail(stream.error());
    m_stream = std::move(stream).value();
    return {};
}

/// Ignores events of the old stream that are still queued.
void RoutedAudioPlayer::endStream(State state) {
    ++m_scheduleGeneration;
    m_stream.reset();
    m_state = state;
}

void RoutedAudioPlayer::handlePlaybackCompleted(int generation) {
    if (generation != m_scheduleGeneration)
        return;
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer completion fired"));
    endStream(State::Stopped);
    m_scheduledStartFrame = m_file->length;
    if (m_completionHandler)
        m_completionHandler();
}

void RoutedAudioPlayer::stop() {
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer stop called"));
    endStream(State::Stopped);
}

void RoutedAudioPlayer::seek(double fraction) {
    if (!m_file)
        return;
    const bool wasPlaying = isPlaybackActive();
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer seek requested fraction=%1, wasPlaying=%2")
                              .arg(fraction)
                              .arg(wasPlaying ? QStringLiteral("true") : QStringLiteral("false")));
    endStream(m_state);
    const double share = std::isnan(fraction) ? 0.0 : std::clamp(fraction, 0.0, 1.0);
    m_scheduledStartFrame = static_cast<qint64>(std::floor(share * static_cast<double>(m_file->length)));
    if (!wasPlaying)
        return;
    if (const Outcome going = schedulePlayback(m_scheduledStartFrame); !going) {
        AudioDebugLogger::log(
            QStringLiteral("RoutedAudioPlayer ERROR: seek reschedule failed %1").arg(going.error().description()));
        // The seek has destroyed the stream that would have reported the loss, so report it here.
        QMetaObject::invokeMethod(
            this,
            [this, error = going.error(), generation = m_scheduleGeneration] { handleStreamFailed(generation, error); },
            Qt::QueuedConnection);
        return;
    }
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer play called after seek"));
}

RoutedAudioPlayer::Outcome RoutedAudioPlayer::setOutputDeviceID(std::optional<std::uint32_t> deviceID) {
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer.setOutputDeviceID requested=%1").arg(deviceText(deviceID)));
    if (isPlaybackActive()) {
        AudioDebugLogger::log(
            QStringLiteral("RoutedAudioPlayer.setOutputDeviceID stopping running engine before rebind"));
        endStream(State::Stopped);
    }
    m_outputDeviceID = deviceID;
    if (!deviceID) {
        if (m_appliedOutputDeviceID)
            AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer rebuilding engine for system default output"));
        m_appliedOutputDeviceID.reset();
        AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer.setOutputDeviceID applied deviceID=system default"));
        return {};
    }
    Outcome applied = bindOutputDevice(*deviceID);
    if (applied)
        m_appliedOutputDeviceID = deviceID;
    else
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

void RoutedAudioPlayer::handleStreamLost(int generation, qint64 frame) {
    if (generation != m_scheduleGeneration)
        return;
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer engine configuration changed"));
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer bound output disappeared; falling back to system default "
                                         "and resuming at %1s, deviceID=%2")
                              .arg(m_file->seconds(frame))
                              .arg(deviceText(m_appliedOutputDeviceID)));
    if (const Outcome resumed = fallbackToSystemDefaultAndResume(frame); !resumed) {
        AudioDebugLogger::log(
            QStringLiteral("RoutedAudioPlayer ERROR: fallback to system default after configuration change failed %1")
                .arg(resumed.error().description()));
        stop();
        if (m_completionHandler)
            m_completionHandler();
    }
}

void RoutedAudioPlayer::handleStreamFailed(int generation, const RoutedAudioPlayerError &error) {
    if (generation != m_scheduleGeneration)
        return;
    // The output disappeared during a seek: playback continues at the default.
    if (m_state == State::Playing && m_appliedOutputDeviceID && error.isOutputGone()) {
        handleStreamLost(generation, m_scheduledStartFrame);
        return;
    }
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer ERROR: %1").arg(error.description()));
    stop();
    if (m_failureHandler)
        m_failureHandler(error);
}

void RoutedAudioPlayer::handleTaken() {
    if (!isPlaybackActive())
        return;
    stop();
    if (m_interruptionHandler)
        m_interruptionHandler();
}

RoutedAudioPlayer::Outcome RoutedAudioPlayer::fallbackToSystemDefaultAndResume(qint64 frame) {
    m_outputDeviceID.reset();
    m_appliedOutputDeviceID.reset();
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer rebuilding engine for system default output"));
    endStream(State::Playing);
    m_scheduledStartFrame = std::clamp<qint64>(frame, 0, m_file->length);
    if (auto started = startEngine(); !started)
        return started;
    if (auto scheduled = schedulePlayback(m_scheduledStartFrame); !scheduled)
        return scheduled;
    AudioDebugLogger::log(QStringLiteral("RoutedAudioPlayer play called after output-device fallback"));
    return {};
}

} // namespace orlenta::audio
