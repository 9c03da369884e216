#pragma once

#include <optional>

#include <QtCore/QList>
#include <QtCore/QString>

#include "model/Ids.h"
#include "model/ProjectLineSettings.h"
#include "model/SourceRecording.h"
#include "model/Take.h"

namespace orlenta::model {

/// One script line. Its place is its tab's knowledge.
struct ProjectLine {
    LineId lineId;
    QString text;
    std::optional<VoiceId> voiceId;
    std::optional<PresetId> presetId;
    /// The line's own settings; without them its preset's count.
    std::optional<ProjectLineSettings> settings;
    QList<Take> takes;
    QList<SourceRecording> sourceRecordings;
    std::optional<TakeId> activeTakeId;
    std::optional<RecordingId> activeSourceId;
    QString notes;

    /// A fresh, empty line with the new-line settings.
    [[nodiscard]] static ProjectLine makeNew();

    /// The take in use: the one named by activeTakeId, or else the last. Null when there is none.
    [[nodiscard]] const Take *activeTake() const;
    /// The recording in use, by the same rule.
    [[nodiscard]] const SourceRecording *activeRecording() const;

    friend bool operator==(const ProjectLine &, const ProjectLine &) = default;
};

} // namespace orlenta::model
