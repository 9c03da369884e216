#include "controller/takes/LineRuntime.h"

#include "controller/ProjectController.h"

namespace orlenta::controller {

LineRuntime::LineRuntime(const ProjectController &controller) : m_controller(controller) {
    onChange<RuntimeChanged>(controller, this, [this](const RuntimeChanged &change) {
        for (const model::LineId &id : change.lines)
            if (LineRuntimeSignal *signal = m_signals.value(id))
                signal->bump();
    });
}

LineRuntimeState LineRuntime::state(const model::LineId &id) const {
    return m_controller.state().lineRuntime.value(id);
}

bool LineRuntime::hasGeneratedAudio(const model::LineId &id) const {
    const LineRuntimeState *state = m_controller.state().lineRuntime.find(id);
    return state != nullptr && !state->generatedAudioURL.isEmpty();
}

LineRuntimeSignal *LineRuntime::signalFor(const model::LineId &id) {
    LineRuntimeSignal *&signal = m_signals[id];
    if (signal == nullptr)
        signal = new LineRuntimeSignal(this);
    return signal;
}

} // namespace orlenta::controller
