#pragma once

#include <chrono>
#include <memory>
#include <vector>

struct pa_stream;
struct pa_threaded_mainloop;

namespace orlenta::audio {

/// Streams that nobody listens to any more, on their way out. The server would keep for ever one that is let go before
/// it has a channel, since only then can it be told. Everything here happens with the loop locked.
class RetiredStreams final {
public:
    explicit RetiredStreams(pa_threaded_mainloop *mainloop);
    ~RetiredStreams();
    RetiredStreams(const RetiredStreams &) = delete;
    RetiredStreams &operator=(const RetiredStreams &) = delete;

    /// Takes over the caller's reference, silences the callbacks, and ends the stream after `lingering`: as soon as it
    /// can be told to end, if that is later.
    void add(pa_stream *stream, std::chrono::microseconds lingering);
    /// Lets go of all of them; what they are connected by is about to be closed.
    void clear();
    /// Waits until all have ended, at most that long.
    void waitForEnd(std::chrono::microseconds atMost);

private:
    struct Retired;

    void end(const Retired &retired);

    pa_threaded_mainloop *m_mainloop;
    std::vector<std::unique_ptr<Retired>> m_streams;
};

} // namespace orlenta::audio
