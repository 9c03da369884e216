#pragma once

#include <optional>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include "model/CodableColor.h"
#include "model/DirectionMode.h"
#include "model/Ids.h"

namespace orlenta::model {

/// A line of the older single-file format, which stores settings and voice in the line itself.
struct ScriptLine {
    LineId id;
    QString text;
    QString castName;
    /// The service's voice id.
    std::optional<QString> voiceId;
    QString presetName;
    DirectionMode directionMode = DirectionMode::Text;
    QString model;
    QString mode;
    double stability = 0.0;
    double similarityBoost = 0.0;
    double style = 0.0;
    double speed = 0.0;
    CodableColor codableColor;
    /// File names in the audio folder next to the document.
    std::optional<QString> directionAudioFilename;
    std::optional<QString> generatedAudioFilename;

    /// Runtime state, not saved.
    bool isGenerating = false;
    std::optional<QUrl> directionAudioURL;
    std::optional<QUrl> generatedAudioURL;
    /// Peaks, 0 to 1.
    QList<float> waveformSamples;
    QList<float> directionWaveformSamples;

    friend bool operator==(const ScriptLine &, const ScriptLine &) = default;
};

} // namespace orlenta::model
