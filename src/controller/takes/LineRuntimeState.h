#pragma once

#include <QtCore/QList>
#include <QtCore/QUrl>

#include "controller/takes/AudioKind.h"

namespace orlenta::controller {

/// What a line has at run time and the file doesn't keep. A line without an entry reads as all empty.
struct LineRuntimeState {
    bool isGenerating = false;
    QUrl directionAudioURL;
    QUrl generatedAudioURL;
    /// Peaks, 0 to 1; empty until they have been extracted.
    QList<float> waveformSamples;
    QList<float> directionWaveformSamples;

    /// The audio in use; empty where there is none.
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
