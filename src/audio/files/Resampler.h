#pragma once

#include <memory>
#include <span>

#include "audio/files/AudioFileError.h"
#include "base/Result.h"

struct soxr;

namespace orlenta::audio {

/// Resamples a stream of interleaved frames with libsoxr's 28-bit "very high quality". Linear phase, no delay to
/// compensate, and round(frames * outputRate / inputRate) frames in total. One thread at a time.
class Resampler final {
public:
    struct Progress {
        qsizetype framesConsumed = 0;
        qsizetype framesProduced = 0;
    };

    /// Rates in Hz. Fails with ConversionFailed if the library refuses them.
    [[nodiscard]] static base::Result<Resampler, AudioFileError> create(double inputRate, double outputRate,
                                                                        int channelCount);
    Resampler(Resampler &&) noexcept;
    Resampler &operator=(Resampler &&) noexcept;
    ~Resampler();

    /// Consumes and produces as many frames as possible. Sizes are multiples of the channel count.
    base::Result<Progress, AudioFileError> process(std::span<const double> input, std::span<double> output);
    /// Call after the last input to get the remaining frames; returns 0 once there are none.
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
