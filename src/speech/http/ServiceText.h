#pragma once

#include <QtCore/QString>

/// Limits for texts from the service, in UTF-16 units: enough for anything that people write, and little enough to lay
/// out and log at once.
namespace orlenta::speech {

inline constexpr qsizetype longestServiceMessage = 1000;
inline constexpr qsizetype longestServiceDescription = 2000;
inline constexpr qsizetype longestServiceName = 200;

/// Returns the text, or its first `limit` units and an ellipsis. Never cuts a character in two.
[[nodiscard]] QString cutServiceText(const QString &text, qsizetype limit);

} // namespace orlenta::speech
