#pragma once

#include <chrono>
#include <functional>

namespace orlenta::base {

/// A moment in UTC in whole seconds, the resolution of project files.
using Timestamp = std::chrono::sys_seconds;

/// Where "now" comes from; tests inject their own.
using Clock = std::function<std::chrono::system_clock::time_point()>;

/// The system clock.
[[nodiscard]] Clock systemClock();

/// The current time, rounded down to whole seconds.
[[nodiscard]] Timestamp wholeSeconds(const Clock &clock);

} // namespace orlenta::base
