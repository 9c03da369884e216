#pragma once

#include <QtCore/QList>
#include <QtCore/QUrl>

#include "controller/takes/AudioKind.h"

namespace orlenta::controller {

/// A line's runtime state, which the project file doesn't keep. A line without an entry has an empty state.
struct LineRuntimeState {
    bool isGenerating = false;
    QUrl directionAudioURL;
    QUrl generatedAudioURL;
    /// Peaks, 0 to 1; empty until extracted.
    QList<float> waveformSamples;
    QList<float> directionWaveformSamples;

    /// The audio in use; empty if there is none.
    [[nodiscard]] const QUrl &audioURL(AudioKind kind) const {
        return kind == AudioKind::Generated ? generatedAudioURL : directionAudioURL;
    }
    [[nodiscard]] const QList<float> &samples(AudioKind kind) const {
        return kind == AudioKind::Generated ? waveformSamples : directionWaveformSamples;
    }
    void setSamples(AudioKind kind, const QList<float> &samples) {
        (kind == AudioKind::Generated ? waveformSamples : directionWaveformSamples) = samples;
    }

    friend bool operator==(const LineRuntimeState &, const LineRuntimeState &) = default;
};

} // namespace orlenta::controller
