#pragma once

#include <memory>
#include <span>

#include "audio/files/AudioFileError.h"
#include "base/Result.h"

struct soxr;

namespace orlenta::audio {

/// Changes the sample rate of a stream of interleaved frames, at the 28-bit "very high quality" of libsoxr: linear
/// phase, no delay to make up for, and round(frames * outputRate / inputRate) frames in all. One thread at a time.
class Resampler final {
public:
    struct Progress {
        qsizetype framesConsumed = 0;
        qsizetype framesProduced = 0;
    };

    /// Rates in Hz. Fails with ConversionFailed where the library refuses them.
    [[nodiscard]] static base::Result<Resampler, AudioFileError> create(double inputRate, double outputRate,
                                                                        int channelCount);
    Resampler(Resampler &&) noexcept;
    Resampler &operator=(Resampler &&) noexcept;
    ~Resampler();

    /// Takes frames of `input` and gives frames into `output`, as many of each as go. Sizes are multiples of the
    /// channel count.
    base::Result<Progress, AudioFileError> process(std::span<const double> input, std::span<double> output);
    /// After the last input: gives what is still inside; 0 frames when all is out.
    base::Result<qsizetype, AudioFileError> drain(std::span<double> output);

private:
    struct Deleter {
        void operator()(soxr *resampler) const;
    };
    Resampler(soxr *resampler, int channelCount);

    std::unique_ptr<soxr, Deleter> m_resampler;
    size_t m_channelCount;
};

} // namespace orlenta::audio
