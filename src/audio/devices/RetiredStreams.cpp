#include "audio/devices/RetiredStreams.h"

#include <algorithm>

#include <pulse/pulseaudio.h>

#include "audio/devices/PulseTime.h"

namespace orlenta::audio {

struct RetiredStreams::Retired {
    Retired(RetiredStreams &from, pa_stream *taken) : owner(from), stream(taken) {}
    ~Retired() {
        pa_stream_set_state_callback(stream, nullptr, nullptr);
        if (deadline)
            pa_threaded_mainloop_get_api(owner.m_mainloop)->time_free(deadline);
        if (pa_stream_get_state(stream) == PA_STREAM_READY)
            pa_stream_disconnect(stream);
        pa_stream_unref(stream);
    }
    Retired(const Retired &) = delete;
    Retired &operator=(const Retired &) = delete;

    static void onState(pa_stream *stream, void *retired) {
        if (pa_stream_get_state(stream) != PA_STREAM_CREATING)
            end(retired);
    }
    static void onDeadline(pa_mainloop_api *, pa_time_event *, const timeval *, void *retired) { end(retired); }
    static void end(void *retired) {
        auto *self = static_cast<Retired *>(retired);
        self->owner.end(*self);
    }

    RetiredStreams &owner;
    pa_stream *stream;
    pa_time_event *deadline = nullptr;
};

RetiredStreams::RetiredStreams(pa_threaded_mainloop *mainloop) : m_mainloop(mainloop) {}

RetiredStreams::~RetiredStreams() = default;

void RetiredStreams::add(pa_stream *stream, std::chrono::microseconds lingering) {
    pa_stream_set_state_callback(stream, nullptr, nullptr);
    pa_stream_set_write_callback(stream, nullptr, nullptr);
    pa_stream_set_read_callback(stream, nullptr, nullptr);
    pa_stream_set_moved_callback(stream, nullptr, nullptr);
    auto retired = std::make_unique<Retired>(*this, stream);
    switch (pa_stream_get_state(stream)) {
    case PA_STREAM_CREATING:
        pa_stream_set_state_callback(stream, &Retired::onState, retired.get());
        break;
    case PA_STREAM_READY:
        if (lingering > lingering.zero())
            retired->deadline = pa_context_rttime_new(pa_stream_get_context(stream), laterBy(lingering),
                                                      &Retired::onDeadline, retired.get());
        if (!retired->deadline)
            return;
        break;
    case PA_STREAM_UNCONNECTED:
    case PA_STREAM_FAILED:
    case PA_STREAM_TERMINATED:
        return;
    }
    m_streams.push_back(std::move(retired));
}

void RetiredStreams::clear() {
    m_streams.clear();
}

void RetiredStreams::waitForEnd(std::chrono::microseconds atMost) {
    struct Deadline {
        pa_threaded_mainloop *mainloop;
        bool hasPassed = false;
        static void onPassed(pa_mainloop_api *, pa_time_event *, const timeval *, void *deadline) {
            auto *self = static_cast<Deadline *>(deadline);
            self->hasPassed = true;
            pa_threaded_mainloop_signal(self->mainloop, 0);
        }
    } deadline{m_mainloop};
    if (m_streams.empty())
        return;
    pa_context *context = pa_stream_get_context(m_streams.front()->stream);
    pa_time_event *event = pa_context_rttime_new(context, laterBy(atMost), &Deadline::onPassed, &deadline);
    while (event && !m_streams.empty() && !deadline.hasPassed)
        pa_threaded_mainloop_wait(m_mainloop);
    if (event)
        pa_threaded_mainloop_get_api(m_mainloop)->time_free(event);
}

void RetiredStreams::end(const Retired &retired) {
    std::erase_if(m_streams, [&](const auto &each) { return each.get() == &retired; });
    pa_threaded_mainloop_signal(m_mainloop, 0);
}

} // namespace orlenta::audio
