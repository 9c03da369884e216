#pragma once

#include <stop_token>

#include <QtCore/QList>
#include <QtCore/QUrl>

namespace orlenta::audio {

/// The bars that every waveform of the application is kept as, however many of them a view draws.
inline constexpr int waveformBarCount = 200;

/// Reduces a file's first channel to peaks, at most `barCount` of them (above 0), each 0 to 1 with the loudest at 1; a
/// silent file gives zeros. Every bar covers frames / barCount frames, rounded down, at least 1; frames after the last
/// bar are left out. Empty where the file can't be read or holds no frames, or when `stop` is asked for, which is
/// looked at between blocks. Reads block by block, so memory does not grow with the file. Blocking; any thread.
[[nodiscard]] QList<float> extractWaveform(const QUrl &url, int barCount = waveformBarCount,
                                           const std::stop_token &stop = {});

} // namespace orlenta::audio
