#pragma once

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QString>

#include "base/LatestFirst.h"
#include "controller/takes/AudioKind.h"
#include "model/Ids.h"

namespace orlenta::controller {

class Edit;
class ProjectController;

using WaveformKind = AudioKind;

/// Extracts the waveforms that rows ask for, off the main thread and the latest asked for first, into the lines'
/// runtime states. Its end stops an extraction that runs. Main thread.
class LineWaveforms final : public QObject {
    Q_OBJECT
public:
    explicit LineWaveforms(ProjectController &controller);

    /// Extracts the line's waveform unless it is there, on its way, or has failed before for the same file. One that
    /// waits for its turn comes next when it is asked for again.
    void request(const model::LineId &id, WaveformKind kind);
    /// The line has another file: its samples and any failure to extract them no longer count.
    void invalidate(const Edit &edit, const model::LineId &id, WaveformKind kind);

private:
    struct Key {
        model::LineId id;
        WaveformKind kind;
        QString path;

        friend bool operator==(const Key &, const Key &) = default;
        friend size_t qHash(const Key &key, size_t seed = 0) { return qHashMulti(seed, key.id, key.path); }
    };

    [[nodiscard]] QString currentPath(const model::LineId &id, WaveformKind kind) const;
    void store(const Key &key, const QList<float> &samples);

    ProjectController &m_controller;
    QSet<Key> m_waveformExtractionTasks;
    QSet<Key> m_failedWaveformExtractions;
    base::LatestFirst<Key, QList<float>> m_extractions;
};

} // namespace orlenta::controller
