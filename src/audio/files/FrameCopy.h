#pragma once

#include <functional>
#include <memory>
#include <new>
#include <span>

#include "audio/files/AudioFileError.h"
#include "audio/files/WavFileWriter.h"
#include "base/Result.h"

namespace orlenta::audio {

/// Allocates silent frames; null if there isn't enough memory.
[[nodiscard]] inline std::unique_ptr<double[]> allocateFrames(qsizetype frames, int channels) {
    return std::unique_ptr<double[]>(new (std::nothrow) double[static_cast<size_t>(frames * channels)]());
}

/// Writes all frames of `source`, an AudioFileReader or ConvertingReader with as many channels as `output`. Calls
/// `afterBlock` after every block and stops early if it returns false. Fails with OutOfMemory if a block can't be
/// allocated. Blocking.
template <typename Source>
[[nodiscard]] base::Result<void, AudioFileError>
copyFrames(Source &source, WavFileWriter &output, qsizetype blockFrames, const std::function<bool()> &afterBlock = {}) {
    const int channels = output.format().channelCount;
    const auto buffer = allocateFrames(blockFrames, channels);
    if (!buffer)
        return base::fail(AudioFileError{AudioFileError::Kind::OutOfMemory, {}, {}});
    const std::span samples(buffer.get(), static_cast<size_t>(blockFrames * channels));
    while (true) {
        const auto read = source.readFrames(samples);
        if (!read)
            return base::fail(read.error());
        if (*read == 0)
            return {};
        if (auto written = output.writeFrames(samples.first(static_cast<size_t>(*read * channels))); !written)
            return written;
        if (afterBlock && !afterBlock())
            return {};
    }
}

} // namespace orlenta::audio
