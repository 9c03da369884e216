#pragma once

#include <QtCore/QStringList>

namespace orlenta::controller {

/// The twenty colours of cast voices, in order, as "#RRGGBB" in upper case: the palette of the service.
[[nodiscard]] const QStringList &castPalette();

} // namespace orlenta::controller
