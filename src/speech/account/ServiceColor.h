#pragma once

#include <array>

#include <QtCore/QString>

namespace orlenta::speech {

/// An opaque sRGB colour; each part is 0 to 1.
struct ServiceColor {
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;

    /// "#RRGGBB", upper-case, each part rounded to its nearest of 256 steps.
    [[nodiscard]] QString hex() const;

    friend bool operator==(const ServiceColor &, const ServiceColor &) = default;
};

/// The twenty colours that voices are marked with, in the order in which they are given out.
[[nodiscard]] const std::array<ServiceColor, 20> &servicePalette();

} // namespace orlenta::speech
