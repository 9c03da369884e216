#pragma once

#include <cmath>
#include <numbers>

namespace orlenta::audio {

/// Gain at position `share` (0 to 1) of a fade-in: a raised cosine, smooth at both ends.
[[nodiscard]] inline float fadeCurve(double share) {
    return static_cast<float>(0.5 - 0.5 * std::cos(std::numbers::pi * share));
}

} // namespace orlenta::audio
