#pragma once

#include <QtCore/QString>

#include "audio/files/AudioFileError.h"
#include "audio/files/WavHeader.h"
#include "base/Result.h"

namespace orlenta::audio {

/// Seconds of silence at the end of every converted file, so that a clip never stops hard on its last sample.
inline constexpr double silentTailSeconds = 0.2;

/// Makes a WAV file of `sampleRate` Hz and `bitDepth` (16 or 24) bits out of the audio file at `sourcePath`, with as
/// many channels, and gives its path: "<prefix>_<UUID>.wav" in `folder`. It is longer than its source by
/// silentTailSeconds of exact zeros. The source stays as it is; a failure leaves no output. A converter that can't be
/// made, or no memory for it, shows as the kinds ConversionFailed and OutOfMemory; a failure to read has the source's
/// path in it. Blocking; any thread.
[[nodiscard]] base::Result<QString, AudioFileError>
convertToWAV(const QString &sourcePath, const QString &prefix, double sampleRate, int bitDepth, const QString &folder);

} // namespace orlenta::audio
