#include "controller/takes/LineWaveforms.h"

#include <QtCore/QFileInfo>

#include "audio/files/Waveform.h"
#include "controller/document/Document.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/MediaFiles.h"

namespace orlenta::controller {

LineWaveforms::LineWaveforms(Document &document, LineRuntime &runtime, MediaFiles &media, QObject *parent)
    : QObject(parent), m_document(document), m_runtime(runtime), m_media(media),
      m_extractions(
          [](const Key &key, const std::stop_token &stop) {
              return audio::extractWaveform(QUrl::fromLocalFile(key.path), audio::waveformBarCount, stop);
          },
          [this](const Key &key, const QList<float> &samples) { store(key, samples); }) {}

void LineWaveforms::request(const model::LineId &id, WaveformKind kind) {
    const Key key{id, kind, currentPath(id, kind)};
    const LineRuntimeState state = m_runtime.state(id);
    const QList<float> &present =
        kind == WaveformKind::Generated ? state.waveformSamples : state.directionWaveformSamples;
    if (!present.isEmpty() || m_failedWaveformExtractions.contains(key))
        return;
    if (!m_waveformExtractionTasks.contains(key)) {
        if (key.path.isEmpty() || !QFileInfo::exists(key.path))
            return;
        m_waveformExtractionTasks.insert(key);
    }
    m_extractions.ask(key);
}

void LineWaveforms::invalidate(const model::LineId &id, WaveformKind kind, EditKey key) {
    for (auto failed = m_failedWaveformExtractions.begin(); failed != m_failedWaveformExtractions.end();)
        failed = failed->id == id && failed->kind == kind ? m_failedWaveformExtractions.erase(failed) : ++failed;
    m_runtime.update(
        id,
        [kind](LineRuntimeState &state) {
            (kind == WaveformKind::Generated ? state.waveformSamples : state.directionWaveformSamples).clear();
        },
        key);
}

QString LineWaveforms::currentPath(const model::LineId &id, WaveformKind kind) const {
    const model::ProjectLine *line = m_document.findLine(id);
    if (line == nullptr)
        return {};
    return kind == WaveformKind::Generated ? m_media.audioURL(*line).toLocalFile()
                                           : m_runtime.state(id).directionAudioURL.toLocalFile();
}

void LineWaveforms::store(const Key &key, const QList<float> &samples) {
    m_waveformExtractionTasks.remove(key);
    if (samples.isEmpty()) {
        m_failedWaveformExtractions.insert(key);
        return;
    }
    // The line may have gone, or play another file by now.
    if (currentPath(key.id, key.kind) != key.path)
        return;
    m_runtime.update(
        key.id,
        [&](LineRuntimeState &state) {
            (key.kind == WaveformKind::Generated ? state.waveformSamples : state.directionWaveformSamples) = samples;
        },
        EditKey());
}

} // namespace orlenta::controller
