#pragma once

#include <chrono>
#include <mutex>
#include <optional>

namespace orlenta::audio {

/// The position of a stream that is audible now, in seconds from its start. Extrapolated between the server's reports,
/// but never beyond what has been written. Any thread.
class HeardPlace final {
public:
    using Seconds = std::chrono::duration<double>;

    void addWritten(Seconds length);
    /// The server reports that `place` is audible now.
    void note(Seconds place);
    /// Nothing until the first sample is audible.
    [[nodiscard]] std::optional<Seconds> now() const;
    /// Like now(), but never moves backwards: a report may be slightly behind the extrapolated position.
    [[nodiscard]] std::optional<Seconds> forPlayhead();

private:
    using Clock = std::chrono::steady_clock;

    mutable std::mutex m_guard;
    std::optional<Seconds> m_noted;
    Clock::time_point m_notedAt;
    Seconds m_written{0};
    Seconds m_playhead{0};
};

} // namespace orlenta::audio
