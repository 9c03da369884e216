#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <utility>
#include <vector>

#include "audio/devices/AudioDeviceInfo.h"

struct pa_stream;

namespace orlenta::audio {

/// The streams that are bound to one device each.
///
/// PipeWire 1.4 doesn't end such a stream when its device is removed; the stream stalls forever. So treat the removal
/// itself as the loss, even though other servers also end the stream. Use with the loop locked.
class BoundStreams final {
public:
    /// Calls `lost` once when the device of a ready stream is removed; right now if it is gone already.
    void add(const pa_stream *stream, DeviceDirection direction, std::function<void()> lost);
    void remove(const pa_stream *stream);

    void deviceRemoved(DeviceDirection direction, std::uint32_t index);
    /// Call it when the connection ends, because device indexes are only valid within it.
    void clear();

private:
    /// Outputs and inputs may have the same index.
    using Device = std::pair<DeviceDirection, std::uint32_t>;
    struct Bound {
        const pa_stream *stream;
        Device device;
        std::function<void()> lost;
    };

    std::vector<Bound> m_streams;
    /// Servers never reuse an index.
    std::set<Device> m_removed;
};

} // namespace orlenta::audio
