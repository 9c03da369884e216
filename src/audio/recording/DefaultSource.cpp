#include "audio/recording/DefaultSource.h"

#include <pulse/pulseaudio.h>

#include "audio/devices/PulseTime.h"
#include "audio/devices/SoundServer.h"

namespace orlenta::audio {

namespace {

constexpr auto askAgainAfter = std::chrono::milliseconds(10);
constexpr DefaultSourceFailure unanswered{DefaultSourceFailure::Kind::Unanswered, PA_ERR_TIMEOUT};

auto refusal(int status) {
    return base::fail(DefaultSourceFailure{DefaultSourceFailure::Kind::Refused, status});
}

/// One change. Holds the loop's lock except while waiting.
class DefaultSourceChange final {
public:
    DefaultSourceChange(pa_threaded_mainloop *mainloop, pa_context *context)
        : m_mainloop(mainloop), m_context(pa_context_ref(context)) {}
    ~DefaultSourceChange();
    DefaultSourceChange(const DefaultSourceChange &) = delete;
    DefaultSourceChange &operator=(const DefaultSourceChange &) = delete;

    [[nodiscard]] base::Result<void, DefaultSourceFailure> run(const QByteArray &name);

private:
    [[nodiscard]] bool isAnswered(pa_operation *asked);
    void pause();
    void wait();
    void wake();

    static void onSet(pa_context *context, int success, void *change);
    static void onInfo(pa_context *context, const pa_server_info *info, void *change);
    static void onDeadline(pa_mainloop_api *api, pa_time_event *event, const timeval *time, void *change);
    static void onPauseOver(pa_mainloop_api *api, pa_time_event *event, const timeval *time, void *change);

    pa_threaded_mainloop *m_mainloop;
    pa_context *m_context;
    pa_time_event *m_deadline = nullptr;
    pa_time_event *m_pause = nullptr;
    QByteArray m_current;
    bool m_isAnswered = false;
    bool m_isSet = false;
    bool m_isTooLate = false;
};

DefaultSourceChange::~DefaultSourceChange() {
    for (pa_time_event *event : {m_deadline, m_pause})
        if (event)
            pa_threaded_mainloop_get_api(m_mainloop)->time_free(event);
    pa_context_unref(m_context);
}

base::Result<void, DefaultSourceFailure> DefaultSourceChange::run(const QByteArray &name) {
    m_deadline = pa_context_rttime_new(m_context, laterBy(defaultSourceDeadline), &onDeadline, this);
    if (!m_deadline)
        return refusal(pa_context_errno(m_context));
    if (!isAnswered(pa_context_set_default_source(m_context, name.constData(), &onSet, this)))
        return base::fail(unanswered);
    if (!m_isSet)
        return refusal(pa_context_errno(m_context));
    while (isAnswered(pa_context_get_server_info(m_context, &onInfo, this))) {
        if (m_current == name)
            return {};
        pause();
    }
    return base::fail(unanswered);
}

bool DefaultSourceChange::isAnswered(pa_operation *asked) {
    if (!asked)
        return false;
    m_isAnswered = false;
    wait();
    if (!m_isAnswered)
        pa_operation_cancel(asked);
    pa_operation_unref(asked);
    return m_isAnswered;
}

void DefaultSourceChange::pause() {
    m_isAnswered = false;
    if (m_pause)
        pa_context_rttime_restart(m_context, m_pause, laterBy(askAgainAfter));
    else
        m_pause = pa_context_rttime_new(m_context, laterBy(askAgainAfter), &onPauseOver, this);
    wait();
}

void DefaultSourceChange::wait() {
    while (!m_isAnswered && !m_isTooLate)
        pa_threaded_mainloop_wait(m_mainloop);
}

void DefaultSourceChange::wake() {
    pa_threaded_mainloop_signal(m_mainloop, 0);
}

void DefaultSourceChange::onSet(pa_context *, int success, void *change) {
    auto *self = static_cast<DefaultSourceChange *>(change);
    self->m_isSet = success != 0;
    self->m_isAnswered = true;
    self->wake();
}

void DefaultSourceChange::onInfo(pa_context *, const pa_server_info *info, void *change) {
    auto *self = static_cast<DefaultSourceChange *>(change);
    self->m_current = info ? QByteArray(info->default_source_name) : QByteArray();
    self->m_isAnswered = true;
    self->wake();
}

void DefaultSourceChange::onDeadline(pa_mainloop_api *, pa_time_event *, const timeval *, void *change) {
    auto *self = static_cast<DefaultSourceChange *>(change);
    self->m_isTooLate = true;
    self->wake();
}

void DefaultSourceChange::onPauseOver(pa_mainloop_api *, pa_time_event *, const timeval *, void *change) {
    auto *self = static_cast<DefaultSourceChange *>(change);
    self->m_isAnswered = true;
    self->wake();
}

} // namespace

base::Result<void, DefaultSourceFailure> setDefaultSource(SoundServer &server, const QByteArray &name) {
    pa_context *const context = server.context();
    if (!context)
        return refusal(PA_ERR_CONNECTIONREFUSED);
    const SoundServerLock lock(server.mainloop());
    return DefaultSourceChange(server.mainloop(), context).run(name);
}

} // namespace orlenta::audio
