#pragma once

#include <chrono>
#include <functional>

namespace orlenta::base {

/// A moment in UTC with whole seconds, as project files keep it.
using Timestamp = std::chrono::sys_seconds;

/// Where "now" comes from, so that a test can hold time still.
using Clock = std::function<std::chrono::system_clock::time_point()>;

/// The machine's own clock.
[[nodiscard]] Clock systemClock();

/// The clock's present moment without its fraction of a second.
[[nodiscard]] Timestamp wholeSeconds(const Clock &clock);

} // namespace orlenta::base
