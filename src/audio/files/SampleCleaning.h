#pragma once

#include <cmath>
#include <span>

namespace orlenta::audio {

/// Some files store integer samples as floats, up to full scale of 32 bits. Anything larger is garbage.
inline constexpr double largestSample = 4294967296.0;

/// Whether a sample is valid. Damaged floating-point files contain NaN, infinities and huge values; a single one would
/// flatten a waveform and spread through a filter.
template <typename Sample>
[[nodiscard]] bool isSound(Sample sample) {
    return std::abs(sample) <= static_cast<Sample>(largestSample);
}

/// Replaces invalid samples with silence.
template <typename Sample>
void silenceNonSound(std::span<Sample> samples) {
    for (Sample &sample : samples)
        sample = isSound(sample) ? sample : Sample{};
}

} // namespace orlenta::audio
