#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <utility>
#include <vector>

#include "audio/devices/AudioDeviceInfo.h"

struct pa_stream;

namespace orlenta::audio {

/// The streams that play to or record from one device and no other.
///
/// PipeWire 1.4 doesn't end such a stream when its device is removed: it stands still for ever. So the removal itself
/// counts as the loss, also for servers that end the stream on top of it. All with the loop locked.
class BoundStreams final {
public:
    /// Calls `lost` once when the device of a ready stream is removed; at once when that has happened already.
    void add(const pa_stream *stream, DeviceDirection direction, std::function<void()> lost);
    void remove(const pa_stream *stream);

    void deviceRemoved(DeviceDirection direction, std::uint32_t index);
    /// The connection has ended, and with it what its indexes stood for.
    void clear();

private:
    /// Servers count outputs and inputs apart.
    using Device = std::pair<DeviceDirection, std::uint32_t>;
    struct Bound {
        const pa_stream *stream;
        Device device;
        std::function<void()> lost;
    };

    std::vector<Bound> m_streams;
    /// No server uses an index twice.
    std::set<Device> m_removed;
};

} // namespace orlenta::audio
