#pragma once

#include <stop_token>

#include <QtCore/QList>
#include <QtCore/QUrl>

namespace orlenta::audio {

/// Number of bars stored per waveform, regardless of how many a view draws.
inline constexpr int waveformBarCount = 200;

/// Reduces a file's first channel to at most `barCount` peaks (> 0), normalised so that the loudest is 1; a silent file
/// yields zeros. Each bar covers frames / barCount frames, rounded down but at least 1; frames after the last bar are
/// ignored. Returns an empty list if the file can't be read, has no frames, or `stop` is requested, which is checked
/// between blocks. Memory use doesn't depend on the file's length. Blocking; any thread.
[[nodiscard]] QList<float> extractWaveform(const QUrl &url, int barCount = waveformBarCount,
                                           const std::stop_token &stop = {});

} // namespace orlenta::audio
