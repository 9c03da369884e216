#pragma once

#include <QtCore/QtGlobal>

/// Limits for texts from the service, in UTF-16 units: enough for anything that people write, and little enough to lay
/// out and log at once.
namespace orlenta::speech {

inline constexpr qsizetype longestServiceMessage = 1000;
inline constexpr qsizetype longestServiceDescription = 2000;
inline constexpr qsizetype longestServiceName = 200;

} // namespace orlenta::speech
