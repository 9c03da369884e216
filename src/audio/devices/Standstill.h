#pragma once

#include <algorithm>
#include <chrono>

namespace orlenta::audio {

/// Measures how long something has made no progress. Time in which this process itself didn't run, because of a
/// debugger or a busy machine, hardly counts.
class Standstill final {
public:
    using Clock = std::chrono::steady_clock;

    /// Call often: gaps longer than 100 ms count as 100 ms.
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
