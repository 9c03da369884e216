#include "audio/devices/BoundStreams.h"

#include <algorithm>
#include <iterator>

#include <pulse/pulseaudio.h>

namespace orlenta::audio {

void BoundStreams::add(const pa_stream *stream, DeviceDirection direction, std::function<void()> lost) {
    const Device device{direction, pa_stream_get_device_index(stream)};
    if (m_removed.contains(device))
        lost();
    else
        m_streams.push_back({stream, device, std::move(lost)});
}

void BoundStreams::remove(const pa_stream *stream) {
    std::erase_if(m_streams, [stream](const Bound &each) { return each.stream == stream; });
}

void BoundStreams::deviceRemoved(DeviceDirection direction, std::uint32_t index) {
    const Device device{direction, index};
    m_removed.insert(device);
    const auto isOther = [&device](const Bound &each) { return each.device != device; };
    const auto firstLost = std::stable_partition(m_streams.begin(), m_streams.end(), isOther);
    const std::vector<Bound> bound(std::make_move_iterator(firstLost), std::make_move_iterator(m_streams.end()));
    m_streams.erase(firstLost, m_streams.end());
    for (const Bound &each : bound)
        each.lost();
}

void BoundStreams::clear() {
    m_streams.clear();
    m_removed.clear();
}

} // namespace orlenta::audio
