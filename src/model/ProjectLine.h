#pragma once

#include <optional>

#include <QtCore/QList>
#include <QtCore/QString>

#include "model/Ids.h"
#include "model/ProjectLineSettings.h"
#include "model/SourceRecording.h"
#include "model/Take.h"

namespace orlenta::model {

/// A script line. Its position is in its tab.
struct ProjectLine {
    LineId lineId;
    QString text;
    std::optional<VoiceId> voiceId;
    std::optional<PresetId> presetId;
    /// The line's own settings. Without them, its preset's apply.
    std::optional<ProjectLineSettings> settings;
    QList<Take> takes;
    QList<SourceRecording> sourceRecordings;
    std::optional<TakeId> activeTakeId;
    std::optional<RecordingId> activeSourceId;
    QString notes;

    /// A new, empty line with the default settings for new lines.
    [[nodiscard]] static ProjectLine makeNew();

    /// The take in use: the one that activeTakeId names, or otherwise the last. Null if there is none.
    [[nodiscard]] const Take *activeTake() const;
    /// The recording in use, chosen like activeTake().
    [[nodiscard]] const SourceRecording *activeRecording() const;

    friend bool operator==(const ProjectLine &, const ProjectLine &) = default;
};

} // namespace orlenta::model
