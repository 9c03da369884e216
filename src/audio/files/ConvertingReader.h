#pragma once

#include <optional>
#include <span>
#include <vector>

#include "audio/files/AudioFileReader.h"
#include "audio/files/Resampler.h"

namespace orlenta::audio {

/// Reads a file at another sample rate, with another number of channels, or both. Memory use doesn't depend on the
/// file's length. One thread at a time; blocking.
///
/// Channels: mono output is the average of all channels; mono input goes to every output channel; with fewer output
/// channels, channel i is averaged into channel i modulo the new count; additional output channels are silent.
class ConvertingReader final {
public:
    /// Frames read from the file at a time.
    static constexpr qsizetype blockFrames = 4096;

    /// `source` must outlive the reader. Rate in Hz. If the rates are equal, nothing is resampled.
    [[nodiscard]] static base::Result<ConvertingReader, AudioFileError> create(AudioFileReader &source,
                                                                               double sampleRate, int channelCount);

    /// Upper limit of the frames one input block turns into: ceil(ratio * 4096) + 1024.
    [[nodiscard]] static qsizetype outputCapacity(double inputRate, double outputRate);

    /// Fills `samples` and returns the number of frames, 0 only at the end.
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
