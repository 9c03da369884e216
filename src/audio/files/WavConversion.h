#pragma once

#include <QtCore/QString>

#include "audio/files/AudioFileError.h"
#include "audio/files/WavHeader.h"
#include "base/Result.h"

namespace orlenta::audio {

/// Seconds of silence at the end of every converted file, so that a clip never stops hard on its last sample.
inline constexpr double silentTailSeconds = 0.2;

/// Converts the file to WAV with `sampleRate` Hz and `bitDepth` (16 or 24) bits, keeping its channels and adding
/// silentTailSeconds of zeros. Returns the new path, "<prefix>_<UUID>.wav" in `folder`. A failure leaves no output; it
/// is ConversionFailed or OutOfMemory if no converter can be created, and names the source if that can't be read.
/// Blocking; any thread.
[[nodiscard]] base::Result<QString, AudioFileError>
convertToWAV(const QString &sourcePath, const QString &prefix, double sampleRate, int bitDepth, const QString &folder);

} // namespace orlenta::audio
