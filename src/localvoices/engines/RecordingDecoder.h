#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "base/Result.h"
#include "localvoices/engines/Sound.h"

namespace orlenta::localvoices {

/// The longest recording that is taken in, in seconds.
constexpr double longestRecordingSeconds = 300.0;

/// Reads a whole WAV, AIFF, CAF, FLAC or MP3 file and mixes it to mono. Samples beyond full scale are limited to it.
/// M4A isn't read: what reads it would double the start of every worker. The error is a sentence for whoever sent the
/// file. Any thread.
[[nodiscard]] base::Result<Sound, QString> decodedFile(const QByteArray &bytes);

/// Reads bare 16-bit little-endian mono samples of 16000 frames a second.
[[nodiscard]] base::Result<Sound, QString> decodedPcm16(const QByteArray &bytes);

} // namespace orlenta::localvoices
