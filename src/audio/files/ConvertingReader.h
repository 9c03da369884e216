#pragma once

#include <optional>
#include <span>
#include <vector>

#include "audio/files/AudioFileReader.h"
#include "audio/files/Resampler.h"

namespace orlenta::audio {

/// Reads a file's frames at another rate, with another number of channels, or both. Memory stays the same however long
/// the file is. One thread at a time; blocking.
///
/// Channels: to one channel all are averaged; from one channel it goes to all; to fewer, channel i is averaged into
/// channel i modulo the new count; to more, the added ones are silent.
class ConvertingReader final {
public:
    /// Frames asked of the file at a time.
    static constexpr qsizetype blockFrames = 4096;

    /// `source` must outlive the reader. Rate in Hz; equal rates are not touched by the resampler.
    [[nodiscard]] static base::Result<ConvertingReader, AudioFileError> create(AudioFileReader &source,
                                                                               double sampleRate, int channelCount);

    /// The most frames that one block of input turns into, with room to spare: ceil(ratio * 4096) + 1024.
    [[nodiscard]] static qsizetype outputCapacity(double inputRate, double outputRate);

    /// Fills `samples` from the start and gives the frames; 0 at the end only.
    base::Result<qsizetype, AudioFileError> readFrames(std::span<double> samples);

private:
    ConvertingReader(AudioFileReader &source, int channelCount);
    base::Result<void, AudioFileError> readBlock(qsizetype mostFrames);
    [[nodiscard]] std::span<const double> pending() const;
    void mapChannels(std::span<const double> from, std::span<double> to) const;

    AudioFileReader *m_source;
    int m_channelCount;
    std::optional<Resampler> m_resampler;
    std::vector<double> m_raw;
    std::vector<double> m_mapped;
    size_t m_pendingStart = 0;
    size_t m_pendingEnd = 0;
    bool m_hasEnded = false;
};

} // namespace orlenta::audio
