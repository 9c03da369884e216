#pragma once

namespace orlenta::model {

/// The colour of a line in the older single-file format: sRGB channels, 0.0 to 1.0.
struct CodableColor {
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;

    friend bool operator==(const CodableColor &, const CodableColor &) = default;
};

} // namespace orlenta::model
