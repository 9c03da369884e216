#pragma once

#include <chrono>
#include <functional>

#include "base/Clock.h"

namespace orlenta::speech {

/// All time-outs and delays of the speech layer, and its clock.
struct SpeechTiming {
    base::Clock clock = base::systemClock();
    /// Longest time without a byte in either direction.
    std::chrono::milliseconds stallTimeout{60'000};
    /// Longest time for a whole request. An audio reply may take longer while it keeps up a minimum rate.
    std::chrono::milliseconds exchangeTimeout{600'000};
    /// Longest time for the keyring, which may ask the user for a password.
    std::chrono::milliseconds keyringTimeout{120'000};
    /// Calls back once, on the main thread, after the delay.
    std::function<void(std::chrono::milliseconds, std::function<void()>)> callLater;

    SpeechTiming();
};

} // namespace orlenta::speech
