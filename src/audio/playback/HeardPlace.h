#pragma once

#include <chrono>
#include <mutex>
#include <optional>

namespace orlenta::audio {

/// Which place of a stream is heard, in seconds from its start: noted now and then, reckoned on in between, never past
/// what has been written. Any thread.
class HeardPlace final {
public:
    using Seconds = std::chrono::duration<double>;

    void addWritten(Seconds length);
    /// The server says that `place` is heard now.
    void note(Seconds place);
    /// Nothing before the first sample is heard.
    [[nodiscard]] std::optional<Seconds> now() const;
    /// The same for a playhead, which doesn't go back: each note may lie a little below what was reckoned before it.
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
