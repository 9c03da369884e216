#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace orlenta::localvoices {

/// Mono sound: one sample a frame, -1 to 1, at a whole number of frames a second.
struct Sound {
    std::vector<float> frames;
    int rate = 0;

    [[nodiscard]] double seconds() const {
        return rate > 0 ? static_cast<double>(frames.size()) / static_cast<double>(rate) : 0.0;
    }

    /// The sound at another rate, of round(frames * newRate / rate) frames. None when there is no memory for it.
    [[nodiscard]] std::optional<Sound> atRate(int newRate) const;
};

} // namespace orlenta::localvoices
