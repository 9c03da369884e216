#include "audio/devices/SinkQuestion.h"

#include <utility>

#include <pulse/pulseaudio.h>

#include "audio/devices/SoundServer.h"

namespace orlenta::audio {

SinkQuestion::SinkQuestion(pa_context *context, std::optional<std::uint32_t> deviceID, Answer answer)
    : m_answer(std::move(answer)),
      m_asking(deviceID ? pa_context_get_sink_info_by_index(context, *deviceID, &SinkQuestion::onSink, this)
                        : pa_context_get_sink_info_by_name(context, "@DEFAULT_SINK@", &SinkQuestion::onSink, this)) {}

SinkQuestion::~SinkQuestion() {
    if (m_asking) {
        pa_operation_cancel(m_asking);
        pa_operation_unref(m_asking);
    }
}

void SinkQuestion::onSink(pa_context *, const pa_sink_info *info, int end, void *question) {
    auto *self = static_cast<SinkQuestion *>(question);
    if (end == 0 && info)
        self->m_isThere = !SoundServer::isStandIn(info->name);
    else
        self->m_answer(self->m_isThere);
}

} // namespace orlenta::audio
