#include "base/Clock.h"

namespace orlenta::base {

Clock systemClock() {
    return [] { return std::chrono::system_clock::now(); };
}

Timestamp wholeSeconds(const Clock &clock) {
    return std::chrono::floor<std::chrono::seconds>(clock());
}

} // namespace orlenta::base
