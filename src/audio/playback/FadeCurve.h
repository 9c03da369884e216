#pragma once

#include <cmath>
#include <numbers>

namespace orlenta::audio {

/// The gain at `share` of a fade in, 0 to 1: half a cosine period, which has no corner at either end.
[[nodiscard]] inline float fadeCurve(double share) {
    return static_cast<float>(0.5 - 0.5 * std::cos(std::numbers::pi * share));
}

} // namespace orlenta::audio
