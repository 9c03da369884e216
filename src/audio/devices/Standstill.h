#pragma once

#include <algorithm>
#include <chrono>

namespace orlenta::audio {

/// How long something hasn't moved, as far as this process was there to see it: while the process itself was held up,
/// by a debugger or a busy machine, next to no time passes.
class Standstill final {
public:
    using Clock = std::chrono::steady_clock;

    /// To be called often.
    void look(Clock::time_point now) {
        m_length += std::min<Clock::duration>(now - m_lastLook, longestGap);
        m_lastLook = now;
    }
    void moved() { m_length = {}; }
    [[nodiscard]] Clock::duration length() const { return m_length; }

private:
    static constexpr std::chrono::milliseconds longestGap{100};

    Clock::time_point m_lastLook = Clock::now();
    Clock::duration m_length{};
};

} // namespace orlenta::audio
