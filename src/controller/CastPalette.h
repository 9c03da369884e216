#pragma once

#include <QtCore/QStringList>

namespace orlenta::controller {

/// The twenty colours of cast voices, in order, as "#RRGGBB" in upper case: each sRGB channel times 255, rounded.
[[nodiscard]] const QStringList &castPalette();

} // namespace orlenta::controller
