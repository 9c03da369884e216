#pragma once

#include <chrono>
#include <functional>

#include "base/Clock.h"

namespace orlenta::speech {

/// Every wait of the client and the clock it reads, in one place so that a caller can set them.
struct SpeechTiming {
    base::Clock clock = base::systemClock();
    /// How long an exchange may go without a byte in either direction.
    std::chrono::milliseconds stallTimeout{60'000};
    /// How long an exchange may take in all; a reply that only drips ends here.
    std::chrono::milliseconds exchangeTimeout{600'000};
    /// How long the keyring may take; a user who is asked for a password needs a while.
    std::chrono::milliseconds keyringTimeout{120'000};
    /// Calls back once on the main thread after the delay.
    std::function<void(std::chrono::milliseconds, std::function<void()>)> callLater;

    SpeechTiming();
};

} // namespace orlenta::speech
