#pragma once

#include <optional>
#include <stop_token>

#include <QtCore/QtGlobal>

namespace orlenta::audio {

class AudioFileReader;

/// Like AudioFileReader::frames(), but can be stopped. `reader` must be at the beginning; if only decoding can tell the
/// length, it is read to the end. Checks `stop` between blocks and returns nothing if stopped. Blocking; any thread.
[[nodiscard]] std::optional<qint64> countFrames(AudioFileReader &reader, const std::stop_token &stop);

} // namespace orlenta::audio
