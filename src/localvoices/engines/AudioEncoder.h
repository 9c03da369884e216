#pragma once

#include <optional>

#include <QtCore/QByteArray>

#include "localvoices/engines/Sound.h"
#include "localvoices/protocol/OutputFormat.h"

namespace orlenta::localvoices {

/// The sound as a whole file of the format, brought to its rate. The same sound gives the same bytes. None when the
/// encoder refuses. MP3 of 64 kbit/s and more carries the frame that tells decoders what to trim, so
/// its length survives; in smaller ones it has no room. Any thread.
[[nodiscard]] std::optional<QByteArray> encoded(const Sound &sound, const OutputFormat &format);

} // namespace orlenta::localvoices
