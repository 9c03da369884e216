#include "controller/takes/LineRuntime.h"

#include <utility>

namespace orlenta::controller {

LineRuntime::LineRuntime(Document &document, QObject *parent) : QObject(parent), m_document(document) {
    connect(&document, &Document::runtimeChanged, this, &LineRuntime::emitChanged);
}

bool LineRuntime::hasGeneratedAudio(const model::LineId &id) const {
    return !m_states.value(id).generatedAudioURL.isEmpty();
}

LineRuntimeSignal *LineRuntime::signalFor(const model::LineId &id) {
    LineRuntimeSignal *&signal = m_signals[id];
    if (signal == nullptr)
        signal = new LineRuntimeSignal(this);
    return signal;
}

void LineRuntime::update(const model::LineId &id, const std::function<void(LineRuntimeState &)> &mutation, EditKey) {
    const LineRuntimeState before = m_states.value(id);
    LineRuntimeState after = before;
    mutation(after);
    if (after == before)
        return;
    m_states.set(id, after);
    noteChanged(id);
}

void LineRuntime::copyState(const model::LineId &from, const model::LineId &to, EditKey key) {
    LineRuntimeState state = m_states.value(from);
    state.isGenerating = false;
    update(
        to, [&](LineRuntimeState &copy) { copy = state; }, key);
}

void LineRuntime::remove(const model::LineId &id, EditKey) {
    if (m_states.value(id) != LineRuntimeState())
        noteChanged(id);
    m_states.remove(id);
}

void LineRuntime::replaceAll(const LineRuntimeMap &states, EditKey) {
    const Document::Change change(m_document);
    const QSet<model::LineId> changed = m_states.differences(states);
    m_states = states;
    for (const model::LineId &id : changed)
        noteChanged(id);
}

void LineRuntime::noteChanged(const model::LineId &id) {
    const Document::Change change(m_document);
    m_changed.insert(id);
    m_document.announce(Document::Fact::Runtime);
}

void LineRuntime::emitChanged() {
    const QSet<model::LineId> changed = std::exchange(m_changed, {});
    for (const model::LineId &id : changed)
        if (LineRuntimeSignal *signal = m_signals.value(id))
            signal->bump();
    Q_EMIT statesChanged();
}

} // namespace orlenta::controller
