#pragma once

#include <array>

#include <QtCore/QString>

namespace orlenta::speech {

/// An opaque sRGB colour; each component from 0 to 1.
struct ServiceColor {
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;

    /// "#RRGGBB", upper-case, each component rounded to the nearest of 256 steps.
    [[nodiscard]] QString hex() const;

    friend bool operator==(const ServiceColor &, const ServiceColor &) = default;
};

/// The twenty voice colours, in the order in which they are assigned.
[[nodiscard]] const std::array<ServiceColor, 20> &servicePalette();

} // namespace orlenta::speech
