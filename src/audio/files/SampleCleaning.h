#pragma once

#include <cmath>
#include <span>

namespace orlenta::audio {

/// Files hold samples of every scale, up to that of 32-bit integers; what lies beyond it no converter made.
inline constexpr double largestSample = 4294967296.0;

/// Whether a sample can be of any sound. NaN, the infinities and the rest of what damaged floating-point files hold can
/// not; a single one of them would silence a waveform and spread through a filter.
template <typename Sample>
[[nodiscard]] bool isSound(Sample sample) {
    return std::abs(sample) <= static_cast<Sample>(largestSample);
}

/// Puts silence in the place of what isn't sound.
template <typename Sample>
void silenceNonSound(std::span<Sample> samples) {
    for (Sample &sample : samples)
        sample = isSound(sample) ? sample : Sample{};
}

} // namespace orlenta::audio
