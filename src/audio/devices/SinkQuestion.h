#pragma once

#include <cstdint>
#include <functional>
#include <optional>

struct pa_context;
struct pa_operation;
struct pa_sink_info;

namespace orlenta::audio {

/// Asks the sound server whether an output exists. Use with the loop locked.
class SinkQuestion final {
public:
    using Answer = std::function<void(bool isThere)>;

    /// Without an id, asks whether there is a default output. Calls `answer` once, with the loop locked, unless this
    /// object is destroyed or the connection lost first.
    SinkQuestion(pa_context *context, std::optional<std::uint32_t> deviceID, Answer answer);
    ~SinkQuestion();
    SinkQuestion(const SinkQuestion &) = delete;
    SinkQuestion &operator=(const SinkQuestion &) = delete;

private:
    static void onSink(pa_context *context, const pa_sink_info *info, int end, void *question);

    Answer m_answer;
    pa_operation *m_asking;
    bool m_isThere = false;
};

} // namespace orlenta::audio
