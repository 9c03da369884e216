#include "audio/playback/OutputStream.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include <pulse/pulseaudio.h>
#include <QtCore/QMetaObject>

#include "audio/devices/PulseTime.h"
#include "audio/devices/SinkQuestion.h"
#include "audio/devices/SoundServer.h"
#include "audio/devices/Standstill.h"
#include "audio/devices/StreamWatch.h"
#include "audio/playback/HeardPlace.h"
#include "audio/playback/PlaybackFeed.h"
#include "audio/playback/WrittenTail.h"

namespace orlenta::audio {

namespace {

using Seconds = HeardPlace::Seconds;

/// Buffer at the server. With less, a busy two-core machine underran occasionally.
constexpr auto bufferLength = std::chrono::milliseconds(150);
/// How often to record the position, because a failed stream no longer reports it.
constexpr auto noteInterval = std::chrono::milliseconds(20);
/// The reported position is up to 19 ms ahead of what the sink has rendered, and the resumed audio fades in. Better to
/// repeat a little than to leave a gap.
constexpr auto resumeBackOff = std::chrono::milliseconds(25) + PlaybackSource::fadeLength;
/// Retry interval while the reader has no data.
constexpr auto starvedInterval = std::chrono::milliseconds(5);
/// Length of the fade-out at a stop, and how far ahead of the server's position it starts. With 10 ms, one server was
/// sometimes past that point already.
constexpr auto stopFadeLength = std::chrono::milliseconds(5);
constexpr auto stopFadeMargin = std::chrono::milliseconds(20);
/// How long a stopped stream needs to play its fade-out.
constexpr auto stopLingering = std::chrono::milliseconds(60);
/// How much written audio to keep for the fade-out. The server's buffer may be larger than requested.
constexpr auto tailLength = std::chrono::milliseconds(500);

qint64 framesIn(Seconds duration, double rate) {
    return static_cast<qint64>(duration.count() * rate);
}

} // namespace

/// The stream, as used by libpulse's callbacks. Needs the loop's lock, except for the heard position.
class OutputStream::Link final {
public:
    /// Shared services and the current context.
    struct Parts {
        SoundServer &server;
        pa_context *context;
        QThreadPool &readers;
    };

    Link(const Parts &parts, PlaybackSource source, Events events);
    ~Link();

    [[nodiscard]] std::optional<RoutedAudioPlayerError> connect(std::optional<std::uint32_t> deviceID,
                                                                const QByteArray &sinkName);
    [[nodiscard]] std::optional<qint64> currentFrame();

private:
    /// State of the data flow from the file to the server.
    enum class Feeding { Flowing, Starved, Written };

    void stateChanged();
    void becomeReady();
    void deviceChanged();
    void endedByServer();
    void askForSink();
    void write(std::size_t bytes);
    void drain();
    void drained();
    void tick();
    void watch();
    void notePlace();
    void lose();
    void fail(RoutedAudioPlayerError::Kind kind);
    void fail(const RoutedAudioPlayerError &error);
    [[nodiscard]] RoutedAudioPlayerError refusal() const;
    /// Fades out what is playing; returns false if it has to be cut off.
    bool fadeOut();
    void post(std::function<void()> event);

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
    /// The chosen sink, or nothing for the default.
    std::optional<std::uint32_t> m_deviceID;
    /// Set once the stream is ready.
    std::optional<StreamWatch> m_watch;
    std::int64_t m_takenBytes = 0;
    /// Asked after the server has ended the stream.
    std::optional<SinkQuestion> m_sinkQuestion;
    /// Time since we asked the server to create the stream or whether its sink exists.
    Standstill m_unanswered;
    Feeding m_feeding = Feeding::Flowing;
    bool m_isOver = false;
    HeardPlace m_heard;
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
    m_watch.reset();
    m_sinkQuestion.reset();
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
    // The rest is short enough to play to its end.
    if (at >= m_tail.writtenFrames())
        return true;
    const std::vector<float> faded = m_tail.fadedFrom(at, framesIn(stopFadeLength, m_feed.deviceRate()));
    return !faded.empty() && pa_stream_write(m_stream, faded.data(), faded.size() * sizeof(float), nullptr,
                                             at * frameSize, PA_SEEK_ABSOLUTE) == 0;
}

std::optional<RoutedAudioPlayerError> OutputStream::Link::connect(std::optional<std::uint32_t> deviceID,
                                                                  const QByteArray &sinkName) {
    const SoundServerLock lock(m_mainloop);
    m_deviceID = deviceID;
    pa_sample_spec spec{};
    spec.format = PA_SAMPLE_FLOAT32LE;
    spec.rate = static_cast<std::uint32_t>(m_feed.deviceRate());
    spec.channels = static_cast<std::uint8_t>(std::min(m_feed.channelCount(), 255));
    pa_channel_map map{};
    if (!pa_channel_map_init_extend(&map, spec.channels, PA_CHANNEL_MAP_WAVEEX) || !pa_sample_spec_valid(&spec))
        return RoutedAudioPlayerError{RoutedAudioPlayerError::Kind::OutputAudioUnitUnavailable, 0, 0, {}};
    m_stream = pa_stream_new(m_context, "Playback", &spec, &map);
    if (!m_stream)
        return refusal();
    pa_stream_set_state_callback(m_stream, &Link::onState, this);
    pa_stream_set_moved_callback(m_stream, &Link::onMoved, this);
    pa_stream_set_write_callback(m_stream, &Link::onWritable, this);

    pa_buffer_attr buffer{};
    buffer.maxlength = buffer.prebuf = buffer.minreq = buffer.fragsize = static_cast<std::uint32_t>(-1);
    buffer.tlength = static_cast<std::uint32_t>(pa_usec_to_bytes(inMicroseconds(bufferLength), &spec));
    // DONT_MOVE: if a chosen sink disappears we want an error, not a silent replacement. The default must be followed
    // when it changes, and only with this name does the desktop not move the stream to where an earlier one was moved.
    const auto flags = PA_STREAM_ADJUST_LATENCY | PA_STREAM_AUTO_TIMING_UPDATE | PA_STREAM_INTERPOLATE_TIMING |
                       (deviceID ? PA_STREAM_DONT_MOVE : PA_STREAM_NOFLAGS);
    if (pa_stream_connect_playback(m_stream, deviceID ? sinkName.constData() : "@DEFAULT_SINK@", &buffer,
                                   static_cast<pa_stream_flags_t>(flags), nullptr, nullptr) < 0)
        return refusal();
    m_tick = pa_context_rttime_new(m_context, laterBy(noteInterval), &Link::onTick, this);
    return {};
}

std::optional<qint64> OutputStream::Link::currentFrame() {
    const std::optional<Seconds> place = m_heard.forPlayhead();
    return place ? std::optional(m_feed.fileFrame(place->count())) : std::nullopt;
}

void OutputStream::Link::post(std::function<void()> event) {
    if (std::exchange(m_isOver, true))
        return;
    QMetaObject::invokeMethod(m_events.receiver, std::move(event), Qt::QueuedConnection);
}

void OutputStream::Link::lose() {
    const Seconds place = m_heard.now().value_or(Seconds(0));
    const qint64 frame = m_feed.fileFrame(std::max<Seconds>(place - resumeBackOff, Seconds(0)).count());
    post([lost = m_events.lost, frame] { lost(frame); });
}

void OutputStream::Link::fail(const RoutedAudioPlayerError &error) {
    post([failed = m_events.failed, error] { failed(error); });
}

void OutputStream::Link::fail(RoutedAudioPlayerError::Kind kind) {
    fail(RoutedAudioPlayerError{kind, 0, 0, {}});
}

RoutedAudioPlayerError OutputStream::Link::refusal() const {
    const int status = pa_context_errno(m_context);
    if (m_deviceID)
        return {RoutedAudioPlayerError::Kind::AudioUnitSetPropertyFailed, *m_deviceID, status, {}};
    return RoutedAudioPlayerError::soundServerUnavailable(QString::fromUtf8(pa_strerror(status)));
}

void OutputStream::Link::stateChanged() {
    switch (pa_stream_get_state(m_stream)) {
    case PA_STREAM_FAILED:
    case PA_STREAM_TERMINATED:
        endedByServer();
        break;
    case PA_STREAM_READY:
        becomeReady();
        break;
    case PA_STREAM_UNCONNECTED:
    case PA_STREAM_CREATING:
        break;
    }
}

void OutputStream::Link::becomeReady() {
    m_watch.emplace();
    QMetaObject::invokeMethod(m_events.receiver, m_events.started, Qt::QueuedConnection);
    deviceChanged();
    if (m_deviceID)
        m_server.watchDevice(m_stream, DeviceDirection::Output, [this] { lose(); });
}

void OutputStream::Link::deviceChanged() {
    if (SoundServer::isStandIn(pa_stream_get_device_name(m_stream)))
        fail(RoutedAudioPlayerError::Kind::NoOutput);
}

void OutputStream::Link::endedByServer() {
    if (pa_context_get_state(m_context) != PA_CONTEXT_READY)
        fail(RoutedAudioPlayerError::soundServerUnavailable({}));
    else if (!m_watch)
        fail(refusal());
    else
        askForSink();
}

// A stream can also be ended while its sink still exists, for example by the user in a mixer. Then playback must not
// continue elsewhere.
void OutputStream::Link::askForSink() {
    if (m_isOver || m_sinkQuestion)
        return;
    m_unanswered = {};
    m_sinkQuestion.emplace(m_context, m_deviceID, [this](bool isThere) {
        if (isThere)
            fail(RoutedAudioPlayerError::Kind::PlaybackEnded);
        else if (m_deviceID)
            lose();
        else
            fail(RoutedAudioPlayerError::Kind::NoOutput);
    });
}

void OutputStream::Link::write(std::size_t bytes) {
    const std::size_t frameSize = pa_frame_size(pa_stream_get_sample_spec(m_stream));
    while (bytes >= frameSize && m_feeding != Feeding::Written && !m_isOver) {
        void *data = nullptr;
        std::size_t room = bytes;
        if (pa_stream_begin_write(m_stream, &data, &room) < 0 || !data)
            return;
        const std::span<float> samples(static_cast<float *>(data), std::min(room, bytes) / frameSize *
                                                                       static_cast<std::size_t>(m_feed.channelCount()));
        const PlaybackFeed::Taken taken = m_feed.take(samples);
        if (taken.frames == 0) {
            pa_stream_cancel_write(m_stream);
            m_feeding = taken.isEnd ? Feeding::Written : Feeding::Starved;
            break;
        }
        m_feeding = Feeding::Flowing;
        const auto size = static_cast<std::size_t>(taken.frames) * frameSize;
        m_tail.append(samples.first(size / sizeof(float)));
        // If the write fails the stream has failed; its state callback handles that.
        if (pa_stream_write(m_stream, data, size, nullptr, 0, PA_SEEK_RELATIVE) < 0)
            return;
        bytes -= size;
        m_heard.addWritten(Seconds(static_cast<double>(taken.frames) / m_feed.deviceRate()));
    }
    if (m_feeding == Feeding::Written && !m_isOver)
        drain();
}

void OutputStream::Link::drain() {
    if (!m_drain)
        m_drain = pa_stream_drain(m_stream, &Link::onDrained, this);
}

void OutputStream::Link::drained() {
    // Everything readable of a damaged file has been played.
    if (const std::optional<QString> why = m_feed.failure())
        fail(RoutedAudioPlayerError::fileUnreadable(*why));
    else
        post(m_events.finished);
}

void OutputStream::Link::tick() {
    if (m_isOver)
        return;
    if (pa_stream_get_state(m_stream) == PA_STREAM_READY) {
        notePlace();
        watch();
        if (m_feeding == Feeding::Starved)
            if (const std::size_t room = pa_stream_writable_size(m_stream); room != static_cast<std::size_t>(-1))
                write(room);
        return;
    }
    m_unanswered.look(Standstill::Clock::now());
    if (m_unanswered.length() > StreamWatch::serverPatience)
        fail(RoutedAudioPlayerError::Kind::ServerSilent);
}

void OutputStream::Link::watch() {
    const pa_timing_info *timing = pa_stream_get_timing_info(m_stream);
    if (timing && std::exchange(m_takenBytes, timing->read_index) != timing->read_index)
        m_watch->deviceMoved();
    // Once the sink has consumed everything, it may still need a while to play it.
    const bool isIdle = m_feeding == Feeding::Starved || (timing && timing->read_index >= timing->write_index);
    switch (m_watch->look(m_stream, isIdle)) {
    case StreamWatch::Finding::Fine:
        break;
    case StreamWatch::Finding::ServerIsSilent:
        fail(RoutedAudioPlayerError::Kind::ServerSilent);
        break;
    case StreamWatch::Finding::DeviceIsStill:
        fail(RoutedAudioPlayerError::Kind::OutputStalled);
        break;
    }
}

void OutputStream::Link::notePlace() {
    // The time stays 0 until the first sample is audible; extrapolating from that would run ahead.
    pa_usec_t time = 0;
    if (pa_stream_get_time(m_stream, &time) < 0 || time == 0)
        return;
    m_heard.note(std::chrono::microseconds(time));
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
    // If draining fails, the sink is going away; the state callback handles that.
    if (success)
        self->drained();
}

void OutputStream::Link::onTick(pa_mainloop_api *, pa_time_event *event, const timeval *, void *link) {
    auto *self = static_cast<Link *>(link);
    self->tick();
    pa_context_rttime_restart(self->m_context, event,
                              laterBy(self->m_feeding == Feeding::Starved ? starvedInterval : noteInterval));
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
