#pragma once

#include <QtCore/QStringList>

namespace orlenta::controller {

/// The twenty colours for cast voices, from the speech service's palette, in order, as upper-case "#RRGGBB".
[[nodiscard]] const QStringList &castPalette();

} // namespace orlenta::controller
