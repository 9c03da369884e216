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

/// Extracts waveforms on a background thread, latest request first, and stores them in the lines' runtime states. The
/// destructor stops a running extraction. Main thread.
class LineWaveforms final : public QObject {
    Q_OBJECT
public:
    explicit LineWaveforms(ProjectController &controller);

    /// Extracts the line's waveform unless it is known, in progress, or has failed for the same file. Repeating a
    /// queued request moves it to the front.
    void request(const model::LineId &id, WaveformKind kind);
    /// Call when the line's file changes. Forgets its samples and any failed extraction.
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
