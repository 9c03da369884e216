#include "audio/recording/InputStream.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include <pulse/pulseaudio.h>
#include <QtCore/QMetaObject>

#include "audio/devices/AudioDebugLogger.h"
#include "audio/devices/SoundServer.h"
#include "audio/recording/RecordingWriter.h"

namespace orlenta::audio {

namespace {

/// What one delivery holds. Without it one server sends pieces of 0.7 s, and the end of a take is lost with the last.
constexpr auto fragmentLength = std::chrono::milliseconds(20);
/// A server whose session manager is gone leaves a stream waiting for ever.
constexpr auto inputConnectTimeout = std::chrono::seconds(3);
/// How long after they should have come the last samples of a take are waited for.
constexpr auto tailGrace = std::chrono::milliseconds(100);
/// The most that can be on its way when a take is stopped; a server that tells more is not believed.
constexpr auto longestTail = std::chrono::milliseconds(500);

pa_usec_t inMicroseconds(std::chrono::microseconds duration) {
    return static_cast<pa_usec_t>(duration.count());
}

} // namespace

/// The stream as libpulse's callbacks see it. Touched with the loop locked, but for the count of what has come.
class InputStream::Link final {
public:
    Link(SoundServer &server, pa_context *context, const Source &source, RecordingWriter &writer, Events events);
    ~Link();

    /// The server's words where it can't be done.
    [[nodiscard]] std::optional<QString> connect();
    void stop();
    [[nodiscard]] std::chrono::duration<double> capturedTime() const;

private:
    void stateChanged();
    void read();
    void take(const void *data, std::size_t bytes);
    void deadlinePassed();
    void setDeadline(std::chrono::microseconds fromNow);
    void end(End how, const QString &reason);
    void lose(const QString &reason);
    [[nodiscard]] qint64 soundedFrames() const;
    [[nodiscard]] QString serverReason() const;

    static void onState(pa_stream *stream, void *link);
    static void onReadable(pa_stream *stream, std::size_t bytes, void *link);
    static void onDeadline(pa_mainloop_api *api, pa_time_event *event, const timeval *time, void *link);

    SoundServer &m_server;
    pa_threaded_mainloop *m_mainloop;
    pa_context *m_context;
    pa_stream *m_stream = nullptr;
    pa_time_event *m_deadline = nullptr;
    Source m_source;
    RecordingWriter &m_writer;
    Events m_events;
    std::atomic<qint64> m_frames = 0;
    /// Set by a stop: how long the take is to be.
    std::optional<qint64> m_wantedFrames;
    bool m_isStarted = false;
    bool m_isOver = false;
};

InputStream::Link::Link(SoundServer &server, pa_context *context, const Source &source, RecordingWriter &writer,
                        Events events)
    : m_server(server), m_mainloop(server.mainloop()), m_context(pa_context_ref(context)), m_source(source),
      m_writer(writer), m_events(std::move(events)) {}

InputStream::Link::~Link() {
    const SoundServerLock lock(m_mainloop);
    if (m_deadline)
        pa_threaded_mainloop_get_api(m_mainloop)->time_free(m_deadline);
    if (m_stream)
        m_server.retire(m_stream, std::chrono::microseconds(0));
    pa_context_unref(m_context);
}

std::optional<QString> InputStream::Link::connect() {
    const SoundServerLock lock(m_mainloop);
    pa_sample_spec spec{};
    spec.format = PA_SAMPLE_FLOAT32LE;
    spec.rate = m_source.sampleRate;
    spec.channels = RecordingWriter::format.channelCount;
    m_stream = pa_stream_new(m_context, "Recording", &spec, nullptr);
    if (!m_stream)
        return serverReason();
    pa_stream_set_state_callback(m_stream, &Link::onState, this);
    pa_stream_set_read_callback(m_stream, &Link::onReadable, this);

    pa_buffer_attr buffer{};
    buffer.maxlength = buffer.tlength = buffer.prebuf = buffer.minreq = static_cast<std::uint32_t>(-1);
    buffer.fragsize = static_cast<std::uint32_t>(pa_usec_to_bytes(inMicroseconds(fragmentLength), &spec));
    // Without DONT_MOVE a stream whose source goes is given another one, an output's monitor even, without a word.
    constexpr auto flags = static_cast<pa_stream_flags_t>(PA_STREAM_DONT_MOVE | PA_STREAM_ADJUST_LATENCY |
                                                          PA_STREAM_AUTO_TIMING_UPDATE | PA_STREAM_INTERPOLATE_TIMING);
    AudioDebugLogger::log(
        QStringLiteral("pa_stream_connect_record(%1) from InputStream.connect").arg(QString::fromUtf8(m_source.name)));
    if (pa_stream_connect_record(m_stream, m_source.name.constData(), &buffer, flags) < 0)
        return serverReason();
    m_deadline = pa_context_rttime_new(m_context, pa_rtclock_now() + inMicroseconds(inputConnectTimeout),
                                       &Link::onDeadline, this);
    return {};
}

QString InputStream::Link::serverReason() const {
    return QString::fromUtf8(pa_strerror(pa_context_errno(m_context)));
}

void InputStream::Link::stop() {
    const SoundServerLock lock(m_mainloop);
    if (m_isOver || m_wantedFrames)
        return;
    const qint64 delivered = m_frames;
    m_wantedFrames = m_isStarted ? std::max(soundedFrames(), delivered) : delivered;
    const qint64 missing = *m_wantedFrames - delivered;
    if (missing == 0) {
        end(End::Stopped, {});
        return;
    }
    setDeadline(std::chrono::microseconds(missing * 1'000'000 / m_source.sampleRate) + tailGrace);
}

/// What the source had taken in by now, delivered or not.
qint64 InputStream::Link::soundedFrames() const {
    const qint64 delivered = m_frames;
    pa_usec_t time = 0;
    if (pa_stream_get_time(m_stream, &time) < 0)
        return delivered + std::chrono::milliseconds(fragmentLength).count() * m_source.sampleRate / 1000;
    const auto sounded = static_cast<qint64>(time * m_source.sampleRate / 1'000'000);
    return std::min(sounded, delivered + longestTail.count() * m_source.sampleRate / 1000);
}

std::chrono::duration<double> InputStream::Link::capturedTime() const {
    return std::chrono::duration<double>(static_cast<double>(m_frames.load()) / m_source.sampleRate);
}

void InputStream::Link::end(End how, const QString &reason) {
    if (std::exchange(m_isOver, true))
        return;
    QMetaObject::invokeMethod(
        m_events.receiver, [ended = m_events.ended, how, reason] { ended(how, reason); }, Qt::QueuedConnection);
}

void InputStream::Link::lose(const QString &reason) {
    // A take that is being stopped is complete but for a moment.
    if (m_wantedFrames)
        end(End::Stopped, {});
    else
        end(End::Lost, reason);
}

void InputStream::Link::setDeadline(std::chrono::microseconds fromNow) {
    pa_context_rttime_restart(m_context, m_deadline, pa_rtclock_now() + inMicroseconds(fromNow));
}

void InputStream::Link::stateChanged() {
    switch (pa_stream_get_state(m_stream)) {
    case PA_STREAM_READY:
        if (!std::exchange(m_isStarted, true) && !m_isOver)
            QMetaObject::invokeMethod(m_events.receiver, m_events.started, Qt::QueuedConnection);
        m_server.watchDevice(m_stream, DeviceDirection::Input,
                             [this] { lose(QString::fromUtf8(pa_strerror(PA_ERR_KILLED))); });
        break;
    case PA_STREAM_FAILED:
    case PA_STREAM_TERMINATED:
        if (m_wantedFrames || m_isStarted)
            lose(serverReason());
        else
            end(pa_context_errno(m_context) == PA_ERR_ACCESS ? End::Forbidden : End::Refused, serverReason());
        break;
    case PA_STREAM_UNCONNECTED:
    case PA_STREAM_CREATING:
        break;
    }
}

void InputStream::Link::read() {
    const void *data = nullptr;
    std::size_t bytes = 0;
    while (!m_isOver && pa_stream_peek(m_stream, &data, &bytes) == 0 && bytes > 0) {
        take(data, bytes);
        pa_stream_drop(m_stream);
    }
}

void InputStream::Link::take(const void *data, std::size_t bytes) {
    auto count = static_cast<qint64>(bytes / sizeof(float));
    if (m_wantedFrames)
        count = std::min(count, *m_wantedFrames - m_frames);
    // No data stands for samples that the server has lost: silence in their place keeps the rest in time.
    if (data)
        m_writer.append({static_cast<const float *>(data), static_cast<std::size_t>(count)});
    else
        m_writer.appendSilence(static_cast<std::size_t>(count));
    m_frames += count;
    if (m_wantedFrames && m_frames >= *m_wantedFrames)
        end(End::Stopped, {});
}

void InputStream::Link::deadlinePassed() {
    if (m_wantedFrames)
        end(End::Stopped, {});
    else if (!m_isStarted)
        end(End::Refused, QString::fromUtf8(pa_strerror(PA_ERR_TIMEOUT)));
}

void InputStream::Link::onState(pa_stream *, void *link) {
    static_cast<Link *>(link)->stateChanged();
}

void InputStream::Link::onReadable(pa_stream *, std::size_t, void *link) {
    static_cast<Link *>(link)->read();
}

void InputStream::Link::onDeadline(pa_mainloop_api *, pa_time_event *, const timeval *, void *link) {
    static_cast<Link *>(link)->deadlinePassed();
}

base::Result<std::unique_ptr<InputStream>, QString> InputStream::open(SoundServer &server, const Source &source,
                                                                      RecordingWriter &writer, Events events) {
    pa_context *const context = server.context();
    if (!context)
        return base::fail(QString::fromUtf8(pa_strerror(PA_ERR_CONNECTIONREFUSED)));
    if (source.name.isEmpty() || !pa_sample_rate_valid(source.sampleRate))
        return base::fail(QString::fromUtf8(pa_strerror(PA_ERR_NOENTITY)));
    auto link = std::make_unique<Link>(server, context, source, writer, std::move(events));
    if (auto refused = link->connect())
        return base::fail(*std::move(refused));
    return std::unique_ptr<InputStream>(new InputStream(std::move(link)));
}

InputStream::InputStream(std::unique_ptr<Link> link) : m_link(std::move(link)) {}

InputStream::~InputStream() = default;

void InputStream::stop() {
    m_link->stop();
}

std::chrono::duration<double> InputStream::capturedTime() const {
    return m_link->capturedTime();
}

} // namespace orlenta::audio
