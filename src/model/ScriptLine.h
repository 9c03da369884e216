#pragma once

#include <optional>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include "model/CodableColor.h"
#include "model/DirectionMode.h"
#include "model/Ids.h"

namespace orlenta::model {

/// One line of the older single-file format. Its settings and its cast stand in the line itself.
struct ScriptLine {
    LineId id;
    QString text;
    QString castName;
    /// The service's id of the voice.
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
    /// Names of files in the audio folder beside the document.
    std::optional<QString> directionAudioFilename;
    std::optional<QString> generatedAudioFilename;

    /// These a file doesn't keep.
    bool isGenerating = false;
    std::optional<QUrl> directionAudioURL;
    std::optional<QUrl> generatedAudioURL;
    /// Peaks, 0 to 1.
    QList<float> waveformSamples;
    QList<float> directionWaveformSamples;

    friend bool operator==(const ScriptLine &, const ScriptLine &) = default;
};

} // namespace orlenta::model
