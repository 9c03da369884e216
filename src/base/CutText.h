#pragma once

#include <QtCore/QString>

namespace orlenta::base {

/// Returns the text, or its first `limit` UTF-16 units and an ellipsis. Never cuts a character in two.
[[nodiscard]] QString cutText(const QString &text, qsizetype limit);

} // namespace orlenta::base
