#pragma once

#include <optional>
#include <span>

#include <QtCore/QtGlobal>

#include "audio/files/AudioFileError.h"
#include "audio/files/AudioFileFormat.h"
#include "base/Result.h"

namespace orlenta::audio {

/// One library's way of turning a file into frames; AudioFileReader chooses among them. One thread at a time.
class AudioDecoder {
public:
    using ReadResult = base::Result<qsizetype, AudioFileError>;

    AudioDecoder() = default;
    virtual ~AudioDecoder() = default;
    AudioDecoder(const AudioDecoder &) = delete;
    AudioDecoder &operator=(const AudioDecoder &) = delete;

    [[nodiscard]] virtual const AudioFileFormat &format() const = 0;
    /// The exact number of frames, or nothing when only decoding can tell.
    [[nodiscard]] virtual std::optional<qint64> frames() const = 0;
    /// About how much of the file has been read once `position` frames have been given, 0 to 1.
    [[nodiscard]] virtual double readShare(qint64 position) const = 0;
    /// Interleaved samples, full scale ±1. Gives the frames read, 0 at the end only.
    virtual ReadResult read(std::span<double> samples) = 0;
    virtual ReadResult read(std::span<float> samples) = 0;
    /// Moves to a frame and tells so, or does nothing where the library can't do it to the sample.
    [[nodiscard]] virtual bool seek(qint64 frame) = 0;
};

} // namespace orlenta::audio
