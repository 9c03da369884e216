#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "base/Result.h"
#include "localvoices/engines/Sound.h"

namespace orlenta::localvoices {

/// Limit for recordings, in seconds.
constexpr double longestRecordingSeconds = 300.0;

/// Decodes a WAV, AIFF, CAF, FLAC or MP3 file, mixes it to mono and clips it to full scale. M4A isn't supported:
/// loading FFmpeg would double the start time of every worker. The error is a sentence for the client. Any thread.
[[nodiscard]] base::Result<Sound, QString> decodedFile(const QByteArray &bytes);

/// Decodes headerless 16-bit little-endian mono samples at 16 kHz.
[[nodiscard]] base::Result<Sound, QString> decodedPcm16(const QByteArray &bytes);

} // namespace orlenta::localvoices
