#pragma once

#include <chrono>
#include <memory>
#include <vector>

struct pa_stream;
struct pa_threaded_mainloop;

namespace orlenta::audio {

/// Ends streams that are no longer needed. A stream can only be ended once the server has created it; if we dropped it
/// earlier, the server would keep it forever. Call everything with the loop locked.
class RetiredStreams final {
public:
    explicit RetiredStreams(pa_threaded_mainloop *mainloop);
    ~RetiredStreams();
    RetiredStreams(const RetiredStreams &) = delete;
    RetiredStreams &operator=(const RetiredStreams &) = delete;

    /// Takes over the caller's reference and removes the callbacks. Ends the stream after `lingering`, or as soon as
    /// the server has created it if that is later.
    void add(pa_stream *stream, std::chrono::microseconds lingering);
    /// Drops all streams, because the connection is about to close.
    void clear();
    /// Waits until all streams have ended, but no longer than `atMost`.
    void waitForEnd(std::chrono::microseconds atMost);

private:
    struct Retired;

    void end(const Retired &retired);

    pa_threaded_mainloop *m_mainloop;
    std::vector<std::unique_ptr<Retired>> m_streams;
};

} // namespace orlenta::audio
