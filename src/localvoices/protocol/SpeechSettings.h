#pragma once

#include <cstdint>

namespace orlenta::localvoices {

/// How a line is to be spoken. The service's scales and its defaults.
struct SpeechSettings {
    /// 0 to 1: the less, the wider the melody.
    double stability = 0.5;
    /// 0 to 1: widens the melody too.
    double style = 0.0;
    /// 0.25 to 4, 1 for the voice's own pace.
    double speed = 1.0;
    /// Where the noise of breathy voices begins.
    std::uint32_t seed = 0;

    /// The melody's width beside the voice's own, 0.5 to 2.
    [[nodiscard]] double melody() const {
        const double width = 1.0 + (0.5 - stability) + 0.5 * style;
        return width < 0.5 ? 0.5 : width;
    }
};

} // namespace orlenta::localvoices
