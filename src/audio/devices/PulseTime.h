#pragma once

#include <chrono>

#include <pulse/rtclock.h>
#include <pulse/sample.h>

namespace orlenta::audio {

[[nodiscard]] inline pa_usec_t inMicroseconds(std::chrono::microseconds duration) {
    return static_cast<pa_usec_t>(duration.count());
}

/// A time on libpulse's clock, for its timer events.
[[nodiscard]] inline pa_usec_t laterBy(std::chrono::microseconds duration) {
    return pa_rtclock_now() + inMicroseconds(duration);
}

} // namespace orlenta::audio
