#pragma once

#include <QtCore/QString>

/// How much of what the service says is taken over, in UTF-16 units: enough for what people write, and little enough to
/// lay out and log at once.
namespace orlenta::speech {

inline constexpr qsizetype longestServiceMessage = 1000;
inline constexpr qsizetype longestServiceDescription = 2000;
inline constexpr qsizetype longestServiceName = 200;

/// The text, or its first `limit` units and an ellipsis. Never cuts through a character.
[[nodiscard]] QString cutServiceText(const QString &text, qsizetype limit);

} // namespace orlenta::speech
