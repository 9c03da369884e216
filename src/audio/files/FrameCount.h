#pragma once

#include <optional>
#include <stop_token>

#include <QtCore/QtGlobal>

namespace orlenta::audio {

class AudioFileReader;

/// The frames that reading the whole of a file gives, as AudioFileReader::frames(), from a reader that stands at its
/// beginning. Where only decoding tells them the reader is read to its end, and `stop` is looked at between blocks:
/// nothing when asked to stop. Blocking; any thread.
[[nodiscard]] std::optional<qint64> countFrames(AudioFileReader &reader, const std::stop_token &stop);

} // namespace orlenta::audio
