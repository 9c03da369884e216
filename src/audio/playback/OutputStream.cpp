#include "audio/playback/OutputStream.h"

#include <algorithm>
#include <chrono>
#include <mutex>
#include <utility>

#include <pulse/pulseaudio.h>
#include <QtCore/QMetaObject>

#include "audio/devices/SoundServer.h"
#include "audio/playback/PlaybackFeed.h"
#include "audio/playback/WrittenTail.h"

namespace orlenta::audio {

namespace {

using PlaybackClock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

/// How much lies ready at the server. Less underran now and then on a busy two-core machine.
constexpr auto bufferLength = std::chrono::milliseconds(150);
/// How often the heard place is noted: once the stream has failed, the server no longer tells it.
constexpr auto noteInterval = std::chrono::milliseconds(20);
/// The noted place runs up to 19 ms ahead of what a sink has rendered, and what goes on is faded in; repeating a little
/// is better than a hole.
constexpr auto resumeBackOff = std::chrono::milliseconds(25) + PlaybackSource::fadeLength;
/// A server whose session manager is gone leaves a stream waiting for ever.
constexpr auto connectTimeout = std::chrono::seconds(3);
/// How soon it is looked again whether the file has delivered.
constexpr auto starvedInterval = std::chrono::milliseconds(5);
/// How long the sound takes to fall away at a stop, and how far ahead of the server's place that can begin. With 10 ms
/// one server was now and then past the place already.
constexpr auto stopFadeLength = std::chrono::milliseconds(5);
constexpr auto stopFadeMargin = std::chrono::milliseconds(20);
/// How long a stopped stream needs to play its fade out.
constexpr auto stopLingering = std::chrono::milliseconds(60);
/// How much of what was written is kept for that: a server may grant more than the wanted buffer.
constexpr auto tailLength = std::chrono::milliseconds(500);

pa_usec_t microseconds(std::chrono::microseconds duration) {
    return static_cast<pa_usec_t>(duration.count());
}

qint64 framesIn(Seconds duration, double rate) {
    return static_cast<qint64>(duration.count() * rate);
}

} // namespace

/// The stream as libpulse's callbacks see it. Touched with the loop locked, but for the guarded place.
class OutputStream::Link final {
public:
    /// What the application has one of, and the connection as it was found.
    struct Parts {
        SoundServer &server;
        pa_context *context;
        QThreadPool &readers;
    };

    Link(const Parts &parts, PlaybackSource source, Events events);
    ~Link();

    [[nodiscard]] std::optional<RoutedAudioPlayerError> connect(std::optional<std::uint32_t> deviceID,
                                                                const QByteArray &sinkName);
    [[nodiscard]] std::optional<qint64> currentFrame() const;

private:
    void stateChanged();
    void deviceChanged();
    void write(std::size_t bytes);
    void drain();
    void drained();
    void tick();
    void notePlace();
    void lose(Loss why);
    /// Lets what sounds fall away; false when it has to be cut off.
    bool fadeOut();
    void post(std::function<void()> event);
    [[nodiscard]] std::optional<Seconds> heard() const;

    static void onState(pa_stream *stream, void *link);
    static void onMoved(pa_stream *stream, void *link);
    static void onWritable(pa_stream *stream, std::size_t bytes, void *link);
    static void onDrained(pa_stream *stream, int success, void *link);
    static void onTick(pa_mainloop_api *api, pa_time_event *event, const timeval *time, void *link);

    SoundServer &m_server;
    pa_threaded_mainloop *m_mainloop;
    pa_context *m_context;
    pa_stream *m_stream = nullptr;
    pa_time_event *m_tick = nullptr;
    pa_operation *m_drain = nullptr;
    PlaybackFeed m_feed;
    WrittenTail m_tail;
    Events m_events;
    bool m_isBound = false;
    PlaybackClock::time_point m_openedAt = PlaybackClock::now();
    bool m_isWritten = false;
    /// The server wants more than has been read.
    bool m_isStarved = false;
    bool m_isOver = false;

    mutable std::mutex m_guard;
    std::optional<Seconds> m_heard;
    PlaybackClock::time_point m_heardAt;
    Seconds m_written{0};
    /// The farthest place that was told.
    mutable Seconds m_told{0};
};

OutputStream::Link::Link(const Parts &parts, PlaybackSource source, Events events)
    : m_server(parts.server), m_mainloop(parts.server.mainloop()), m_context(pa_context_ref(parts.context)),
      m_feed(parts.readers, std::move(source)),
      m_tail(m_feed.channelCount(), framesIn(tailLength, m_feed.deviceRate())), m_events(std::move(events)) {}

OutputStream::Link::~Link() {
    const SoundServerLock lock(m_mainloop);
    if (m_tick)
        pa_threaded_mainloop_get_api(m_mainloop)->time_free(m_tick);
    if (m_drain) {
        pa_operation_cancel(m_drain);
        pa_operation_unref(m_drain);
    }
    if (m_stream)
        m_server.retire(m_stream, fadeOut() ? stopLingering : std::chrono::milliseconds(0));
    pa_context_unref(m_context);
}

bool OutputStream::Link::fadeOut() {
    if (pa_stream_get_state(m_stream) != PA_STREAM_READY)
        return false;
    const pa_timing_info *timing = pa_stream_get_timing_info(m_stream);
    if (!timing || !timing->playing || timing->read_index_corrupt || timing->write_index_corrupt)
        return false;
    const auto age = std::chrono::microseconds(pa_timeval_age(&timing->timestamp));
    const auto frameSize = static_cast<qint64>(pa_frame_size(pa_stream_get_sample_spec(m_stream)));
    const qint64 at = timing->read_index / frameSize + framesIn(age + stopFadeMargin, m_feed.deviceRate());
    // What little comes after that may sound out.
    if (at >= m_tail.writtenFrames())
        return true;
    const std::vector<float> faded = m_tail.fadedFrom(at, framesIn(stopFadeLength, m_feed.deviceRate()));
    return !faded.empty() && pa_stream_write(m_stream, faded.data(), faded.size() * sizeof(float), nullptr,
                                             at * frameSize, PA_SEEK_ABSOLUTE) == 0;
}

std::optional<RoutedAudioPlayerError> OutputStream::Link::connect(std::optional<std::uint32_t> deviceID,
                                                                  const QByteArray &sinkName) {
    const SoundServerLock lock(m_mainloop);
    m_isBound = deviceID.has_value();
    pa_sample_spec spec{};
    spec.format = PA_SAMPLE_FLOAT32LE;
    spec.rate = static_cast<std::uint32_t>(m_feed.deviceRate());
    spec.channels = static_cast<std::uint8_t>(std::min(m_feed.channelCount(), 255));
    pa_channel_map map{};
    const auto refused = [&] {
        return deviceID ? RoutedAudioPlayerError{RoutedAudioPlayerError::Kind::AudioUnitSetPropertyFailed,
                                                 *deviceID,
                                                 pa_context_errno(m_context),
                                                 {}}
                        : RoutedAudioPlayerError::soundServerUnavailable(
                              QString::fromUtf8(pa_strerror(pa_context_errno(m_context))));
    };
    if (!pa_channel_map_init_extend(&map, spec.channels, PA_CHANNEL_MAP_WAVEEX) || !pa_sample_spec_valid(&spec))
        return RoutedAudioPlayerError{RoutedAudioPlayerError::Kind::OutputAudioUnitUnavailable, 0, 0, {}};
    m_stream = pa_stream_new(m_context, "Playback", &spec, &map);
    if (!m_stream)
        return refused();
    pa_stream_set_state_callback(m_stream, &Link::onState, this);
    pa_stream_set_moved_callback(m_stream, &Link::onMoved, this);
    pa_stream_set_write_callback(m_stream, &Link::onWritable, this);

    pa_buffer_attr buffer{};
    buffer.maxlength = buffer.prebuf = buffer.minreq = buffer.fragsize = static_cast<std::uint32_t>(-1);
    buffer.tlength = static_cast<std::uint32_t>(pa_usec_to_bytes(microseconds(bufferLength), &spec));
    // A named sink that is gone must be told, not silently replaced; the default must be followed when it changes, and
    // only this name for it keeps the desktop from sending the stream where an earlier one was moved to.
    const auto flags = PA_STREAM_ADJUST_LATENCY | PA_STREAM_AUTO_TIMING_UPDATE | PA_STREAM_INTERPOLATE_TIMING |
                       (deviceID ? PA_STREAM_DONT_MOVE : PA_STREAM_NOFLAGS);
    if (pa_stream_connect_playback(m_stream, deviceID ? sinkName.constData() : "@DEFAULT_SINK@", &buffer,
                                   static_cast<pa_stream_flags_t>(flags), nullptr, nullptr) < 0)
        return refused();
    m_tick = pa_context_rttime_new(m_context, pa_rtclock_now() + microseconds(noteInterval), &Link::onTick, this);
    return {};
}

std::optional<Seconds> OutputStream::Link::heard() const {
    const std::lock_guard guard(m_guard);
    if (!m_heard)
        return {};
    return std::min<Seconds>(*m_heard + (PlaybackClock::now() - m_heardAt), m_written);
}

std::optional<qint64> OutputStream::Link::currentFrame() const {
    const std::optional<Seconds> place = heard();
    if (!place)
        return {};
    // Each note may lie a little below what was reckoned from the one before, and a playhead doesn't go back.
    m_told = std::max(m_told, *place);
    return m_feed.fileFrame(m_told.count());
}

void OutputStream::Link::post(std::function<void()> event) {
    if (std::exchange(m_isOver, true))
        return;
    QMetaObject::invokeMethod(m_events.receiver, std::move(event), Qt::QueuedConnection);
}

void OutputStream::Link::lose(Loss why) {
    const Seconds place = heard().value_or(Seconds(0));
    const qint64 frame = m_feed.fileFrame(std::max<Seconds>(place - resumeBackOff, Seconds(0)).count());
    post([lost = m_events.lost, why, frame] { lost(why, frame); });
}

void OutputStream::Link::stateChanged() {
    switch (pa_stream_get_state(m_stream)) {
    case PA_STREAM_FAILED:
    case PA_STREAM_TERMINATED:
        lose(pa_context_get_state(m_context) == PA_CONTEXT_READY ? Loss::Output : Loss::Server);
        break;
    case PA_STREAM_READY:
        deviceChanged();
        if (m_isBound)
            m_server.watchDevice(m_stream, DeviceDirection::Output, [this] { lose(Loss::Output); });
        break;
    case PA_STREAM_UNCONNECTED:
    case PA_STREAM_CREATING:
        break;
    }
}

void OutputStream::Link::deviceChanged() {
    if (SoundServer::isStandIn(pa_stream_get_device_name(m_stream)))
        lose(Loss::Output);
}

void OutputStream::Link::write(std::size_t bytes) {
    const std::size_t frameSize = pa_frame_size(pa_stream_get_sample_spec(m_stream));
    while (bytes >= frameSize && !m_isWritten && !m_isOver) {
        void *data = nullptr;
        std::size_t room = bytes;
        if (pa_stream_begin_write(m_stream, &data, &room) < 0 || !data)
            return;
        const std::span<float> samples(static_cast<float *>(data), std::min(room, bytes) / frameSize *
                                                                       static_cast<std::size_t>(m_feed.channelCount()));
        const PlaybackFeed::Taken taken = m_feed.take(samples);
        if (taken.frames == 0) {
            pa_stream_cancel_write(m_stream);
            m_isStarved = !taken.isEnd;
            m_isWritten = taken.isEnd;
            break;
        }
        m_isStarved = false;
        const auto size = static_cast<std::size_t>(taken.frames) * frameSize;
        m_tail.append(samples.first(size / sizeof(float)));
        // A stream that takes no more has failed, which its state tells.
        if (pa_stream_write(m_stream, data, size, nullptr, 0, PA_SEEK_RELATIVE) < 0)
            return;
        bytes -= size;
        const std::lock_guard guard(m_guard);
        m_written += Seconds(static_cast<double>(taken.frames) / m_feed.deviceRate());
    }
    if (m_isWritten && !m_isOver)
        drain();
}

void OutputStream::Link::drain() {
    if (!m_drain)
        m_drain = pa_stream_drain(m_stream, &Link::onDrained, this);
}

void OutputStream::Link::drained() {
    // What could be read of a broken file has been heard.
    if (const std::optional<QString> why = m_feed.failure())
        post([broken = m_events.broken, why = *why] { broken(why); });
    else
        post(m_events.finished);
}

void OutputStream::Link::tick() {
    switch (pa_stream_get_state(m_stream)) {
    case PA_STREAM_CREATING:
        if (PlaybackClock::now() - m_openedAt > connectTimeout)
            lose(Loss::Server);
        break;
    case PA_STREAM_READY:
        notePlace();
        if (m_isStarved)
            if (const std::size_t room = pa_stream_writable_size(m_stream); room != static_cast<std::size_t>(-1))
                write(room);
        break;
    case PA_STREAM_UNCONNECTED:
    case PA_STREAM_FAILED:
    case PA_STREAM_TERMINATED:
        break;
    }
}

void OutputStream::Link::notePlace() {
    // Before the first sample sounds the time stands still at 0, and reckoning on from there would run ahead.
    pa_usec_t time = 0;
    if (pa_stream_get_time(m_stream, &time) < 0 || time == 0)
        return;
    const std::lock_guard guard(m_guard);
    m_heard = std::chrono::microseconds(time);
    m_heardAt = PlaybackClock::now();
}

void OutputStream::Link::onState(pa_stream *, void *link) {
    static_cast<Link *>(link)->stateChanged();
}

void OutputStream::Link::onMoved(pa_stream *, void *link) {
    static_cast<Link *>(link)->deviceChanged();
}

void OutputStream::Link::onWritable(pa_stream *, std::size_t bytes, void *link) {
    static_cast<Link *>(link)->write(bytes);
}

void OutputStream::Link::onDrained(pa_stream *, int success, void *link) {
    auto *self = static_cast<Link *>(link);
    // An unsuccessful drain is a sink on its way out; the state that follows tells the rest.
    if (success)
        self->drained();
}

void OutputStream::Link::onTick(pa_mainloop_api *, pa_time_event *event, const timeval *, void *link) {
    auto *self = static_cast<Link *>(link);
    self->tick();
    pa_context_rttime_restart(self->m_context, event,
                              pa_rtclock_now() + microseconds(self->m_isStarved ? starvedInterval : noteInterval));
}

base::Result<std::unique_ptr<OutputStream>, RoutedAudioPlayerError>
OutputStream::open(SoundServer &server, std::optional<std::uint32_t> deviceID, QThreadPool &readers,
                   const PlaybackSource::Stretch &stretch, Events events) {
    pa_context *const context = server.context();
    if (!context)
        return base::fail(RoutedAudioPlayerError::soundServerUnavailable({}));
    const SoundDeviceTable table = server.devices();
    const SoundDevice *sink = deviceID ? table.findOutput(*deviceID) : table.findOutput(table.defaultOutputUID);
    if (deviceID && !sink)
        return base::fail(RoutedAudioPlayerError{
            RoutedAudioPlayerError::Kind::AudioUnitSetPropertyFailed, *deviceID, PA_ERR_NOENTITY, {}});
    if (table.outputs.isEmpty())
        return base::fail(RoutedAudioPlayerError{RoutedAudioPlayerError::Kind::NoOutput, 0, PA_ERR_NOENTITY, {}});
    const double rate = sink && sink->sampleRate > 0 ? sink->sampleRate : stretch.sampleRate;
    const QByteArray name = sink ? sink->info.uid.toUtf8() : QByteArray();
    auto link =
        std::make_unique<Link>(Link::Parts{server, context, readers}, PlaybackSource(stretch, rate), std::move(events));
    if (auto error = link->connect(deviceID, name))
        return base::fail(*std::move(error));
    return std::unique_ptr<OutputStream>(new OutputStream(std::move(link)));
}

OutputStream::OutputStream(std::unique_ptr<Link> link) : m_link(std::move(link)) {}

OutputStream::~OutputStream() = default;

std::optional<qint64> OutputStream::currentFrame() const {
    return m_link->currentFrame();
}

} // namespace orlenta::audio
