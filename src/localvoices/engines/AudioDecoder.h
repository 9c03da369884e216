#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "base/Result.h"
#include "localvoices/engines/Sound.h"

namespace orlenta::localvoices {

/// The longest sound that is taken in, in seconds.
constexpr double longestInputSeconds = 300.0;

/// Reads a whole file of any kind that libsndfile knows (WAV, AIFF, FLAC, Ogg, MP3) and mixes it to mono. The error is
/// a sentence for whoever sent the file. Any thread.
[[nodiscard]] base::Result<Sound, QString> decodedFile(const QByteArray &bytes);

/// Reads bare 16-bit little-endian mono samples of 16000 frames a second.
[[nodiscard]] base::Result<Sound, QString> decodedPcm16(const QByteArray &bytes);

} // namespace orlenta::localvoices
