#include "localvoices/engines/Resampler.h"

#include <algorithm>
#include <cmath>

#include <soxr.h>

namespace orlenta::localvoices {

Sound resampled(const Sound &sound, int rate) {
    if (sound.rate == rate || sound.frames.empty())
        return {sound.frames, rate};
    const double ratio = static_cast<double>(rate) / static_cast<double>(sound.rate);
    const auto length = static_cast<std::size_t>(std::ceil(static_cast<double>(sound.frames.size()) * ratio));
    Sound result{std::vector<float>(length), rate};
    const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_HQ, 0);
    std::size_t made = 0;
    const soxr_error_t error = soxr_oneshot(sound.rate, rate, 1, sound.frames.data(), sound.frames.size(), nullptr,
                                            result.frames.data(), length, &made, nullptr, &quality, nullptr);
    // Whole rates and memory at hand leave nothing that can fail but memory itself; silence is then what is honest.
    if (error != nullptr)
        made = 0;
    std::fill(result.frames.begin() + static_cast<std::ptrdiff_t>(made), result.frames.end(), 0.0F);
    return result;
}

} // namespace orlenta::localvoices
