#pragma once

#include <cstdint>

#include "audio/devices/Standstill.h"

struct pa_operation;
struct pa_stream;

namespace orlenta::audio {

/// Notices that a stream stands still: because the sound server has stopped answering, or because the device takes or
/// gives nothing any more. Neither shows in the stream's state, so it would play or record for ever. Everything with
/// the loop locked.
class StreamWatch final {
public:
    enum class Finding { Fine, ServerIsSilent, DeviceIsStill };

    /// How long a server may take to answer, when a stream is made and afterwards.
    static constexpr std::chrono::milliseconds serverPatience{2000};
    /// How long a device may stand still that has moved already.
    static constexpr std::chrono::milliseconds devicePatience{2000};
    /// How long one may take to wake up: wireless ones need seconds.
    static constexpr std::chrono::milliseconds wakePatience{5000};

    StreamWatch() = default;
    ~StreamWatch();
    StreamWatch(const StreamWatch &) = delete;
    StreamWatch &operator=(const StreamWatch &) = delete;

    /// The device has taken or given samples.
    void deviceMoved();
    /// Looks at a stream that is ready; to be called often. `isDeviceIdle`: it has nothing to do at the moment.
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
