#include "speech/account/ServiceColor.h"

#include <cmath>

namespace orlenta::speech {

QString ServiceColor::hex() const {
    const auto step = [](double part) { return static_cast<int>(std::lround(part * 255.0)); };
    return QString::asprintf("#%02X%02X%02X", step(red), step(green), step(blue));
}

const std::array<ServiceColor, 20> &servicePalette() {
    static constexpr std::array<ServiceColor, 20> palette{
        {{0.9, 0.24, 0.24},  {0.11, 0.62, 0.46}, {0.8, 0.47, 0.1},   {0.23, 0.35, 0.82}, {0.84, 0.33, 0.5},
         {0.22, 0.58, 0.34}, {0.55, 0.27, 0.8},  {0.85, 0.55, 0.1},  {0.06, 0.6, 0.7},   {0.76, 0.15, 0.45},
         {0.4, 0.65, 0.2},   {0.26, 0.26, 0.72}, {0.92, 0.38, 0.15}, {0.3, 0.52, 0.56},  {0.75, 0.15, 0.65},
         {0.5, 0.4, 0.15},   {0.1, 0.65, 0.55},  {0.6, 0.22, 0.3},   {0.35, 0.55, 0.75}, {0.72, 0.42, 0.6}}};
    return palette;
}

} // namespace orlenta::speech
