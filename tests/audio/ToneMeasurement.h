#pragma once

#include <cmath>
#include <numbers>
#include <span>

namespace orlenta::audio::test {

/// A sine fitted to a recording by least squares, and what remains beside it.
struct ToneMeasurement {
    /// Peak of the fitted sine, in the samples' unit.
    double peak = 0.0;
    /// Signal to noise and distortion, dB: power of the fitted sine over the power of the rest (IEEE 1057,
    /// three-parameter fit at a known frequency).
    double sinad = 0.0;
};

/// `samples` are mono at `rate` Hz, the tone's frequency is known exactly.
[[nodiscard]] inline ToneMeasurement measureTone(std::span<const double> samples, double frequency, double rate) {
    const double step = 2.0 * std::numbers::pi * frequency / rate;
    double cc = 0, ss = 0, cs = 0, xc = 0, xs = 0;
    for (size_t i = 0; i < samples.size(); ++i) {
        const double c = std::cos(step * static_cast<double>(i));
        const double s = std::sin(step * static_cast<double>(i));
        cc += c * c, ss += s * s, cs += c * s, xc += samples[i] * c, xs += samples[i] * s;
    }
    const double determinant = cc * ss - cs * cs;
    const double a = (xc * ss - xs * cs) / determinant;
    const double b = (xs * cc - xc * cs) / determinant;
    double signal = 0, rest = 0;
    for (size_t i = 0; i < samples.size(); ++i) {
        const double fitted = a * std::cos(step * static_cast<double>(i)) + b * std::sin(step * static_cast<double>(i));
        signal += fitted * fitted;
        rest += (samples[i] - fitted) * (samples[i] - fitted);
    }
    return {std::hypot(a, b), 10.0 * std::log10(signal / rest)};
}

} // namespace orlenta::audio::test
