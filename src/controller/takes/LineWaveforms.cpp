#include "controller/takes/LineWaveforms.h"

#include <QtCore/QFileInfo>

#include "audio/files/Waveform.h"
#include "controller/document/Edit.h"
#include "controller/ProjectController.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/MediaFiles.h"

namespace orlenta::controller {

LineWaveforms::LineWaveforms(ProjectController &controller)
    : m_controller(controller),
      m_extractions(
          [](const Key &key, const std::stop_token &stop) {
              return audio::extractWaveform(QUrl::fromLocalFile(key.path), audio::waveformBarCount, stop);
          },
          [this](const Key &key, const QList<float> &samples) { store(key, samples); }) {}

void LineWaveforms::request(const model::LineId &id, WaveformKind kind) {
    const Key key{id, kind, currentPath(id, kind)};
    if (!m_controller.runtime().state(id).samples(kind).isEmpty() || m_failedWaveformExtractions.contains(key))
        return;
    if (!m_waveformExtractionTasks.contains(key)) {
        if (key.path.isEmpty() || !QFileInfo::exists(key.path))
            return;
        m_waveformExtractionTasks.insert(key);
    }
    m_extractions.ask(key);
}

void LineWaveforms::invalidate(const Edit &edit, const model::LineId &id, WaveformKind kind) {
    for (auto failed = m_failedWaveformExtractions.begin(); failed != m_failedWaveformExtractions.end();)
        failed = failed->id == id && failed->kind == kind ? m_failedWaveformExtractions.erase(failed) : ++failed;
    edit.updateRuntime(id, [kind](LineRuntimeState &state) { state.setSamples(kind, {}); });
}

QString LineWaveforms::currentPath(const model::LineId &id, WaveformKind kind) const {
    const model::ProjectLine *line = m_controller.state().findLine(id);
    if (line == nullptr)
        return {};
    return kind == WaveformKind::Generated ? m_controller.media().audioURL(*line).toLocalFile()
                                           : m_controller.runtime().state(id).directionAudioURL.toLocalFile();
}

void LineWaveforms::store(const Key &key, const QList<float> &samples) {
    m_waveformExtractionTasks.remove(key);
    if (samples.isEmpty()) {
        m_failedWaveformExtractions.insert(key);
        return;
    }
    // The line may be gone or use another file by now.
    if (currentPath(key.id, key.kind) != key.path)
        return;
    const Edit edit(m_controller);
    edit.updateRuntime(key.id, [&](LineRuntimeState &state) { state.setSamples(key.kind, samples); });
}

} // namespace orlenta::controller
