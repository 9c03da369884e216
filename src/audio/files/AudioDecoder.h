#pragma once

#include <optional>
#include <span>

#include <QtCore/QtGlobal>

#include "audio/files/AudioFileError.h"
#include "audio/files/AudioFileFormat.h"
#include "base/Result.h"

namespace orlenta::audio {

/// Decodes a file with one particular library; AudioFileReader picks the library. One thread at a time.
class AudioDecoder {
public:
    using ReadResult = base::Result<qsizetype, AudioFileError>;

    AudioDecoder() = default;
    virtual ~AudioDecoder() = default;
    AudioDecoder(const AudioDecoder &) = delete;
    AudioDecoder &operator=(const AudioDecoder &) = delete;

    [[nodiscard]] virtual const AudioFileFormat &format() const = 0;
    /// The exact number of frames, or nothing if only decoding can tell.
    [[nodiscard]] virtual std::optional<qint64> frames() const = 0;
    /// Roughly what share of the file, 0 to 1, the first `position` frames are.
    [[nodiscard]] virtual double readShare(qint64 position) const = 0;
    /// Reads interleaved samples, full scale ±1. Returns the number of frames, 0 only at the end.
    virtual ReadResult read(std::span<double> samples) = 0;
    virtual ReadResult read(std::span<float> samples) = 0;
    /// Seeks to `frame` and returns true, or returns false if the library can't seek sample-accurately.
    [[nodiscard]] virtual bool seek(qint64 frame) = 0;
};

} // namespace orlenta::audio
