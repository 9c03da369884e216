#include "audio/devices/SoundServer.h"

#include <algorithm>
#include <mutex>
#include <utility>

#include <pulse/pulseaudio.h>

#include "audio/devices/AudioDebugLogger.h"
#include "audio/devices/BoundStreams.h"
#include "audio/devices/RetiredStreams.h"

namespace orlenta::audio {

namespace {

const SoundDevice *findByUID(const QList<SoundDevice> &devices, const QString &uid) {
    const auto found =
        std::find_if(devices.cbegin(), devices.cend(), [&](const SoundDevice &each) { return each.info.uid == uid; });
    return found == devices.cend() ? nullptr : &*found;
}

/// Servers count outputs and inputs apart; this keeps their ids from meeting.
constexpr std::uint32_t inputBit = 0x8000'0000;

/// How long the end of the connection waits for streams on their way out.
constexpr auto longestFarewell = std::chrono::milliseconds(100);

} // namespace

const SoundDevice *SoundDeviceTable::findOutput(std::uint32_t deviceID) const {
    const auto found = std::find_if(outputs.cbegin(), outputs.cend(),
                                    [&](const SoundDevice &each) { return each.info.deviceID == deviceID; });
    return found == outputs.cend() ? nullptr : &*found;
}

const SoundDevice *SoundDeviceTable::findOutput(const QString &uid) const {
    return findByUID(outputs, uid);
}

const SoundDevice *SoundDeviceTable::findInput(const QString &uid) const {
    return findByUID(inputs, uid);
}

SoundServerLock::SoundServerLock(pa_threaded_mainloop *mainloop) : m_mainloop(mainloop) {
    pa_threaded_mainloop_lock(m_mainloop);
}

SoundServerLock::~SoundServerLock() {
    pa_threaded_mainloop_unlock(m_mainloop);
}

/// What libpulse's callbacks work on. All but the guarded state belongs to whoever holds the loop's lock.
class SoundServer::Link final {
public:
    explicit Link(SoundServer &owner);
    ~Link();

    void open(const QString &address);
    void close();

    [[nodiscard]] State state() const;
    [[nodiscard]] SoundDeviceTable devices() const;

    pa_threaded_mainloop *mainloop = nullptr;
    pa_context *context = nullptr;
    RetiredStreams retired;
    BoundStreams bound;

private:
    void connectTo(const QString &address);
    void setState(State state);
    void contextChanged();
    void list();
    void listed();
    [[nodiscard]] SoundDevice input(const pa_source_info &info) const;

    static void onContextState(pa_context *context, void *link);
    static void onSubscribed(pa_context *context, int success, void *link);
    static void onEvent(pa_context *context, pa_subscription_event_type_t type, uint32_t index, void *link);
    static void onServerInfo(pa_context *context, const pa_server_info *info, void *link);
    static void onSink(pa_context *context, const pa_sink_info *info, int end, void *link);
    static void onSource(pa_context *context, const pa_source_info *info, int end, void *link);

    SoundServer &m_owner;
    mutable std::mutex m_guard;
    State m_state = State::Connecting;
    SoundDeviceTable m_devices;
    SoundDeviceTable m_listing;
    bool m_isListing = false;
    bool m_listAgain = false;
    bool m_isRunning = false;
};

SoundServer::Link::Link(SoundServer &owner) : mainloop(pa_threaded_mainloop_new()), retired(mainloop), m_owner(owner) {}

SoundServer::Link::~Link() {
    {
        // What was stopped just now is still fading.
        const SoundServerLock lock(mainloop);
        if (m_isRunning && context && pa_context_get_state(context) == PA_CONTEXT_READY)
            retired.waitForEnd(longestFarewell);
    }
    close();
    if (m_isRunning)
        pa_threaded_mainloop_stop(mainloop);
    pa_threaded_mainloop_free(mainloop);
}

void SoundServer::Link::open(const QString &address) {
    close();
    connectTo(address);
    // Only now, since libpulse sets itself up at the first connection, which its thread had better not see half done.
    if (!std::exchange(m_isRunning, true))
        pa_threaded_mainloop_start(mainloop);
}

void SoundServer::Link::connectTo(const QString &address) {
    const SoundServerLock lock(mainloop);
    setState(State::Connecting);
    context = pa_context_new(pa_threaded_mainloop_get_api(mainloop), "Orlenta");
    pa_context_set_state_callback(context, &Link::onContextState, this);
    const QByteArray server = address.toUtf8();
    if (pa_context_connect(context, server.isEmpty() ? nullptr : server.constData(), PA_CONTEXT_NOAUTOSPAWN, nullptr) <
        0)
        setState(State::Unavailable);
}

void SoundServer::Link::close() {
    const SoundServerLock lock(mainloop);
    if (!context)
        return;
    retired.clear();
    bound.clear();
    pa_context_set_state_callback(context, nullptr, nullptr);
    pa_context_set_subscribe_callback(context, nullptr, nullptr);
    pa_context_disconnect(context);
    pa_context_unref(context);
    context = nullptr;
    m_isListing = false;
    m_listAgain = false;
}

SoundServer::State SoundServer::Link::state() const {
    const std::lock_guard guard(m_guard);
    return m_state;
}

SoundDeviceTable SoundServer::Link::devices() const {
    const std::lock_guard guard(m_guard);
    return m_devices;
}

void SoundServer::Link::setState(State state) {
    {
        const std::lock_guard guard(m_guard);
        if (m_state == state)
            return;
        m_state = state;
    }
    QMetaObject::invokeMethod(&m_owner, &SoundServer::stateChanged, Qt::QueuedConnection);
}

void SoundServer::Link::contextChanged() {
    switch (pa_context_get_state(context)) {
    case PA_CONTEXT_READY:
        pa_context_set_subscribe_callback(context, &Link::onEvent, this);
        // Listing before the subscription is acknowledged would miss what changes in between.
        if (pa_operation *subscribing = pa_context_subscribe(
                context,
                static_cast<pa_subscription_mask_t>(PA_SUBSCRIPTION_MASK_SINK | PA_SUBSCRIPTION_MASK_SOURCE |
                                                    PA_SUBSCRIPTION_MASK_SERVER),
                &Link::onSubscribed, this))
            pa_operation_unref(subscribing);
        break;
    case PA_CONTEXT_FAILED:
    case PA_CONTEXT_TERMINATED:
        m_listing = {};
        listed();
        setState(State::Unavailable);
        break;
    case PA_CONTEXT_UNCONNECTED:
    case PA_CONTEXT_CONNECTING:
    case PA_CONTEXT_AUTHORIZING:
    case PA_CONTEXT_SETTING_NAME:
        break;
    }
}

void SoundServer::Link::list() {
    if (m_isListing) {
        m_listAgain = true;
        return;
    }
    m_isListing = true;
    m_listing = {};
    // The server answers in the order asked, so the end of the last list is the end of all.
    for (pa_operation *asking : {pa_context_get_server_info(context, &Link::onServerInfo, this),
                                 pa_context_get_sink_info_list(context, &Link::onSink, this),
                                 pa_context_get_source_info_list(context, &Link::onSource, this)})
        if (asking)
            pa_operation_unref(asking);
}

void SoundServer::Link::listed() {
    m_isListing = false;
    {
        const std::lock_guard guard(m_guard);
        const bool differs = m_devices != m_listing;
        m_devices = m_listing;
        if (differs)
            QMetaObject::invokeMethod(&m_owner, &SoundServer::devicesChanged, Qt::QueuedConnection);
    }
    if (context && pa_context_get_state(context) == PA_CONTEXT_READY)
        setState(State::Ready);
}

void SoundServer::Link::onContextState(pa_context *, void *link) {
    static_cast<Link *>(link)->contextChanged();
}

void SoundServer::Link::onSubscribed(pa_context *context, int success, void *link) {
    // The devices are still listed once; without the subscription they just don't follow.
    if (!success)
        AudioDebugLogger::log(QStringLiteral("AudioDeviceMonitor ERROR: failed to install listener status=%1")
                                  .arg(pa_context_errno(context)));
    static_cast<Link *>(link)->list();
}

void SoundServer::Link::onEvent(pa_context *, pa_subscription_event_type_t type, uint32_t index, void *link) {
    auto *self = static_cast<Link *>(link);
    if ((type & PA_SUBSCRIPTION_EVENT_TYPE_MASK) == PA_SUBSCRIPTION_EVENT_REMOVE) {
        const auto facility = type & PA_SUBSCRIPTION_EVENT_FACILITY_MASK;
        if (facility == PA_SUBSCRIPTION_EVENT_SINK)
            self->bound.deviceRemoved(DeviceDirection::Output, index);
        else if (facility == PA_SUBSCRIPTION_EVENT_SOURCE)
            self->bound.deviceRemoved(DeviceDirection::Input, index);
    }
    self->list();
}

void SoundServer::Link::onServerInfo(pa_context *, const pa_server_info *info, void *link) {
    if (!info)
        return;
    auto &listing = static_cast<Link *>(link)->m_listing;
    listing.defaultOutputUID = QString::fromUtf8(info->default_sink_name);
    listing.defaultInputUID = QString::fromUtf8(info->default_source_name);
}

void SoundServer::Link::onSink(pa_context *, const pa_sink_info *info, int end, void *link) {
    if (end != 0 || !info || SoundServer::isStandIn(info->name))
        return;
    static_cast<Link *>(link)->m_listing.outputs.append(
        {{QString::fromUtf8(info->description), QString::fromUtf8(info->name), info->index}, info->sample_spec.rate});
}

void SoundServer::Link::onSource(pa_context *, const pa_source_info *info, int end, void *link) {
    auto *self = static_cast<Link *>(link);
    if (end == 0 && info) {
        if (info->monitor_of_sink == PA_INVALID_INDEX)
            self->m_listing.inputs.append(self->input(*info));
        return;
    }
    self->listed();
    if (self->m_listAgain) {
        self->m_listAgain = false;
        self->list();
    }
}

SoundDevice SoundServer::Link::input(const pa_source_info &info) const {
    const QString uid = QString::fromUtf8(info.name);
    // One device that plays and records is one device.
    const SoundDevice *output = m_listing.findOutput(uid);
    return {{QString::fromUtf8(info.description), uid, output ? output->info.deviceID : info.index | inputBit},
            info.sample_spec.rate};
}

SoundServer::SoundServer(const QString &address, QObject *parent)
    : QObject(parent), m_address(address), m_link(std::make_unique<Link>(*this)) {
    m_reconnect.setSingleShot(true);
    m_reconnect.setInterval(reconnectInterval);
    connect(&m_reconnect, &QTimer::timeout, this, &SoundServer::connectToServer);
    connect(this, &SoundServer::stateChanged, this, [this] {
        if (state() == State::Unavailable)
            m_reconnect.start();
    });
    connectToServer();
}

SoundServer::~SoundServer() = default;

SoundServer::State SoundServer::state() const {
    return m_link->state();
}

SoundDeviceTable SoundServer::devices() const {
    return m_link->devices();
}

pa_threaded_mainloop *SoundServer::mainloop() const {
    return m_link->mainloop;
}

pa_context *SoundServer::context() const {
    return state() == State::Ready ? m_link->context : nullptr;
}

void SoundServer::watchDevice(const pa_stream *stream, DeviceDirection direction, std::function<void()> lost) {
    m_link->bound.add(stream, direction, std::move(lost));
}

void SoundServer::retire(pa_stream *stream, std::chrono::microseconds lingering) {
    m_link->bound.remove(stream);
    m_link->retired.add(stream, lingering);
}

bool SoundServer::isStandIn(const char *name) {
    return qstrcmp(name, "auto_null") == 0;
}

void SoundServer::connectToServer() {
    m_link->open(m_address);
}

} // namespace orlenta::audio
