#pragma once

#include <optional>

#include <QtCore/QByteArray>

#include "localvoices/engines/Sound.h"
#include "localvoices/protocol/OutputFormat.h"

namespace orlenta::localvoices {

/// Resamples and encodes the sound as a complete file. Deterministic. None if the encoder fails. MP3 of 64 kbit/s and
/// more keeps its exact length: it starts with the frame that tells decoders what to trim, which doesn't fit into
/// smaller ones. Any thread.
[[nodiscard]] std::optional<QByteArray> encoded(const Sound &sound, const OutputFormat &format);

} // namespace orlenta::localvoices
