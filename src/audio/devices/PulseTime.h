#pragma once

#include <chrono>

#include <pulse/rtclock.h>
#include <pulse/sample.h>

namespace orlenta::audio {

[[nodiscard]] inline pa_usec_t inMicroseconds(std::chrono::microseconds duration) {
    return static_cast<pa_usec_t>(duration.count());
}

/// A moment of libpulse's own clock, for its time events.
[[nodiscard]] inline pa_usec_t laterBy(std::chrono::microseconds duration) {
    return pa_rtclock_now() + inMicroseconds(duration);
}

} // namespace orlenta::audio
