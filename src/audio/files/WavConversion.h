#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "audio/files/AudioFileError.h"
#include "audio/files/WavHeader.h"
#include "base/Result.h"

namespace orlenta::audio {

/// Seconds of silence at the end of every converted file, so that a clip never stops hard on its last sample.
inline constexpr double silentTailSeconds = 0.2;

/// Makes a WAV file of `sampleRate` Hz and `bitDepth` (16 or 24) bits, with as many channels as the source, out of the
/// bytes of an audio file, and gives its path: "<prefix>_<UUID>.wav" in `folder`. It is longer than its source by
/// silentTailSeconds of exact zeros. The bytes stand in "<prefix>_src_<UUID>.<sourceExtension>" meanwhile, which is
/// gone afterwards; a failure leaves neither file. A converter that can't be made, or no memory for it, shows as the
/// kinds ConversionFailed and OutOfMemory. Blocking; any thread.
[[nodiscard]] base::Result<QString, AudioFileError> convertToWAV(const QByteArray &bytes,
                                                                 const QString &sourceExtension, const QString &prefix,
                                                                 double sampleRate, int bitDepth,
                                                                 const QString &folder);

} // namespace orlenta::audio
