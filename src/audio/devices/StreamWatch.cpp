#include "audio/devices/StreamWatch.h"

#include <pulse/pulseaudio.h>

namespace orlenta::audio {

namespace {

/// How often to ping the server.
constexpr auto askInterval = std::chrono::milliseconds(250);

} // namespace

StreamWatch::~StreamWatch() {
    if (m_asking) {
        pa_operation_cancel(m_asking);
        pa_operation_unref(m_asking);
    }
}

void StreamWatch::deviceMoved() {
    m_hasDeviceMoved = true;
    m_device.moved();
}

StreamWatch::Finding StreamWatch::look(pa_stream *stream, bool isDeviceIdle) {
    const auto now = Standstill::Clock::now();
    m_server.look(now);
    m_device.look(now);
    if (isDeviceIdle)
        m_device.moved();
    if (!m_asking && now - m_askedAt >= askInterval)
        ask(stream);
    if (m_server.length() > serverPatience)
        return Finding::ServerIsSilent;
    // A silent server delivers no samples either, so blame the device only once the server has answered.
    const bool isDeviceStill = m_device.length() > (m_hasDeviceMoved ? devicePatience : wakePatience);
    return isDeviceStill && !m_asking ? Finding::DeviceIsStill : Finding::Fine;
}

void StreamWatch::ask(pa_stream *stream) {
    m_askedAt = Standstill::Clock::now();
    m_asking = pa_stream_update_timing_info(stream, &StreamWatch::onAnswered, this);
}

void StreamWatch::onAnswered(pa_stream *, int, void *watch) {
    auto *self = static_cast<StreamWatch *>(watch);
    pa_operation_unref(self->m_asking);
    self->m_asking = nullptr;
    self->m_server.moved();
}

} // namespace orlenta::audio
