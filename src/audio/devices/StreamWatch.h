#pragma once

#include <cstdint>

#include "audio/devices/Standstill.h"

struct pa_operation;
struct pa_stream;

namespace orlenta::audio {

/// Detects a stalled stream: either the sound server has stopped answering, or the device has stopped consuming or
/// delivering samples. The stream's state shows neither, so the stream would play or record forever. Use with the loop
/// locked.
class StreamWatch final {
public:
    enum class Finding { Fine, ServerIsSilent, DeviceIsStill };

    /// Time limit for the server's answers, including the one to creating the stream.
    static constexpr std::chrono::milliseconds serverPatience{2000};
    /// How long a running device may make no progress.
    static constexpr std::chrono::milliseconds devicePatience{2000};
    /// How long a device may take to start. Wireless devices need seconds.
    static constexpr std::chrono::milliseconds wakePatience{5000};

    StreamWatch() = default;
    ~StreamWatch();
    StreamWatch(const StreamWatch &) = delete;
    StreamWatch &operator=(const StreamWatch &) = delete;

    /// Call when the device has consumed or delivered samples.
    void deviceMoved();
    /// Checks a ready stream; call often. Pass true for `isDeviceIdle` while the device has nothing to do.
    [[nodiscard]] Finding look(pa_stream *stream, bool isDeviceIdle);

private:
    void ask(pa_stream *stream);
    static void onAnswered(pa_stream *stream, int success, void *watch);

    Standstill m_server;
    Standstill m_device;
    bool m_hasDeviceMoved = false;
    Standstill::Clock::time_point m_askedAt{};
    pa_operation *m_asking = nullptr;
};

} // namespace orlenta::audio
