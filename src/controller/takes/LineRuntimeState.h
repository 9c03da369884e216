#pragma once

#include <QtCore/QList>
#include <QtCore/QUrl>

namespace orlenta::controller {

/// What a line has at run time and the file doesn't keep. A line without an entry reads as all empty.
struct LineRuntimeState {
    bool isGenerating = false;
    QUrl directionAudioURL;
    QUrl generatedAudioURL;
    /// Peaks, 0 to 1; empty until they have been extracted.
    QList<float> waveformSamples;
    QList<float> directionWaveformSamples;

    friend bool operator==(const LineRuntimeState &, const LineRuntimeState &) = default;
};

} // namespace orlenta::controller
