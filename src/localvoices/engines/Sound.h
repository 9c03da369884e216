#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace orlenta::localvoices {

/// Mono sound with samples from -1 to 1.
struct Sound {
    std::vector<float> frames;
    /// Hertz.
    int rate = 0;

    [[nodiscard]] double seconds() const {
        return rate > 0 ? static_cast<double>(frames.size()) / static_cast<double>(rate) : 0.0;
    }

    /// Resamples to another rate, giving round(frames * newRate / rate) frames. None when out of memory.
    [[nodiscard]] std::optional<Sound> atRate(int newRate) const;
};

} // namespace orlenta::localvoices
